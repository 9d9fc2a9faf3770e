#include "commands/upconverter_cmds.h"

#include <vector>

#include "basic/numbers.h"
#include "basic/text.h"
#include "commands/reader_support.h"

namespace amp {
namespace {

// "PBC<x>?": the number follows the two-letter tail, open to the end. Only
// the tail's place is tested, so an echo with no number reads as 0.
float ReadBucValue(Comms& c, std::string_view request, std::string_view tail, float fallback) {
  std::string rx;
  if (!rd::Exchange(c, request, rx)) return fallback;
  const long p = InStr(rx, tail);
  if (!(p > 1)) return fallback;
  return static_cast<float>(Val(rd::OpenEnd(rx, p + 2)));
}

// "YCA?" / "YCD?": a list of values separated by ";" between the tail and
// the ETX. A count outside [minUpper + 1, maxUpper + 1] is refused whole.
// Values beyond the 11 entries of gRespFields are dropped, like the blank
// that marks the end of the list when the list fills them all.
bool ReadAmcList(Comms& c, std::string_view request, std::string_view tail, size_t minUpper,
                 size_t maxUpper) {
  std::string rx;
  if (!rd::Exchange(c, request, rx)) return false;
  const long p = InStr(rx, tail);
  if (!(Len(rx) > 4 && p > 1)) return false;
  std::string list;
  if (!rd::TextToEtx(rx, p + 2, &list)) return false;
  const std::vector<std::string> parts = rd::Split(list, ';');
  const size_t upper = parts.size() - 1;
  if (upper < minUpper || upper > maxUpper) return false;
  auto& fields = c.gRespFields;
  for (size_t i = 0; i < parts.size() && i < fields.size(); ++i) fields[i] = parts[i];
  if (parts.size() < fields.size()) fields[parts.size()].clear();
  return true;
}

}  // namespace

std::string CmdBucMode(int16_t mode) { return "PBCM" + std::to_string(mode); }
std::string CmdBucSetPoint(double dBm) { return "PBCS" + Format(dBm, "#0.0"); }
std::string CmdBucOffset(double dB) { return "PBCO" + Format(dB, "#0.0"); }
std::string CmdBucAtten(double dB) { return "PBCA" + Format(dB, "#0.0"); }
std::string CmdBucMaxAtten(double dB) { return "PBCN" + Format(dB, "#0.0"); }
std::string CmdAmcHeaterVoltage(double volts) { return "YCD0 " + Format(volts, "##0.0#"); }
std::string CmdAmcHeaterCurrent(double amps) { return "YCD1 " + Format(amps, "##0.0#"); }
std::string CmdAmcFocusOffVoltage(double kV) { return "YCD2 " + Format(kV, "#####0.0"); }
std::string CmdAmcFocusOnVoltage(double kV) { return "YCD3 " + Format(kV, "#####0.0"); }
std::string CmdPSVset(int32_t value) { return "YC" + std::to_string(value); }

float ReadBucAtten(Comms& c) { return ReadBucValue(c, "PBCA?", "CA", -1.0f); }
float ReadBucPower(Comms& c) { return ReadBucValue(c, "PBCP?", "CP", -60.0f); }
float ReadBucSetPoint(Comms& c) { return ReadBucValue(c, "PBCS?", "CS", -60.0f); }
float ReadBucTemperature(Comms& c) { return ReadBucValue(c, "PBCT?", "CT", -60.0f); }
float ReadBucMaxAtten(Comms& c) { return ReadBucValue(c, "PBCN?", "CN", 31.5f); }
float ReadBucOffset(Comms& c) { return ReadBucValue(c, "PBCO?", "CO", 0.0f); }
float ReadBucIdeal(Comms& c) { return ReadBucValue(c, "PBCI?", "CI", 0.0f); }

int16_t ReadBucMode(Comms& c) {
  int16_t result = -1;
  std::string rx;
  if (!rd::Exchange(c, "PBCM?", rx)) return result;
  const long p = InStr(rx, "CM");
  if (!(p > 1)) return result;
  Guarded([&] { result = ToInt16(Val(rd::OpenEnd(rx, p + 2))); });
  return result;
}

// Analog readouts of the float supply: 8 to 12 values.
bool ReadAmcAnalogs(Comms& c) { return ReadAmcList(c, "YCA?", "CA", 7, 11); }

// Settings of the float supply: at least 4 values, no upper limit of its own.
bool ReadAmcSettings(Comms& c) { return ReadAmcList(c, "YCD?", "CD", 3, static_cast<size_t>(-1)); }

int16_t ReadAmcStatus(Comms& c) {
  int16_t result = -1;
  std::string rx;
  if (!rd::Exchange(c, "YCI?", rx)) return result;
  const long p = InStr(rx, "CI");
  if (!(Len(rx) > 4 && p > 1)) return result;
  Guarded([&] { result = ToInt16(Val(rd::OpenEnd(rx, p + 2))); });
  return result;
}

// "YC?:" + n asks for the set value of sub-band n; the unit answers
// "YC" + value, and may add ":" + the index, which is not needed here. The
// record is marked good only with a value that converted: a caller writes it
// back to the supply, and a value that did not fit must not go out as 0.
PSVsetRecord ReadPSVset(Comms& c, int n) {
  PSVsetRecord r;
  std::string rx;
  const std::string request = n > -1 ? "YC?:" + std::to_string(n) : std::string("YC?");
  if (!rd::Exchange(c, request, rx)) return r;
  const long p = InStr(rx, "YC");
  if (!(p > 1)) return r;
  Guarded([&] {
    r.value = ToInt32(Val(rd::OpenEnd(rx, p + 2)));
    r.status = 0;
  });
  return r;
}

// "YJ?": the text from the tail to the ETX; an echo with nothing after it is
// no part number.
std::string ReadModelCfgPN(Comms& c) {
  std::string rx;
  if (!rd::Exchange(c, "YJ?", rx)) return "";
  const long p = InStr(rx, "YJ");
  std::string text;
  if (!(p > 0) || !rd::TextToEtx(rx, p + 2, &text)) return "";
  return text;
}

}  // namespace amp
