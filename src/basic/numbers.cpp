#include "basic/numbers.h"

#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <system_error>

#include "basic/text.h"

// Conversions here never depend on the C locale (a Qt application may set a
// locale whose decimal separator is ","): text is read with std::from_chars
// and written with std::to_chars only.
//
// Out of range in Val: a number whose magnitude is beyond the largest double
// ("1e400", a thousand-digit integer) gives +-DBL_MAX, so Val always returns a
// finite value and a later CInt/CLng fails on it as on any too-large number; a
// nonzero number too small for a double ("1e-400") gives 0.

namespace amp {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The extent of the number that starts at `begin` (no blank skipping): an
// optional sign, digits with an optional "." and fraction (at least one digit
// in all), and an exponent only when it has at least one digit.
struct NumberScan {
  bool found = false;      // at least one mantissa digit
  size_t digits = 0;       // where the unsigned part starts (after any sign)
  size_t mantissaEnd = 0;  // end of the digits-and-point part
  size_t end = 0;          // end of the whole number (with any exponent)
};

NumberScan ScanNumber(std::string_view s, size_t begin) {
  NumberScan scan;
  size_t i = begin;
  if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
  scan.digits = i;
  size_t count = 0;
  while (i < s.size() && IsDigit(s[i])) ++i, ++count;
  if (i < s.size() && s[i] == '.') {
    ++i;
    while (i < s.size() && IsDigit(s[i])) ++i, ++count;
  }
  if (count == 0) return NumberScan{};
  scan.found = true;
  scan.mantissaEnd = i;
  scan.end = i;
  if (i < s.size() && (s[i] == 'E' || s[i] == 'e')) {
    size_t j = i + 1;
    if (j < s.size() && (s[j] == '+' || s[j] == '-')) ++j;
    if (j < s.size() && IsDigit(s[j])) {
      while (j < s.size() && IsDigit(s[j])) ++j;
      scan.end = j;
    }
  }
  return scan;
}

// For a scanned number that std::from_chars found out of range: true when it
// is too large (rather than too small). Its decimal magnitude is the place of
// its first nonzero digit plus the exponent; the sums are saturated.
bool IsTooLarge(std::string_view s, const NumberScan& scan) {
  constexpr long long kCap = 1'000'000'000'000LL;
  long long place = 0;  // 10^place of the first nonzero mantissa digit
  bool seenPoint = false;
  bool seenNonzero = false;
  long long intDigits = 0;
  for (size_t i = scan.digits; i < scan.mantissaEnd; ++i) {
    const char c = s[i];
    if (c == '.') {
      seenPoint = true;
      continue;
    }
    if (!seenPoint) {
      if (seenNonzero || c != '0') {
        seenNonzero = true;
        if (intDigits < kCap) ++intDigits;
      }
    } else if (!seenNonzero) {
      if (c != '0') {
        seenNonzero = true;
      } else if (place > -kCap) {
        --place;
      }
    }
  }
  place = intDigits > 0 ? intDigits - 1 : place - 1;
  long long exponent = 0;
  if (scan.end > scan.mantissaEnd) {
    size_t i = scan.mantissaEnd + 1;
    bool negative = false;
    if (s[i] == '+' || s[i] == '-') negative = s[i++] == '-';
    for (; i < scan.end; ++i) {
      if (exponent < kCap) exponent = exponent * 10 + (s[i] - '0');
    }
    if (negative) exponent = -exponent;
  }
  return place + exponent > 0;
}

// A finite nonnegative value in 15 significant decimal digits:
// value = 0.d1d2...d15 * 10^(exponent+1), i.e. digits[0] is the 10^exponent place.
// Zero gives empty digits.
struct Decimal15 {
  std::string digits;
  int exponent = 0;
};

Decimal15 ToDecimal15(double magnitude) {
  Decimal15 d;
  if (magnitude == 0) return d;
  char buf[64];
  // "d.dddddddddddddde+XXX", rounded correctly from the exact binary value.
  const auto result =
      std::to_chars(buf, buf + sizeof buf, magnitude, std::chars_format::scientific, 14);
  const std::string_view text(buf, static_cast<size_t>(result.ptr - buf));
  const size_t e = text.find('e');
  for (size_t i = 0; i < e; ++i) {
    if (IsDigit(text[i])) d.digits += text[i];
  }
  int exponent = 0;
  std::from_chars(text.data() + e + 1 + (text[e + 1] == '+' ? 1 : 0), text.data() + text.size(),
                  exponent);
  d.exponent = exponent;
  return d;
}

std::string NonFiniteText(double v) {
  if (std::isnan(v)) return "NaN";
  return v < 0 ? "-Infinity" : "Infinity";
}

template <typename Int>
std::optional<Int> RoundToInt(double v) {
  if (!std::isfinite(v)) return std::nullopt;
  // Ties to even, independent of the floating-point rounding mode. The
  // fraction v - floor(v) of a double is exact.
  const double below = std::floor(v);
  const double fraction = v - below;
  double rounded = below;
  if (fraction > 0.5 || (fraction == 0.5 && std::fmod(below, 2.0) != 0)) rounded = below + 1;
  if (rounded < static_cast<double>(std::numeric_limits<Int>::min()) ||
      rounded > static_cast<double>(std::numeric_limits<Int>::max())) {
    return std::nullopt;
  }
  return static_cast<Int>(rounded);
}

bool IsPlace(char c) { return c == '0' || c == '#'; }

}  // namespace

double Val(std::string_view s) {
  size_t i = 0;
  while (i < s.size() && (s[i] == ' ' || s[i] == '\t' || s[i] == '\n')) ++i;
  const NumberScan scan = ScanNumber(s, i);
  if (!scan.found) return 0;
  const bool negative = s[i] == '-';
  double value = 0;
  const char* first = s.data() + scan.digits;
  const char* last = s.data() + scan.end;
  const auto result = std::from_chars(first, last, value, std::chars_format::general);
  if (result.ec == std::errc::result_out_of_range) {
    value = IsTooLarge(s, scan) ? DBL_MAX : 0.0;
  } else if (result.ec != std::errc()) {
    value = 0;  // not expected: the scan only passes valid numbers
  }
  return negative ? -value : value;
}

std::optional<int16_t> CInt(double v) { return RoundToInt<int16_t>(v); }
std::optional<int32_t> CLng(double v) { return RoundToInt<int32_t>(v); }

bool IsNumeric(std::string_view s) {
  const std::string trimmed = Trim(s);
  if (trimmed.empty()) return false;
  const NumberScan scan = ScanNumber(trimmed, 0);
  return scan.found && scan.end == trimmed.size();
}

std::optional<int16_t> CIntText(std::string_view s) {
  if (!IsNumeric(s)) return std::nullopt;
  return CInt(Val(Trim(s)));
}

std::optional<int32_t> CLngText(std::string_view s) {
  if (!IsNumeric(s)) return std::nullopt;
  return CLng(Val(Trim(s)));
}

bool ParseInt(std::string_view s, int* out) {
  if (s.empty()) return false;
  const auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), *out);
  return ec == std::errc() && end == s.data() + s.size();
}

// Fixed notation while the decimal exponent is in -4..14 (at most 15 digits),
// otherwise "1.5E+20" / "1E-05" with at least two exponent digits. Non-finite
// values give "NaN", "Infinity", "-Infinity".
std::string NumText(double v) {
  if (!std::isfinite(v)) return NonFiniteText(v);
  if (v == 0) return "0";
  Decimal15 d = ToDecimal15(std::fabs(v));
  while (d.digits.size() > 1 && d.digits.back() == '0') d.digits.pop_back();
  const int n = static_cast<int>(d.digits.size());
  const int e = d.exponent;
  std::string out = v < 0 ? "-" : "";
  if (e >= 15 || e < -4) {
    out += d.digits[0];
    if (n > 1) out += "." + d.digits.substr(1);
    out += e < 0 ? "E-" : "E+";
    const int a = e < 0 ? -e : e;
    if (a < 10) out += '0';
    out += std::to_string(a);
  } else if (e >= 0) {
    for (int p = 0; p <= e; ++p) out += p < n ? d.digits[static_cast<size_t>(p)] : '0';
    if (n > e + 1) out += "." + d.digits.substr(static_cast<size_t>(e) + 1);
  } else {
    out += "0.";
    out.append(static_cast<size_t>(-e - 1), '0');
    out += d.digits;
  }
  return out;
}

// The picture is split at its first "."; "0" and "#" are places, anything else
// (including a second ".") is a literal kept where it stands. Integer digits
// fill the integer places from the right, and digits beyond them go in at the
// leftmost place; from the leftmost "0" on, every integer place shows a digit.
// After the point, places up to the last "0" always show; later "#" places
// show only up to the last nonzero digit. A picture without any "."
// rounds to a whole number; one with no integer places puts any integer digits
// just before the point. A picture with no places at all is returned as it is,
// an empty picture gives NumText(v), and a non-finite value gives NumText(v).
// Like the classic runtime, "###" gives "" for 0.
std::string Format(double v, std::string_view picture) {
  if (!std::isfinite(v) || picture.empty()) return NumText(v);
  const size_t point = picture.find('.');
  const std::string_view intPic = picture.substr(0, point);
  const std::string_view fracPic =
      point == std::string_view::npos ? std::string_view() : picture.substr(point + 1);

  size_t intPlaces = 0;
  size_t minIntDigits = 0;
  size_t leftmostPlace = std::string_view::npos;
  for (size_t i = 0; i < intPic.size(); ++i) {
    if (!IsPlace(intPic[i])) continue;
    if (leftmostPlace == std::string_view::npos) leftmostPlace = i;
    ++intPlaces;
    if (intPic[i] == '0' && minIntDigits == 0)
      minIntDigits = 1;  // counting starts here
    else if (minIntDigits > 0)
      ++minIntDigits;
  }
  size_t fracPlaces = 0;
  size_t mandatoryFrac = 0;
  for (const char c : fracPic) {
    if (!IsPlace(c)) continue;
    ++fracPlaces;
    if (c == '0') mandatoryFrac = fracPlaces;
  }
  if (intPlaces + fracPlaces == 0) return std::string(picture);

  // Round |v|'s 15-digit form half away from zero to `fracPlaces` decimals.
  Decimal15 d = ToDecimal15(std::fabs(v));
  const long long keep =
      static_cast<long long>(d.exponent) + 1 + static_cast<long long>(fracPlaces);
  if (!d.digits.empty() && keep < static_cast<long long>(d.digits.size())) {
    if (keep < 0) {
      d.digits.clear();
    } else {
      const bool up = d.digits[static_cast<size_t>(keep)] >= '5';
      d.digits.resize(static_cast<size_t>(keep));
      if (up) {
        size_t i = d.digits.size();
        while (i > 0 && d.digits[i - 1] == '9') d.digits[--i] = '0';
        if (i == 0) {
          d.digits.insert(d.digits.begin(), '1');
          ++d.exponent;
        } else {
          ++d.digits[i - 1];
        }
      }
    }
  }
  // After rounding a nonzero value keeps a nonzero leading digit, so the
  // rounded value is zero exactly when no digits remain.
  const bool zero = d.digits.empty();
  const auto digitAt = [&d](long long place) -> char {
    const long long index = static_cast<long long>(d.exponent) - place;
    return (index >= 0 && index < static_cast<long long>(d.digits.size()))
               ? d.digits[static_cast<size_t>(index)]
               : '0';
  };

  std::string intDigits;
  if (!zero) {
    for (long long p = d.exponent; p >= 0; --p) intDigits += digitAt(p);
  }
  if (intDigits.size() < minIntDigits) intDigits.insert(0, minIntDigits - intDigits.size(), '0');

  std::string fracDigits;
  for (size_t q = 1; q <= fracPlaces; ++q) fracDigits += digitAt(-static_cast<long long>(q));
  size_t shownFrac = fracPlaces;
  while (shownFrac > mandatoryFrac && fracDigits[shownFrac - 1] == '0') --shownFrac;

  std::string out = (v < 0 && !zero) ? "-" : "";
  if (intPlaces == 0) {
    out += intPic;
    out += intDigits;
  } else {
    // Walk the integer picture from the right, building it reversed.
    std::string reversed;
    size_t remaining = intDigits.size();
    for (size_t i = intPic.size(); i-- > 0;) {
      const char c = intPic[i];
      if (!IsPlace(c)) {
        reversed += c;
      } else if (i == leftmostPlace) {
        while (remaining > 0) reversed += intDigits[--remaining];
      } else if (remaining > 0) {
        reversed += intDigits[--remaining];
      }
    }
    out.append(reversed.rbegin(), reversed.rend());
  }
  if (point != std::string_view::npos) {
    if (shownFrac > 0) out += '.';
    size_t q = 0;
    for (const char c : fracPic) {
      if (!IsPlace(c)) {
        out += c;
      } else if (q < shownFrac) {
        out += fracDigits[q++];
      }
    }
  }
  return out;
}

double WattsFromdBm(double dBm) { return std::pow(10.0, (dBm - 30.0) / 10.0); }

// No power (0 W or less) is -infinity dBm; NaN stays NaN.
double dBmFromWatts(double watts) {
  if (std::isnan(watts)) return watts;
  if (watts <= 0) return -std::numeric_limits<double>::infinity();
  return 10.0 * std::log10(watts) + 30.0;
}

}  // namespace amp
