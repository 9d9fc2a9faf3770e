#include "commands/rf_power_cmds.h"
#include "basic/one_of.h"

#include <cfloat>
#include <cmath>
#include <initializer_list>

#include "basic/numbers.h"
#include "basic/text.h"
#include "commands/reader_support.h"
#include "commands/upconverter_cmds.h"

namespace amp {
namespace {

// Code of the byte at 1-based `pos`, -1 past either end.
int CodeAt(const std::string& rx, long pos) { return Asc(Mid(rx, pos, 1)); }

// The scan of the offset and fault level replies: blanks, digits, sign and
// point (codes 32 to 60) are taken one by one; a control byte, the ETX or
// the end of the message ends it. A byte from 61 to 127 never stands there in
// a good reply; the scan this replaces would sit on such a byte forever, so
// it ends the scan here as well.
std::string ScanValue(const std::string& rx, long pos) {
  std::string out;
  for (;; ++pos) {
    const int code = CodeAt(rx, pos);
    if (code < 32 || code > 60) break;
    out += static_cast<char>(code);
  }
  return out;
}

// Single precision as the unit's numbers are kept; a value beyond it is a
// conversion failure rather than an infinity.
float ToSingle(double v) {
  if (!(std::fabs(v) <= FLT_MAX))
    throw ConversionFailure("overflow converting " + NumText(v) + " to single precision");
  return static_cast<float>(v);
}

std::string Num(int n) { return std::to_string(n); }

}  // namespace

// ---- Attenuation ---------------------------------------------------------

// "?A": the reply is "?" and the attenuation in dB. The value is whatever
// printable text follows the "?", up to the ETX; the checksum (the last
// byte) is never taken even when printable.
std::string ReadAttenuation(Comms& c) {
  std::string value;
  if (!rd::Send(c, "?A")) return value;
  const std::string rx = c.Link.RxMessage;
  const long q = InStr(rx, "?");
  if (!(q > 1)) return value;
  for (long i = q + 1; i < Len(rx) && CodeAt(rx, i) > 31; ++i) value += rx[i - 1];
  return value;
}

// "8": the reply echoes "8" and gives the DAC count. The digits run up to
// the first byte below "0" (the ETX at the latest); the checksum is excluded
// by position.
int16_t ReadAtnCount(Comms& c) {
  int16_t count = -1;
  if (!rd::Send(c, "8")) return count;
  const std::string rx = c.Link.RxMessage;
  const long p = InStr(rx, "8");
  if (!(p > 1)) return count;
  std::string digits;
  for (long i = p + 1; i < Len(rx) && CodeAt(rx, i) > 47; ++i) digits += rx[i - 1];
  Guarded([&] { count = ToInt16(Val(digits)); });
  return count;
}

// "?/": "?" and the DAC count, read to the end of the message.
int16_t ReadAtnDac(Comms& c) {
  int16_t count = -1;
  if (!rd::Send(c, "?/")) return count;
  const std::string rx = c.Link.RxMessage;
  const long q = InStr(rx, "?");
  if (!(q > 1)) return count;
  Guarded([&] { count = ToInt16(Val(rd::OpenEnd(rx, q + 1))); });
  return count;
}

// "?/" on a block downconverter: the four characters behind "?" are its
// down-link attenuator; the caller trims them.
std::string ReadDLAtten(Comms& c) {
  std::string value;
  if (!rd::Send(c, "?/")) return value;
  const std::string rx = c.Link.RxMessage;
  const long q = InStr(rx, "?");
  if (q > 1) value = Mid(rx, q + 1, 4);
  return value;
}

// ---- Linearizer and gain -------------------------------------------------

// "?Zz": "?", then the amplitude and the phase in four characters each. The
// slope comes from a second query, "?/", with its four characters behind the
// "?". A slope reply without its "?" leaves the slope empty rather than
// taking bytes from the frame's head.
bool ReadLinearizer(Comms& c, bool withSlope) {
  if (!rd::Send(c, "?Zz")) return false;
  const std::string rx = c.Link.RxMessage;
  const long q = InStr(rx, "?");
  if (!(Len(rx) > 8 && q > 1)) return false;
  c.gRespFields[0] = Mid(rx, q + 1, 4);
  c.gRespFields[1] = Mid(rx, q + 5, 4);
  if (withSlope) {
    c.gRespFields[2] = "";
    if (rd::Send(c, "?/")) {
      const std::string rx2 = c.Link.RxMessage;
      const long q2 = InStr(rx2, "?");
      if (q2 > 1) c.gRespFields[2] = Mid(rx2, q2 + 1, 4);
    }
  }
  return true;
}

// The per-sub-band queries put the index behind the mnemonic ("PZ?3"); the
// unit echoes the mnemonic and one more character, then four characters of
// value. "PG" has no such character: its state digit follows the echo
// directly, then four characters of balance. Once the
// amplitude was read, every later step runs even if one before it failed: a
// unit lacking one setting still reports the others. A unit without the
// supply set value ("P|") may still have the float supply's own per-sub-band
// read, "YC?:" + n.
bool ReadSubBandLinearizer(Comms& c, int n) {
  for (int i = 0; i <= 5; ++i) c.gRespFields[i].clear();
  const std::string index = Num(n);
  bool ok = false;

  auto fourAfterIndex = [&](const std::string& command, const char* tail, int field) {
    if (!rd::Send(c, command + index)) return false;
    const std::string rx = c.Link.RxMessage;
    const long t = InStr(rx, tail);
    if (!(t > 1)) return false;
    c.gRespFields[field] = Mid(rx, t + 3, 4);
    return true;
  };

  if (fourAfterIndex("PZ?", "PZ", 0)) ok = true;
  if (ok) fourAfterIndex("Pz?", "Pz", 1);
  if (ok) fourAfterIndex("P/?", "P/", 2);
  if (ok && rd::Send(c, "PG?" + index)) {
    const std::string rx = c.Link.RxMessage;
    const long t = InStr(rx, "PG");
    if (t > 1) {
      c.gRespFields[3] = Mid(rx, t + 2, 1);
      c.gRespFields[4] = Mid(rx, t + 3, 4);
    }
  }
  if (ok) {
    if (rd::Send(c, "P|?" + index)) {
      const std::string rx = c.Link.RxMessage;
      const long t = InStr(rx, "P|");
      if (t > 1) c.gRespFields[5] = Mid(rx, t + 3, 4);
    } else {
      const PSVsetRecord supply = ReadPSVset(c, n);
      if (supply.status == 0) c.gRespFields[5] = std::to_string(supply.value);
    }
  }
  return ok;
}

// "PG?": "PG", the state digit, then the balance in dB to the end.
int16_t ReadGainBalance(Comms& c) {
  int16_t state = -1;
  if (!rd::Send(c, "PG?")) return state;
  const std::string rx = c.Link.RxMessage;
  const long t = InStr(rx, "PG");
  if (!(Len(rx) > 9 && t > 2)) return state;
  Guarded([&] { state = TextToInt16(Mid(rx, t + 2, 1)); });
  c.gRespFields[0] = Format(Val(rd::OpenEnd(rx, t + 3)), "#0.0");
  return state;
}

// "PBCG?": "PBCG" and the IF gain balance in dB. An echo with nothing behind
// it (the ETX right after "PBCG") is a unit without the feature.
bool ReadIFGainBalance(Comms& c) {
  c.gRespFields[0].clear();
  if (!rd::Send(c, "PBCG?")) return false;
  const std::string rx = c.Link.RxMessage;
  const long t = InStr(rx, "PBCG");
  if (!(Len(rx) > 7 && t > 2 && Len(rx) - 1 > t + 4)) return false;
  c.gRespFields[0] = Format(Val(rd::OpenEnd(rx, t + 4)), "#0.0");
  return true;
}

// "PBJ?": "PBJ", the mode digit, then four characters of gain in dB.
bool ReadUnitGain(Comms& c) {
  if (!rd::Send(c, "PBJ?")) return false;
  const std::string rx = c.Link.RxMessage;
  const long t = InStr(rx, "BJ");
  if (!(Len(rx) > 10 && t + 1 > 1)) return false;
  c.gRespFields[0] = Mid(rx, t + 2, 1);
  c.gRespFields[1] = Trim(Mid(rx, t + 3, 4));
  return true;
}

// ---- Power ---------------------------------------------------------------

// "G?": "G" and the level in dBm. The echo is found together with the
// address byte in front of it, so a "G" inside the data is not taken. A
// level outside 0 to below 64 dBm is not a level the unit can hold.
std::string ReadConstPowerLevel(Comms& c) {
  std::string level;
  if (!rd::Send(c, "G?")) return level;
  const std::string rx = c.Link.RxMessage;
  const long p = InStr(rx, c.Link.DeviceAddress() + "G");
  if (!(p > 1)) return level;
  const double v = Val(rd::OpenEnd(rx, p + 2));
  if (v >= 0 && v < 64) level = Format(v, "#0.0");
  return level;
}

namespace {
// "?P" and "?Q": "?" and a four-character reading.
std::string ReadRFReading(Comms& c, const char* command) {
  std::string reading;
  if (!rd::Send(c, command)) return reading;
  const std::string rx = c.Link.RxMessage;
  const long q = InStr(rx, "?");
  if (!(Len(rx) > 4 && q > 1)) return reading;
  reading = Trim(Mid(rx, q + 1, 4));
  return reading;
}
}  // namespace

std::string ReadFwdRF(Comms& c) { return ReadRFReading(c, "?P"); }
std::string ReadRevRF(Comms& c) { return ReadRFReading(c, "?Q"); }

// "?HLR": "?" and three fields of five characters. A field is taken while
// its start still lies before the last byte, so a short reply leaves the
// later fields as they were; only a third field read counts as success.
bool ReadRFTripLevels(Comms& c) {
  if (!rd::Send(c, "?HLR")) return false;
  const std::string rx = c.Link.RxMessage;
  const long q = InStr(rx, "?");
  if (!(q > 1)) return false;
  long start = q + 1;
  c.gRespFields[0] = Mid(rx, start, 5);
  for (int field = 1; field <= 2; ++field) {
    start += 5;
    if (!(start < Len(rx))) return false;
    c.gRespFields[field] = Mid(rx, start, 5);
  }
  return true;
}

namespace {
// The factory trip replies: digits and points from behind the echo, up to a
// blank or the end of the message. Other bytes (the ETX among them) are
// passed over, so a checksum that happens to be a digit joins the number.
void FactoryTripDigits(const std::string& rx, const char* tail, std::string* out) {
  const long t = InStr(rx, tail);
  if (!(t > 4)) return;
  for (long i = t + 2; i <= Len(rx); ++i) {
    const char ch = rx[i - 1];
    if (ch == ' ') break;
    if ((ch >= '0' && ch <= '9') || ch == '.') *out += ch;
  }
}
}  // namespace

// "YFTF?" and "YFTR?": the echo "YFTF" / "YFTR" and the level in dBm. The
// reverse level is asked only after the forward one was answered.
int16_t ReadFactoryTripLevels(Comms& c) {
  c.gRespFields[0].clear();
  c.gRespFields[1].clear();
  if (!rd::Send(c, "YFTF?")) return -1;
  FactoryTripDigits(c.Link.RxMessage, "TF", &c.gRespFields[0]);
  if (!rd::Send(c, "YFTR?")) return -1;
  FactoryTripDigits(c.Link.RxMessage, "TR", &c.gRespFields[1]);
  return 0;
}

// "PR?": "PR" and the reverse RF offset in dB.
std::string ReadRevRFOffset(Comms& c) {
  std::string offset;
  if (!rd::Send(c, "PR?")) return offset;
  const std::string rx = c.Link.RxMessage;
  const long t = InStr(rx, "PR");
  if (!(Len(rx) > 4 && t > 1)) return offset;
  const double v = Val(ScanValue(rx, t + 2));
  offset = (v >= 0 ? " " : "") + NumText(v);
  return offset;
}

// "PS?": "PS" and the return loss level, to the end of the message.
float ReadReturnLoss(Comms& c) {
  float level = -1;
  if (!rd::Send(c, "PS?")) return level;
  const std::string rx = c.Link.RxMessage;
  const long t = InStr(rx, "PS");
  if (!(t > 2)) return level;
  level = ToSingle(Val(rd::OpenEnd(rx, t + 2)));
  return level;
}

// "PO?": "PO", the state digit, then the limit in dBm; a two-level unit
// gives two limits separated by ";". The ";" is looked for in the whole
// message, so one standing in the address byte is ignored (it lies before
// the data) while a checksum ";" reads as an empty second level.
PowerLimitRecord ReadPowerLimit(Comms& c) {
  PowerLimitRecord r;
  if (!rd::Send(c, "PO?")) return r;
  const std::string rx = c.Link.RxMessage;
  if (!(Len(rx) > 8)) return r;
  long p = InStr(rx, "PO");
  const long s = InStr(rx, ";");
  p += 2;
  r.state = Mid(rx, p, 1);
  p += 1;
  if (s > p) {
    r.limit = Format(Val(Mid(rx, p, s - p)), "##0.0##");
    r.limit2 = Format(Val(rd::OpenEnd(rx, s + 1)), "##0.0#");
  } else {
    r.limit = Format(Val(rd::OpenEnd(rx, p)), "##0.0##");
  }
  r.ok = true;
  return r;
}

// "POO?": "POO" and the limit's fault level in dB, taken by the scan.
PowerLimitRecord ReadPowerLimitFaultLevel(Comms& c) {
  PowerLimitRecord r;
  if (!rd::Send(c, "POO?")) return r;
  const std::string rx = c.Link.RxMessage;
  if (!(Len(rx) > 8)) return r;
  r.state = ScanValue(rx, InStr(rx, "OO") + 2);
  r.ok = true;
  return r;
}

namespace {
// Both band limits. Most units answer a numbered parameter (".P71 450"),
// some in tenths of a dB and some in dB; two projects have their own query
// for the current band. The maximum and the minimum deliberately disagree
// about which projects store dB: only project 93 on firmware below 200
// keeps its minimum in dB, while for the maximum every project outside the
// list does below firmware 200.
std::string ReadBandLimit(Comms& c, int fw, int project, int band, bool maximum) {
  static constexpr const char* kMax[] = {".?P71", ".?P118", ".?P122", ".?P126"};
  static constexpr const char* kMin[] = {".?P66", ".?P116", ".?P120", ".?P124"};
  const int row = (band >= 1 && band <= 4) ? band - 1 : 0;
  std::string limit;

  const bool ownQuery = maximum ? project == 127 : (project == 127 || project == 139);
  if (ownQuery) {
    if (!rd::Send(c, maximum ? "PBRC?" : "PBRF?")) return limit;
    const std::string rx = c.Link.RxMessage;
    const long t = InStr(rx, maximum ? "RC" : "RF");
    if (!(Len(rx) > 7 && t > 3)) return limit;
    return Format(Val(rd::OpenEnd(rx, t + 2)), "#0.0");
  }

  if (!rd::Send(c, maximum ? kMax[row] : kMin[row])) return limit;
  const std::string rx = c.Link.RxMessage;
  const long blank = InStr(rx, " ");
  if (!(Len(rx) > 4 && blank > 1)) return limit;
  const std::string text = rd::OpenEnd(rx, blank + 1);
  bool tenths;
  if (project == 107)
    tenths = true;
  else if (maximum)
    tenths = fw >= 200 || OneOf(project, {30, 50, 93, 102});
  else
    tenths = fw >= 200 || project == 30 || project == 50 || project != 93;
  limit = Format(tenths ? Val(text) / 10 : Val(text), "#0.0");
  return Trim(limit);
}
}  // namespace

std::string ReadBandMaxPower(Comms& c, int fw, int project, int band) {
  return ReadBandLimit(c, fw, project, band, true);
}

std::string ReadBandMinPower(Comms& c, int fw, int project, int band) {
  return ReadBandLimit(c, fw, project, band, false);
}

// ---- Attenuation limits --------------------------------------------------

// ".?P203", ".?P320" .. ".?P322": ".P<n> " and the maximum attenuation of
// bands 1 to 4 in tenths of a dB. An entry that could not be read is left
// empty (also when the reply could not be located, so no earlier reader's
// text survives in it).
bool ReadMaxAttenTable(Comms& c) {
  static constexpr const char* kQueries[] = {".?P203", ".?P320", ".?P321", ".?P322"};
  for (int i = 0; i < 4; ++i) {
    c.gRespFields[i].clear();
    if (!rd::Send(c, kQueries[i])) continue;
    const std::string rx = c.Link.RxMessage;
    std::string value;
    if (rd::BlankValue(rx, 7, &value)) c.gRespFields[i] = NumText(Val(value) / 10);
  }
  return c.gRespFields[0].empty();
}

// ".?P203": ".P203 " and the maximum attenuation in tenths of a dB, which
// must be a whole number.
int16_t ReadMaxAtten(Comms& c) {
  int16_t tenths = -1;
  if (!rd::Send(c, ".?P203")) return tenths;
  const std::string rx = c.Link.RxMessage;
  std::string value;
  if (!rd::BlankValue(rx, 7, &value)) return tenths;
  Guarded([&] { tenths = TextToInt16(value); });
  return tenths;
}

// ".?P334": ".P334 " and the attenuator range in tenths of a dB. The value
// must hold at least one byte before the ETX.
std::string ReadAttenRange(Comms& c) {
  std::string range;
  if (!rd::Send(c, ".?P334")) return range;
  const std::string rx = c.Link.RxMessage;
  const long blank = InStr(rx, " ");
  const long etx = InStr(rx, std::string(1, '\x03'));
  if (!(blank > 1 && etx > blank + 1)) return range;
  range = Format(Val(Mid(rx, blank + 1, etx - blank - 1)) / 10, "#0.0");
  return range;
}

// ---- Set commands --------------------------------------------------------

std::string CmdAtndB(std::string_view typed) { return "K" + std::string(typed); }

std::string CmdAtnCount(std::string_view mnemonic, int count) {
  // The count goes out with its sign position: a blank for a count that is
  // not negative, which is the separator the ".D" form needs.
  return std::string(mnemonic) + (count >= 0 ? " " : "") + Num(count);
}

std::string CmdAtnCountC(int count) { return "C" + Num(count); }

std::string CmdAtnSlopeText(std::string_view typed) { return "P/" + std::string(typed); }
std::string CmdAtnSlope(double value) { return "P/" + Format(value, "#0.0"); }

std::string CmdLinAmplitude(std::string_view text) { return "PZ" + std::string(text); }
std::string CmdLinPhase(std::string_view text) { return "Pz" + std::string(text); }

namespace {
std::string SubBandSet(const char* mnemonic, std::string_view value, int n) {
  return mnemonic + std::string(value) + ":" + Num(n);
}
}  // namespace

std::string CmdSubBandLinAmplitude(std::string_view value, int n) {
  return SubBandSet("PZ", value, n);
}
std::string CmdSubBandLinPhase(std::string_view value, int n) { return SubBandSet("Pz", value, n); }
std::string CmdSubBandSlope(std::string_view value, int n) { return SubBandSet("P/", value, n); }
std::string CmdSubBandSupply(std::string_view value, int n) { return SubBandSet("P|", value, n); }
std::string CmdSubBandGainBalance(std::string_view value, int n) {
  return SubBandSet("PG", value, n);
}

std::string CmdGainBalanceEnable(bool on) { return on ? "PG1" : "PG0"; }
std::string CmdGainBalance(double dB) { return "PG" + Format(dB, "#0.0"); }

std::string CmdUnitGain(std::string_view text) { return "PBJ" + std::string(text); }

std::string CmdConstPower(double value, bool inDbm) {
  return (inDbm ? "GM" : "G") + Format(value, "####0.0");
}

std::string CmdGoToPower(double value, bool inDbm) {
  return (inDbm ? "EM" : "E") + Format(value, "#####0.0");
}

namespace {
std::string TripLetters(RfTrip trip, TripType type) {
  return {static_cast<char>(trip), static_cast<char>(type)};
}
}  // namespace

std::string CmdTripLevel(RfTrip trip, TripType type, double value, bool inDbm) {
  return TripLetters(trip, type) + (inDbm ? "M" : "") + Format(value, "#####0.0");
}

std::string CmdTripLevelFileLine(RfTrip trip, TripType type, double watts) {
  return TripLetters(trip, type) + Format(watts, "####0.0");
}

std::string CmdFactoryFwdTrip(double dBm) { return "YFTF" + Format(dBm, "##0.0"); }
std::string CmdFactoryRevTrip(double dBm) { return "YFTR" + Format(dBm, "##0.0"); }
std::string CmdFactoryTripMargin(double percent) { return "YFTM" + Format(percent, "#0"); }
bool FactoryTripMarginApplies(int project) { return !OneOf(project, {126, 127, 129, 135}); }

std::string CmdRevRFOffset(double dB) { return "PR" + Format(dB, "##0.0"); }
std::string CmdReturnLoss(double dB) { return "PS" + Format(dB, "##0.0"); }

std::string CmdPowerLimit(double dBm) { return "PO" + Format(dBm, "#0.0"); }
std::string CmdPowerLimitEnable(bool on) { return on ? "PO1" : "PO0"; }
std::string CmdPowerLimitTwoLevel(std::string_view first, std::string_view second) {
  return "PO" + std::string(first) + ";" + std::string(second);
}
std::string CmdPowerLimitFaultLevel(double dB) { return "POO" + Format(dB, "#0.0"); }

std::string CmdMaxAtten(double dB) { return "YAM" + Format(dB, "#0.0"); }

std::string CmdBandMaxAtten(int band, std::string_view value) {
  if (band < 2 || band > 4) return {};
  return ".P" + Num(318 + band) + " " + std::string(value);
}

std::string CmdAttenRange(double dB) { return ".P334 " + Format(dB * 10, "##0"); }

// ---- Choices by unit -----------------------------------------------------

std::string ForwardAnalogCountCommand(int project, std::string_view bandName) {
  if (project == 10) return ".?A9";
  if (project == 26) return ".?A6";
  if (project == 62) return bandName == "Ku" ? ".?A2" : ".?A1";
  if (OneOf(project, {127, 500, 99, 510})) return ".?A4";
  return ".?A1";
}

std::string ReverseAnalogCountCommand(int project, int fw, bool isTWTA) {
  if (project == 10) return ".?A10";
  if (project == 26) return ".?A7";
  if (project == 11 || project == 58) return ".?A2";
  if (OneOf(project, {34, 54, 127, 500, 99, 510})) return ".?A5";
  if (fw >= 200 || OneOf(project, {30, 50, 93}) || isTWTA) return ".?A3";
  return ".?A2";
}

std::string AtnCountCommandFor(int project, bool newDualTWT) {
  if (newDualTWT || OneOf(project, {10, 11, 38, 52, 53, 107, 114, 127})) return ".D1";
  return ".D9";
}

// Older SSPA firmware (neither a tube unit nor a PIC-based one) drives the
// attenuator over the upper half of the DAC only.
int16_t MinAtnCountFor(int project, int fw, bool isTWTA, bool picProcessor) {
  if (project == 102 || project == 107) return 0;
  return (fw < 200 && !isTWTA && !picProcessor) ? 2048 : 0;
}

}  // namespace amp
