// ampdesk-cli: the command-line twin of the desktop program. It drives the
// same application object through the panel model, with boxes on the
// terminal. One table of options and one of commands drive parsing, --help
// and the errors.
#include <QCoreApplication>
#include <QStandardPaths>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "basic/json.h"
#include "basic/numbers.h"
#include "cli/cli_session.h"
#include "cli/console_dialogs.h"
#include "cli/panel_text.h"
#include "cli/send_console.h"
#include "cli/state_json.h"
#include "display/panel_script.h"
#include "qt/qt_com_slots.h"
#include "qt/sim_process.h"

namespace amp::cli {
namespace {

using ui::LoadScript;
using ui::PanelScript;
using ui::ScriptAction;
using ui::ScriptName;

constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

struct Options {
  Target target;
  bool haveTcp = false, haveSerial = false, demo = false, json = false, watts = false;
  std::string dataDir;
  std::string trace;
  std::string answer = "ok";
  std::vector<std::string> inputs;
  std::vector<std::string> simArgs;
  std::string command;
  std::vector<std::string> args;
};

enum class Section { Connection, Serial, Options, Extras };

struct OptionSpec {
  Section section;
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

std::string ParseSettings(Options& o, const std::string& v) {
  const std::string why =
      "bad line settings '" + v + "' (baud,parity,data,stop such as 9600,N,8,1)";
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
  o.target.settings = v;
  return {};
}

const std::vector<OptionSpec>& OptionTable() {
  static const std::vector<OptionSpec> table = {
      {Section::Connection, "--tcp", "HOST[:PORT]", "session over TCP (port 2000 when omitted)",
       ParseTcp},
      {Section::Connection, "--serial", "DEVICE",
       "session over a serial device path (or COM1..COM10)",
       [](Options& o, const std::string& v) {
         o.haveSerial = true;
         o.target.device = v;
         if (v.empty()) return std::string("--serial needs a device path or COM1..COM10");
         return std::string();
       }},
      {Section::Connection, "--demo", nullptr,
       "start the simulated amplifier on loopback and use it as the unit",
       [](Options& o, const std::string&) {
         o.demo = true;
         return std::string();
       }},
      {Section::Serial, "--settings", "TEXT",
       "line settings such as 9600,N,8,1; without it the search runs over the twelve settings "
       "texts",
       ParseSettings},
      {Section::Serial, "--address", "C",
       "poll this single address (Poll Single Address); without it the search runs over A-C",
       [](Options& o, const std::string& v) {
         if (v.size() != 1 || v[0] < 'A' || v[0] > 'Z')
           return "bad address '" + v + "' (one letter A-Z)";
         o.target.address = v;
         return std::string();
       }},
      {Section::Serial, "--search", "extended|advanced", "widen the search to A-F or A-Z",
       [](Options& o, const std::string& v) {
         if (v != "extended" && v != "advanced")
           return "bad search '" + v + "' (extended or advanced)";
         o.target.search = v;
         return std::string();
       }},
      {Section::Options, "--watts", nullptr, "power fields in Watts (as the Watts menu entry)",
       [](Options& o, const std::string&) {
         o.watts = true;
         return std::string();
       }},
      {Section::Options, "--data-dir", "DIR",
       "where data files and logs are written (default: the per-user data directory)",
       [](Options& o, const std::string& v) {
         if (v.empty()) return std::string("--data-dir needs a directory");
         o.dataDir = v;
         return std::string();
       }},
      {Section::Options, "--answer", "ok|cancel|yes|no",
       "the answer to every question box. Default ok: each box takes its first button (OK, "
       "Yes or Retry), also a box that resets the unit or switches it off, whose Enter on the "
       "desktop is Cancel; give cancel (or no) to refuse those. An answer a box does not offer "
       "takes its first button",
       [](Options& o, const std::string& v) {
         if (v != "ok" && v != "cancel" && v != "yes" && v != "no")
           return "bad answer '" + v + "' (ok, cancel, yes or no)";
         o.answer = v;
         return std::string();
       }},
      {Section::Options, "--input", "TEXT",
       "an answer for the next input box (repeatable, used in order; none left = cancel)",
       [](Options& o, const std::string& v) {
         o.inputs.push_back(v);
         return std::string();
       }},
      {Section::Options, "--json", nullptr, "machine-readable output",
       [](Options& o, const std::string&) {
         o.json = true;
         return std::string();
       }},
      {Section::Extras, "--sim-arg", "ARG",
       "pass ARG to the simulated amplifier of --demo (repeatable)",
       [](Options& o, const std::string& v) {
         o.simArgs.push_back(v);
         return std::string();
       }},
      {Section::Extras, "--trace", "FILE",
       "log every frame both ways (time, hex, text) to FILE, - for stderr",
       [](Options& o, const std::string& v) {
         if (v.empty()) return std::string("--trace needs a file");
         o.trace = v;
         return std::string();
       }},
  };
  return table;
}

// Everything a command works with.
struct Run {
  Options& o;
  ConsoleDialogs& dialogs;
  CliSession& session;
  std::vector<ScriptAction> script;  // the checked script of `script`
  std::string scriptName;
};

struct CommandSpec {
  const char* name;
  const char* args;
  const char* help;
  // Checks the command's own arguments before anything starts: "" or the
  // error.
  std::string (*check)(Options&);
  int (*run)(Run&);
};

void Err(const std::string& text) {
  std::fprintf(stderr, "ampdesk-cli: %s\n", text.c_str());
  std::fflush(stderr);
}

StateView View(Run& r, const ui::Form* dialog, size_t firstMessage = 0) {
  StateView v;
  v.connected = r.session.Connected();
  v.form = &r.session.desk().frmMain;
  v.messages = &r.dialogs.shown;
  v.firstMessage = firstMessage;
  v.dialog = dialog;
  return v;
}

void PrintState(Run& r, const ui::Form* dialog) {
  if (r.o.json) {
    std::printf("%s\n", StateJson(View(r, dialog)).c_str());
  } else {
    std::printf("%s", PanelText(r.session.desk().frmMain).c_str());
    if (dialog)
      std::printf("Dialog      %s (%s) is open\n", dialog->Name().c_str(),
                  dialog->Caption().c_str());
  }
  std::fflush(stdout);
}

// The exit code once a command is done: a failure box or a session that
// ended by itself fails an otherwise good run.
int Outcome(Run& r, int code) {
  if (code == kExitOk && r.session.Lost()) {
    Err("the session ended: the unit stopped answering");
    code = kExitFailed;
  }
  if (code == kExitOk && r.dialogs.AnyFailure()) code = kExitFailed;
  return code;
}

// ---------------------------------------------------------------- status

std::string CheckNoArgs(Options& o) {
  if (!o.args.empty()) return o.command + " takes no arguments, not '" + o.args[0] + "'";
  return {};
}

int RunStatus(Run& r) {
  r.session.PollNow();
  const bool ok = r.session.LastPollOk();
  PrintState(r, nullptr);
  if (!ok) Err("the poll got no valid reply");
  return Outcome(r, ok ? kExitOk : kExitFailed);
}

// --------------------------------------------------------------- monitor

int gPolls = 0;  // monitor --polls; 0: until interrupted or the session ends

std::string CheckMonitor(Options& o) {
  for (size_t i = 0; i < o.args.size(); ++i) {
    if (o.args[i] == "--polls" && i + 1 < o.args.size()) {
      const auto n = CLngText(o.args[++i]);
      if (!n || *n < 1) return "--polls needs a positive count, not '" + o.args[i] + "'";
      gPolls = *n;
    } else {
      return "monitor takes only --polls N, not '" + o.args[i] + "'";
    }
  }
  return {};
}

int RunMonitor(Run& r) {
  int done = 0;
  size_t messagesSeen = r.dialogs.shown.size();
  bool stop = false;
  r.session.timer().afterTick = [&] {
    ++done;
    const bool ok = r.session.LastPollOk();
    const bool up = r.session.Connected();
    const int left = up ? r.session.desk().comms.gMissedPolls : 0;
    if (r.o.json) {
      JsonWriter w;
      w.BeginObject();
      w.Key("poll").Int(done);
      w.Key("ok").Bool(ok);
      w.Key("missedPollsLeft").Int(left);
      WriteState(w, View(r, nullptr, messagesSeen));
      w.EndObject();
      std::printf("%s\n", w.str().c_str());
    } else if (ok) {
      std::printf("poll %d: %s\n", done, PanelLine(r.session.desk().frmMain).c_str());
    } else {
      std::printf(
          "poll %d: no valid reply%s\n", done,
          up ? (" (" + std::to_string(left) + " more tolerated)").c_str() : ", session ended");
    }
    std::fflush(stdout);
    messagesSeen = r.dialogs.shown.size();
    if (!up || (gPolls > 0 && done >= gPolls)) stop = true;
  };
  while (!stop && !Interrupted() && r.session.Connected())
    r.session.RunFor(1000, [&] { return stop; });
  r.session.timer().afterTick = nullptr;
  return Outcome(r, kExitOk);
}

// ------------------------------------------------------------------ send

std::string CheckSend(Options& o) {
  if (o.args.empty()) return "send needs at least one command text";
  return {};
}

int RunSend(Run& r) {
  int code = kExitOk;
  for (const auto& text : r.o.args) {
    const SendResult s = SendCommand(r.session.desk().comms, text);
    if (r.o.json) {
      JsonWriter w;
      w.BeginObject();
      w.Key("command").String(text);
      w.Key("ok").Bool(s.ok);
      w.Key("reply").String(s.readable);
      w.Key("lines").BeginArray();
      for (const auto& l : s.lines) w.String(l);
      w.EndArray();
      w.Key("frame").String(s.frame);
      w.EndObject();
      std::printf("%s\n", w.str().c_str());
    } else {
      for (const auto& l : FormatSendLines(text, s)) std::printf("%s\n", l.c_str());
    }
    std::fflush(stdout);
    if (!s.ok && !text.empty()) code = kExitFailed;
  }
  return Outcome(r, code);
}

// ---------------------------------------------------------------- script

std::string CheckScript(Options& o) {
  if (o.args.size() != 1) return "script needs one FILE, or - for standard input";
  return {};
}

int RunScript(Run& r) {
  CliSession& s = r.session;
  PanelScript::Host host;
  host.forms = s.desk().Forms();
  host.pollTick = [&s] { s.PollNow(); };
  host.pollRunning = [&s] { return s.PollRunning(); };
  host.wait = [&s](int ms) { s.RunFor(ms); };
  host.dump = [&r](const ui::Form* dialog) {
    std::printf("%s\n", StateJson(View(r, dialog)).c_str());
    std::fflush(stdout);
  };
  host.beforeAction = [&s](const ScriptAction& a) {
    if (a.verb == ScriptAction::Verb::Click && a.control == "btnConnect" &&
        a.form == s.desk().frmMain.Name() && s.Connected())
      s.ExpectDisconnect();
  };
  host.note = [&r](const std::string& text) { Err(r.scriptName + ": " + text); };
  PanelScript script(std::move(host), r.script);
  script.onEnd = [&r](const ui::Form* dialog) { PrintState(r, dialog); };
  r.dialogs.modalDriver = [&script](ui::Form& form) { script.RunModal(form); };
  script.Run();
  r.dialogs.modalDriver = nullptr;
  if (const auto& failure = script.Failure()) {
    Err(r.scriptName + ": " + failure->Text());
    return Outcome(r, kExitFailed);
  }
  return Outcome(r, kExitOk);
}

const std::vector<CommandSpec>& CommandTable() {
  static const std::vector<CommandSpec> table = {
      {"status", "",
       "connect, first read, one poll; print the panel (text), or with --json the state",
       CheckNoArgs, RunStatus},
      {"monitor", "[--polls N]",
       "connect and poll every 2.5 s; one line per poll (a JSON object per line with --json)",
       CheckMonitor, RunMonitor},
      {"send", "TEXT...", "the command console: send each text, print its readable reply",
       CheckSend, RunSend},
      {"script", "FILE|-", "connect, run panel actions (below), then print the state", CheckScript,
       RunScript},
  };
  return table;
}

void PrintHelp() {
  std::printf(
      "Usage: ampdesk-cli [connection] [options] COMMAND [ARGS]\n\n"
      "Monitors and controls one amplifier over TCP or a serial line with the\n"
      "logic of the desktop panel. Options may also follow the command.\n");
  auto section = [](const char* title, Section s) {
    if (*title) std::printf("\n%s\n", title);
    for (const auto& opt : OptionTable()) {
      if (opt.section != s) continue;
      const std::string left = std::string(opt.name) + (opt.arg ? std::string(" ") + opt.arg : "");
      const char* indent = s == Section::Serial ? "      " : "  ";
      const int width = s == Section::Serial ? 26 : 28;
      std::printf("%s%-*s %s\n", indent, width, left.c_str(), opt.help);
    }
  };
  section("connection (exactly one of):", Section::Connection);
  std::printf("  with --serial:\n");
  section("", Section::Serial);
  section("options:", Section::Options);
  section("extras:", Section::Extras);
  std::printf("\ncommands:\n");
  for (const auto& cmd : CommandTable()) {
    const std::string left = std::string(cmd.name) + (*cmd.args ? std::string(" ") + cmd.args : "");
    std::printf("  %-28s %s\n", left.c_str(), cmd.help);
  }
  std::printf(
      "\npanel actions (script), one per line; # starts a comment line:\n"
      "  click CONTROL              a button, menu entry or option button; a check box toggles\n"
      "  type CONTROL TEXT          each character of TEXT through the field's key handler\n"
      "  key CONTROL KEY            one key: Enter, Esc, Backspace, or a single character\n"
      "  set CONTROL TEXT           replace the field's text directly, without key handling\n"
      "  leave CONTROL              the focus leaves the field (Validate, then LostFocus)\n"
      "  focus CONTROL              the focus enters the field (GotFocus)\n"
      "  select CONTROL INDEX|TEXT  choose an item of a combo or list (its Click runs)\n"
      "  up CONTROL / down CONTROL  up-down clicks\n"
      "  dblclick CONTROL\n"
      "  poll [N]                   run N ticks of the poll timer now (default 1)\n"
      "  wait MS                    let the program run (and poll) for MS milliseconds\n"
      "  dump                       print the state JSON now\n"
      "CONTROL is a name of the main panel (txtAtnDB, FaultAbit(3)) or frmName.control\n"
      "in a dialog (frmCom.cbBaud). TEXT runs to the end of the line; \"quotes\" keep\n"
      "outer blanks. An action that opens a dialog is followed by the lines for that\n"
      "dialog until one closes it; a dialog left open at the end is cancelled. The\n"
      "poll timer only ticks during wait and poll. The whole script is checked before\n"
      "the connection is made.\n"
      "\nMessage boxes are printed to stderr as TITLE: TEXT (line ends as \\n) and\n"
      "are listed under \"messages\" in the JSON state. The command line keeps its\n"
      "settings for the run only: nothing the desktop program stored is read or changed.\n"
      "\nExit codes: 0 done; 1 the operation failed (unit not found, connection lost,\n"
      "a box reporting a failure, a script action that could not run); 2 bad arguments\n"
      "or a bad script line.\n\n"
      "Examples:\n"
      "  ampdesk-cli --demo monitor --polls 4\n"
      "  ampdesk-cli --tcp 192.0.2.10 status --json\n"
      "  ampdesk-cli --serial /dev/ttyUSB0 --settings 19200,N,8,1 --address B send 1 ?A\n"
      "  echo 'click mnuWatts' | ampdesk-cli --tcp 192.0.2.10 --json script -\n");
}

// "" and the parsed options, or the error text. Options may stand before or
// after the command; what the table does not know after the command belongs
// to the command (such as monitor's --polls).
std::string Parse(int argc, char** argv, Options& o) {
  for (int i = 1; i < argc; ++i) {
    const std::string a = argv[i];
    const OptionSpec* option = nullptr;
    for (const auto& opt : OptionTable())
      if (a == opt.name) option = &opt;
    if (!option) {
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
    if (option->arg) {
      if (i + 1 >= argc) return std::string(option->name) + " needs " + option->arg;
      value = argv[++i];
    }
    if (auto err = option->apply(o, value); !err.empty()) return err;
  }
  if (o.command.empty()) return "no command given";
  const int sources = int(o.haveTcp) + int(o.haveSerial) + int(o.demo);
  if (sources == 0) return "no unit named: give --tcp HOST, --serial DEVICE or --demo";
  if (sources > 1) return "give exactly one of --tcp, --serial and --demo";
  if (!o.haveSerial &&
      (!o.target.settings.empty() || !o.target.address.empty() || !o.target.search.empty()))
    return "--settings, --address and --search go with --serial";
  if (!o.target.address.empty() && !o.target.search.empty())
    return "--search widens the address search; it does not go with --address";
  if (o.haveSerial) {
    ComSlots probe;
    if (SlotForDevice(probe, o.target.device) == 0)
      return "bad serial port '" + o.target.device + "' (COM1..COM10 or a device path)";
  }
  if (!o.simArgs.empty() && !o.demo) return "--sim-arg goes with --demo";
  return {};
}

std::string DefaultDataDirectory() {
  const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  if (base.isEmpty()) return {};
  return (std::filesystem::path(base.toStdString()) / "AmpDesk").string();
}

int Main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    if (std::string(argv[i]) == "--help" || std::string(argv[i]) == "-h") {
      PrintHelp();
      return kExitOk;
    }
  }
  Options o;
  const CommandSpec* cmd = nullptr;
  std::string err = Parse(argc, argv, o);
  if (err.empty()) {
    for (const auto& c : CommandTable())
      if (o.command == c.name) cmd = &c;
    if (!cmd) err = "unknown command '" + o.command + "'";
  }
  if (err.empty()) err = cmd->check(o);
  if (!err.empty()) {
    Err(err + "\nTry 'ampdesk-cli --help'.");
    return kExitUsage;
  }

  QCoreApplication app(argc, argv);
  std::signal(SIGPIPE, SIG_IGN);
  InstallInterruptHandler();
  ConsoleDialogs dialogs;
  dialogs.answer = o.answer == "cancel" ? MsgResult::Cancel
                   : o.answer == "yes"  ? MsgResult::Yes
                   : o.answer == "no"   ? MsgResult::No
                                        : MsgResult::OK;
  dialogs.inputs.assign(o.inputs.begin(), o.inputs.end());

  CliSession session(dialogs, DefaultComSlots());
  Run run{o, dialogs, session, {}, {}};

  if (o.command == "script") {
    // The whole script is checked against the forms before the unit is
    // touched.
    run.scriptName = ScriptName(o.args[0]);
    if (!LoadScript(o.args[0], session.desk().Forms(), run.script, &err)) {
      Err(err);
      return kExitUsage;
    }
  }

  if (o.haveSerial && o.target.device.rfind("COM", 0) != 0 &&
      o.target.device.rfind("com", 0) != 0) {
    std::error_code ec;
    if (!std::filesystem::exists(o.target.device, ec)) {
      Err("no serial device " + o.target.device);
      return kExitFailed;
    }
  }

  SimProcess sim;
  if (o.demo) {
    std::vector<std::string> args = {"--tcp", "127.0.0.1:0"};
    args.insert(args.end(), o.simArgs.begin(), o.simArgs.end());
    if (!sim.Start(SimProcess::Locate(QCoreApplication::applicationDirPath().toStdString()), args,
                   &err)) {
      Err(err);
      return kExitFailed;
    }
    o.target.tcpHost = sim.TcpHost();
    o.target.tcpPort = sim.TcpPort();
    if (!o.json)
      Err("simulated amplifier on " + sim.TcpHost() + ":" + std::to_string(sim.TcpPort()));
  }

  if (!o.trace.empty() && !session.OpenTrace(o.trace, &err)) {
    Err(err);
    return kExitFailed;
  }
  const std::string dataDir = o.dataDir.empty() ? DefaultDataDirectory() : o.dataDir;
  if (!session.Connect(o.target, dataDir, o.watts)) {
    if (o.json) PrintState(run, nullptr);
    return kExitFailed;
  }
  const int code = cmd->run(run);
  session.Close();
  return code;
}

}  // namespace
}  // namespace amp::cli

int main(int argc, char** argv) { return amp::cli::Main(argc, argv); }
