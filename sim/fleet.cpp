#include "sim/fleet.h"

#include <cstdio>
#include <fstream>
#include <memory>
#include <sstream>
#include <thread>

namespace amp::sim {

namespace {

// Addresses a bus can carry, in the order units take them.
constexpr std::string_view kAddresses = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";

char AddressInTurn(char first, int index) {
  const auto start = kAddresses.find(first);
  if (start == std::string_view::npos) return first;
  return kAddresses[(start + static_cast<size_t>(index)) % kAddresses.size()];
}

bool ParseNumberArg(const std::string& text, int* out) {
  if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos || text.size() > 9)
    return false;
  *out = std::stoi(text);
  return true;
}

std::string UnitName(size_t index) {
  char name[32];
  std::snprintf(name, sizeof name, "sim%03zu", index + 1);
  return name;
}

}  // namespace

std::string FleetFileText(const std::vector<std::string>& endpoints,
                          const std::vector<std::string>& profiles) {
  std::ostringstream out;
  out << "# Fleet file written by ampsim for " << endpoints.size() << " simulated units.\n";
  for (size_t i = 0; i < endpoints.size(); ++i) {
    out << "\n[[unit]]  # profile " << profiles[i] << "\n"
        << "name = \"" << UnitName(i) << "\"\n"
        << "tcp = \"" << endpoints[i] << "\"\n"
        << "site = \"sim\"\n"
        << "rack = \"r" << (i / 10 + 1) << "\"\n";
  }
  return out.str();
}

std::string ApplyControlLine(const std::string& line, const std::vector<Simulator*>& sims) {
  std::istringstream in(line);
  std::string unitText, option, value;
  if (!(in >> unitText >> option)) return "expected UNIT --OPTION [VALUE]";
  in >> value;
  int unit = 0;
  if (!ParseNumberArg(unitText, &unit) || unit < 1 || unit > static_cast<int>(sims.size()))
    return "no unit '" + unitText + "' (units are 1 to " + std::to_string(sims.size()) + ")";
  Simulator& sim = *sims[static_cast<size_t>(unit - 1)];
  if (option == "--silent" || option == "--answer") {
    sim.SetSilent(option == "--silent");
    return "";
  }
  if (option == "--stop") {
    // The unit is gone as if switched off: its port no longer answers.
    sim.Stop();
    return "";
  }
  if (option == "--status") {
    StatusWords words[3];
    std::string why;
    size_t c1 = value.find(','), c2 = c1 == std::string::npos ? c1 : value.find(',', c1 + 1);
    if (c2 == std::string::npos) return "--status: expected SUMMARY,FAULT,ALARM";
    if (!DecodeWords(value.substr(0, c1), &words[0], &why) ||
        !DecodeWords(value.substr(c1 + 1, c2 - c1 - 1), &words[1], &why) ||
        !DecodeWords(value.substr(c2 + 1), &words[2], &why))
      return "--status: " + why;
    sim.SetStatus(words[0], words[1], words[2]);
    return "";
  }
  Simulator::Faults f = sim.CurrentFaults();
  int* count = option == "--drop-every"           ? &f.dropEvery
               : option == "--nak-every"          ? &f.nakEvery
               : option == "--bad-checksum-every" ? &f.badChecksumEvery
               : option == "--close-every"        ? &f.closeEvery
               : option == "--delay"              ? &f.delayMs
               : option == "--silent-after"       ? &f.silentAfter
                                                  : nullptr;
  if (count) {
    if (!ParseNumberArg(value, count)) return option + ": expected a whole number";
  } else if (option == "--babble") {
    f.babble = value != "off";
  } else {
    return "unknown option '" + option + "'";
  }
  sim.SetFaults(f);
  return "";
}

int RunFleet(const Simulator::Options& options, int count, const std::vector<std::string>& profiles,
             const UnitMaker& makeUnit, const std::string& fleetFile, const FleetWait& wait) {
  std::vector<std::unique_ptr<Simulator>> owned;
  std::vector<Simulator*> sims;
  std::vector<std::string> endpoints, used;
  const char firstAddress = options.unit.address;
  for (int i = 0; i < count; ++i) {
    const std::string profile =
        profiles.empty() ? std::string() : profiles[static_cast<size_t>(i) % profiles.size()];
    Simulator::Options o = options;
    o.unit = makeUnit(profile);
    o.unit.address = AddressInTurn(firstAddress, i);
    if (options.tcpPort != 0) o.tcpPort = options.tcpPort + i;
    owned.push_back(std::make_unique<Simulator>(o));
    std::string error;
    if (!owned.back()->Start(&error)) {
      std::fprintf(stderr, "ampsim: unit %d: %s\n", i + 1, error.c_str());
      return 1;
    }
    sims.push_back(owned.back().get());
    endpoints.push_back(options.tcpHost + ":" + std::to_string(owned.back()->TcpPort()));
    used.push_back(profile.empty() ? "default" : profile);
  }
  if (!fleetFile.empty()) {
    std::ofstream out(fleetFile, std::ios::trunc);
    out << FleetFileText(endpoints, used);
    if (!out.flush()) {
      std::fprintf(stderr, "ampsim: cannot write the fleet file '%s'\n", fleetFile.c_str());
      return 1;
    }
  }
  std::printf("ampsim ready tcp=%s units=%d\n", endpoints.front().c_str(), count);
  std::fflush(stdout);

  // Control lines come on standard input for as long as it stays open; the
  // reader is left behind at exit, blocked in its read.
  std::thread([sims] {
    char buffer[512];
    while (std::fgets(buffer, sizeof buffer, stdin)) {
      std::string line(buffer);
      while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.pop_back();
      if (line.empty()) continue;
      const std::string why = ApplyControlLine(line, sims);
      std::fprintf(stderr, "ampsim: %s%s\n", line.c_str(), why.empty() ? "" : (": " + why).c_str());
      std::fflush(stderr);
    }
  }).detach();

  wait(sims);
  for (Simulator* s : sims) s->Stop();
  return 0;
}

}  // namespace amp::sim
