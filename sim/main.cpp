// ampsim: a simulated amplifier unit for trying the host without hardware.
#include <pthread.h>
#include <csignal>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "sim/fleet.h"
#include "sim/profile.h"
#include "sim/simulator.h"
#include "sim/udp_responder.h"

namespace {

using amp::sim::Simulator;

constexpr const char* kUsage = R"(Usage: ampsim [OPTION]...
Simulated amplifier unit. Answers the framed protocol on TCP and/or a
pseudo-terminal until interrupted (SIGINT/SIGTERM); SIGUSR1 toggles silence,
as if the cable were pulled and put back.

Where it listens:
  --tcp HOST:PORT          listen for the host on TCP (default 127.0.0.1:2000;
                           port 0 picks a free one)
  --no-tcp                 no TCP listener
  --serial                 open a pseudo-terminal; its path is printed
  --udp [HOST:]PORT        answer the UDP unit search on HOST:PORT, loopback only
                           (off by default; HOST 127.0.0.1, or 127.255.255.255
                           to share the port with other units; 0 picks a port)
  --udp-from ADDR          answer from this loopback address (default 127.0.0.1)
  --udp-description TEXT   the description in the answer (default names the
                           simulated unit)
  --udp-short              send a 20-character datagram (one the host must
                           refuse) before each answer
  --udp-flood N            send the answer N times to each probe
Unit:
  --profile NAME|FILE      the unit to be: a profile name (twta127, sspa102,
                           ...; see --list-profiles) or a profile file path
                           (default sspa120, a typical SSPA); options given
                           on the command line win over the profile
  --list-profiles          print the profile names found and exit
  --local                  start in local (front-panel) mode: set commands
                           and actions are refused, queries still answered
  --address C              the unit's address character (default: the
                           profile's, A in most)
  --unit-id N              id word, decimal or 0x hex, both bytes below 64
                           (default: the profile's)
  --status S,F,A           summary, fault and alarm groups, four status
                           characters each, taken as given
  --printable              '{' ... '}' framing with the printable checksum
  --line SETTINGS          the unit's serial settings (default 9600,N,8,1);
                           bytes sent with other settings are not understood
  --baud N                 pace serial replies at N baud (default 0: no pacing)
  --tcp-byte-timing        pace TCP replies as well
  --cr-only                end TCP replies with CR instead of CR LF
  --frame-log FILE         append one line per received frame to FILE
Several units (a fleet):
  --units N                serve N units from this process, each on its own
                           TCP port (counting up from --tcp's port, or free
                           ports for 0), or with --serial all on the one
                           pseudo-terminal as an RS-485 bus (no TCP then),
                           each at its address; --profile may list several names,
                           comma-separated, taken in turn; addresses go A, B,
                           C, ... from --address. The faults below apply to
                           every unit; standard input then takes lines such as
                             2 --status P@@@,@A@@,@@@@   (unit 2's status)
                             3 --drop-every 1            (one unit's fault)
                             1 --silent / 1 --answer / 1 --stop
  --fleet-file PATH        write the fleet file naming the N units to PATH
Faults (N = every Nth frame, 0 = off):
  --drop-every N           do not answer every Nth frame (1 = never answer)
  --nak-every N            NAK every Nth frame instead of answering
  --bad-checksum-every N   corrupt the checksum of every Nth reply
  --close-every N          TCP: close the connection instead of answering
  --delay MS               wait MS milliseconds before each reply
  --prefix TEXT            send TEXT before each reply; \r \n \t \\ and \xHH
                           escapes are understood
  --babble                 send junk continuously (about 1 kB/s)
  --split MS               send each reply in two writes MS milliseconds apart
  --lf-separate            TCP: send the LF of CR LF 50 ms after the rest
  --silent-after N         stop answering after N replies
  --help                   show this help and exit

When ready, prints one line such as
  ampsim ready tcp=127.0.0.1:2000 serial=/dev/pts/3 udp=127.0.0.1:2000
)";

[[noreturn]] void BadUsage(const std::string& message) {
  std::fprintf(stderr,
               "ampsim: %s\nUsage: ampsim [OPTION]...\nTry 'ampsim --help' for the options.\n",
               message.c_str());
  std::exit(2);
}

int ParseCount(std::string_view option, std::string_view value, int max = 1'000'000'000) {
  int n = 0;
  auto [ptr, ec] = std::from_chars(value.data(), value.data() + value.size(), n);
  if (value.empty() || ec != std::errc() || ptr != value.data() + value.size() || n < 0 || n > max)
    BadUsage(std::string(option) + ": '" + std::string(value) +
             "' is not a whole number from 0 to " + std::to_string(max));
  return n;
}

std::string Unescape(std::string_view option, std::string_view text) {
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      out += text[i];
      continue;
    }
    if (++i >= text.size()) BadUsage(std::string(option) + ": trailing backslash");
    switch (text[i]) {
      case 'r':
        out += '\r';
        break;
      case 'n':
        out += '\n';
        break;
      case 't':
        out += '\t';
        break;
      case '\\':
        out += '\\';
        break;
      case 'x': {
        unsigned v = 0;
        auto [ptr, ec] =
            std::from_chars(text.data() + i + 1, text.data() + std::min(text.size(), i + 3), v, 16);
        if (ec != std::errc() || ptr != text.data() + i + 3)
          BadUsage(std::string(option) + ": \\x needs two hex digits");
        out += static_cast<char>(v);
        i += 2;
        break;
      }
      default:
        BadUsage(std::string(option) + ": unknown escape '\\" + text[i] + "'");
    }
  }
  return out;
}

struct Cli {
  Simulator::Options opts;
  bool udp = false;
  amp::sim::UdpResponder::Options udpOpts;
  std::string profile;
  int units = 0;  // 0: the one unit of a plain run
  std::string fleetFile;
  bool local = false;
  bool addressGiven = false, idGiven = false, statusGiven = false;
};

// The options on CLI11, as the other programs take theirs. Each value goes
// through the same checks as before; a bad one ends the program with the
// usage (exit 2).
Cli ParseArgs(int argc, char** argv) {
  Cli cli;
  auto& o = cli.opts;
  CLI::App app("ampsim");
  app.set_help_flag();
  app.add_flag_callback("-h,--help",
                        [] {
                          std::fputs(kUsage, stdout);
                          std::exit(0);
                        })
      ->disable_flag_override()
      ->trigger_on_parse();
  // A value of the named option through `take`, which checks it.
  auto value = [&app](const char* name, const std::function<void(const std::string&)>& take) {
    app.add_option_function<std::string>(name, take)->trigger_on_parse();
  };
  auto flag = [&app](const char* name, std::function<void()> set) {
    app.add_flag_callback(name, std::move(set))->disable_flag_override()->trigger_on_parse();
  };
  value("--tcp", [&o](const std::string& v) {
    size_t colon = v.rfind(':');
    if (colon == std::string::npos || colon == 0)
      BadUsage("--tcp: expected HOST:PORT, got '" + v + "'");
    std::string host = v.substr(0, colon);
    if (host.size() > 2 && host.front() == '[' && host.back() == ']')
      host = host.substr(1, host.size() - 2);
    o.tcpHost = host;
    o.tcpPort = ParseCount("--tcp port", std::string_view(v).substr(colon + 1), 65535);
    o.tcp = true;
  });
  flag("--no-tcp", [&o] { o.tcp = false; });
  flag("--serial", [&o] { o.serial = true; });
  value("--address", [&](const std::string& v) {
    if (v.size() != 1 || v[0] < 0x20 || v[0] > 0x7E || v[0] == '{' || v[0] == '}')
      BadUsage("--address: expected one printable character, got '" + v + "'");
    o.unit.address = v[0];
    cli.addressGiven = true;
  });
  value("--unit-id", [&](const std::string& v) {
    std::string why;
    if (!amp::sim::ParseUnitId(v, &o.unit.unitId, &why)) BadUsage("--unit-id: " + why);
    cli.idGiven = true;
  });
  value("--status", [&](const std::string& v) {
    size_t c1 = v.find(','), c2 = c1 == std::string::npos ? c1 : v.find(',', c1 + 1);
    if (c2 == std::string::npos || v.find(',', c2 + 1) != std::string::npos)
      BadUsage("--status: expected SUMMARY,FAULT,ALARM such as P@@@,@@@@,@@@@");
    std::string why;
    if (!amp::sim::DecodeWords(v.substr(0, c1), &o.unit.summary, &why) ||
        !amp::sim::DecodeWords(v.substr(c1 + 1, c2 - c1 - 1), &o.unit.fault, &why) ||
        !amp::sim::DecodeWords(v.substr(c2 + 1), &o.unit.alarm, &why))
      BadUsage("--status: " + why);
    cli.statusGiven = true;
  });
  value("--profile", [&cli](const std::string& v) {
    if (v.empty()) BadUsage("--profile: expected a profile name or file");
    cli.profile = v;
  });
  flag("--list-profiles", [] {
    for (const auto& name : amp::sim::ProfileNames()) std::printf("%s\n", name.c_str());
    std::exit(0);
  });
  flag("--local", [&cli] { cli.local = true; });
  flag("--printable", [&o] { o.printable = true; });
  value("--line", [&o](const std::string& v) {
    o.line = v;
    amp::sim::LineSettings ls;
    std::string why;
    if (!amp::sim::ParseLineSettings(o.line, &ls, &why)) BadUsage("--line: " + why);
  });
  value("--baud", [&o](const std::string& v) { o.baud = ParseCount("--baud", v, 4'000'000); });
  value("--udp", [&cli](const std::string& v) {
    cli.udp = true;
    const auto colon = v.rfind(':');
    if (colon != std::string::npos) cli.udpOpts.host = v.substr(0, colon);
    cli.udpOpts.port = ParseCount(
        "--udp", std::string_view(v).substr(colon == std::string::npos ? 0 : colon + 1), 65535);
    if (!amp::sim::UdpResponder::IsLoopback(cli.udpOpts.host))
      BadUsage("--udp: " + cli.udpOpts.host + " is not a loopback address");
  });
  value("--udp-from", [&cli](const std::string& v) {
    if (!amp::sim::UdpResponder::IsLoopback(v)) BadUsage("--udp-from: " + v + " is not loopback");
    cli.udpOpts.from = v;
  });
  value("--udp-description", [&cli](const std::string& v) {
    cli.udpOpts.description = Unescape("--udp-description", v);
  });
  flag("--udp-short", [&cli] { cli.udpOpts.shortFirst = true; });
  value("--udp-flood", [&cli](const std::string& v) {
    cli.udpOpts.flood = ParseCount("--udp-flood", v, 1'000'000);
  });
  flag("--tcp-byte-timing", [&o] { o.byteTimingOnTcp = true; });
  flag("--cr-only", [&o] { o.tcpCrOnly = true; });
  value("--frame-log", [&o](const std::string& v) { o.frameLog = v; });
  auto count = [&value](const char* name, int* out, int max = 1'000'000'000) {
    value(name, [name, out, max](const std::string& v) { *out = ParseCount(name, v, max); });
  };
  count("--drop-every", &o.faults.dropEvery);
  count("--nak-every", &o.faults.nakEvery);
  count("--bad-checksum-every", &o.faults.badChecksumEvery);
  count("--close-every", &o.faults.closeEvery);
  count("--delay", &o.faults.delayMs, 600'000);
  value("--prefix", [&o](const std::string& v) { o.faults.prefix = Unescape("--prefix", v); });
  flag("--babble", [&o] { o.faults.babble = true; });
  count("--split", &o.faults.splitMs, 600'000);
  flag("--lf-separate", [&o] { o.faults.lfSeparate = true; });
  count("--silent-after", &o.faults.silentAfter);
  value("--units", [&cli](const std::string& v) {
    cli.units = ParseCount("--units", v, 5000);
    if (cli.units == 0) BadUsage("--units: expected at least 1");
  });
  value("--fleet-file", [&cli](const std::string& v) { cli.fleetFile = v; });

  // Each option acts where it stands on the line (trigger_on_parse), so
  // --help and --list-profiles end the program there, as a bad value does.
  app.allow_extras();
  try {
    app.parse(argc, argv);
  } catch (const CLI::ArgumentMismatch& e) {
    // CLI11 names the option first, with or without its dashes.
    std::string name = e.what();
    name.resize(name.find_first_of(": "));
    if (!name.starts_with("-")) name = "--" + name;
    const bool flag = std::string(e.what()).find("flag override") != std::string::npos;
    BadUsage("option " + name + (flag ? " takes no value" : " needs a value"));
  } catch (const CLI::ParseError& e) {
    BadUsage(e.what());
  }
  for (const std::string& arg : app.remaining())
    BadUsage(arg.starts_with("-") ? "unknown option '" + arg + "'"
                                  : "unexpected argument '" + arg + "'");
  if (!o.tcp && !o.serial) BadUsage("nothing to listen on: --no-tcp needs --serial");
  if (cli.units > 0 && !o.serial && !o.tcp) BadUsage("--units needs TCP or --serial");
  if (!cli.fleetFile.empty() && cli.units == 0) BadUsage("--fleet-file needs --units");
  return cli;
}

// The unit a profile describes, with the options given on the command line
// laid over it. Ends the program (exit 2) when the profile cannot be had.
amp::sim::UnitState UnitFromProfile(const Cli& cli, const std::string& profile) {
  const bool named = !profile.empty();
  const std::string wanted = named ? profile : std::string(amp::sim::kDefaultProfile);
  const std::string path = amp::sim::ResolveProfile(wanted);
  amp::sim::UnitState unit;
  std::string why;
  if (path.empty()) {
    if (named) {
      std::string known;
      for (const auto& name : amp::sim::ProfileNames()) known += (known.empty() ? "" : ", ") + name;
      std::fprintf(stderr, "ampsim: no profile named '%s' (known: %s)\n", wanted.c_str(),
                   known.empty() ? "none found" : known.c_str());
      std::exit(2);
    }
    std::fprintf(stderr, "ampsim: default profile '%s' not found; the unit answers little\n",
                 wanted.c_str());
  } else if (!amp::sim::LoadProfile(path, unit, &why)) {
    std::fprintf(stderr, "ampsim: %s\n", why.c_str());
    std::exit(2);
  }
  const auto& given = cli.opts.unit;
  if (cli.addressGiven) unit.address = given.address;
  if (cli.idGiven) unit.unitId = given.unitId;
  if (cli.statusGiven) {
    unit.summary = given.summary;
    unit.fault = given.fault;
    unit.alarm = given.alarm;
  }
  if (cli.local) unit.SetRemote(false);
  return unit;
}

// "--profile a,b" names the profiles a fleet's units take in turn.
std::vector<std::string> SplitProfiles(const std::string& list) {
  std::vector<std::string> out;
  size_t b = 0;
  for (size_t e; (e = list.find(',', b)) != std::string::npos; b = e + 1)
    out.push_back(list.substr(b, e - b));
  if (!list.empty()) out.push_back(list.substr(b));
  return out;
}

// Waits for SIGINT, SIGTERM or SIGHUP; SIGUSR1 toggles every unit's silence.
void WaitForEnd(sigset_t& set, const std::vector<Simulator*>& sims) {
  while (true) {
    int sig = 0;
    if (sigwait(&set, &sig) != 0) continue;
    if (sig == SIGUSR1) {
      bool silent = !sims.front()->Silent();
      for (Simulator* s : sims) s->SetSilent(silent);
      std::fprintf(stderr, "ampsim: %s\n", silent ? "silent" : "answering again");
      std::fflush(stderr);
      continue;
    }
    break;
  }
}

}  // namespace

int main(int argc, char** argv) {
  Cli cli = ParseArgs(argc, argv);

  // Signals are taken synchronously by this thread; block them before the
  // units' threads start so they inherit the mask and never see them.
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGINT);
  sigaddset(&set, SIGTERM);
  sigaddset(&set, SIGHUP);
  sigaddset(&set, SIGUSR1);
  pthread_sigmask(SIG_BLOCK, &set, nullptr);
  signal(SIGPIPE, SIG_IGN);

  if (cli.units > 0) {
    // With no profile named, the units take every known profile in turn.
    std::vector<std::string> profiles = SplitProfiles(cli.profile);
    if (profiles.empty()) profiles = amp::sim::ProfileNames();
    return amp::sim::RunFleet(
        cli.opts, cli.units, profiles,
        [&cli](const std::string& profile) { return UnitFromProfile(cli, profile); }, cli.fleetFile,
        [&set](const auto& sims) { WaitForEnd(set, sims); });
  }

  // The profile gives the whole unit; the options given override parts of it.
  cli.opts.unit = UnitFromProfile(cli, cli.profile);

  Simulator sim(cli.opts);
  std::string error;
  if (!sim.Start(&error)) {
    std::fprintf(stderr, "ampsim: %s\n", error.c_str());
    return 1;
  }
  std::string ready = "ampsim ready";
  if (cli.opts.tcp) {
    bool v6 = cli.opts.tcpHost.find(':') != std::string::npos;
    ready += " tcp=" + (v6 ? "[" + cli.opts.tcpHost + "]" : cli.opts.tcpHost) + ":" +
             std::to_string(sim.TcpPort());
  }
  if (cli.opts.serial) ready += " serial=" + sim.SerialPath();
  amp::sim::UdpResponder udp(cli.udpOpts);
  if (cli.udp) {
    if (!udp.Start(&error)) {
      std::fprintf(stderr, "ampsim: %s\n", error.c_str());
      sim.Stop();
      return 1;
    }
    ready += " udp=" + cli.udpOpts.host + ":" + std::to_string(udp.Port());
  }
  std::printf("%s\n", ready.c_str());
  std::fflush(stdout);

  WaitForEnd(set, {&sim});
  udp.Stop();
  sim.Stop();
  return 0;
}
