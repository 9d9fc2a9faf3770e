// ampdesk-cli: the command-line twin of the desktop program. One table of
// options and one of commands drive parsing, --help and the errors.
#include <QCoreApplication>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "basic/numbers.h"
#include "basic/text.h"
#include "cli/cli_session.h"
#include "cli/console_dialogs.h"
#include "qt/sim_process.h"

namespace amp::cli {
namespace {

constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

struct Options {
  Target target;
  bool haveTcp = false, haveSerial = false, demo = false, json = false;
  std::string trace;
  std::string answer = "ok";
  std::vector<std::string> inputs;
  std::vector<std::string> simArgs;
  std::string command;
  std::vector<std::string> args;
};

struct OptionSpec {
  const char* name;
  const char* arg;  // nullptr: a switch
  const char* help;
  std::function<std::string(Options&, const std::string&)> apply;  // "" or the error
};

std::string ParseTcp(Options& o, const std::string& v) {
  o.haveTcp = true;
  const auto colon = v.rfind(':');
  o.target.tcpHost = v.substr(0, colon);
  if (colon != std::string::npos) {
    const auto port = CLngText(v.substr(colon + 1));
    if (!port || *port < 1 || *port > 65535) return "bad TCP port in '" + v + "' (1..65535)";
    o.target.tcpPort = *port;
  }
  if (o.target.tcpHost.empty()) return "--tcp needs a host, such as 127.0.0.1:2000";
  return {};
}

const std::vector<OptionSpec>& OptionTable() {
  static const std::vector<OptionSpec> table = {
      {"--tcp", "HOST[:PORT]", "session over TCP (port 2000 when omitted)", ParseTcp},
      {"--serial", "DEVICE", "session over a serial device path (or COM1..COM10)",
       [](Options& o, const std::string& v) {
         o.haveSerial = true;
         o.target.device = v;
         return std::string();
       }},
      {"--settings", "TEXT", "line settings such as 9600,N,8,1 (default 9600,N,8,1)",
       [](Options& o, const std::string& v) {
         if (std::count(v.begin(), v.end(), ',') != 3) return "bad line settings '" + v + "' (baud,parity,data,stop such as 9600,N,8,1)";
         o.target.settings = v;
         return std::string();
       }},
      {"--address", "C", "the unit's address character A-Z (default A)",
       [](Options& o, const std::string& v) {
         if (v.size() != 1 || v[0] < '@' || v[0] > 'Z') return "bad address '" + v + "' (one character A-Z)";
         o.target.address = v;
         return std::string();
       }},
      {"--demo", nullptr, "start the simulated amplifier on loopback and use it as the unit",
       [](Options& o, const std::string&) {
         o.demo = true;
         return std::string();
       }},
      {"--sim-arg", "ARG", "pass ARG to the simulated amplifier of --demo (repeatable)",
       [](Options& o, const std::string& v) {
         o.simArgs.push_back(v);
         return std::string();
       }},
      {"--answer", "ok|cancel|yes|no", "the answer to every question box (default ok)",
       [](Options& o, const std::string& v) {
         if (v != "ok" && v != "cancel" && v != "yes" && v != "no") return "bad answer '" + v + "' (ok, cancel, yes or no)";
         o.answer = v;
         return std::string();
       }},
      {"--input", "TEXT", "an answer for the next input box (repeatable, used in order)",
       [](Options& o, const std::string& v) {
         o.inputs.push_back(v);
         return std::string();
       }},
      {"--json", nullptr, "machine-readable output",
       [](Options& o, const std::string&) {
         o.json = true;
         return std::string();
       }},
      {"--trace", "FILE", "log every frame both ways (time, hex, text) to FILE, - for stderr",
       [](Options& o, const std::string& v) {
         o.trace = v;
         return std::string();
       }},
  };
  return table;
}

struct CommandSpec {
  const char* name;
  const char* args;
  const char* help;
  int (*run)(CliSession&, const Options&);
};

std::string JsonString(const std::string& s) {
  std::string out = "\"";
  for (unsigned char c : s) {
    if (c == '"' || c == '\\') {
      out += '\\';
      out += static_cast<char>(c);
    } else if (c < 0x20 || c >= 0x7F) {
      char buf[8];
      std::snprintf(buf, sizeof buf, "\\u%04x", c);
      out += buf;
    } else {
      out += static_cast<char>(c);
    }
  }
  return out + "\"";
}

// The status words of the last poll, with their bits in hex for reading.
std::string PollLine(CliSession& s, int poll, bool ok, bool json) {
  auto& p = s.panel();
  auto bits = [](const std::string& w) {
    std::string h;
    for (unsigned char c : w) {
      char b[4];
      std::snprintf(b, sizeof b, "%02X", c & 0x3F);
      h += (h.empty() ? "" : " ") + std::string(b);
    }
    return h;
  };
  const int missesLeft = s.comms().gMissedPolls;
  if (json) {
    return "{\"poll\": " + std::to_string(poll) + ", \"ok\": " + (ok ? "true" : "false") +
           ", \"connected\": " + (s.Connected() ? "true" : "false") +
           ", \"summary\": " + JsonString(p.summary) + ", \"fault\": " + JsonString(p.fault) +
           ", \"alarm\": " + JsonString(p.alarm) +
           ", \"missedPollsLeft\": " + std::to_string(missesLeft) + "}";
  }
  if (!ok) {
    return "poll " + std::to_string(poll) + ": no valid reply" +
           (s.Connected() ? " (" + std::to_string(missesLeft) + " more tolerated)" : "");
  }
  return "poll " + std::to_string(poll) + ": summary " + bits(p.summary) + "  fault " +
         bits(p.fault) + "  alarm " + bits(p.alarm);
}

int RunMonitor(CliSession& s, const Options& o) {
  int polls = 0;  // 0: until interrupted
  for (size_t i = 0; i < o.args.size(); ++i) {
    if (o.args[i] == "--polls" && i + 1 < o.args.size()) {
      const auto n = CLngText(o.args[++i]);
      if (!n || *n < 1) {
        std::fprintf(stderr, "ampdesk-cli: --polls needs a positive count\n");
        return kExitUsage;
      }
      polls = *n;
    } else {
      std::fprintf(stderr, "ampdesk-cli: monitor takes only --polls N, not '%s'\n", o.args[i].c_str());
      return kExitUsage;
    }
  }
  int done = 0;
  int result = kExitOk;
  s.timer().SetHandler([&] {
    const bool ok = s.comms().UpdateStatus();
    ++done;
    std::printf("%s\n", PollLine(s, done, ok, o.json).c_str());
    std::fflush(stdout);
    if (!s.Connected()) {
      std::fprintf(stderr, "ampdesk-cli: session ended: the unit did not answer three polls in a row\n");
      result = kExitFailed;
      QCoreApplication::exit(0);
    } else if (polls > 0 && done >= polls) {
      QCoreApplication::exit(0);
    }
  });
  QCoreApplication::exec();
  s.Disconnect();
  return result;
}

int RunStatus(CliSession& s, const Options& o) {
  const bool ok = s.comms().UpdateStatus();
  std::printf("%s\n", PollLine(s, 1, ok, o.json).c_str());
  s.Disconnect();
  return ok ? kExitOk : kExitFailed;
}

int RunSend(CliSession& s, const Options& o) {
  if (o.args.empty()) {
    std::fprintf(stderr, "ampdesk-cli: send needs at least one command text\n");
    return kExitUsage;
  }
  s.timer().SetEnabled(false);
  int result = kExitOk;
  for (const auto& text : o.args) {
    const bool ok = s.comms().ExchangeCommand(text);
    const std::string& rx = s.comms().Link.RxMessage;
    if (o.json) {
      std::printf("{\"command\": %s, \"ok\": %s, \"reply\": %s}\n", JsonString(text).c_str(),
                  ok ? "true" : "false", JsonString(rx).c_str());
    } else {
      std::printf("%s -> %s%s\n", text.c_str(), ok ? "" : "FAILED ",
                  rx.empty() ? "(no reply)" : Readable(rx).c_str());
    }
    if (!ok) result = kExitFailed;
  }
  s.Disconnect();
  return result;
}

const std::vector<CommandSpec>& CommandTable() {
  static const std::vector<CommandSpec> table = {
      {"status", "", "connect, poll once and print the status words", RunStatus},
      {"monitor", "[--polls N]", "connect and poll every 2.5 s; one line per poll", RunMonitor},
      {"send", "TEXT...", "send each command text and print the unit's reply", RunSend},
  };
  return table;
}

void PrintHelp() {
  std::printf(
      "Usage: ampdesk-cli [connection] [options] COMMAND [ARGS]\n\n"
      "Monitors and controls one amplifier over TCP or a serial line.\n\n"
      "connection (exactly one of --tcp, --serial, --demo):\n");
  for (const auto& opt : OptionTable()) {
    std::string left = std::string(opt.name) + (opt.arg ? std::string(" ") + opt.arg : "");
    std::printf("  %-28s %s\n", left.c_str(), opt.help);
  }
  std::printf("\ncommands:\n");
  for (const auto& cmd : CommandTable()) {
    std::string left = std::string(cmd.name) + (*cmd.args ? std::string(" ") + cmd.args : "");
    std::printf("  %-28s %s\n", left.c_str(), cmd.help);
  }
  std::printf(
      "\nExit codes: 0 done; 1 the operation failed (unit not found, connection lost);\n"
      "2 bad arguments. Message boxes are printed to stderr as TITLE: TEXT.\n\n"
      "Examples:\n"
      "  ampdesk-cli --demo monitor --polls 4\n"
      "  ampdesk-cli --tcp 192.0.2.10 status --json\n"
      "  ampdesk-cli --serial /dev/ttyUSB0 --settings 19200,N,8,1 --address B send 1\n");
}

// "" and the parsed options, or the error text. Options may stand before or
// after the command; what the table does not know after the command belongs
// to the command (such as monitor's --polls).
std::string Parse(int argc, char** argv, Options& o) {
  for (int i = 1; i < argc; ++i) {
    const std::string a = argv[i];
    const OptionSpec* spec = nullptr;
    for (const auto& opt : OptionTable())
      if (a == opt.name) spec = &opt;
    if (!spec) {
      if (!o.command.empty()) {
        o.args.push_back(a);
      } else if (a.rfind("--", 0) == 0) {
        return "unknown option '" + a + "'";
      } else {
        o.command = a;
      }
      continue;
    }
    std::string value;
    if (spec->arg) {
      if (i + 1 >= argc) return std::string(spec->name) + " needs " + spec->arg;
      value = argv[++i];
    }
    if (auto err = spec->apply(o, value); !err.empty()) return err;
  }
  if (o.command.empty()) return "no command given";
  const int sources = int(o.haveTcp) + int(o.haveSerial) + int(o.demo);
  if (sources == 0) return "no unit named: give --tcp HOST, --serial DEVICE or --demo";
  if (sources > 1) return "give exactly one of --tcp, --serial and --demo";
  return {};
}

int Main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    if (std::string(argv[i]) == "--help" || std::string(argv[i]) == "-h") {
      PrintHelp();
      return kExitOk;
    }
  }
  Options o;
  if (auto err = Parse(argc, argv, o); !err.empty()) {
    std::fprintf(stderr, "ampdesk-cli: %s\nTry 'ampdesk-cli --help'.\n", err.c_str());
    return kExitUsage;
  }
  const CommandSpec* cmd = nullptr;
  for (const auto& c : CommandTable())
    if (o.command == c.name) cmd = &c;
  if (!cmd) {
    std::fprintf(stderr, "ampdesk-cli: unknown command '%s'\nTry 'ampdesk-cli --help'.\n",
                 o.command.c_str());
    return kExitUsage;
  }

  QCoreApplication app(argc, argv);
  std::signal(SIGPIPE, SIG_IGN);
  ConsoleDialogs dialogs;
  dialogs.answer = o.answer == "cancel" ? MsgResult::Cancel
                   : o.answer == "yes"  ? MsgResult::Yes
                   : o.answer == "no"   ? MsgResult::No
                                        : MsgResult::OK;
  dialogs.inputs.assign(o.inputs.begin(), o.inputs.end());

  SimProcess sim;
  if (o.demo) {
    std::vector<std::string> args = {"--tcp", "127.0.0.1:0"};
    args.insert(args.end(), o.simArgs.begin(), o.simArgs.end());
    std::string err;
    if (!sim.Start(SimProcess::Locate(QCoreApplication::applicationDirPath().toStdString()), args,
                   &err)) {
      std::fprintf(stderr, "ampdesk-cli: %s\n", err.c_str());
      return kExitFailed;
    }
    o.target.tcpHost = sim.TcpHost();
    o.target.tcpPort = sim.TcpPort();
    if (!o.json) std::fprintf(stderr, "ampdesk-cli: simulated amplifier on %s:%d\n", sim.TcpHost().c_str(), sim.TcpPort());
  }

  CliSession session(dialogs);
  if (!o.trace.empty()) {
    std::string err;
    if (!session.OpenTrace(o.trace, &err)) {
      std::fprintf(stderr, "ampdesk-cli: %s\n", err.c_str());
      return kExitFailed;
    }
  }
  if (!session.Connect(o.target)) return kExitFailed;
  return cmd->run(session, o);
}

}  // namespace
}  // namespace amp::cli

int main(int argc, char** argv) { return amp::cli::Main(argc, argv); }
