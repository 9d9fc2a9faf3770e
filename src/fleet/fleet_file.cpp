#include "fleet/fleet_file.h"

#include <array>
#include <charconv>
#include <fstream>
#include <map>
#include <sstream>
#include <utility>

#define TOML_HEADER_ONLY 1
#define TOML_ENABLE_FORMATTERS 0
#include <toml++/toml.h>

namespace amp::fleet {

namespace {

// Thrown inside the loader only, carrying the line it is about.
struct FileError {
  int line;
  std::string text;
};

[[noreturn]] void Fail(const toml::source_region& where, std::string text) {
  throw FileError{static_cast<int>(where.begin.line), std::move(text)};
}

constexpr std::array<std::string_view, 3> kLabelKeys = {"site", "rack", "chain"};
constexpr std::array<std::string_view, 5> kUnitKeys = {"name", "tcp", "serial", "settings",
                                                       "address"};

bool Known(std::string_view key) {
  for (auto k : kUnitKeys)
    if (k == key) return true;
  for (auto k : kLabelKeys)
    if (k == key) return true;
  return false;
}

std::string Text(const toml::table& unit, std::string_view key) {
  const toml::node* node = unit.get(key);
  if (!node) return {};
  const auto* s = node->as_string();
  if (!s) Fail(node->source(), "'" + std::string(key) + "' must be a text in quotes");
  if (s->get().empty()) Fail(node->source(), "'" + std::string(key) + "' is empty");
  return s->get();
}

bool ValidName(std::string_view name) {
  for (char c : name) {
    const bool ok = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                    c == '-' || c == '_' || c == '.';
    if (!ok) return false;
  }
  return !name.empty() && name.size() <= 64;
}

// "host:port", "[v6]:port"; the port 1..65535.
bool SplitHostPort(std::string_view text, std::string* host, int* port) {
  const auto colon = text.rfind(':');
  if (colon == std::string_view::npos || colon == 0) return false;
  std::string_view h = text.substr(0, colon), p = text.substr(colon + 1);
  if (h.size() > 2 && h.front() == '[' && h.back() == ']') h = h.substr(1, h.size() - 2);
  if (h.empty() || h.find_first_of(" \t[]") != std::string_view::npos) return false;
  int n = 0;
  auto [end, ec] = std::from_chars(p.data(), p.data() + p.size(), n);
  if (p.empty() || ec != std::errc() || end != p.data() + p.size() || n < 1 || n > 65535)
    return false;
  *host = std::string(h);
  *port = n;
  return true;
}

// "BAUD,P,D,S" as a serial line takes it: parity N, E, O, M or S, data bits
// 5 to 8, stop bits 1, 1.5 or 2.
bool ValidSettings(std::string_view s) {
  std::array<std::string_view, 4> part;
  for (size_t i = 0; i < 4; ++i) {
    const auto comma = s.find(',');
    if ((i < 3) == (comma == std::string_view::npos)) return false;
    part[i] = s.substr(0, comma);
    s = comma == std::string_view::npos ? std::string_view() : s.substr(comma + 1);
  }
  int baud = 0;
  auto [end, ec] = std::from_chars(part[0].data(), part[0].data() + part[0].size(), baud);
  if (ec != std::errc() || end != part[0].data() + part[0].size() || baud < 50 || baud > 4000000)
    return false;
  const bool parity = part[1].size() == 1 &&
                      std::string_view("NEOMSneoms").find(part[1][0]) != std::string_view::npos;
  const bool data = part[2].size() == 1 && part[2][0] >= '5' && part[2][0] <= '8';
  const bool stop = part[3] == "1" || part[3] == "1.5" || part[3] == "2";
  return parity && data && stop;
}

UnitEntry ReadUnit(const toml::table& t) {
  UnitEntry u;
  u.line = static_cast<int>(t.source().begin.line);
  for (const auto& [key, node] : t) {
    if (!Known(key.str()))
      Fail(key.source(), "unknown key '" + std::string(key.str()) +
                             "' (a unit takes name, tcp, serial, settings, address, site, rack, "
                             "chain)");
  }
  u.name = Text(t, "name");
  if (u.name.empty()) Fail(t.source(), "the unit has no name");
  if (!ValidName(u.name))
    Fail(t.get("name")->source(),
         "name '" + u.name + "' may hold only letters, digits, '-', '_' and '.' (64 at most)");

  const std::string tcp = Text(t, "tcp");
  u.serialDevice = Text(t, "serial");
  if (tcp.empty() == u.serialDevice.empty())
    Fail(t.source(),
         "unit '" + u.name + "' needs either tcp = \"host:port\" or serial = \"/dev/...\"");
  if (!tcp.empty() && !SplitHostPort(tcp, &u.tcpHost, &u.tcpPort))
    Fail(t.get("tcp")->source(), "tcp = \"" + tcp + "\" is not host:port with a port 1 to 65535");

  u.settings = Text(t, "settings");
  const std::string address = Text(t, "address");
  if (u.Tcp() && !u.settings.empty())
    Fail(t.get("settings")->source(), "settings apply to serial units only");
  if (!u.Tcp()) {
    if (u.settings.empty())
      Fail(t.source(), "serial unit '" + u.name + "' needs settings = \"9600,N,8,1\" or the like");
    if (address.empty()) Fail(t.source(), "serial unit '" + u.name + "' needs its address");
  }
  if (!u.settings.empty() && !ValidSettings(u.settings))
    Fail(t.get("settings")->source(),
         "settings = \"" + u.settings + "\" is not BAUD,PARITY,DATA,STOP such as 9600,N,8,1");
  if (!address.empty()) {
    const char a = address[0];
    if (address.size() != 1 || a < 0x20 || a > 0x7E || a == '{' || a == '}')
      Fail(t.get("address")->source(),
           "address = \"" + address + "\" must be one printable character");
    u.address = a;
  }
  for (auto key : kLabelKeys) {
    const std::string value = Text(t, key);
    if (!value.empty()) u.labels.push_back({std::string(key), value});
  }
  return u;
}

// What two entries may not share: a name, or an address on one bus (and a
// bus runs at one speed).
void CheckAcrossUnits(const std::vector<UnitEntry>& units, const toml::array& tables) {
  std::map<std::string, size_t> names;
  std::map<std::pair<std::string, char>, size_t> busAddresses;
  std::map<std::string, size_t> busSettings;
  for (size_t i = 0; i < units.size(); ++i) {
    const UnitEntry& u = units[i];
    const auto& t = *tables[i].as_table();
    if (auto [it, fresh] = names.emplace(u.name, i); !fresh)
      Fail(t.get("name")->source(), "name '" + u.name + "' is taken by the unit on line " +
                                        std::to_string(units[it->second].line));
    if (u.Tcp()) continue;
    if (auto [it, fresh] = busAddresses.emplace(std::pair(u.serialDevice, u.address), i); !fresh)
      Fail(t.get("address")->source(), "address '" + std::string(1, u.address) + "' on " +
                                           u.serialDevice + " is taken by unit '" +
                                           units[it->second].name + "' (line " +
                                           std::to_string(units[it->second].line) + ")");
    if (auto [it, fresh] = busSettings.emplace(u.serialDevice, i);
        !fresh && units[it->second].settings != u.settings)
      Fail(t.get("settings")->source(),
           "settings \"" + u.settings + "\" differ from \"" + units[it->second].settings +
               "\" of unit '" + units[it->second].name + "' on the same line " + u.serialDevice);
  }
}

Fleet Read(const toml::table& root) {
  Fleet fleet;
  for (const auto& [key, node] : root) {
    if (key.str() != "unit")
      Fail(key.source(),
           "unknown key '" + std::string(key.str()) + "' (units go in [[unit]] tables)");
  }
  const toml::node* units = root.get("unit");
  if (!units) throw FileError{1, "no units: add one [[unit]] table per unit"};
  const toml::array* tables = units->as_array();
  if (!tables || !tables->is_array_of_tables())
    Fail(units->source(), "'unit' must be written as [[unit]] tables");
  for (const auto& node : *tables) fleet.units.push_back(ReadUnit(*node.as_table()));
  CheckAcrossUnits(fleet.units, *tables);
  return fleet;
}

// Outside quotes and comments TOML is ASCII. The parser's test for exotic
// blanks in that place has no answer for some characters and runs into
// undefined behaviour, so such a byte is refused here, before it sees it.
void CheckAsciiOutsideText(std::string_view text) {
  enum { Plain, Comment, Basic, Literal, MultiBasic, MultiLiteral } state = Plain;
  int line = 1;
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\n') ++line;
    const auto opens = [&](std::string_view q) { return text.substr(i, q.size()) == q; };
    switch (state) {
      case Plain:
        if (static_cast<unsigned char>(c) >= 0x80)
          throw FileError{line, "a character other than ASCII outside quotes and comments"};
        if (c == '#') {
          state = Comment;
        } else if (opens("\"\"\"")) {
          state = MultiBasic;
          i += 2;
        } else if (opens("'''")) {
          state = MultiLiteral;
          i += 2;
        } else if (c == '"') {
          state = Basic;
        } else if (c == '\'') {
          state = Literal;
        }
        break;
      case Comment:
        if (c == '\n') state = Plain;
        break;
      case Basic:
      case MultiBasic:
        if (c == '\\') {
          if (i + 1 < text.size() && text[i + 1] == '\n') ++line;
          ++i;
        } else if (state == Basic && (c == '"' || c == '\n')) {
          state = Plain;
        } else if (state == MultiBasic && opens("\"\"\"")) {
          state = Plain;
          i += 2;
        }
        break;
      case Literal:
        if (c == '\'' || c == '\n') state = Plain;
        break;
      case MultiLiteral:
        if (opens("'''")) {
          state = Plain;
          i += 2;
        }
        break;
    }
  }
}

}  // namespace

bool ParseFleet(std::string_view text, const std::string& source, Fleet* out, std::string* error) {
  try {
    CheckAsciiOutsideText(text);
    const toml::table root = toml::parse(text, source);
    *out = Read(root);
    return true;
  } catch (const toml::parse_error& e) {
    *error =
        source + ":" + std::to_string(e.source().begin.line) + ": " + std::string(e.description());
  } catch (const FileError& e) {
    *error = source + ":" + std::to_string(e.line) + ": " + e.text;
  }
  return false;
}

bool LoadFleetFile(const std::string& path, Fleet* out, std::string* error) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    *error = path + ": cannot be read";
    return false;
  }
  std::ostringstream all;
  all << in.rdbuf();
  return ParseFleet(all.str(), path, out, error);
}

}  // namespace amp::fleet
