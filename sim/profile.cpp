#include "sim/profile.h"

#include <cctype>
#include <charconv>
#include <fstream>
#include <sstream>

namespace amp::sim {
namespace {

std::string_view Trim(std::string_view s) {
  while (!s.empty() && std::isspace(static_cast<unsigned char>(s.front()))) s.remove_prefix(1);
  while (!s.empty() && std::isspace(static_cast<unsigned char>(s.back()))) s.remove_suffix(1);
  return s;
}

}  // namespace

bool ParseUnitId(std::string_view text, uint16_t* out, std::string* error) {
  std::string_view digits = Trim(text);
  int base = 10;
  if (digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X')) {
    base = 16;
    digits.remove_prefix(2);
  }
  unsigned value = 0;
  auto [ptr, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
  if (digits.empty() || ec != std::errc() || ptr != digits.data() + digits.size()) {
    if (error) *error = "unit id '" + std::string(text) + "' is not a number";
    return false;
  }
  if (!ValidUnitId(value)) {
    if (error)
      *error = "unit id '" + std::string(text) +
               "' cannot be sent: both bytes must be below 64 (at most 0x3F3F)";
    return false;
  }
  *out = static_cast<uint16_t>(value);
  return true;
}

bool ApplyProfile(std::string_view text, UnitState& unit, std::string* error) {
  UnitState next = unit;
  int lineNo = 0;
  size_t pos = 0;
  while (pos <= text.size()) {
    size_t eol = text.find('\n', pos);
    std::string_view line = text.substr(pos, eol == std::string_view::npos ? eol : eol - pos);
    pos = eol == std::string_view::npos ? text.size() + 1 : eol + 1;
    ++lineNo;

    if (size_t hash = line.find('#'); hash != std::string_view::npos) line = line.substr(0, hash);
    line = Trim(line);
    if (line.empty()) continue;

    std::string why;
    auto fail = [&](const std::string& reason) {
      if (error) *error = "line " + std::to_string(lineNo) + ": " + reason;
      return false;
    };
    size_t eq = line.find('=');
    if (eq == std::string_view::npos) return fail("expected 'key = value'");
    std::string_view key = Trim(line.substr(0, eq));
    std::string_view value = Trim(line.substr(eq + 1));

    if (key == "address") {
      if (value.size() != 1 || value[0] < 0x20 || value[0] > 0x7E)
        return fail("address must be one printable character");
      next.address = value[0];
    } else if (key == "unit_id") {
      if (!ParseUnitId(value, &next.unitId, &why)) return fail(why);
    } else if (key == "summary" || key == "fault" || key == "alarm") {
      StatusWords* words = key == "summary" ? &next.summary : key == "fault" ? &next.fault : &next.alarm;
      if (!DecodeWords(value, words, &why)) return fail(why);
    } else if (key == "mode") {
      if (value == "remote") {
        next.remote = true;
      } else if (value == "local") {
        next.remote = false;
      } else {
        return fail("mode must be 'remote' or 'local'");
      }
    } else if (key.starts_with("value.") && key.size() > 6) {
      next.values[std::string(key.substr(6))] = std::string(value);
    } else {
      return fail("unknown key '" + std::string(key) + "'");
    }
  }
  unit = std::move(next);
  return true;
}

bool LoadProfile(const std::string& path, UnitState& unit, std::string* error) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    if (error) *error = "cannot open profile '" + path + "'";
    return false;
  }
  std::ostringstream text;
  text << in.rdbuf();
  std::string why;
  if (!ApplyProfile(text.str(), unit, &why)) {
    if (error) *error = path + ": " + why;
    return false;
  }
  return true;
}

}  // namespace amp::sim
