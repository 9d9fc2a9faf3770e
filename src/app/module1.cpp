#include "app/module1.h"

#include <algorithm>
#include <cmath>

#include "basic/numbers.h"
#include "basic/text.h"

namespace amp {

namespace {

// The character `offset` places behind the first comma when it is one of
// `allowed`, else "".
std::string PartBehindComma(std::string_view settings, long offset, std::string_view allowed) {
  const long comma = InStr(settings, ",");
  if (comma == 0) return {};
  const std::string c = Mid(settings, comma + offset, 1);
  return (!c.empty() && allowed.find(c[0]) != std::string_view::npos) ? c : std::string();
}

}  // namespace

std::string ParseBaud(std::string_view settings) {
  const long comma = InStr(settings, ",");
  return comma > 1 ? Left(settings, comma - 1) : std::string();
}

std::string ParseParity(std::string_view settings) { return PartBehindComma(settings, 1, "NEO"); }
std::string ParseDataBits(std::string_view settings) { return PartBehindComma(settings, 3, "87"); }
std::string ParseStopBits(std::string_view settings) { return PartBehindComma(settings, 5, "12"); }

std::optional<bool> CBoolText(std::string_view text) {
  const std::string t = UCase(Trim(text));
  if (t == "TRUE") return true;
  if (t == "FALSE") return false;
  if (IsNumeric(t)) return Val(t) != 0;
  return std::nullopt;
}

bool IsPrintable(int code) { return code >= 32 && code <= 126; }

bool IsLetter(int code) { return (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z'); }

double Log10(double x) { return x > 0 ? std::log10(x) : x; }

}  // namespace amp
