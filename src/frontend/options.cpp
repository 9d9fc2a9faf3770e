#include "frontend/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <utility>

#include "basic/numbers.h"

namespace amp::frontend {

namespace {

// A check in CLI11's form: "" when the value is good, else why not.
using Check = std::function<std::string(const std::string&)>;

// The argument's name is the option's own (type_name), so the rule adds
// nothing to the help.
CLI::Validator Rule(Check check) { return CLI::Validator(std::move(check), ""); }

Check NotEmpty(const char* what) {
  return [what](const std::string& v) { return v.empty() ? std::string("needs ") + what : ""; };
}

std::string CheckTcp(const std::string& v) {
  const auto colon = v.rfind(':');
  if (colon != std::string::npos) {
    const auto port = CLngText(v.substr(colon + 1));
    if (!port || *port < 1 || *port > 65535) return "bad TCP port in '" + v + "' (1..65535)";
  }
  if (v.substr(0, colon).empty()) return "needs a host, such as 192.0.2.10 or 127.0.0.1:2000";
  return {};
}

std::string CheckAddress(const std::string& v) {
  if (v.size() != 1 || v[0] < 'A' || v[0] > 'Z') return "bad address '" + v + "' (one letter A-Z)";
  return {};
}

// One of `words`; else "bad WHAT 'value' (the words)".
Check OneOf(std::vector<std::string> words, const char* what) {
  return [words = std::move(words), what](const std::string& v) {
    if (std::find(words.begin(), words.end(), v) != words.end()) return std::string();
    std::string list;
    for (const auto& w : words) list += (list.empty() ? "" : ", ") + w;
    return "bad " + std::string(what) + " '" + v + "' (" + list + ")";
  };
}

// The first word of a CLI11 message names the option it is about.
std::string OptionNamed(const std::string& message) {
  const std::string name = message.substr(0, message.find_first_of(": "));
  return name.rfind('-', 0) == 0 ? name : "--" + name;
}

}  // namespace

int Options::Sources() const {
  return int(demo) + int(!tcpHost.empty()) + int(!serialDevice.empty());
}

RunTarget Options::Target(int serialSlot) const {
  RunTarget t;
  t.tcpHost = tcpHost;
  t.tcpPort = tcpPort;
  if (tcpHost.empty() && !serialDevice.empty()) {
    t.serialSlot = serialSlot;
    t.lineSettings = lineSettings;
    t.address = address.empty() ? 0 : address[0];
  }
  return t;
}

DataPlaces ChooseDataPlaces(const Options& o, const std::string& storedDataDir,
                            const std::string& storedCalRoot, const std::string& defaultDataDir) {
  DataPlaces p;
  p.dataDir = !o.dataDir.empty()       ? o.dataDir
              : !storedDataDir.empty() ? storedDataDir
                                       : defaultDataDir;
  p.calRoot = !o.calDir.empty()        ? o.calDir
              : !storedCalRoot.empty() ? storedCalRoot
              : p.dataDir.empty()      ? ""
                                       : p.dataDir + "/Amplifier Calibration Files";
  return p;
}

std::string CheckLineSettings(const std::string& v) {
  std::string why = "bad line settings '" + v + "' (baud,parity,data,stop such as 9600,N,8,1)";
  std::vector<std::string> parts;
  std::stringstream in(v);
  for (std::string p; std::getline(in, p, ',');) parts.push_back(p);
  if (parts.size() != 4 || std::count(v.begin(), v.end(), ',') != 3) return why;
  const auto baud = CLngText(parts[0]);
  if (!baud || *baud <= 0) return why;
  if (parts[1].size() != 1 || std::string("NEOMSneoms").find(parts[1][0]) == std::string::npos)
    return why;
  if (parts[2].size() != 1 || parts[2][0] < '5' || parts[2][0] > '8') return why;
  if (parts[3] != "1" && parts[3] != "1.5" && parts[3] != "2") return why;
  return {};
}

void AddUnitOptions(CLI::App& app, Options& o) {
  const char* unit = "The unit (one of --demo, --tcp, --serial)";
  app.set_help_flag();  // --help is ours, with the text each program writes
  app.add_flag("-h,--help", o.help, "show this text")->disable_flag_override()->group("");
  CLI::Option* demo =
      app.add_option("--demo", o.demoProfile,
                     "start the simulated amplifier on 127.0.0.1 (a free port) and connect to it; "
                     "PROFILE names the unit (twta127, sspa120, ...; ampsim --list-profiles)")
          ->expected(0, 1)
          ->type_name("[PROFILE]")
          ->check(Rule(NotEmpty("a profile name")))
          ->group(unit);
  app.parse_complete_callback([&o, demo] { o.demo = demo->count() > 0; });
  app.add_option_function<std::string>(
         "--tcp",
         [&o](const std::string& v) {
           const auto colon = v.rfind(':');
           o.tcpHost = v.substr(0, colon);
           if (colon != std::string::npos) o.tcpPort = *CLngText(v.substr(colon + 1));
         },
         "connect over TCP (port 2000 when omitted)")
      ->type_name("HOST[:PORT]")
      ->check(Rule(CheckTcp))
      ->group(unit);
  app.add_option("--serial", o.serialDevice, "connect on a serial device path or COM1..COM10")
      ->type_name("DEVICE")
      ->check(Rule(NotEmpty("a device path or COM1..COM10")))
      ->group(unit);
  const char* serial = "With --serial";
  app.add_option("--settings", o.lineSettings,
                 "the serial line's settings, such as 19200,N,8,1; without it the connect "
                 "finds them as the panel does")
      ->type_name("TEXT")
      ->check(Rule(CheckLineSettings))
      ->group(serial);
  app.add_option("--address", o.address,
                 "poll the unit at this single address (A-Z) instead of searching A-C")
      ->type_name("C")
      ->check(Rule(CheckAddress))
      ->group(serial);
  const char* extras = "Extras";
  app.add_option("--sim-arg", o.simArgs,
                 "pass ARG to the simulated amplifier of --demo (repeatable), e.g. "
                 "--sim-arg=--local or --sim-arg=--status=T@E@,H@@@,@@@@ for a fault")
      ->type_name("ARG")
      ->allow_extra_args(false)
      ->group(extras);
  app.add_option("--udp-target", o.udpTarget,
                 "where Locate IP sends its probe (default 255.255.255.255, or "
                 "$AMPDESK_UDP_TARGET)")
      ->type_name("ADDR")
      ->check(Rule(NotEmpty("an address")))
      ->group(extras);
  app.add_option("--udp-ports", o.udpPorts,
                 "Locate IP's own port and the units' port (default 2001:2000, or "
                 "$AMPDESK_UDP_PORTS)")
      ->type_name("LOCAL:REMOTE")
      ->check(Rule(CheckUdpPorts))
      ->group(extras);
  app.add_option("--trace", o.trace,
                 "log every frame both ways (time, hex, text) to FILE, - for stderr")
      ->type_name("FILE")
      ->check(Rule(NotEmpty("a file")))
      ->group(extras);
}

void AddDesktopOptions(CLI::App& app, Options& o) {
  const char* group = "The panel";
  app.add_option("--settings-file", o.settingsFile,
                 "read and write the settings in this ini file instead of the user's; --demo "
                 "without it uses a throw-away file")
      ->type_name("PATH")
      ->check(Rule(NotEmpty("a file")))
      ->group(group);
  app.add_option("--script", o.script,
                 "once connected, run the panel actions of FILE (- for standard input) as the "
                 "operator would")
      ->type_name("FILE")
      ->check(Rule(NotEmpty("a value")))
      ->group(group);
  app.add_option("--screenshot", o.screenshot, "save a PNG picture of the window, then exit")
      ->type_name("FILE")
      ->check(Rule(NotEmpty("a value")))
      ->group(group);
  app.add_option_function<std::string>(
         "--after",
         [&o](const std::string& v) {
           o.screenshotAfterMs = *CLngText(v);
           o.afterGiven = true;
         },
         "take the screenshot MS milliseconds after start, or with --script after the script "
         "ends (default 0)")
      ->type_name("MS")
      ->check(Rule([](const std::string& v) {
        const auto ms = CLngText(v);
        return !ms || *ms < 0 ? "needs a number of milliseconds, not '" + v + "'" : std::string();
      }))
      ->group(group);
}

void AddConsoleOptions(CLI::App& app, Options& o) {
  app.add_option("--search", o.search, "with --serial: widen the address search to A-F or A-Z")
      ->type_name("extended|advanced")
      ->check(Rule(OneOf({"extended", "advanced"}, "search")))
      ->group("With --serial");
  const char* group = "Options";
  app.add_flag("--watts", o.watts, "power fields in Watts (as the Watts menu entry)")->group(group);
  app.add_option("--answer", o.answer,
                 "the answer to every question box. Without it every box takes ok, its first "
                 "button (OK, Yes or Retry), also a box that resets the unit or switches it off, "
                 "whose Enter on the desktop is Cancel: give cancel to refuse those. An answer a "
                 "box does not offer takes its first button")
      ->type_name("ok|cancel|yes|no")
      ->check(Rule(OneOf({"ok", "cancel", "yes", "no"}, "answer")))
      ->group(group);
  app.add_option("--input", o.inputs,
                 "an answer for the next input box (repeatable, used in order; none left = "
                 "cancel)")
      ->type_name("TEXT")
      ->allow_extra_args(false)
      ->group(group);
  app.add_option("--file", o.files,
                 "the path chosen in the next open or save file dialog (repeatable, used in "
                 "order; none left = cancel)")
      ->type_name("PATH")
      ->allow_extra_args(false)
      ->check(Rule(NotEmpty("a path")))
      ->group(group);
  app.add_flag("--json", o.json, "machine-readable output")->group(group);
}

void AddFileOptions(CLI::App& app, Options& o) {
  const char* group = "Files";
  app.add_option("--data-dir", o.dataDir,
                 "where data files and logs are written (default: the per-user data "
                 "directory, AmpDesk under $XDG_DATA_HOME)")
      ->type_name("DIR")
      ->check(Rule(NotEmpty("a directory")))
      ->group(group);
  app.add_option("--cal-dir", o.calDir,
                 "the root of the per-unit calibration folders (default: \"Amplifier "
                 "Calibration Files\" in the data directory)")
      ->type_name("DIR")
      ->check(Rule(NotEmpty("a directory")))
      ->group(group);
}

std::string ParseArgs(CLI::App& app, std::vector<std::string> args,
                      std::vector<std::string>* extras) {
  // The value of --sim-arg is an option of ampsim itself, so it is always
  // the next word, even when it starts with a dash.
  for (size_t i = 0; i + 1 < args.size(); ++i)
    if (args[i] == "--sim-arg") {
      args[i] += "=" + args[i + 1];
      args.erase(args.begin() + static_cast<std::ptrdiff_t>(i) + 1);
    }
  // An optional value given empty is a slip, not "no value".
  if (std::find(args.begin(), args.end(), "--demo=") != args.end())
    return "--demo= needs a profile name";
  app.allow_extras();
  std::reverse(args.begin(), args.end());  // CLI11 takes the words last first
  try {
    app.parse(args);
  } catch (const CLI::ArgumentMismatch& e) {
    const std::string what = e.what();
    const bool flag = what.find("flag override") != std::string::npos;
    return OptionNamed(what) + (flag ? " takes no value" : " needs a value");
  } catch (const CLI::ParseError& e) {
    return e.what();
  }
  const std::vector<std::string> rest = app.remaining(true);
  if (extras) {
    *extras = rest;
  } else if (!rest.empty()) {
    return "unknown argument '" + rest.front() + "'";
  }
  return {};
}

namespace {

// Two ports from "LOCAL:REMOTE"; nullopt when the text is not that.
std::optional<std::pair<int, int>> UdpPortsOf(const std::string& text) {
  const auto colon = text.find(':');
  if (colon == std::string::npos) return std::nullopt;
  const auto local = CLngText(text.substr(0, colon));
  const auto remote = CLngText(text.substr(colon + 1));
  if (!local || !remote || *local < 1 || *local > 65535 || *remote < 1 || *remote > 65535)
    return std::nullopt;
  return std::pair<int, int>{*local, *remote};
}

std::string Environment(const char* name) {
  const char* v = std::getenv(name);
  return v ? v : "";
}

}  // namespace

std::string CheckUdpPorts(const std::string& text) {
  return UdpPortsOf(text) ? ""
                          : "needs LOCAL:REMOTE, two ports from 1 to 65535, not '" + text + "'";
}

DiscoveryTarget DiscoveryTargetOf(const Options& o) {
  DiscoveryTarget t = DefaultDiscoveryTarget();
  const std::string address = o.udpTarget.empty() ? Environment("AMPDESK_UDP_TARGET") : o.udpTarget;
  if (!address.empty()) t.address = address;
  const std::string ports = o.udpPorts.empty() ? Environment("AMPDESK_UDP_PORTS") : o.udpPorts;
  if (const auto p = UdpPortsOf(ports)) {
    t.localPort = p->first;
    t.remotePort = p->second;
  }
  return t;
}

std::string CheckUnitOptions(const Options& o, bool unitRequired) {
  const int sources = o.Sources();
  if (sources > 1) return "give at most one of --demo, --tcp and --serial";
  if (sources == 0 && unitRequired)
    return "no unit named: give --tcp HOST, --serial DEVICE or --demo";
  if (o.serialDevice.empty() &&
      (!o.lineSettings.empty() || !o.address.empty() || !o.search.empty()))
    return "--settings, --address and --search go with --serial";
  if (!o.address.empty() && !o.search.empty())
    return "--search widens the address search; it does not go with --address";
  if (!o.simArgs.empty() && !o.demo) return "--sim-arg goes with --demo";
  if (o.afterGiven && o.screenshot.empty()) return "--after goes with --screenshot FILE";
  if (!o.script.empty() && sources == 0) return "--script needs a unit: --demo, --tcp or --serial";
  return {};
}

std::string OptionsHelp(const CLI::App& app) {
  std::vector<std::string> groups;
  for (const CLI::Option* opt : app.get_options())
    if (!opt->get_group().empty() &&
        std::find(groups.begin(), groups.end(), opt->get_group()) == groups.end())
      groups.push_back(opt->get_group());
  std::string out;
  for (const std::string& group : groups) {
    out += "\n" + group + ":\n";
    for (const CLI::Option* opt : app.get_options()) {
      if (opt->get_group() != group) continue;
      std::string left = "  " + opt->get_name();
      if (opt->get_type_name() != "" && opt->get_expected_max() > 0)
        left += " " + opt->get_type_name();
      std::string desc = opt->get_description();
      // Wrapped at about 80 columns, under the description's first column.
      constexpr size_t kLeft = 27, kWidth = 78;
      std::string line = left.size() < kLeft ? left + std::string(kLeft - left.size(), ' ')
                                             : left + "\n" + std::string(kLeft, ' ');
      size_t col = line.size() - line.rfind('\n') - 1;
      if (line.find('\n') == std::string::npos) col = line.size();
      std::istringstream words(desc);
      bool first = true;
      for (std::string w; words >> w;) {
        if (!first && col + 1 + w.size() > kWidth) {
          line += "\n" + std::string(kLeft, ' ');
          col = kLeft;
        } else if (!first) {
          line += ' ';
          ++col;
        }
        line += w;
        col += w.size();
        first = false;
      }
      out += line + "\n";
    }
  }
  return out;
}

}  // namespace amp::frontend
