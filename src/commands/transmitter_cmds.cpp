#include "commands/transmitter_cmds.h"

#include <optional>

#include "basic/numbers.h"
#include "basic/text.h"
#include "commands/reader_support.h"

namespace amp {
namespace {

// "?M" and "?N": "?" and six digits. The test Len > 6 lets a reply with as
// little as two characters after the "?" through; Val then stops at the ETX.
int32_t ReadHours(Comms& c, std::string_view request) {
  int32_t result = -1;
  if (!rd::Send(c, request)) return result;
  const std::string rx = c.Link.RxMessage;
  const long q = InStr(rx, "?");
  if (!(Len(rx) > 6 && q > 1)) return result;
  Guarded([&] { result = ToInt32(Val(Mid(rx, q + 1, 6))); });
  return result;
}

// The cathode monitor settings "PBF<x>?": the three-letter tail "BF<x>" and
// the number open to the end. Nothing when the exchange, the test or the
// conversion fails. The test tail + 3 > 2 cannot catch a missing tail
// (InStr gives 0, and 0 + 3 passes): such a reply is read from the body's
// first character, which units have always been read with.
std::optional<int16_t> CathodeSetting(Comms& c, std::string_view request, std::string_view tail) {
  std::optional<int16_t> value;
  if (!rd::Send(c, request)) return value;
  const std::string rx = c.Link.RxMessage;
  const long data = InStr(rx, tail) + 3;
  if (!(Len(rx) > 4 && data > 2)) return value;
  Guarded([&] { value = ToInt16(Val(rd::OpenEnd(rx, data))); });
  return value;
}

// "PBFE?" and "PBFF?" demand the echo right at the start of the body: the
// number stands at 7.
std::optional<int16_t> NegativeAnodeSetting(Comms& c, std::string_view request,
                                            std::string_view tail) {
  std::optional<int16_t> value;
  if (!rd::Send(c, request)) return value;
  const std::string rx = c.Link.RxMessage;
  const long data = InStr(rx, tail) + 3;
  if (!(Len(rx) > 4 && data == 7)) return value;
  Guarded([&] { value = ToInt16(Val(rd::OpenEnd(rx, data))); });
  return value;
}

}  // namespace

std::string CmdHours(double heaterHours, double beamHours) {
  return "YH" + Format(heaterHours, "000000") + Format(beamHours, "000000");
}
std::string CmdHelixCurrentRatio(int ratio) { return "YGHI" + std::to_string(ratio); }
std::string CmdHelixCurrentTrip(std::string_view mA) { return "YFTH" + std::string(mA); }
std::string CmdCathodeMonitorState(int state) { return "PBFS" + std::to_string(state); }
std::string CmdAnodeScale(double volts) { return "PBFT" + Format(volts, "###0"); }
std::string CmdNegativeAnodeStart(int volts) { return "PBFF" + std::to_string(volts); }
std::string CmdAnodeVoltage(double volts) { return "PBFA" + Format(volts, "###0"); }
std::string CmdCathodeScalar(double scalar) { return "PBFO" + Format(scalar, "###0"); }
std::string CmdIdealCathodeCurrent(double mA) { return "PBFI" + Format(mA, "##0"); }

// "?!", "?(", "?#": the unit answers "?" and the four characters of the
// word. Only the "?" is searched, wherever it stands.
std::string ReadStatusWord(Comms& c, int k) {
  std::string word;
  const char* request = k == 1 ? "?!" : k == 2 ? "?(" : k == 3 ? "?#" : nullptr;
  if (request == nullptr) return word;
  if (!rd::Send(c, request)) return word;
  const std::string rx = c.Link.RxMessage;
  const long q = InStr(rx, "?");
  if (q > 0) word = Mid(rx, q + 1, 4);
  return word;
}

// ".?P54": ".P54 " and one digit. Only a clear 0 counts as "not inhibited";
// anything unreadable errs on the side of showing the inhibit.
int16_t ReadRFInhibitState(Comms& c) {
  int16_t result = -1;
  if (!rd::Send(c, ".?P54")) return result;
  const std::string rx = c.Link.RxMessage;
  const long blank = InStr(rx, " ");
  if (!(Len(rx) > 7 && blank > 1)) return result;
  const std::string digit = Mid(rx, blank + 1, 1);
  if (!IsNumeric(digit)) return result;
  return Val(digit) == 0 ? 0 : -1;
}

// "PTI?": "PTI" and one digit, 0 for inverted polarity.
int16_t ReadRFPolarity(Comms& c) {
  int16_t result = -1;
  if (!rd::Send(c, "PTI?")) return result;
  const std::string rx = c.Link.RxMessage;
  const long tail = InStr(rx, "TI");
  if (!(Len(rx) > 5 && tail + 1 > 2)) return result;
  const std::string digit = Mid(rx, tail + 2, 1);
  if (!IsNumeric(digit)) return result;
  return Val(digit) == 0 ? 0 : 1;
}

// "PBA?": "PBA" and one digit; a non-digit reads as 0.
int16_t ReadAutoXmitRestore(Comms& c) {
  int16_t result = -1;
  if (!rd::Send(c, "PBA?")) return result;
  const std::string rx = c.Link.RxMessage;
  const long tail = InStr(rx, "BA");
  if (!(tail > 2)) return result;
  Guarded([&] { result = ToInt16(Val(Mid(rx, tail + 2, 1))); });
  return result;
}

// "PX?": "PX" and one digit.
int16_t ReadStartupMode(Comms& c) {
  int16_t result = -1;
  if (!rd::Send(c, "PX?")) return result;
  const std::string rx = c.Link.RxMessage;
  const long data = InStr(rx, "PX") + 2;
  if (!(data > 4)) return result;
  Guarded([&] { result = ToInt16(Val(Mid(rx, data, 1))); });
  return result;
}

// ":?": ":" right at the start of the body, then one digit.
int16_t ReadHeaterStandby(Comms& c) {
  int16_t result = -1;
  if (!rd::Send(c, ":?")) return result;
  const std::string rx = c.Link.RxMessage;
  if (!(Len(rx) > 3 && InStr(rx, ":") == 3)) return result;
  const std::string digit = Mid(rx, 4, 1);
  if (!IsNumeric(digit)) return result;
  Guarded([&] { result = TextToInt16(digit); });
  return result;
}

// "PBH?": "PBH" right at the start of the body, then one digit.
int16_t ReadHeaterState(Comms& c) {
  int16_t result = -1;
  if (!rd::Send(c, "PBH?")) return result;
  const std::string rx = c.Link.RxMessage;
  const long tail = InStr(rx, "BH");
  if (!(Len(rx) > 4 && tail == 4)) return result;
  const std::string digit = Mid(rx, tail + 2, 1);
  if (!IsNumeric(digit)) return result;
  Guarded([&] { result = TextToInt16(digit); });
  return result;
}

int32_t ReadHeaterHours(Comms& c) { return ReadHours(c, "?M"); }
int32_t ReadXmitHours(Comms& c) { return ReadHours(c, "?N"); }

// "?VI" / "?VIvi": "?" and four-character fields, voltage then current, per
// tube. A field is taken only when it ends before the ETX; fields not taken
// keep their earlier text.
bool ReadHelixValues(Comms& c, bool dual) {
  if (!rd::Send(c, dual ? "?VIvi" : "?VI")) return false;
  const std::string rx = c.Link.RxMessage;
  const long q = InStr(rx, "?");
  if (!(q > 0)) return false;
  const int fields = dual ? 4 : 2;
  bool lastRead = false;
  long start = q + 1;
  for (int i = 0; i < fields; ++i, start += 4) {
    if (start + 4 < Len(rx)) {
      c.gRespFields[i] = Mid(rx, start, 4);
      lastRead = (i == fields - 1);
    }
  }
  return lastRead;
}

// "YGHI?": "YGHI" right at the start of the body, the ratio from 7 to the
// ETX. Unguarded: an oversized ratio reaches the caller as a failure.
int16_t ReadHelixCurrentRatio(Comms& c) {
  int16_t result = -1;
  if (!rd::Send(c, "YGHI?")) return result;
  const std::string rx = c.Link.RxMessage;
  if (InStr(rx, "HI") != 5) return result;
  const int16_t ratio = ToInt16(Val(rd::OpenEnd(rx, 7)));
  if (ratio >= 0) result = ratio;
  return result;
}

// "YFTH?": "YFTH" right at the start of the body, the trip text from 7 up to
// the ETX. Not guarded, though there is no conversion to fail.
std::string ReadHelixCurrentTrip(Comms& c) {
  std::string result;
  if (!rd::Send(c, "YFTH?")) return result;
  const std::string rx = c.Link.RxMessage;
  if (InStr(rx, "TH") != 5) return result;
  rd::TextToEtx(rx, 7, &result);
  return result;
}

// "PHV?": "PHV" and four characters. Older units know only the status-style
// "?J", answered "?" and four characters. The fallback is tried only when
// "PHV?" is refused, not when its reply cannot be read.
float ReadHeaterVoltage(Comms& c) {
  float result = 0;
  std::string rx;
  long data = 0;
  if (rd::Send(c, "PHV?")) {
    rx = c.Link.RxMessage;
    const long tail = InStr(rx, "HV");
    if (tail + 1 > 1) data = tail + 2;
  } else if (rd::Send(c, "?J")) {
    rx = c.Link.RxMessage;
    const long q = InStr(rx, "?");
    if (q + 1 > 1) data = q + 1;
  }
  // The four characters must end before the ETX.
  if (data > 0 && data + 4 < Len(rx)) result = static_cast<float>(Val(Mid(rx, data, 4)));
  return result;
}

// "PHI?": "PHI" and four characters, which must end before the ETX.
float ReadHeaterCurrent(Comms& c) {
  float result = 0;
  if (!rd::Send(c, "PHI?")) return result;
  const std::string rx = c.Link.RxMessage;
  const long tail = InStr(rx, "HI");
  if (!(tail > 0)) return result;
  const long data = tail + 2;
  if (data + 4 < Len(rx)) result = static_cast<float>(Val(Mid(rx, data, 4)));
  return result;
}

// "?C": "?" and four characters. Units without it answer "PBFC?" with
// "PBFC" and the number to the ETX; that one is asked only when "?C" is
// refused, and its test passes even without the tail (0 + 3 > 2). A
// negative current is no reading.
int16_t ReadCathodeCurrent(Comms& c) {
  int16_t result = -1;
  std::optional<std::string> data;
  if (rd::Send(c, "?C")) {
    const std::string rx = c.Link.RxMessage;
    const long start = InStr(rx, "?") + 1;
    if (Len(rx) > 4 && start > 2) data = Mid(rx, start, 4);
  } else if (rd::Send(c, "PBFC?")) {
    const std::string rx = c.Link.RxMessage;
    const long start = InStr(rx, "BFC") + 3;
    if (start > 2) data = rd::OpenEnd(rx, start);
  }
  if (data) {
    Guarded([&] {
      const int16_t mA = ToInt16(Val(*data));
      if (mA >= 0) result = mA;
    });
  }
  return result;
}

// "PBFS?": "PBFS" and one digit, which must be a number as it stands. Any
// value above 0 means sensing is on. As with the other "PBF" settings, a
// missing tail still passes the test and the body's first character is read.
int16_t ReadCathodeSense(Comms& c) {
  int16_t result = -1;
  if (!rd::Send(c, "PBFS?")) return result;
  const std::string rx = c.Link.RxMessage;
  const long data = InStr(rx, "BFS") + 3;
  if (!(Len(rx) > 4 && data > 2)) return result;
  Guarded([&] { result = TextToInt16(Mid(rx, data, 1)) > 0 ? 1 : 0; });
  return result;
}

int16_t ReadCathodeMode(Comms& c) {
  const auto v = CathodeSetting(c, "PBFM?", "BFM");
  return v && *v > 0 ? *v : -1;
}

int16_t ReadIdealCathodeCurrent(Comms& c) {
  const auto v = CathodeSetting(c, "PBFI?", "BFI");
  return v && *v > 0 ? *v : -1;
}

int16_t ReadAnodeVoltage(Comms& c) {
  const auto v = CathodeSetting(c, "PBFA?", "BFA");
  return v && *v > 0 ? *v : -1;
}

int16_t ReadCathodeScalar(Comms& c) {
  const auto v = CathodeSetting(c, "PBFO?", "BFO");
  return v && *v >= 0 ? *v : 0;
}

int16_t ReadAnodeScale(Comms& c) { return CathodeSetting(c, "PBFT?", "BFT").value_or(0); }

bool ReadNegativeAnodeEnable(Comms& c) {
  const auto v = NegativeAnodeSetting(c, "PBFE?", "BFE");
  return v && *v != 0;
}

int16_t ReadNegativeAnodeStart(Comms& c) {
  return NegativeAnodeSetting(c, "PBFF?", "BFF").value_or(0);
}

// "QEP?": "QEP" right at the start of the body, then three values separated
// by ";": two texts and a number to the ETX.
bool ReadTwtEolParams(Comms& c) {
  if (!rd::Send(c, "QEP?")) return false;
  const std::string rx = c.Link.RxMessage;
  const long tail = InStr(rx, "EP");
  if (tail != 4) return false;
  const long first = tail + 2;
  const long semi1 = InStr(first, rx, ";");
  if (!(semi1 > first)) return false;
  c.gRespFields[0] = Mid(rx, first, semi1 - first);
  const long second = semi1 + 1;
  const long semi2 = InStr(second, rx, ";");
  if (!(semi2 > second)) return false;
  c.gRespFields[1] = Mid(rx, second, semi2 - second);
  Guarded([&] { c.gRespFields[2] = Format(ToInt16(Val(rd::OpenEnd(rx, semi2 + 1))), "###0"); });
  return true;
}

// "QEC": "QEC" right at the start of the body, the estimate, then ";". The
// ";" is searched from the start of the message.
std::string ReadTwtEolEstimate(Comms& c) {
  std::string result;
  if (!rd::Send(c, "QEC")) return result;
  const std::string rx = c.Link.RxMessage;
  const long tail = InStr(rx, "EC");
  if (tail != 4) return result;
  const long data = tail + 2;
  const long semi = InStr(rx, ";");
  if (semi > data) result = Mid(rx, data, semi - data);
  return result;
}

std::string TwtEolEstimateText(std::string_view estimate) {
  if (Len(estimate) == 2) return std::string(estimate) + " Years";
  if (Len(estimate) == 3) return Left(estimate, 1) + " Months";
  return "???";
}

}  // namespace amp
