// The parse vocabulary shared by every reader of the command set. A reader
// sends its command, takes a fresh copy of the reply frame (status byte,
// address, body, ETX, checksum: the body starts at position 3) and locates
// its data by one of these patterns. Positions are 1-based throughout.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "link/comms.h"

namespace amp {

// A number that does not fit, or a text that is not a number, where a reader
// converts to an integer. Guarded readers abandon just that statement (see
// Guarded); unguarded readers let it reach their caller.
class ConversionFailure : public std::runtime_error {
 public:
  explicit ConversionFailure(const std::string& what) : std::runtime_error(what) {}
};

// Rounded to nearest, ties to even; ConversionFailure when out of range.
int16_t ToInt16(double v);
int32_t ToInt32(double v);
// The text must be wholly numeric ("strict" readers).
int16_t TextToInt16(std::string_view text);

// Runs one statement of a guarded reader: a conversion failure abandons the
// statement and leaves whatever it would have assigned as it was.
template <class F>
void Guarded(F&& statement) {
  try {
    statement();
  } catch (const ConversionFailure&) {
  }
}

namespace rd {

// ExchangeCommand(text, false): readers never show a box.
bool Send(Comms& c, std::string_view text);

// One exchange; the reply frame copied, or "" when the exchange failed, so
// that a reader parsing the latest reply after a refused repeat finds nothing.
bool Exchange(Comms& c, std::string_view request, std::string& rx);

// Everything from `start` to the end of the message, ETX and checksum
// included: Val of it stops at the ETX.
std::string OpenEnd(const std::string& rx, long start);

// The text from `start` up to the first ETX found from `searchFrom` (which
// defaults to `start`), the ETX excluded. With no ETX, to the end.
std::string ToEtx(const std::string& rx, long start, long searchFrom = 0);

// The text from `start` to the first ETX at or after it; false, and `text`
// left as it was, when nothing stands between them.
bool TextToEtx(const std::string& rx, long start, std::string* text);

// Length of a reply without the CR a TCP reply keeps at its end.
long FrameLen(const std::string& rx);

// The value of a `.?P<n>` read: from the first blank + 1 up to the ETX, the
// frame's last character but one. Fails (false) unless blank > minBlank and
// the ETX stands after the blank. An empty value (blank right before ETX)
// passes and gives "".
bool BlankValue(const std::string& rx, long minBlank, std::string* value);

// Parts of `text` between separators; "a;b;" gives {"a", "b", ""}.
std::vector<std::string> Split(std::string_view text, char separator);

}  // namespace rd
}  // namespace amp
