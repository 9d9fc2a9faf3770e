// The fleet file: which units one monitoring process watches, in TOML.
//
//   [[unit]]
//   name = "hpa-1"                # unique, letters, digits, - _ .
//   tcp = "10.0.0.21:2000"        # a unit on the network, or
//   serial = "/dev/ttyUSB0"       # a unit on a serial line (RS-232/485),
//   settings = "9600,N,8,1"       #   with the line's settings
//   address = "A"                 #   and its one-character address
//   site = "north"                # optional labels: site, rack, chain
//
// Units that name the same serial device share one bus. The file is operator
// input: everything wrong with it is found here, with the line it is on,
// before any port or socket is opened.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace amp::fleet {

struct Label {
  std::string name, value;
};

struct UnitEntry {
  std::string name;
  std::string tcpHost;  // a TCP unit when not empty
  int tcpPort = 0;
  std::string serialDevice;  // a serial unit when not empty
  std::string settings;      // serial only, "9600,N,8,1"
  char address = 'A';
  std::vector<Label> labels;  // site, rack, chain: those given, in that order
  int line = 0;               // where the unit's table starts
  bool Tcp() const { return !tcpHost.empty(); }
};

struct Fleet {
  std::vector<UnitEntry> units;
};

// Parses a fleet file's text; `source` names it in messages. False with one
// message "SOURCE:LINE: what is wrong" in `error`.
bool ParseFleet(std::string_view text, const std::string& source, Fleet* out, std::string* error);
// Reads and parses the file at `path`.
bool LoadFleetFile(const std::string& path, Fleet* out, std::string* error);

}  // namespace amp::fleet
