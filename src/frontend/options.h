// The command-line options of the front ends, described once. Both programs
// take the unit to reach the same way (--demo, --tcp, --serial with its
// line settings and address, --sim-arg, --trace); each adds its own group.
// Parsing, checking and the help text all come from this one table.
#pragma once

#include <string>
#include <vector>

#include "control/locate_ip_controls.h"
#include "frontend/run_settings.h"

namespace CLI {
class App;
}

namespace amp::frontend {

struct Options {
  bool help = false;

  // The unit, both programs.
  bool demo = false;
  std::string demoProfile;  // "" for ampsim's default unit
  std::string tcpHost;      // --tcp
  int tcpPort = 2000;
  std::string serialDevice;          // --serial: a device path or COM1..COM10
  std::string lineSettings;          // --settings "9600,N,8,1" for the serial line
  std::string address;               // --address: poll this one unit address
  std::vector<std::string> simArgs;  // --sim-arg: more arguments for the demo's ampsim
  std::string trace;
  // The unit search by UDP, both programs: "" leaves the environment's
  // (AMPDESK_UDP_TARGET, AMPDESK_UDP_PORTS) or the units' own.
  std::string udpTarget;
  std::string udpPorts;  // "LOCAL:REMOTE"

  // The desktop program.
  std::string settingsFile;
  std::string script;  // --script: panel actions to run once connected
  std::string screenshot;
  int screenshotAfterMs = 0;
  bool afterGiven = false;

  // The command line.
  // Where files live, both programs: "" for the host's default.
  std::string dataDir;
  std::string calDir;

  std::string search;              // "", "extended" (A-F) or "advanced" (A-Z)
  std::vector<std::string> files;  // --file: answers to the file dialogs, in order
  std::string answer = "ok";
  std::vector<std::string> inputs;
  bool json = false;
  bool watts = false;

  // How many of --demo, --tcp and --serial were given.
  int Sources() const;
  // The unit named for the run, with the COM slot the device is bound to.
  RunTarget Target(int serialSlot) const;
};

// Where the unit search sends its probe and hears the answers: the options,
// else the environment, else the units' own broadcast and ports.
DiscoveryTarget DiscoveryTargetOf(const Options& o);
// "LOCAL:REMOTE", two ports from 1 to 65535: "" or why not.
std::string CheckUdpPorts(const std::string& text);
// Where a run's files go: the option, else the stored setting, else the
// default; the calibration root defaults to a folder in the data directory.
struct DataPlaces {
  std::string dataDir;
  std::string calRoot;
};
DataPlaces ChooseDataPlaces(const Options& o, const std::string& storedDataDir,
                            const std::string& storedCalRoot, const std::string& defaultDataDir);

// The option groups; each program adds those it takes.
void AddUnitOptions(CLI::App& app, Options& o);
void AddDesktopOptions(CLI::App& app, Options& o);
void AddConsoleOptions(CLI::App& app, Options& o);
void AddFileOptions(CLI::App& app, Options& o);

// Parses `args` (without the program name) into the options `app` was
// given. "" or the error in the programs' words. Unknown arguments are
// errors unless `extras` is given, which then receives them.
std::string ParseArgs(CLI::App& app, std::vector<std::string> args,
                      std::vector<std::string>* extras = nullptr);

// What the parser cannot see option by option: which options go together.
// `unitRequired`: the program cannot run without a unit named.
std::string CheckUnitOptions(const Options& o, bool unitRequired);

// "baud,parity,data,stop" as a serial line takes it: "" or why not.
std::string CheckLineSettings(const std::string& text);

// One line per option ("  --name ARG   meaning"), under each group's title,
// in the order the options were added.
std::string OptionsHelp(const CLI::App& app);

}  // namespace amp::frontend
