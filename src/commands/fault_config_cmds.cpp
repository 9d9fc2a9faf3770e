#include "commands/fault_config_cmds.h"

#include "basic/numbers.h"
#include "basic/text.h"
#include "commands/reader_support.h"

namespace amp {
namespace {

// "YIF?" / "YIA?": the mask follows the two-letter tail. The test only keeps
// the tail out of the status and address bytes and the data start inside the
// frame; the number runs open to the end and the ETX stops it, so a bare
// echo reads as a mask of 0.
bool ReadEnableMask(Comms& c, std::string_view request, std::string_view tail, int32_t& word,
                    std::string* rxOut) {
  std::string rx;
  if (!rd::Exchange(c, request, rx)) return false;
  const long data = InStr(rx, tail) + 2;
  if (!(data > 4 && data < Len(rx))) return false;
  word = ToInt32(Val(rd::OpenEnd(rx, data)));
  if (rxOut) *rxOut = rx;
  return true;
}

// ".?P151" / ".?P212": the blank of ".P151 " stands at 8.
int16_t ReadLatch(Comms& c, std::string_view request) {
  int16_t result = -1;
  std::string rx, value;
  if (!rd::Exchange(c, request, rx)) return result;
  if (!rd::BlankValue(rx, 7, &value)) return result;
  Guarded([&] { result = ToInt16(Val(value)); });
  return result;
}

// "PBK<x>?": the echo must begin right at the body ("K<x>" at 5), and the
// number stands at 7.
std::string TempTripFromEcho(const std::string& rx, std::string_view tail) {
  if (!(InStr(rx, tail) == 5 && Len(rx) - 1 > 7)) return "";
  return Format(Val(rd::OpenEnd(rx, 7)), "##0");
}

// A numbered parameter read: the text from the blank to the ETX.
std::string ParamText(Comms& c, std::string_view request, long minBlank) {
  std::string rx, value;
  if (!rd::Exchange(c, request, rx)) return "";
  if (!rd::BlankValue(rx, minBlank, &value)) return "";
  return value;
}

// "PBKF?" / "PBKA?" always go out twice in a row and the second reply is the
// one read, even when it failed and the first was good. The numbered
// parameter of older firmware is asked only when neither exchange got
// through, since only then is the query itself unknown to the unit.
std::string ReadTempTrip(Comms& c, std::string_view request, std::string_view tail,
                         std::string_view fallback) {
  std::string rx;
  const bool first = rd::Exchange(c, request, rx);
  const bool second = rd::Exchange(c, request, rx);
  if (!first && !second) return ParamText(c, fallback, 6);
  return TempTripFromEcho(rx, tail);
}

// "PBDV?", "PBDR?": the text between the two-letter tail and the ETX.
bool ReadDCVText(Comms& c, std::string_view request, std::string_view tail) {
  c.gRespFields[0].clear();
  std::string rx;
  if (!rd::Exchange(c, request, rx)) return false;
  const long p = InStr(rx, tail);
  if (!(p + 1 > 5)) return false;
  if (!rd::TextToEtx(rx, p + 2, &c.gRespFields[0])) return false;
  return IsNumeric(c.gRespFields[0]);
}

}  // namespace

std::string CmdFaultEnable(int32_t mask) { return "YIF" + std::to_string(mask); }
std::string CmdFaultEnable(int32_t mask, int32_t second) {
  return "YIF" + std::to_string(mask) + "," + std::to_string(second);
}
std::string CmdAlarmEnable(int32_t mask) { return "YIA" + std::to_string(mask); }
std::string CmdLowLineLatch(int value) { return ".P151 " + std::to_string(value); }
std::string CmdExtIlokLatch(int value) { return ".P212 " + std::to_string(value); }

std::string CmdDCVLimit(int k, std::string_view volts) {
  static constexpr const char* kMnemonic[] = {"PBDAL", "PBDAH", "PBDFL", "PBDFH"};
  if (k < 1 || k > 4) return "";
  return kMnemonic[k - 1] + std::string(volts);
}
std::string CmdDCVRatio(std::string_view ratio) { return "PBDR" + std::string(ratio); }

std::string CmdTempFaultLevel(std::string_view degrees, bool oldTempTrips) {
  return (oldTempTrips ? ".P4 " : "PBKF") + std::string(degrees);
}
std::string CmdTempFaultParam(std::string_view degrees) { return ".P136 " + std::string(degrees); }
std::string CmdTempAlarmLevel(std::string_view degrees) { return "PBKA" + std::string(degrees); }
std::string CmdTempAlarmParam(std::string_view degrees) { return ".P179 " + std::string(degrees); }
std::string CmdInletDiffAlarmLevel(std::string_view degrees) {
  return "PBKI" + std::string(degrees);
}
std::string CmdLatchTempFaults(bool latch) { return latch ? "PBKL1" : "PBKL0"; }
std::string CmdFanTemperature(int degrees) { return "PBG" + std::to_string(degrees); }
std::string CmdMaxCalTemp(std::string_view degrees) { return ".P332 " + std::string(degrees); }
std::string CmdMinCalTemp(std::string_view degrees) { return ".P333 " + std::string(degrees); }
std::string CmdCurrentSenseGain(double gain) { return "YIG" + Format(gain, "##0.0"); }
std::string CmdCurrentSenseResistor(double ohms) { return "YIR" + Format(ohms, "0.0##"); }
std::string CmdWGArcDetectorType(int type) { return type == 0 ? "PTW0" : "PTW1"; }

// "YIF?": a unit with a second fault group answers "YIF" + mask + "," +
// second mask. The comma is searched from the mask on; a comma that is in
// fact the checksum byte gives a second word of 0, which nothing guards.
bool ReadFaultEnable(Comms& c, int32_t& enableWord, int32_t& enableWord2) {
  std::string rx;
  if (!ReadEnableMask(c, "YIF?", "IF", enableWord, &rx)) return false;
  const long comma = InStr(InStr(rx, "IF") + 2, rx, ",");
  if (comma > 5) enableWord2 = ToInt32(Val(rd::OpenEnd(rx, comma + 1)));
  return true;
}

bool ReadAlarmEnable(Comms& c, int32_t& enableWord) {
  return ReadEnableMask(c, "YIA?", "IA", enableWord, nullptr);
}

int16_t ReadLowLineLatch(Comms& c) { return ReadLatch(c, ".?P151"); }
int16_t ReadExtIlokLatch(Comms& c) { return ReadLatch(c, ".?P212"); }

std::string ReadTempFaultLevel(Comms& c, bool oldTempTrips) {
  if (oldTempTrips) {
    // ".P4 " has its blank at 6, but for the old units only the ETX is
    // tested against the blank, not the blank's place. A reply without a
    // blank therefore gives the frame from its status byte up to the ETX;
    // it stays inside the frame.
    return ParamText(c, ".?P4", -1);
  }
  return ReadTempTrip(c, "PBKF?", "KF", ".?P136");
}

std::string ReadTempAlarmLevel(Comms& c) { return ReadTempTrip(c, "PBKA?", "KA", ".?P179"); }

std::string ReadInletDiffAlarmLevel(Comms& c) {
  std::string rx;
  if (!rd::Exchange(c, "PBKI?", rx)) return "";
  return TempTripFromEcho(rx, "KI");
}

// "PBKL?": sent twice like the trip levels, no fallback. The digit at 7 must
// be the whole of a number.
int16_t ReadLatchTempFaults(Comms& c) {
  int16_t result = -1;
  std::string rx;
  const bool first = rd::Exchange(c, "PBKL?", rx);
  const bool second = rd::Exchange(c, "PBKL?", rx);
  if (!first && !second) return result;
  if (!(InStr(rx, "KL") == 5 && Len(rx) - 1 > 7)) return result;
  Guarded([&] { result = TextToInt16(Mid(rx, 7, 1)); });
  return result;
}

// "?T" / "?TT": the unit answers "?" and four characters per temperature.
// The first field's text is kept in [0] even when it is out of range; only
// the returned value marks it as unusable.
int16_t ReadTemperature(Comms& c, bool second) {
  int16_t result = -125;
  std::string rx;
  if (!rd::Exchange(c, second ? "?TT" : "?T", rx)) return result;
  const long q = InStr(rx, "?");
  if (!(q > 0)) return result;
  c.gRespFields[0] = Mid(rx, q + 1, 4);
  Guarded([&] {
    const int16_t t = ToInt16(Val(c.gRespFields[0]));
    result = (t >= -40 && t <= 120) ? t : int16_t{-125};
  });
  if (second) {
    c.gRespFields[1] = Mid(rx, q + 5, 4);
    if (!IsNumeric(c.gRespFields[1])) c.gRespFields[1].clear();
  } else {
    c.gRespFields[1].clear();
  }
  return result;
}

// "?t": the "?" must stand in the body, not in the address byte.
float ReadInletTemperature(Comms& c) {
  float result = -50.0f;
  std::string rx;
  if (!rd::Exchange(c, "?t", rx)) return result;
  const long q = InStr(rx, "?");
  if (!(q > 2)) return result;
  result = static_cast<float>(Val(rd::OpenEnd(rx, q + 1)));
  c.gRespFields[0] = Format(result, "##0");
  return result;
}

std::string ReadMaxCalTemp(Comms& c) {
  std::string rx, value;
  if (!rd::Exchange(c, ".?P332", rx) || !rd::BlankValue(rx, 6, &value)) return "";
  return Format(Val(value), "##0");
}

std::string ReadMinCalTemp(Comms& c) {
  std::string rx, value;
  if (!rd::Exchange(c, ".?P333", rx) || !rd::BlankValue(rx, 6, &value)) return "";
  return Format(Val(value), "##0");
}

// "PBG?": the echo must start the body. The number is converted strictly
// from 6 to the end of the frame; the ETX and checksum that end every reply
// are not part of a number, so this conversion fails and the reader keeps -1
// whenever the frame is whole.
int16_t ReadFanTemperature(Comms& c) {
  int16_t result = -1;
  std::string rx;
  if (!rd::Exchange(c, "PBG?", rx)) return result;
  if (InStr(rx, "PBG") != 3) return result;
  Guarded([&] { result = TextToInt16(rd::OpenEnd(rx, 6)); });
  return result;
}

bool ReadDCVInput(Comms& c) { return ReadDCVText(c, "PBDV?", "DV"); }
bool ReadDCVRatio(Comms& c) { return ReadDCVText(c, "PBDR?", "DR"); }

// "PBDAL?" and its kind: the whole five-letter echo is the tail, so it must
// merely stand in the body.
bool ReadDCVLimit(Comms& c, int k) {
  static constexpr const char* kMnemonic[] = {"PBDAL", "PBDAH", "PBDFL", "PBDFH"};
  if (k < 1 || k > 4) return false;
  const std::string tail = kMnemonic[k - 1];
  std::string rx;
  if (!rd::Exchange(c, tail + "?", rx)) return false;
  const long p = InStr(rx, tail);
  if (!(p > 2)) return false;
  if (!rd::TextToEtx(rx, p + Len(tail), &c.gRespFields[0])) return false;
  return IsNumeric(c.gRespFields[0]);
}

// "?IiJj": four fields of four characters after the "?". The texts are
// passed on as the unit sent them.
bool ReadCurrentSense(Comms& c) {
  std::string rx;
  if (!rd::Exchange(c, "?IiJj", rx)) return false;
  const long q = InStr(rx, "?");
  if (!(Len(rx) > 16 && q > 1)) return false;
  for (int i = 0; i < 4; ++i) c.gRespFields[static_cast<size_t>(i)] = Mid(rx, q + 1 + 4L * i, 4);
  return true;
}

std::string ReadCurrentSenseGain(Comms& c) {
  std::string rx, value;
  if (!rd::Exchange(c, ".?P92", rx) || !rd::BlankValue(rx, 6, &value)) return "";
  return value;
}

float ReadCurrentSenseResistor(Comms& c) {
  std::string rx, value;
  if (!rd::Exchange(c, ".?P93", rx) || !rd::BlankValue(rx, 6, &value)) return 0.0f;
  return static_cast<float>(Val(value));
}

int16_t ReadWGArcDetectorType(Comms& c) {
  std::string rx;
  if (!rd::Exchange(c, "PTW?", rx)) return -1;
  const long p = InStr(rx, "TW");
  if (!(p > 1)) return -1;
  return ToInt16(Val(Mid(rx, p + 2, 1)));
}

}  // namespace amp
