// Everything the simulated unit remembers between commands.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace amp::sim {

// A status word carries 6 bits of meaning and travels as one character with
// bit 6 set (0x40 | bits), so it is always printable. Four words make a group.
using StatusWords = std::array<uint8_t, 4>;

inline char EncodeWord(uint8_t bits) { return static_cast<char>(0x40 | (bits & 0x3F)); }
std::string EncodeWords(const StatusWords& words);

// Parses four status characters such as "P@@@" (each 0x40..0x7F).
bool DecodeWords(std::string_view text, StatusWords* out, std::string* error);

// The unit id is sent as two characters of 6 bits each, so only values whose
// high and low bytes are both below 64 can be represented (0x0000..0x3F3F).
bool ValidUnitId(unsigned value);
std::string EncodeUnitId(uint16_t id);

// Bits of the summary group (words S1..S4).
namespace summary {
inline constexpr uint8_t kTxOn = 16;           // S1: transmitter (HV / Vdd) on
inline constexpr uint8_t kStandby = 8;         // S1
inline constexpr uint8_t kRemote = 4;          // S1: remote control, else local
inline constexpr uint8_t kConstPower = 2;      // S1
inline constexpr uint8_t kInhibit = 1;         // S1: RF inhibited
inline constexpr uint8_t kSummaryFault = 32;   // S2
inline constexpr uint8_t kHeaterStandby = 16;  // S2
inline constexpr uint8_t kSw2B = 16;           // S3: waveguide switch 2 in position B
inline constexpr uint8_t kSw2A = 8;            // S3
inline constexpr uint8_t kAutoMode = 4;        // S3: redundancy switching automatic
inline constexpr uint8_t kSw1B = 2;            // S3
inline constexpr uint8_t kSw1A = 1;            // S3
inline constexpr uint8_t kWgConfigMask = 7;    // S4: waveguide configuration
}  // namespace summary

// One calibration table: key (tenths of a dB or dBm) -> DAC/ADC count, and
// the entries being written between a begin and a save or abort.
struct CalTable {
  std::map<int, int> entries;
  bool editing = false;
  std::map<int, int> pending;
};

struct UnitState {
  char address = 'A';
  StatusWords summary{0x10, 0, 0, 0};  // "P@@@": transmitter ready, nothing else set
  StatusWords fault{};                 // words A, B, C, D
  StatusWords alarm{};
  // Fault bits whose cause is still present: a fault reset cannot clear them.
  StatusWords faultHold{};
  uint16_t unitId = 0x0101;
  bool remote = true;  // false: front-panel (local) control, set commands are refused
  // Named values (powers, temperatures, set-points ...) that commands read
  // and write as text. std::less<> so handlers can look up by string_view.
  std::map<std::string, std::string, std::less<>> values;
  // Command families the unit does not have: every command of such a family
  // is refused (see sim/profiles/README.md for the family names).
  std::set<std::string, std::less<>> lacks;
  // Readouts that wander around their value: key -> largest deviation.
  std::map<std::string, double, std::less<>> wander;
  // How many times each wandering readout has been read; the wander is a
  // fixed function of this count, so a run is reproducible.
  std::map<std::string, unsigned, std::less<>> wanderReads;
  // Record lists: "faultlog", "log.10min" ..., "trend.short", "trend.long".
  std::map<std::string, std::vector<std::string>, std::less<>> lists;
  // Calibration tables: "forward", "reverse", "drive", "atten".
  std::map<std::string, CalTable, std::less<>> calTables;
  std::string profileName;  // for messages only

  bool Lacks(std::string_view family) const { return lacks.find(family) != lacks.end(); }
  // Switches between remote and local control, keeping the summary's remote
  // bit in step.
  void SetRemote(bool on);
};

// A readout's value as the unit reports it now: the stored value, moved by
// its wander if it has one (and counting the read). Formatted with as many
// decimals as the stored text has. Empty when the key is unknown.
std::string ReadValue(UnitState& unit, std::string_view key);

// The deviation of the `count`-th read of a wandering value, in -1..1.
double WanderShape(std::string_view key, unsigned count);

// Numbers as the unit writes and reads them, whatever the process locale:
// "-12.5" with a point. ParseNumber takes an optional sign, digits and one
// point, nothing else; FormatFixed never gives "-0.0".
bool ParseNumber(std::string_view text, double* out);
std::string FormatFixed(double value, int decimals);

}  // namespace amp::sim
