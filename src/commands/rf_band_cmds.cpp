#include "commands/rf_band_cmds.h"

#include "basic/numbers.h"
#include "basic/text.h"
#include "commands/reader_support.h"

namespace amp {
namespace {

bool IsLetter(char ch) { return (ch >= 'A' && ch <= 'Z') || (ch >= 'a' && ch <= 'z'); }

// A band name is the run of ASCII letters from `start`: it ends at the first
// digit, comma, ETX or whatever else, and at the end of the message.
std::string LettersFrom(const std::string& rx, long start) {
  std::string name;
  for (long i = start; i >= 1 && i <= Len(rx) && IsLetter(rx[i - 1]); ++i) name += rx[i - 1];
  return name;
}

}  // namespace

// "T?": the body is "T", the band name, then optionally "," and the band's
// frequency. The echo must stand right at the start of the body (position 3).
// Nothing here converts a number, so although this reader is not guarded it
// has nothing to throw.
std::string ReadCurrentBand(Comms& c) {
  std::string name;
  if (!rd::Send(c, "T?")) return name;
  const std::string rx = c.Link.RxMessage;
  if (Mid(rx, 3, 1) != "T") return name;
  name = LettersFrom(rx, 4);
  c.gRespFields[0] = "";
  const long comma = InStr(rx, ",");
  // Seven characters after the comma, which for a short frequency include
  // the ETX and the checksum: callers take Val of it.
  if (comma > 1) c.gRespFields[0] = LTrim(Mid(rx, comma + 1, 7));
  return name;
}

// ".?B<n>": the body is ".B", the band digit, the name, then optionally ","
// and the frequency in GHz. A refused read is how a unit without bands shows
// itself, so it gives a distinct text rather than the empty name of an
// unused band.
std::string ReadBandInfo(Comms& c, int n) {
  std::string name;
  if (!rd::Send(c, ".?B" + std::to_string(n))) return std::string(kBandNotSupported);
  const std::string rx = c.Link.RxMessage;
  const long tail = InStr(rx, ".B");
  if (!(Len(rx) > 4 && tail > 1)) return name;
  name = LettersFrom(rx, tail + 3);  // past ".B" and the band digit
  c.gRespFields[0] = "";
  const long comma = InStr(rx, ",");
  if (comma > 1) c.gRespFields[0] = Format(Val(rd::OpenEnd(rx, comma + 1)), "#0.0#");
  return name;
}

// "TF?": the body is "TF" and the frequency in MHz; the number runs to the
// ETX. A frequency beyond a 16-bit integer is not shown at all.
std::string ReadRFFrequency(Comms& c) {
  std::string result;
  if (!rd::Send(c, "TF?")) return result;
  const std::string rx = c.Link.RxMessage;
  const long data = InStr(rx, "TF") + 2;
  if (!(data > 2)) return result;
  Guarded([&] { result = Format(ToInt16(Val(rd::OpenEnd(rx, data))), "####0"); });
  return result;
}

// "PBS<n>?" for n = 1..8: the body is "PBS", the one-digit index, then the
// frequency in exactly five characters ("25.75"). A zero or missing
// frequency gives an empty entry. The walk stops at the first refused read,
// so a unit with fewer sub-band slots costs one failed exchange.
bool ReadSubBandTable(Comms& c) {
  for (int i = 0; i < 8; ++i) c.gRespFields[i].clear();
  bool any = false;
  for (int n = 1; n <= 8; ++n) {
    if (!rd::Send(c, "PBS" + std::to_string(n) + "?")) break;
    const std::string rx = c.Link.RxMessage;
    long p = InStr(rx, "BS") + 1;
    // The echo "PBS" puts "BS" at 4: a "BS" any earlier is not the echo.
    if (p > 4) {
      p += 2;  // past "S" and the index digit
      std::string& entry = c.gRespFields[n - 1];
      entry = Trim(Mid(rx, p, 5));
      if (!(Val(entry) > 0)) entry.clear();
      any = true;
    }
  }
  return any;
}

// "PBS?": the body is "PBS", the current sub-band digit, then its frequency
// in five characters. The digit must be a number as it stands; the
// frequency is stored even when it is not.
int16_t ReadCurrentSubBand(Comms& c) {
  int16_t result = -1;
  if (!rd::Send(c, "PBS?")) return result;
  const std::string rx = c.Link.RxMessage;
  const long tail = InStr(rx, "BS");
  if (!(tail + 1 > 4)) return result;
  Guarded([&] { result = TextToInt16(Mid(rx, tail + 2, 1)); });
  c.gRespFields[0] = Trim(Mid(rx, tail + 3, 5));
  return result;
}

// "QS?": the body is "QS" and the list of "frequency,dB;" pairs up to the
// ETX. An empty list stands for a single zero pair.
std::string ReadCalFactors(Comms& c) {
  std::string result;
  if (!rd::Send(c, "QS?")) return result;
  const std::string rx = c.Link.RxMessage;
  const long tail = InStr(rx, "QS");
  if (tail != 3) return result;
  const long data = tail + 2;
  const long etx = InStr(data, rx, std::string(1, '\x03'));
  if (etx > data) return Mid(rx, data, etx - data);
  return "0.0,0.0;";
}

std::string CmdCurrentBand(std::string_view name) { return "T" + std::string(name); }

std::string CmdBandInfo(int n, std::string_view name, std::string_view frequency) {
  std::string text = ".B" + std::to_string(n) + std::string(name);
  if (!frequency.empty()) text += "," + std::string(frequency);
  return text;
}

std::string CmdBandAbsent(int n) {
  // Parameters 109 to 111 hold the presence of bands 2 to 4; band 1 always
  // exists.
  if (n < 2 || n > 4) return std::string();
  return ".P" + std::to_string(107 + n) + " 255";
}

std::string CmdRFFrequency(double mhz) { return "TF" + Format(mhz, "####0"); }

std::string CmdSelectSubBand(int n) {
  if (n < 1 || n > 8) return "PBS";
  return "PBS" + std::to_string(n);
}

std::string CmdSubBandFrequency(int n, std::string_view frequency) {
  return "PBS" + std::to_string(n) + std::string(frequency);
}

std::string CmdCalFactors(const std::array<std::string, 10>& frequencies,
                          const std::array<std::string, 10>& factors) {
  std::string text = "QS";
  for (size_t i = 0; i < frequencies.size(); ++i) text += frequencies[i] + "," + factors[i] + ";";
  return text;
}

}  // namespace amp
