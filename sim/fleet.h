// Several simulated units from one process: one Simulator per unit, each on
// its own TCP port, the fleet file that names them, and the control lines
// that change one unit while the others run on.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "sim/simulator.h"

namespace amp::sim {

// The unit for one profile name ("" for the default profile).
using UnitMaker = std::function<UnitState(const std::string& profile)>;
// Blocks until the fleet should end.
using FleetWait = std::function<void(const std::vector<Simulator*>&)>;

// Starts `count` units: profiles taken in turn from `profiles` (the default
// profile when it is empty), addresses counting up from the options' unit's
// address, ports from the options' port (free ones for 0). Prints one ready
// line, writes the fleet file when `fleetFile` is set, serves control lines
// on standard input, and returns the exit status after `wait`.
int RunFleet(const Simulator::Options& options, int count, const std::vector<std::string>& profiles,
             const UnitMaker& makeUnit, const std::string& fleetFile, const FleetWait& wait);

// Applies one control line ("2 --status P@@@,@A@@,@@@@") to the fleet;
// returns "" or what is wrong with it.
std::string ApplyControlLine(const std::string& line, const std::vector<Simulator*>& sims);

// The fleet file for units listening at `endpoints` ("host:port"), named
// sim001, sim002, ...
std::string FleetFileText(const std::vector<std::string>& endpoints,
                          const std::vector<std::string>& profiles);

}  // namespace amp::sim
