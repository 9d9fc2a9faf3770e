// Everything the simulated unit remembers between commands.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

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

struct UnitState {
  char address = 'A';
  StatusWords summary{0x10, 0, 0, 0};  // "P@@@": transmitter ready, nothing else set
  StatusWords fault{};                 // words A, B, C, D
  StatusWords alarm{};
  uint16_t unitId = 0x0101;
  bool remote = true;  // false: front-panel (local) control, set commands are refused
  // Named values (powers, temperatures, set-points ...) that commands read
  // and write as text. std::less<> so handlers can look up by string_view.
  std::map<std::string, std::string, std::less<>> values;
};

}  // namespace amp::sim
