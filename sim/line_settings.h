// The unit's own serial line settings ("9600,N,8,1") and how they compare
// with what a host has put on the pseudo-terminal.
#pragma once

#include <string>
#include <string_view>

struct termios;

namespace amp::sim {

struct LineSettings {
  int baud = 9600;
  char parity = 'N';   // N, E, O, M (mark) or S (space)
  int dataBits = 8;    // 5..8
  int stopBitsX2 = 2;  // stop bits times two: 2 = 1, 3 = 1.5, 4 = 2

  // Bits one character occupies on the wire: start + data + parity + stop.
  double BitsPerChar() const;
  // Wire time of one character in nanoseconds.
  long long CharNanos() const;

  std::string ToString() const;

  // Writes speed, character size, parity and stop bits into `t`; leaves the
  // other flags alone. False when the speed has no termios constant.
  bool ApplyTo(termios& t) const;
  // True when `t` carries these settings. A real unit only decodes bytes
  // sent with its own settings; anything else arrives as garbage.
  // Pass checkCharFormat = false where data bits and parity cannot be seen:
  // current Linux pseudo-terminals force CS8 and clear PARENB on every
  // tcsetattr, so only speed and stop bits reach the unit there.
  bool Matches(const termios& t, bool checkCharFormat = true) const;

  bool operator==(const LineSettings&) const = default;
};

// Parses "BAUD,PARITY,DATA,STOP", e.g. "9600,N,8,1" or "19200,e,7,2".
// Blanks around the fields are allowed. On failure returns false and says
// why in `error`.
bool ParseLineSettings(std::string_view text, LineSettings* out, std::string* error);

}  // namespace amp::sim
