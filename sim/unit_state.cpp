#include "sim/unit_state.h"

#include <charconv>
#include <cmath>

namespace amp::sim {

std::string EncodeWords(const StatusWords& words) {
  std::string out;
  for (uint8_t w : words) out += EncodeWord(w);
  return out;
}

bool DecodeWords(std::string_view text, StatusWords* out, std::string* error) {
  if (text.size() != out->size()) {
    if (error) *error = "status group '" + std::string(text) + "' must be exactly 4 characters";
    return false;
  }
  StatusWords words{};
  for (size_t i = 0; i < text.size(); ++i) {
    auto c = static_cast<unsigned char>(text[i]);
    if (c < 0x40 || c > 0x7F) {
      if (error)
        *error = "status group '" + std::string(text) + "': character " + std::to_string(i + 1) +
                 " is outside '@'..DEL (0x40..0x7F)";
      return false;
    }
    words[i] = c & 0x3F;
  }
  *out = words;
  return true;
}

bool ValidUnitId(unsigned value) { return value <= 0x3F3F && (value & 0xFF) <= 0x3F; }

std::string EncodeUnitId(uint16_t id) {
  std::string out;
  out += EncodeWord(static_cast<uint8_t>(id >> 8));
  out += EncodeWord(static_cast<uint8_t>(id & 0xFF));
  return out;
}

void UnitState::SetRemote(bool on) {
  remote = on;
  if (on) {
    summary[0] |= summary::kRemote;
  } else {
    summary[0] &= static_cast<uint8_t>(~summary::kRemote);
  }
}

double WanderShape(std::string_view key, unsigned count) {
  // Two slow sines with phases taken from the key, so different readouts
  // do not move in step; the weights add up to 1, which bounds the result.
  uint32_t h = 2166136261u;
  for (unsigned char c : key) h = (h ^ c) * 16777619u;
  double p1 = (h & 0xFFFF) / 65536.0 * 6.283185307179586;
  double p2 = (h >> 16) / 65536.0 * 6.283185307179586;
  return 0.6 * std::sin(0.9 * count + p1) + 0.4 * std::sin(0.37 * count + p2);
}

namespace {

int DecimalsOf(std::string_view text) {
  size_t dot = text.find('.');
  if (dot == std::string_view::npos) return 0;
  int n = 0;
  for (size_t i = dot + 1; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) ++n;
  return n;
}

}  // namespace

bool ParseNumber(std::string_view text, double* out) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  size_t digits = 0, points = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    if (c >= '0' && c <= '9') {
      ++digits;
    } else if (c == '.') {
      ++points;
    } else if (c != '-' || i != 0) {
      return false;
    }
  }
  if (digits == 0 || points > 1) return false;
  auto [ptr, ec] =
      std::from_chars(text.data(), text.data() + text.size(), *out, std::chars_format::fixed);
  return ec == std::errc() && ptr == text.data() + text.size();
}

std::string FormatFixed(double value, int decimals) {
  char buf[64];
  auto [ptr, ec] = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::fixed, decimals);
  std::string out(buf, ec == std::errc() ? ptr : buf);
  if (!out.empty() && out[0] == '-' && out.find_first_not_of("-0.") == std::string::npos)
    out.erase(0, 1);
  return out;
}

std::string ReadValue(UnitState& unit, std::string_view key) {
  // Values the unit computes from its state rather than keeps.
  if (key == "address") return std::string(1, unit.address);
  if (key == "param.54") return (unit.summary[0] & summary::kInhibit) ? "1" : "0";

  auto it = unit.values.find(key);
  if (it == unit.values.end()) return {};
  auto w = unit.wander.find(key);
  double base = 0;
  if (w == unit.wander.end() || w->second <= 0 || !ParseNumber(it->second, &base))
    return it->second;
  unsigned& count = unit.wanderReads[std::string(key)];
  return FormatFixed(base + w->second * WanderShape(key, count++), DecimalsOf(it->second));
}

}  // namespace amp::sim
