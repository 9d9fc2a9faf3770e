#include "commands/identity_cmds.h"

#include <cfloat>
#include <cmath>

#include "basic/numbers.h"
#include "basic/text.h"
#include "commands/reader_support.h"

namespace amp {

namespace {

const std::string kEtx(1, '\x03');

std::string IntText(int32_t v) { return std::to_string(v); }

// The value of a "YO"/"YP" read: the data follow the first blank. The blank
// of "YO0 " stands at 6, so blank + 1 > 5 only rejects a blank in the
// address byte or no blank at all.
bool PotValueStart(const std::string& rx, long* start) {
  const long blank = InStr(rx, " ");
  if (!(blank + 1 > 5)) return false;
  *start = blank + 1;
  return true;
}

// The 1-character digit after a tail (PBUH?, PBW?), strictly converted: a
// non-digit there is a ConversionFailure for the caller.
int16_t DigitAfterTail(Comms& c, std::string_view command, std::string_view tail) {
  int16_t result = -1;
  if (!rd::Send(c, command)) return result;
  const std::string rx = c.Link.RxMessage;
  const long pos = InStr(rx, tail);
  if (pos > 1) result = TextToInt16(Mid(rx, pos + Len(tail), 1));
  return result;
}

}  // namespace

std::string CmdUnitPartNumber(std::string_view number) { return "YK" + std::string(number); }
std::string CmdUnitSerialNumber(std::string_view number) { return "YL" + std::string(number); }
std::string CmdUnitCfgWord(int32_t word) { return "YM" + IntText(word); }
std::string CmdDateTime(std::string_view text) { return "%" + std::string(text); }

std::string CmdAdcScaler(int n, int32_t scaler) {
  return "YO" + IntText(n) + " " + IntText(scaler);
}

std::string CmdDigitalPot(int n, int32_t count) {
  return "YP" + IntText(n) + (count >= 0 ? " " : "") + IntText(count);
}

std::string CmdOverdriveTripLevel(double dB) { return "YP3 " + Format(dB, "#0.0"); }
std::string CmdTempCoefficient(std::string_view coefficient) {
  return "YB" + std::string(coefficient);
}
std::string CmdSubBandTempCoefficient(std::string_view coefficient, int subBand) {
  return "YB" + std::string(coefficient) + "s" + IntText(subBand);
}
std::string CmdTWTTempCoefficient(double dBPerDegree) {
  return "YBT" + Format(dBPerDegree, "0.000");
}
std::string CmdAmbientTemperature(std::string_view value) { return "PJ" + std::string(value); }
std::string CmdTWTAmbientTemperature(double degrees) { return "PJT" + Format(degrees, "0.000"); }
std::string CmdWaveguideConfig(std::string_view entry) {
  return entry.empty() ? std::string() : "PC" + Left(entry, 1);
}

// "1": the unit answers "1" and two characters whose low six bits each are
// the high and low part of its id word. Only the sign of the result matters
// to the address search, so a "1" found first in the address byte (a unit at
// address "1") still counts as an answer.
int16_t ReadUnitIDWord(Comms& c) {
  if (!rd::Send(c, "1")) return -1;
  const std::string rx = c.Link.RxMessage;
  const long pos = InStr(rx, "1");
  if (pos == 0 || pos + 2 > Len(rx)) return -1;
  const int hi = Asc(Mid(rx, pos + 1, 1)) & 63;
  const int lo = Asc(Mid(rx, pos + 2, 1)) & 63;
  return static_cast<int16_t>((hi * 256) | lo);
}

// "00": the fields are read from just after the first "0". The echo is "00",
// so a first field of 9 characters holds the echo's second "0" and it is
// stepped over. The compile date, the last field, has no closing "/": it runs
// over printable characters up to the ETX.
bool ReadUnitVersion(Comms& c, std::string_view fwPartNumber) {
  const std::string prefix = fwPartNumber == "715-2268-004" ? "418-" : "426-";
  if (!rd::Send(c, "00")) return false;
  const std::string rx = c.Link.RxMessage;
  const long zero = InStr(rx, "0");
  if (!(zero > 1)) return false;
  auto& f = c.gRespFields;

  long p = zero + 1;
  long q = InStr(p, rx, "/");
  bool atEnd = q == 0;
  if (q > p) {
    if (q - p == 9) p += 1;
    f[0] = Mid(rx, p, q - p);
    if (Len(f[0]) == 7) {
      f[0] = prefix + Left(f[0], 4) + "-" + Right(f[0], 3);
    } else if (Len(f[0]) == 8) {
      f[0] = prefix + f[0];
    }
  } else {
    f[0] = "";
  }

  // Serial number: between the first and the second "/".
  f[1] = "";
  if (!atEnd) {
    p = q + 1;
    q = InStr(p, rx, "/");
    if (q == 0) atEnd = true;
    if (q > p) f[1] = Mid(rx, p, q - p);
  }

  // Revision: up to the third "/", or up to ETX when none follows.
  f[2] = "";
  if (!atEnd) {
    p = q + 1;
    q = InStr(p, rx, "/");
    if (q == 0) {
      atEnd = true;
      f[2] = rd::ToEtx(rx, p);
    } else if (q > p) {
      f[2] = Mid(rx, p, q - p);
    }
  }

  // Compile date: the printable run after the third "/".
  f[3] = "";
  if (!atEnd) {
    p = q + 1;
    long e = p;
    while (e <= Len(rx)) {
      const int code = Asc(Mid(rx, e, 1));
      if (code <= 31 || code >= 127) break;
      ++e;
    }
    f[3] = Mid(rx, p, e - p);
  }
  return true;
}

// "0S": reply "0S" + text; the "S" at 4 is part of the result.
std::string ReadUnitSerialText(Comms& c) {
  if (!rd::Send(c, "0S")) return "";
  const std::string rx = c.Link.RxMessage;
  std::string text;
  if (Mid(rx, 4, 1) != "S" || !rd::TextToEtx(rx, 4, &text)) return "";
  return text;
}

// "0C": reply "0C" + version text, taken from 5 up to ETX.
std::string ReadCPLDVersion(Comms& c) {
  if (!rd::Send(c, "0C")) return "";
  const std::string rx = c.Link.RxMessage;
  std::string text;
  if (Mid(rx, 4, 1) != "C" || !rd::TextToEtx(rx, 5, &text)) return "";
  return text;
}

// "YT": reply "YT" + identity. The text is taken from after the echo to the
// end less one byte, so the ETX stays on it (blanks only are trimmed); every
// consumer reads a prefix of it (first letter, part number, Val).
std::string ReadUnitType(Comms& c) {
  if (!rd::Send(c, "YT")) return "";
  const std::string rx = c.Link.RxMessage;
  const long pos = InStr(rx, "YT");
  if (!(pos > 1)) return "";
  return Trim(Mid(rx, pos + 2, Len(rx) - pos - 2));
}

// "YM?": reply "YM" + word.
int16_t ReadUnitCfgWord(Comms& c) {
  int16_t word = -1;
  if (!rd::Send(c, "YM?")) return word;
  const std::string rx = c.Link.RxMessage;
  const long pos = InStr(rx, "YM");
  if (pos > 1) word = ToInt16(Val(rd::OpenEnd(rx, pos + 2)));
  return word;
}

// "?%": reply "?" + date and time text. The walk stops at the first control
// byte (the ETX) and never reaches the checksum, whatever its value.
std::string ReadDateTime(Comms& c) {
  if (!rd::Send(c, "?%")) return "";
  const std::string rx = c.Link.RxMessage;
  const long q = InStr(rx, "?");
  if (!(q > 1)) return "";
  long p = q + 1;
  while (p < Len(rx) && Asc(Mid(rx, p, 1)) > 31) ++p;
  return Mid(rx, q + 1, p - q - 1);
}

// ".?P131": reply ".P131 " + exactly 20 characters; the echo puts them at 9.
std::string ReadPN20(Comms& c) {
  if (!rd::Send(c, ".?P131")) return "";
  const std::string rx = c.Link.RxMessage;
  const long start = InStr(rx, "131") + 4;
  if (!(start > 8) || !(start + 20 < Len(rx))) return "";
  return Mid(rx, start, 20);
}

bool ReadAdcScalers(Comms& c, std::span<int16_t> out) {
  for (size_t n = 0; n < out.size(); ++n) {
    out[n] = -1;
    if (!rd::Send(c, "YO" + IntText(static_cast<int32_t>(n)) + "?")) continue;
    const std::string rx = c.Link.RxMessage;
    long start = 0;
    if (PotValueStart(rx, &start)) Guarded([&] { out[n] = ToInt16(Val(rd::OpenEnd(rx, start))); });
  }
  return true;
}

int16_t ReadDigitalPot(Comms& c, int n) {
  int16_t count = -1;
  if (!rd::Send(c, "YP" + IntText(n) + "?")) return count;
  const std::string rx = c.Link.RxMessage;
  long start = 0;
  if (PotValueStart(rx, &start)) Guarded([&] { count = ToInt16(Val(rd::OpenEnd(rx, start))); });
  return count;
}

float ReadOverdriveTripLevel(Comms& c) {
  if (!rd::Send(c, "YP3?")) return -1.0f;
  const std::string rx = c.Link.RxMessage;
  long start = 0;
  if (!PotValueStart(rx, &start)) return -1.0f;
  // A value beyond single precision is a failed conversion: the default stays.
  const double v = Val(rd::OpenEnd(rx, start));
  if (!(std::fabs(v) <= FLT_MAX)) return -1.0f;
  return static_cast<float>(v);
}

// "YB?": reply "YB" + coefficient, the echo right at the start of the body.
// A reply longer than 22 bytes carries the table form and is taken to the
// ETX (which must stand beyond 22); a short one holds 5 characters.
std::string ReadTempCoefficient(Comms& c) {
  if (!rd::Send(c, "YB?")) return "";
  const std::string rx = c.Link.RxMessage;
  const long pos = InStr(rx, "YB");
  if (pos != 3 || !(Len(rx) > 6)) return "";
  const long start = pos + 2;
  if (Len(rx) > 22) {
    const long etx = InStr(22, rx, kEtx);
    return etx > 22 ? Mid(rx, start, etx - start) : std::string();
  }
  return Mid(rx, start, 5);
}

// "YB" + n + "?": as "YB?", but the long form may end at an "s" (the
// sub-band suffix the unit echoes) before the ETX.
bool ReadSubBandTempCoefficients(Comms& c, int subBands) {
  if (subBands < 1 || subBands > 7) return false;
  bool any = false;
  for (int n = 1; n <= subBands; ++n) {
    std::string& field = c.gRespFields[static_cast<size_t>(n - 1)];
    field = "";
    if (!rd::Send(c, "YB" + IntText(n) + "?")) continue;
    const std::string rx = c.Link.RxMessage;
    const long pos = InStr(rx, "YB");
    if (pos != 3 || !(Len(rx) > 12)) continue;
    const long start = pos + 2;
    if (Len(rx) > 22) {
      long e = InStr(start, rx, kEtx);
      const long s = InStr(start, rx, "s");
      if (s > 1 && s < e) e = s;
      if (!(e > 22)) continue;
      field = Mid(rx, start, e - start);
    } else {
      field = Mid(rx, start, 5);
    }
    any = true;
  }
  return any;
}

// "PBUH?": reply "PBUH" + digit.
int16_t ReadUpcAvailability(Comms& c) { return DigitAfterTail(c, "PBUH?", "UH"); }

// "PBW?": reply "PBW" + digit.
int16_t ReadLEDMode(Comms& c) { return DigitAfterTail(c, "PBW?", "BW"); }

// "PBO?": reply "PBO" + four fields separated by ";", up to ETX.
ProductID ReadProductID(Comms& c) {
  ProductID id;
  if (!rd::Send(c, "PBO?")) return id;
  const std::string rx = c.Link.RxMessage;
  const long pos = InStr(rx, "BO");
  if (!(pos > 1)) return id;
  const auto parts = rd::Split(rd::ToEtx(rx, pos + 2), ';');
  if (parts.size() != 4) return id;
  id.partNumber = parts[0];
  id.manufacturerID = parts[1];
  id.serialNumber = parts[2];
  id.functionalID = Left(parts[3], 6);
  return id;
}

// ".?P349": reply ".P349 " + digit; the digit stands at 9.
int16_t ReadParamLogEnable(Comms& c) {
  if (!rd::Send(c, ".?P349")) return -1;
  const std::string rx = c.Link.RxMessage;
  if (!(Len(rx) > 9) || InStr(rx, ".P349 ") == 0) return -1;
  return static_cast<int16_t>(Asc(Mid(rx, 9, 1)) - 48);
}

}  // namespace amp
