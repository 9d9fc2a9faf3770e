#include "sim/profile.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "basic/numbers.h"
#include "sim/commands.h"

#ifndef AMPSIM_PROFILE_DIR
#define AMPSIM_PROFILE_DIR ""
#endif

namespace amp::sim {
namespace {

std::string_view Trim(std::string_view s) {
  while (!s.empty() && std::isspace(static_cast<unsigned char>(s.front()))) s.remove_prefix(1);
  while (!s.empty() && std::isspace(static_cast<unsigned char>(s.back()))) s.remove_suffix(1);
  return s;
}

// A comment starts with '#' at the beginning of the line or after a blank,
// so a '#' inside a word stays.
std::string_view StripComment(std::string_view line) {
  for (size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '#' && (i == 0 || std::isspace(static_cast<unsigned char>(line[i - 1]))))
      return line.substr(0, i);
  }
  return line;
}

bool ParseDouble(std::string_view text, double* out) {
  text = Trim(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), *out);
  return !text.empty() && ec == std::errc() && ptr == text.data() + text.size();
}

// Text the unit will put into a reply body must not end or restart a frame
// on the host's side: no control characters and no '{' or '}'.
bool SafeForReply(std::string_view text, std::string* why) {
  for (unsigned char c : text) {
    if (c < 0x20 || c > 0x7E || c == '{' || c == '}') {
      *why = "character 0x" + std::string(1, "0123456789ABCDEF"[c >> 4]) +
             std::string(1, "0123456789ABCDEF"[c & 15]) + " cannot be sent in a reply";
      return false;
    }
  }
  return true;
}

bool IsListSection(std::string_view name) {
  static constexpr std::string_view kLists[] = {"faultlog",    "log.10min",   "log.hourly",
                                                "log.daily",   "log.monthly", "log.cathode",
                                                "trend.short", "trend.long"};
  return std::find(std::begin(kLists), std::end(kLists), name) != std::end(kLists);
}

bool IsCalSection(std::string_view name) {
  return name == "cal.forward" || name == "cal.reverse" || name == "cal.drive" ||
         name == "cal.atten";
}

struct CalRange {
  double first = 0, last = -1;
  int countFirst = -1, countLast = -1;
};

bool FileExists(const std::string& path) {
  struct stat st {};
  return ::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

std::vector<std::string> SearchDirs() {
  std::vector<std::string> dirs;
  if (const char* env = std::getenv("AMPSIM_PROFILE_DIR"); env && *env) dirs.emplace_back(env);
  if (!BuiltInProfileDir().empty()) dirs.push_back(BuiltInProfileDir());
  return dirs;
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
  std::string section;  // "" is the unit's own keys
  std::map<std::string, CalRange, std::less<>> cals;
  int lineNo = 0;
  size_t pos = 0;
  std::string why;
  auto fail = [&](const std::string& reason) {
    if (error) *error = "line " + std::to_string(lineNo) + ": " + reason;
    return false;
  };

  while (pos <= text.size()) {
    size_t eol = text.find('\n', pos);
    std::string_view raw = text.substr(pos, eol == std::string_view::npos ? eol : eol - pos);
    pos = eol == std::string_view::npos ? text.size() + 1 : eol + 1;
    ++lineNo;

    std::string_view whole = Trim(raw);
    if (whole.empty() || whole.front() == '#') continue;

    if (whole.front() == '[') {
      if (whole.back() != ']') return fail("section header must end with ']'");
      section = std::string(Trim(whole.substr(1, whole.size() - 2)));
      if (section == "unit") section.clear();
      if (!section.empty() && section != "values" && section != "wander" &&
          !IsListSection(section) && !IsCalSection(section))
        return fail("unknown section [" + section + "]");
      if (IsListSection(section)) next.lists[section];  // present, maybe empty
      continue;
    }

    if (IsListSection(section)) {
      // A record is the whole line as the unit sends it.
      if (!SafeForReply(whole, &why)) return fail(why);
      if (whole.find('!') != std::string_view::npos)
        return fail("a log record cannot hold '!', which ends records on the wire");
      next.lists[section].emplace_back(whole);
      continue;
    }

    std::string_view line = Trim(StripComment(raw));
    if (line.empty()) continue;
    size_t eq = line.find('=');
    if (eq == std::string_view::npos) return fail("expected 'key = value'");
    std::string_view key = Trim(line.substr(0, eq));
    std::string_view value = Trim(line.substr(eq + 1));
    if (key.empty()) return fail("empty key");
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
      value = value.substr(1, value.size() - 2);

    if (section == "values") {
      if (!SafeForReply(value, &why)) return fail(why);
      next.values[std::string(key)] = std::string(value);
    } else if (section == "wander") {
      double amount = 0;
      if (!ParseDouble(value, &amount) || amount < 0)
        return fail("wander of '" + std::string(key) + "' must be a number of 0 or more");
      next.wander[std::string(key)] = amount;
    } else if (IsCalSection(section)) {
      CalRange& range = cals[section.substr(4)];
      if (key == "first") {
        if (!ParseDouble(value, &range.first)) return fail("first must be a number");
      } else if (key == "last") {
        if (!ParseDouble(value, &range.last)) return fail("last must be a number");
      } else if (key == "counts") {
        size_t dots = value.find("..");
        if (dots == std::string_view::npos ||
            !ParseInt(Trim(value.substr(0, dots)), &range.countFirst) ||
            !ParseInt(Trim(value.substr(dots + 2)), &range.countLast) || range.countFirst < 0 ||
            range.countLast < 0 || range.countFirst > 4095 || range.countLast > 4095)
          return fail("counts must read 'A .. B' with A and B from 0 to 4095");
      } else {
        return fail("unknown key '" + std::string(key) + "' in [" + section + "]");
      }
    } else if (key == "name") {
      next.profileName = std::string(value);
    } else if (key == "description" || key == "based_on") {
      // For the reader of the file only; LoadProfile has read the base.
    } else if (key == "address") {
      if (value.size() != 1 || value[0] < 0x20 || value[0] > 0x7E || value[0] == '{' ||
          value[0] == '}')
        return fail("address must be one printable character");
      next.address = value[0];
    } else if (key == "unit_id") {
      if (!ParseUnitId(value, &next.unitId, &why)) return fail(why);
    } else if (key == "summary" || key == "fault" || key == "alarm" || key == "fault_hold") {
      StatusWords* words = key == "summary" ? &next.summary
                           : key == "fault" ? &next.fault
                           : key == "alarm" ? &next.alarm
                                            : &next.faultHold;
      if (!DecodeWords(value, words, &why)) return fail(why);
    } else if (key == "mode") {
      if (value == "remote") {
        next.remote = true;
      } else if (value == "local") {
        next.remote = false;
      } else {
        return fail("mode must be 'remote' or 'local'");
      }
    } else if (key == "lacks") {
      // May be given on several lines; each adds to the list.
      std::string_view rest = value;
      while (!rest.empty()) {
        size_t comma = rest.find(',');
        std::string_view name = Trim(rest.substr(0, comma));
        rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma + 1);
        if (name.empty()) continue;
        if (!IsCommandFamily(name))
          return fail("'" + std::string(name) + "' is not a command family");
        next.lacks.emplace(name);
      }
    } else if (key.starts_with("value.") && key.size() > 6) {
      if (!SafeForReply(value, &why)) return fail(why);
      next.values[std::string(key.substr(6))] = std::string(value);
    } else if (key.starts_with("wander.") && key.size() > 7) {
      double amount = 0;
      if (!ParseDouble(value, &amount) || amount < 0)
        return fail("wander must be a number of 0 or more");
      next.wander[std::string(key.substr(7))] = amount;
    } else {
      return fail("unknown key '" + std::string(key) + "'");
    }
  }

  lineNo = 0;  // the checks below concern the whole profile
  for (const auto& [key, amount] : next.wander) {
    auto it = next.values.find(key);
    double v = 0;
    if (it == next.values.end() || !ParseDouble(it->second, &v)) {
      if (error) *error = "wander." + key + ": the value it moves must be a number in [values]";
      return false;
    }
  }
  for (const auto& [name, range] : cals) {
    if (range.countFirst < 0 || range.last < range.first) {
      if (error) *error = "[cal." + name + "] needs first, last (not below first) and counts";
      return false;
    }
    CalTable table;
    int from = static_cast<int>(std::lround(range.first * 10));
    int to = static_cast<int>(std::lround(range.last * 10));
    for (int k = from; k <= to; ++k) {
      double t = to == from ? 0.0 : double(k - from) / (to - from);
      table.entries[k] = static_cast<int>(
          std::lround(range.countFirst + t * (range.countLast - range.countFirst)));
    }
    next.calTables[name] = std::move(table);
  }
  // The summary's remote bit follows the mode, stated or kept.
  next.SetRemote(next.remote);
  unit = std::move(next);
  return true;
}

namespace {

// "based_on = NAME" among the unit keys: a variant names the profile it
// changes, which is loaded first. Empty when there is none.
std::string BaseProfile(std::string_view text) {
  size_t pos = 0;
  while (pos < text.size()) {
    size_t eol = text.find('\n', pos);
    std::string_view line = Trim(StripComment(text.substr(pos, eol - pos)));
    pos = eol == std::string_view::npos ? text.size() : eol + 1;
    if (!line.empty() && line.front() == '[') break;
    const size_t eq = line.find('=');
    if (eq != std::string_view::npos && Trim(line.substr(0, eq)) == "based_on")
      return std::string(Trim(line.substr(eq + 1)));
  }
  return {};
}

bool LoadProfileAt(const std::string& path, UnitState& unit, std::string* error, int depth) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    if (error) *error = "cannot open profile '" + path + "'";
    return false;
  }
  std::ostringstream text;
  text << in.rdbuf();
  if (const std::string base = BaseProfile(text.str()); !base.empty()) {
    // A chain this long is a loop: profiles derive one step, two at most.
    const std::string basePath = ResolveProfile(base);
    if (depth >= 4 || basePath.empty()) {
      if (error) *error = path + ": cannot use base profile '" + base + "'";
      return false;
    }
    if (!LoadProfileAt(basePath, unit, error, depth + 1)) return false;
  }
  std::string why;
  if (!ApplyProfile(text.str(), unit, &why)) {
    if (error) *error = path + ": " + why;
    return false;
  }
  return true;
}

}  // namespace

bool LoadProfile(const std::string& path, UnitState& unit, std::string* error) {
  return LoadProfileAt(path, unit, error, 0);
}

std::string BuiltInProfileDir() { return AMPSIM_PROFILE_DIR; }

std::string ResolveProfile(const std::string& nameOrPath) {
  if (nameOrPath.empty()) return {};
  if (nameOrPath.find('/') != std::string::npos || FileExists(nameOrPath)) return nameOrPath;
  for (const auto& dir : SearchDirs()) {
    std::string candidate = dir;
    candidate.append("/").append(nameOrPath).append(".profile");
    if (FileExists(candidate)) return candidate;
  }
  return {};
}

std::vector<std::string> ProfileNames() {
  std::vector<std::string> names;
  for (const auto& dir : SearchDirs()) {
    DIR* d = ::opendir(dir.c_str());
    if (!d) continue;
    while (dirent* e = ::readdir(d)) {
      std::string file = e->d_name;
      constexpr std::string_view kExt = ".profile";
      if (file.size() > kExt.size() && file.ends_with(kExt)) {
        std::string name = file.substr(0, file.size() - kExt.size());
        if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
      }
    }
    ::closedir(d);
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace amp::sim
