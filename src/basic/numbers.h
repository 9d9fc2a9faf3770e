// Number conversions with the exact rules the command set relies on.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace amp {

// The numeric-prefix rule: skip leading blanks, tabs and line feeds, read the
// longest valid decimal number (optional sign, digits, optional "." and
// fraction, optional exponent "E"/"e" with optional sign and digits), stop at
// the first other byte, and give 0 when there is no number. Never fails.
// "12.5dB" -> 12.5, "abc" -> 0, "-.5" -> -0.5, "1e3x" -> 1000, "1e" -> 1.
double Val(std::string_view s);

// Rounding to 16- and 32-bit integers: to nearest, ties to even
// (2.5 -> 2, 3.5 -> 4, -2.5 -> -2). Out of range (or NaN) is a conversion
// failure: nullopt.
std::optional<int16_t> CInt(double v);
std::optional<int32_t> CLng(double v);

// True when the text, after trimming blanks, is wholly one decimal number in
// the sense of Val (sign, digits, point, exponent) with at least one digit.
bool IsNumeric(std::string_view s);

// Direct ("strict") conversion of a text: the text must be IsNumeric, then it
// is rounded as CInt/CLng. Anything else is a conversion failure.
std::optional<int16_t> CIntText(std::string_view s);
std::optional<int32_t> CLngText(std::string_view s);

// Plain parsing of a whole decimal integer that fits an int: an optional "-"
// and digits, nothing else, not even blanks. True with the number in `*out`.
bool ParseInt(std::string_view s, int* out);

// Decimal text of a number as the classic runtime's Str$/CStr would give it
// for display: shortest form, no exponent for ordinary magnitudes, no
// trailing zeros ("12.5", "-3", "0.001").
std::string NumText(double v);

// Number pictures. "0" is a digit always shown, "#" a digit shown only when
// significant; digits after the point are rounded to the picture's length
// (half away from zero, on the value's 15-significant-digit decimal form, so
// 2.675 with "0.00" gives "2.68"); trailing "#" places after the point are
// dropped when zero, and the point with them when no place remains.
// A negative value gets a leading "-" unless it rounds to zero. Characters of
// the picture other than 0 # . pass through as literals.
// Format(12.5, "#0.0") -> "12.5"; Format(7, "000000") -> "000007";
// Format(0.5, "##0") -> "1" (pictures round half away from zero, unlike CInt);
// Format(1.25, "##0.0##") -> "1.25"; Format(3, "##0.0##") -> "3.0";
// Format(-0.04, "0.0") -> "0.0".
std::string Format(double v, std::string_view picture);

// Power units: dBm on the wire, Watts on request.
double WattsFromdBm(double dBm);
double dBmFromWatts(double watts);

}  // namespace amp
