// Shared helpers of the application: the parts of a serial settings text,
// character classes, waits that keep the panel alive, and the pattern test
// the address menus use. Power conversions live in basic/numbers.h.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "basic/text.h"  // Like
#include "link/waits.h"  // PauseMs, DelaySeconds
#include "platform/event_pump.h"

namespace amp {

// Parts of a settings text "9600,N,8,1", found by position from the first
// comma: the baud before it, parity 1 behind it, data bits 3 behind, stop
// bits 5 behind. Each gives "" when the text has no comma (no baud either
// when the comma comes first) or the character is not one of its kind
// (parity N, E, O; data bits 8, 7; stop bits 1, 2).
std::string ParseBaud(std::string_view settings);
std::string ParseParity(std::string_view settings);
std::string ParseDataBits(std::string_view settings);
std::string ParseStopBits(std::string_view settings);

// A stored boolean: "True"/"False" in any case, or a number (not 0 is
// true); nullopt for anything else.
std::optional<bool> CBoolText(std::string_view text);

bool IsPrintable(int code);  // 32..126
bool IsLetter(int code);     // A-Z, a-z

// The decimal logarithm of a positive number; any other value as it is.
double Log10(double x);

}  // namespace amp
