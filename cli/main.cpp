// ampdesk-cli: the command-line twin of the desktop program. It drives the
// same application object through the panel model, with boxes on the
// terminal. One table of options and one of commands drive parsing, --help
// and the errors.
#include <QCoreApplication>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "basic/json.h"
#include "basic/numbers.h"
#include "cli/cli_session.h"
#include "cli/console_dialogs.h"
#include "cli/panel_text.h"
#include "cli/send_console.h"
#include "display/panel_script.h"
#include "frontend/options.h"
#include "frontend/state_json.h"
#include "qt/data_places.h"
#include "qt/qt_com_slots.h"
#include "qt/sim_process.h"
#include "qt/stop_signals.h"

namespace amp::cli {
namespace {

using frontend::StateJson;
using frontend::StateView;
using frontend::WriteState;
using ui::LoadScript;
using ui::PanelScript;
using ui::ScriptAction;
using ui::ScriptName;

constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

// The options the front ends share, and the command with its arguments.
struct Options : frontend::Options {
  std::string command;
  std::vector<std::string> args;
  int polls = 0;        // monitor --polls; 0: until interrupted or the session ends
  int connectLine = 0;  // discover --connect: the line of the list to connect to
  int connectPort = 0;  // discover --port: typed into the dialog's port field
};

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
    std::printf("%s", PanelText(r.session.desk().frmMain, r.session.Connected()).c_str());
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

// monitor's own option, --polls, is checked by the parser.
std::string CheckMonitor(Options& o) {
  if (!o.args.empty()) return "monitor takes only --polls N, not '" + o.args[0] + "'";
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
    const int left = up ? r.session.desk().comms.session.gMissedPolls : 0;
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
    if (!up || (r.o.polls > 0 && done >= r.o.polls)) stop = true;
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

// -------------------------------------------------------------- discover

std::string CheckDiscover(Options& o) {
  if (!o.args.empty()) return "discover takes only its options, not '" + o.args[0] + "'";
  if (o.Sources() > 0) return "discover finds units itself: no --demo, --tcp or --serial";
  return {};
}

// Locate IP as the panel runs it: one search, the list as the dialog shows
// it, and with --connect the click on line N, which makes that unit the TCP
// target and connects.
int RunDiscover(Run& r) {
  AmpDesk& d = r.session.desk();
  LocateIpControls& locate = d.network.locateIp;
  std::vector<std::string> lines;
  bool listed = false;
  r.dialogs.modalDriver = [&](ui::Form& form) {
    if (&form != &locate.frmLocateIP || listed) return;
    listed = true;
    lines = locate.frmLocateIP.lstIPAdrs.Items();
    if (r.o.connectPort > 0) locate.frmLocateIP.txtPortNum.SetText(std::to_string(r.o.connectPort));
    if (r.o.connectLine > 0)
      locate.frmLocateIP.lstIPAdrs.SetListIndex(
          std::min<int>(r.o.connectLine, static_cast<int>(lines.size())) - 1);
  };
  if (r.o.connectLine > 0 && !d.frmMain.mnuUseEnet.Checked()) d.frmMain.mnuUseEnet.RaiseClick();
  d.frmMain.mnuLocateIP.RaiseClick();
  r.dialogs.modalDriver = nullptr;
  if (r.o.connectLine > 0 && !locate.gLocatedIP.empty()) r.session.WaitWhileConnecting(15000);
  const bool connected = r.session.Connected();
  if (r.o.json) {
    JsonWriter w;
    w.BeginObject();
    w.Key("units").BeginArray();
    for (int i = 0; i < locate.FoundCount(); ++i) {
      const auto& unit = locate.Found()[static_cast<size_t>(i)];
      w.BeginObject();
      w.Key("address").String(unit.address);
      w.Key("description").String(unit.description);
      w.EndObject();
    }
    w.EndArray();
    if (connected) WriteState(w, View(r, nullptr));
    w.EndObject();
    std::printf("%s\n", w.str().c_str());
  } else {
    for (const std::string& line : lines) std::printf("%s\n", line.c_str());
    if (connected)
      std::printf("connected to %s:%d\n", d.values.gIPAddress.c_str(), d.values.gEthPort);
  }
  std::fflush(stdout);
  if (r.o.connectLine > 0 && !connected) {
    Err(locate.gLocatedIP.empty() ? "no unit chosen" : "no session with " + locate.gLocatedIP);
    return Outcome(r, kExitFailed);
  }
  return Outcome(r, kExitOk);
}

// ----------------------------------------------------- configuration files

std::string CheckLoadConfig(Options& o) {
  if (o.args.size() != 1) return "load-config needs one FILE";
  return {};
}

std::string CheckSaveConfig(Options& o) {
  if (o.args.size() > 1) return "save-config takes at most one FILE, not '" + o.args[1] + "'";
  return {};
}

// As the operator does it: Load Cfg File..., the file chosen in its dialog.
int RunLoadConfig(Run& r) {
  const std::string& file = r.o.args[0];
  std::error_code ec;
  if (!std::filesystem::is_regular_file(file, ec)) {
    Err("no file " + file);
    return Outcome(r, kExitFailed);
  }
  AmpDesk& d = r.session.desk();
  r.dialogs.files.push_front(file);
  r.session.ExpectDisconnect();  // the reconnect after the replay
  d.frmMain.mnuLoadFile.RaiseClick();
  const size_t sent = d.configFiles.LoadedCommands();
  const bool up = r.session.AwaitSession();
  if (!r.o.json) std::printf("%s: %zu commands sent\n", file.c_str(), sent);
  PrintState(r, nullptr);
  if (!up) Err("no session after the reconnect");
  return Outcome(r, up ? kExitOk : kExitFailed);
}

// Save Unit Cfg...: to FILE, or to the name the dialog proposes.
int RunSaveConfig(Run& r) {
  AmpDesk& d = r.session.desk();
  if (r.o.args.empty()) {
    r.dialogs.saveTakesProposal = true;
  } else {
    r.dialogs.files.push_front(r.o.args[0]);
  }
  d.frmMain.mnuSaveAs.RaiseClick();
  const std::string& saved = d.configFiles.SavedFile();
  if (saved.empty()) {
    Err("no configuration file was saved");
    return Outcome(r, kExitFailed);
  }
  if (r.o.json) {
    JsonWriter w;
    w.BeginObject();
    w.Key("file").String(saved);
    w.EndObject();
    std::printf("%s\n", w.str().c_str());
  } else {
    std::printf("%s\n", saved.c_str());
  }
  std::fflush(stdout);
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
      {"discover", "[--connect N [--port P]]",
       "search for units by UDP (Locate IP) and list them; --connect N connects to line N by "
       "TCP (on port P, else 2000)",
       CheckDiscover, RunDiscover},
      {"load-config", "FILE",
       "connect, replay the configuration FILE into the unit, reconnect; print the state after",
       CheckLoadConfig, RunLoadConfig},
      {"save-config", "[FILE]",
       "connect, first read, save the unit's configuration to FILE (or the proposed name in "
       "the data directory); print its path",
       CheckSaveConfig, RunSaveConfig},
  };
  return table;
}

// The table of options and commands, for parsing and for --help.
void AddTable(CLI::App& app, Options& o) {
  frontend::AddUnitOptions(app, o);
  frontend::AddConsoleOptions(app, o);
  frontend::AddFileOptions(app, o);
  for (const CommandSpec& c : CommandTable()) {
    CLI::App* sub = app.add_subcommand(c.name, c.help);
    sub->fallthrough();  // the program's options may follow the command
    sub->add_option("args", o.args);
    if (std::string(c.name) == "discover")
      sub->add_option("--port", o.connectPort)->check(CLI::Range(1, 65535));
    if (std::string(c.name) == "discover")
      sub->add_option("--connect", o.connectLine)
          ->check(CLI::Validator(
              [](std::string& v) {
                const auto n = CLngText(v);
                return !n || *n < 1 ? "needs a line number from 1, not '" + v + "'" : std::string();
              },
              ""));
    if (std::string(c.name) == "monitor")
      sub->add_option("--polls", o.polls)
          ->check(CLI::Validator(
              [](std::string& v) {
                const auto n = CLngText(v);
                return !n || *n < 1 ? "needs a positive count, not '" + v + "'" : std::string();
              },
              ""));
  }
}

void PrintHelp() {
  CLI::App app;
  Options unused;
  AddTable(app, unused);
  std::printf(
      "Usage: ampdesk-cli [unit] [options] COMMAND [ARGS]\n\n"
      "Monitors and controls one amplifier over TCP or a serial line with the\n"
      "logic of the desktop panel. Options may also follow the command.\n");
  std::printf("%s", frontend::OptionsHelp(app).c_str());
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
      "  ampdesk-cli --tcp 192.0.2.10 save-config unit.txt\n"
      "  ampdesk-cli --tcp 192.0.2.10 --json load-config unit.txt\n"
      "  ampdesk-cli --serial /dev/ttyUSB0 --settings 19200,N,8,1 --address B send 1 ?A\n"
      "  echo 'click mnuWatts' | ampdesk-cli --tcp 192.0.2.10 --json script -\n"
      "  ampdesk-cli discover --udp-target 127.0.0.1 --udp-ports 2101:2100 --connect 1\n");
}

// "" and the parsed options, or the error text. Options may stand before or
// after the command.
std::string Parse(int argc, char** argv, Options& o) {
  CLI::App app;
  AddTable(app, o);
  std::vector<std::string> extras;
  if (std::string err = frontend::ParseArgs(app, {argv + 1, argv + argc}, &extras); !err.empty())
    return err;
  if (!extras.empty()) {
    const std::string& a = extras.front();
    return (a.rfind('-', 0) == 0 ? "unknown option '" : "unknown command '") + a + "'";
  }
  for (const CLI::App* sub : app.get_subcommands()) o.command = sub->get_name();
  if (o.command.empty()) return "no command given";
  if (std::string err = frontend::CheckUnitOptions(o, o.command != "discover"); !err.empty())
    return err;
  if (!o.serialDevice.empty()) {
    ComSlots probe;
    if (SlotForDevice(probe, o.serialDevice) == 0)
      return "bad serial port '" + o.serialDevice + "' (COM1..COM10 or a device path)";
  }
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
  StopSignals stopSignals([](int) {});  // asked through Interrupted()
  ConsoleDialogs dialogs;
  dialogs.answer = o.answer == "cancel" ? MsgResult::Cancel
                   : o.answer == "yes"  ? MsgResult::Yes
                   : o.answer == "no"   ? MsgResult::No
                                        : MsgResult::OK;
  dialogs.inputs.assign(o.inputs.begin(), o.inputs.end());
  dialogs.files.assign(o.files.begin(), o.files.end());
  ConsoleShell shell;

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

  Target target{o.tcpHost, o.tcpPort, o.serialDevice, o.lineSettings, o.address, o.search};
  if (!target.device.empty() && target.device.rfind("COM", 0) != 0 &&
      target.device.rfind("com", 0) != 0) {
    std::error_code ec;
    if (!std::filesystem::exists(target.device, ec)) {
      Err("no serial device " + target.device);
      return kExitFailed;
    }
  }

  SimProcess sim;
  if (o.demo) {
    std::vector<std::string> args = {"--tcp", "127.0.0.1:0"};
    if (!o.demoProfile.empty()) args.insert(args.end(), {"--profile", o.demoProfile});
    args.insert(args.end(), o.simArgs.begin(), o.simArgs.end());
    if (!sim.Start(SimProcess::Locate(QCoreApplication::applicationDirPath().toStdString()), args,
                   &err)) {
      Err(err);
      return kExitFailed;
    }
    target.tcpHost = sim.TcpHost();
    target.tcpPort = sim.TcpPort();
    if (!o.json)
      Err("simulated amplifier on " + sim.TcpHost() + ":" + std::to_string(sim.TcpPort()));
  }

  if (!o.trace.empty() && !session.OpenTrace(o.trace, &err)) {
    Err(err);
    return kExitFailed;
  }
  const frontend::DataPlaces places = frontend::ChooseDataPlaces(o, "", "", DefaultDataDirectory());
  session.desk().values.gCalRoot = places.calRoot;
  session.desk().configFiles.shell = &shell;
  if (o.command == "discover") {
    session.LoadPanel(places.dataDir, o.watts);
    session.desk().network.locateIp.target = frontend::DiscoveryTargetOf(o);
    const int code = cmd->run(run);
    session.Close();
    return code;
  }
  if (!session.Connect(target, places.dataDir, o.watts)) {
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
