// The unit's command language: one row per command form, matched against the
// whole command text. Most rows are plain data: a query renders a reply
// template from the unit's values, a set command validates its argument and
// writes one value. Commands that change status words, convert units or page
// through logs have a small handler of their own.
//
// Row patterns: literal characters, and
//   {d}  one digit (the index)          {i}  one or more digits (the index)
//   {v}  one or more characters (the value, as sent)
//   {*}  zero or more characters (the value)
// Reply templates: literal characters, and
//   {key}     the value of `key` as it stands (wandering readouts move)
//   {key:4}   right-aligned in 4 characters, padded with blanks
//   {key:06}  right-aligned in 6 characters, padded with zeros
//   {n}       the index; inside a key too, as in {subband.{n}.freq}
// A template that names a value the unit does not have makes the query a NAK.
//
// Value rules of set rows:
//   int[:LO:HI]  num[:LO:HI] (decimals as sent)  num1, num2 (fixed decimals)
//   digit:SET (one of the characters of SET)  text  word (no blanks)
//   freq (sub-band GHz, "00.00")  masks (N or N,N)  ip (dotted quad)
//   com (baud "000000", parity N/E/O, data bits 7/8, stop bits 1/2)
//   fields3, fields5 (so many fields joined by ";")
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <regex>
#include <set>

#include "sim/commands.h"

namespace amp::sim {
namespace {

enum class Op { Get, Put, Act, FnGet, FnSet };

struct Match {
  std::string n;       // the index captured by {d} or {i}
  std::string v;       // the value captured by {v} or {*}
  std::string text;    // the whole command text
  std::string prefix;  // the row's literal prefix: what a refusal echoes
};

struct Row;
using Fn = Reply (*)(UnitState&, const Row&, const Match&);

struct Row {
  const char* pattern;
  const char* family;
  Op op;
  const char* key;   // Put: the value written; handlers: a parameter
  const char* form;  // Get: the reply template; Put: the value rule; handlers: a parameter
  Fn fn;             // Act, FnGet, FnSet: the handler; Put: runs after the write
};

constexpr Row Get(const char* pattern, const char* family, const char* reply) {
  return {pattern, family, Op::Get, "", reply, nullptr};
}
constexpr Row Put(const char* pattern, const char* family, const char* key, const char* rule,
                  Fn after = nullptr) {
  return {pattern, family, Op::Put, key, rule, after};
}
constexpr Row Act(const char* pattern, const char* family, Fn fn, const char* param = "") {
  return {pattern, family, Op::Act, "", param, fn};
}
constexpr Row Ask(const char* pattern, const char* family, Fn fn, const char* key = "",
                  const char* form = "") {
  return {pattern, family, Op::FnGet, key, form, fn};
}
constexpr Row Set(const char* pattern, const char* family, Fn fn, const char* key = "",
                  const char* form = "") {
  return {pattern, family, Op::FnSet, key, form, fn};
}

// ---------------------------------------------------------------- helpers

std::string Subst(std::string_view s, const Match& m) {
  std::string out;
  for (size_t i = 0; i < s.size(); ++i) {
    if (s.compare(i, 3, "{n}") == 0) {
      out += m.n;
      i += 2;
    } else {
      out += s[i];
    }
  }
  return out;
}

bool Has(const UnitState& unit, std::string_view key) {
  return key == "address" || key == "param.54" || unit.values.find(key) != unit.values.end();
}

std::string Value(const UnitState& unit, std::string_view key) {
  auto it = unit.values.find(key);
  return it == unit.values.end() ? std::string() : it->second;
}

std::string_view TrimBlanks(std::string_view s) {
  while (!s.empty() && s.front() == ' ') s.remove_prefix(1);
  while (!s.empty() && s.back() == ' ') s.remove_suffix(1);
  return s;
}

// A decimal number, with optional sign and point, nothing else.
bool Number(std::string_view text, double* out) { return ParseNumber(TrimBlanks(text), out); }

bool Integer(std::string_view text, long* out) {
  double v = 0;
  if (!Number(text, &v) || TrimBlanks(text).find('.') != std::string_view::npos) return false;
  *out = static_cast<long>(v);
  return true;
}

std::string Fixed(double v, int decimals) { return FormatFixed(v, decimals); }

std::string Pad(std::string text, size_t width, char fill) {
  if (text.size() >= width) return text;
  if (fill == '0' && !text.empty() && text[0] == '-')
    return "-" + std::string(width - text.size(), '0') + text.substr(1);
  return std::string(width - text.size(), fill) + text;
}

double DbmFromWatts(double w) { return 10.0 * std::log10(w) + 30.0; }

bool Printable(std::string_view text) {
  for (unsigned char c : text)
    if (c < 0x20 || c > 0x7E || c == '{' || c == '}') return false;
  return !text.empty();
}

// Renders a reply template; false when it names a value the unit lacks.
bool Render(UnitState& unit, std::string_view tmpl, const Match& m, std::string* out) {
  std::string t = Subst(tmpl, m);
  out->clear();
  for (size_t i = 0; i < t.size(); ++i) {
    if (t[i] != '{') {
      *out += t[i];
      continue;
    }
    size_t close = t.find('}', i);
    std::string_view field(t.data() + i + 1, close - i - 1);
    i = close;
    std::string_view key = field, fmt;
    if (size_t colon = field.find(':'); colon != std::string_view::npos) {
      key = field.substr(0, colon);
      fmt = field.substr(colon + 1);
    }
    if (!Has(unit, key)) return false;
    std::string value = ReadValue(unit, key);
    if (!fmt.empty()) {
      char fill = fmt[0] == '0' ? '0' : ' ';
      value = Pad(value, static_cast<size_t>(std::atoi(std::string(fmt).c_str())), fill);
    }
    *out += value;
  }
  return true;
}

// The range part of "int:LO:HI" / "num1:LO:HI".
bool InRange(std::string_view rule, double v) {
  size_t c1 = rule.find(':');
  if (c1 == std::string_view::npos) return true;
  size_t c2 = rule.find(':', c1 + 1);
  double lo = 0, hi = 0;
  ParseNumber(rule.substr(c1 + 1, c2 - c1 - 1), &lo);
  ParseNumber(rule.substr(c2 + 1), &hi);
  return v >= lo && v <= hi;
}

bool Dotted(std::string_view text) {
  int parts = 0;
  while (true) {
    size_t dot = text.find('.');
    long v = 0;
    std::string_view part = text.substr(0, dot);
    if (part.empty() || part.size() > 3 || !Integer(part, &v) || v < 0 || v > 255) return false;
    ++parts;
    if (dot == std::string_view::npos) break;
    text.remove_prefix(dot + 1);
  }
  return parts == 4;
}

// Checks a set command's argument against the row's rule and gives the text
// to store; false refuses the command.
bool Normalize(std::string_view rule, std::string_view v, std::string* out) {
  std::string_view kind = rule.substr(0, rule.find(':'));
  double num = 0;
  long whole = 0;
  if (kind == "int") {
    if (!Integer(v, &whole) || !InRange(rule, double(whole))) return false;
    *out = std::to_string(whole);
  } else if (kind == "num" || kind == "num1" || kind == "num2") {
    if (!Number(v, &num) || !InRange(rule, num)) return false;
    if (kind == "num") {
      std::string_view t = TrimBlanks(v);
      size_t dot = t.find('.');
      *out = Fixed(num, dot == std::string_view::npos ? 0 : static_cast<int>(t.size() - dot - 1));
    } else {
      *out = Fixed(num, kind == "num1" ? 1 : 2);
    }
  } else if (kind == "digit") {
    if (v.size() != 1 || rule.substr(6).find(v[0]) == std::string_view::npos) return false;
    *out = std::string(v);
  } else if (kind == "text") {
    if (!Printable(v)) return false;
    *out = std::string(v);
  } else if (kind == "word") {
    if (!Printable(v) || v.find(' ') != std::string_view::npos ||
        v.find('/') != std::string_view::npos)
      return false;
    *out = std::string(v);
  } else if (kind == "freq") {
    if (!Number(v, &num) || num < 0 || num >= 100) return false;
    *out = Pad(Fixed(num, 2), 5, '0');
  } else if (kind == "masks") {
    size_t comma = v.find(',');
    long second = 0;
    if (!Integer(v.substr(0, comma), &whole) || whole < 0) return false;
    if (comma != std::string_view::npos && (!Integer(v.substr(comma + 1), &second) || second < 0))
      return false;
    *out = std::to_string(whole) +
           (comma == std::string_view::npos ? "" : "," + std::to_string(second));
  } else if (kind == "ip") {
    if (!Dotted(v)) return false;
    *out = std::string(v);
  } else if (kind == "com") {
    static constexpr std::string_view kBauds[] = {"001200", "002400", "004800", "009600",
                                                  "019200", "038400", "057600", "115200"};
    if (v.size() != 9 ||
        std::find(std::begin(kBauds), std::end(kBauds), v.substr(0, 6)) == std::end(kBauds) ||
        std::string_view("NEO").find(v[6]) == std::string_view::npos ||
        (v[7] != '7' && v[7] != '8') || (v[8] != '1' && v[8] != '2'))
      return false;
    *out = std::string(v);
  } else if (kind == "fields3" || kind == "fields5") {
    if (!Printable(v) ||
        size_t(std::count(v.begin(), v.end(), ';')) != (kind == "fields3" ? 2u : 4u))
      return false;
    *out = std::string(v);
  } else {
    return false;
  }
  return true;
}

Reply Ack(const Match& m) { return Reply::Ack(m.text); }
Reply Refuse(const Match& m) { return Reply::Nak(m.text); }

uint8_t& S(UnitState& u, int word) { return u.summary[word]; }
void SetBits(uint8_t& w, uint8_t bits, bool on) {
  w = on ? (w | bits) : (w & static_cast<uint8_t>(~bits));
}

// ---------------------------------------------------------- status words

// "?" + item codes: '!' summary, '#' fault, '(' alarm (four words), '9' the
// first alarm word alone. The reply is "?" and the fields, no separators.
Reply StatusItems(UnitState& unit, const Row& row, const Match& m) {
  std::string items = std::string(1, row.pattern[1]) + m.v;
  std::string body = "?";
  for (char c : items) {
    switch (c) {
      case '!':
        body += EncodeWords(unit.summary);
        break;
      case '#':
        body += EncodeWords(unit.fault);
        break;
      case '(':
        if (unit.Lacks("alarm_words")) return Reply::Nak("?");
        body += EncodeWords(unit.alarm);
        break;
      case '9':
        body += EncodeWord(unit.alarm[0]);
        break;
      default:
        return Reply::Nak("?");
    }
  }
  return Reply::Ack(std::move(body));
}

Reply UnitId(UnitState& unit, const Row&, const Match&) {
  return Reply::Ack(std::string(kUnitIdQuery) + EncodeUnitId(unit.unitId));
}

// ---------------------------------------------------------------- actions

bool Faulted(const UnitState& u) { return (u.summary[1] & summary::kSummaryFault) != 0; }

Reply TxOn(UnitState& u, const Row&, const Match& m) {
  if (Faulted(u)) return Refuse(m);  // the transmitter stays off while a fault stands
  SetBits(S(u, 0), summary::kTxOn, true);
  SetBits(S(u, 0), summary::kStandby, false);
  return Ack(m);
}

Reply TxOff(UnitState& u, const Row&, const Match& m) {
  SetBits(S(u, 0), summary::kTxOn, false);
  SetBits(S(u, 0), summary::kStandby, true);
  return Ack(m);
}

Reply Inhibit(UnitState& u, const Row& row, const Match& m) {
  SetBits(S(u, 0), summary::kInhibit, row.form[0] == '1');
  return Ack(m);
}

void ClearFaults(UnitState& u) {
  bool any = false;
  for (size_t i = 0; i < u.fault.size(); ++i) {
    u.fault[i] &= u.faultHold[i];
    any = any || u.fault[i] != 0;
  }
  SetBits(S(u, 1), summary::kSummaryFault, any);
}

Reply FaultReset(UnitState& u, const Row&, const Match& m) {
  ClearFaults(u);
  return Ack(m);
}

// "~": the unit restarts: latched faults go, table edits are dropped, and
// the transmitter comes up as the start-up mode says (1 off, 2 on).
Reply UnitReset(UnitState& u, const Row& row, const Match& m) {
  ClearFaults(u);
  for (auto& [name, table] : u.calTables) {
    table.editing = false;
    table.pending.clear();
  }
  std::string mode = Value(u, "startup");
  if (mode == "1") TxOff(u, row, m);
  if (mode == "2") TxOn(u, row, m);
  return Ack(m);
}

Reply ConstPower(UnitState& u, const Row& row, const Match& m) {
  bool on = row.form[0] == '1';
  if (on && Has(u, "const_level") && Has(u, "fwd_power"))
    u.values["fwd_power"] = Value(u, "const_level");
  SetBits(S(u, 0), summary::kConstPower, on);
  return Ack(m);
}

// "PCT": the arc test trips the waveguide arc fault (B0); "PCS" raises the
// summary fault alone. A fault reset clears both.
Reply SelfTest(UnitState& u, const Row& row, const Match& m) {
  if (row.form[0] == 'A') u.fault[1] |= 1;
  SetBits(S(u, 1), summary::kSummaryFault, true);
  return Ack(m);
}

Reply Plain(UnitState&, const Row&, const Match& m) { return Ack(m); }

// "UA", "UM", "U0".."U3": redundancy mode and the two waveguide switches. A
// switch does not move by command while the unit switches automatically.
Reply Waveguide(UnitState& u, const Row& row, const Match& m) {
  uint8_t& s3 = S(u, 2);
  char what = row.form[0];
  if (what == 'A' || what == 'M') {
    SetBits(s3, summary::kAutoMode, what == 'A');
    return Ack(m);
  }
  if (s3 & summary::kAutoMode) return Refuse(m);
  switch (what) {
    case '0':
      s3 = (s3 & ~(summary::kSw1A | summary::kSw1B)) | summary::kSw1B;
      break;
    case '1':
      s3 = (s3 & ~(summary::kSw1A | summary::kSw1B)) | summary::kSw1A;
      break;
    case '2':
      s3 = (s3 & ~(summary::kSw2A | summary::kSw2B)) | summary::kSw2B;
      break;
    case '3':
      s3 = (s3 & ~(summary::kSw2A | summary::kSw2B)) | summary::kSw2A;
      break;
  }
  return Ack(m);
}

// "PC" + digit: waveguide configuration, shown in the low bits of S4. There
// is no configuration 5 (nor 7).
Reply WaveguideConfig(UnitState& u, const Row&, const Match& m) {
  if (m.n != "0" && m.n != "1" && m.n != "2" && m.n != "3" && m.n != "4" && m.n != "6")
    return Refuse(m);
  S(u, 3) = static_cast<uint8_t>((S(u, 3) & ~summary::kWgConfigMask) | (m.n[0] - '0'));
  return Ack(m);
}

Reply HeaterStandbyBit(UnitState& u, const Row&, const Match& m) {
  SetBits(S(u, 1), summary::kHeaterStandby, Value(u, "heater.standby") == "1");
  return Ack(m);
}

// ---------------------------------------------------------- RF and levels

// "?P" / "?Q": the reading wanders around its value while the transmitter is
// on and RF flows; otherwise it is below range: "<" and the floor.
Reply RfPower(UnitState& u, const Row& row, const Match& m) {
  if (!Has(u, row.key) || !Has(u, "rf_floor")) return Reply::Nak(m.prefix);
  bool flowing = (u.summary[0] & summary::kTxOn) && !(u.summary[0] & summary::kInhibit);
  if (!flowing) return Reply::Ack("?<" + Value(u, "rf_floor"));
  return Reply::Ack("?" + Pad(ReadValue(u, row.key), 4, ' '));
}

// "K" + dB: 0 up to the maximum attenuation (".P203" in tenths, else 30 dB).
Reply Attenuation(UnitState& u, const Row&, const Match& m) {
  double v = 0, max = 30.0;
  if (Has(u, "param.203") && Number(Value(u, "param.203"), &max)) max /= 10.0;
  if (!Has(u, "atten") || !Number(m.v, &v) || v < 0 || v > max + 1e-9) return Refuse(m);
  u.values["atten"] = Fixed(v, 1);
  return Ack(m);
}

// ".D1 " / ".D9 " + count, and "C" + count: the attenuator DAC. A unit's
// firmware knows one of the two long forms (`atn_count.mnemonic`) and
// refuses the other, so a host that picks the wrong one is caught here.
Reply AttenCount(UnitState& u, const Row& row, const Match& m) {
  long count = 0;
  if (row.key[0] == 'D' && ".D" + m.n != Value(u, "atn_count.mnemonic")) return Refuse(m);
  if (!Has(u, "atn_count") || !Integer(m.v, &count) || count < 0 || count > 4095) return Refuse(m);
  u.values["atn_count"] = std::to_string(count);
  return Ack(m);
}

// A power level with final "M" is in dBm, else in Watts; kept in dBm.
bool PowerLevel(std::string_view v, bool dBm, double* out) {
  double x = 0;
  if (!Number(v, &x)) return false;
  if (!dBm) {
    if (x <= 0) return false;
    x = DbmFromWatts(x);
  }
  *out = x;
  return x >= 0 && x < 64.0;
}

// "G" / "GM": constant power at a level. A host switches constant power on
// by sending the level to hold (it never sends "<"), so the level also turns
// it on; "H" turns it off. With the transmitter on, the forward power
// follows the held level.
Reply ConstLevel(UnitState& u, const Row& row, const Match& m) {
  double dBm = 0;
  if (!Has(u, "const_level") || !PowerLevel(m.v, row.form[0] == 'M', &dBm)) return Refuse(m);
  u.values["const_level"] = Fixed(dBm, 1);
  SetBits(S(u, 0), summary::kConstPower, true);
  if ((u.summary[0] & summary::kTxOn) && Has(u, "fwd_power")) u.values["fwd_power"] = Fixed(dBm, 1);
  return Ack(m);
}

// "E" / "EM": go to a power once; only with RF flowing and no fault.
Reply GoToPower(UnitState& u, const Row& row, const Match& m) {
  double dBm = 0;
  bool flowing = (u.summary[0] & summary::kTxOn) && !(u.summary[0] & summary::kInhibit);
  if (!Has(u, "fwd_power") || !flowing || Faulted(u) || !PowerLevel(m.v, row.form[0] == 'M', &dBm))
    return Refuse(m);
  u.values["fwd_power"] = Fixed(dBm, 1);
  return Ack(m);
}

// "MF", "MA", "MD" ... + level: trip type and level of one of the three
// lines; row.key names the line, row.form its type letter and unit.
Reply TripLevel(UnitState& u, const Row& row, const Match& m) {
  std::string line = row.key;
  double dBm = 0;
  if (!Has(u, line + ".type") || !PowerLevel(m.v, row.form[1] == 'M', &dBm)) return Refuse(m);
  u.values[line + ".type"] = std::string(1, row.form[0]);
  u.values[line + ".level"] = Fixed(dBm, 1);
  return Ack(m);
}

// "PO" + "0"/"1" switches the limit; "PO" + level [";" level] sets it.
Reply PowerLimit(UnitState& u, const Row&, const Match& m) {
  if (!Has(u, "plimit.state")) return Refuse(m);
  if (m.v == "0" || m.v == "1") {
    u.values["plimit.state"] = m.v;
    return Ack(m);
  }
  size_t semi = m.v.find(';');
  double a = 0, b = 0;
  if (!Number(m.v.substr(0, semi), &a)) return Refuse(m);
  std::string level = Fixed(a, 1);
  if (semi != std::string::npos) {
    if (!Number(m.v.substr(semi + 1), &b)) return Refuse(m);
    level += ";" + Fixed(b, 1);
  }
  u.values["plimit.level"] = level;
  return Ack(m);
}

// "PG" / "PBJ" + "0" or "1" switch (row.key + ".state"), any other number
// sets the value (row.key + ".value").
Reply SwitchOrValue(UnitState& u, const Row& row, const Match& m) {
  std::string base = row.key;
  double v = 0;
  if (!Has(u, base + ".state")) return Refuse(m);
  if (m.v == "0" || m.v == "1") {
    u.values[base + ".state"] = m.v;
  } else if (Number(m.v, &v)) {
    u.values[base + ".value"] = Fixed(v, 1);
  } else {
    return Refuse(m);
  }
  return Ack(m);
}

// "YAM" + dB: the maximum attenuation, kept as ".P203" in tenths.
Reply MaxAtten(UnitState& u, const Row&, const Match& m) {
  double v = 0;
  if (!Has(u, "param.203") || !Number(m.v, &v) || v <= 0 || v > 99) return Refuse(m);
  u.values["param.203"] = std::to_string(std::lround(v * 10));
  return Ack(m);
}

// ------------------------------------------------------------ parameters

// ".P" + n + " " + value: a numbered parameter the unit has. Writing 255
// into 109, 110 or 111 removes band 2, 3 or 4 from the band table.
Reply ParamWrite(UnitState& u, const Row&, const Match& m) {
  std::string key = "param." + m.n;
  if (!Has(u, key) || key == "param.54" || !Printable(m.v)) return Refuse(m);
  double dummy = 0;
  if (Number(Value(u, key), &dummy) && !Number(m.v, &dummy)) return Refuse(m);
  std::string value(TrimBlanks(m.v));
  u.values[key] = value;
  if ((m.n == "109" || m.n == "110" || m.n == "111") && value == "255") {
    std::string band = "band." + std::to_string(std::atoi(m.n.c_str()) - 107);
    u.values[band + ".name"] = "";
    u.values[band + ".freq"] = "";
  }
  return Ack(m);
}

// ------------------------------------------------------------ identity

// "YK" + part number, as "426-2251-004", "2251-004" or "2251004"; the "00"
// reply carries it as "2251-004".
Reply PartNumber(UnitState& u, const Row&, const Match& m) {
  auto digits = [](std::string_view s) {
    return !s.empty() &&
           std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
  };
  std::string_view v = m.v;
  if (v.size() == 12 && v[3] == '-' && digits(v.substr(0, 3))) v.remove_prefix(4);
  std::string part;
  if (v.size() == 8 && v[4] == '-' && digits(v.substr(0, 4)) && digits(v.substr(5))) {
    part = std::string(v);
  } else if (v.size() == 7 && digits(v)) {
    part = std::string(v.substr(0, 4)) + "-" + std::string(v.substr(4));
  } else {
    return Refuse(m);
  }
  if (!Has(u, "unit.part")) return Refuse(m);
  u.values["unit.part"] = part;
  return Ack(m);
}

// "YH" + heater hours (6 digits) + transmit hours (6 digits).
Reply Hours(UnitState& u, const Row&, const Match& m) {
  long a = 0, b = 0;
  if (m.v.size() != 12 || !Integer(m.v.substr(0, 6), &a) || !Integer(m.v.substr(6), &b) || a < 0 ||
      b < 0 || !Has(u, "hours.heater"))
    return Refuse(m);
  u.values["hours.heater"] = std::to_string(a);
  u.values["hours.tx"] = std::to_string(b);
  return Ack(m);
}

// "XR" + wire count + termination + address, "XA" + address: the unit's
// RS-485 settings; a new address takes effect after this reply.
Reply Rs485(UnitState& u, const Row& row, const Match& m) {
  std::string_view v = m.v;
  auto goodAddress = [](char c) { return c > 0x20 && c < 0x7F && c != '{' && c != '}'; };
  if (row.form[0] == 'A') {
    if (v.size() != 1 || !goodAddress(v[0])) return Refuse(m);
  } else {
    if (v.size() != 3 || (v[0] != '2' && v[0] != '4') || (v[1] != 'T' && v[1] != 'U') ||
        !goodAddress(v[2]) || !Has(u, "rs485.wire"))
      return Refuse(m);
    u.values["rs485.wire"] = std::string(1, v[0]);
    u.values["rs485.term"] = std::string(1, v[1]);
  }
  u.address = v.back();
  return Ack(m);
}

// "YCD" + n + " " + value. The set numbers and the reply's order differ:
// 0 heater voltage (element 0), 1 heater current (3), 2 focus off (1),
// 3 focus on (2).
Reply FloatSetting(UnitState& u, const Row&, const Match& m) {
  static constexpr int kElement[] = {0, 3, 1, 2};
  double v = 0;
  int n = m.n[0] - '0';
  if (n > 3 || !Has(u, "amc.settings") || !Number(m.v, &v)) return Refuse(m);
  std::vector<std::string> parts;
  std::string all = Value(u, "amc.settings");
  for (size_t start = 0;;) {
    size_t semi = all.find(';', start);
    parts.push_back(all.substr(start, semi - start));
    if (semi == std::string::npos) break;
    start = semi + 1;
  }
  if (static_cast<size_t>(kElement[n]) >= parts.size()) return Refuse(m);
  parts[kElement[n]] = std::string(TrimBlanks(m.v));
  std::string joined;
  for (size_t i = 0; i < parts.size(); ++i) joined += (i ? ";" : "") + parts[i];
  u.values["amc.settings"] = joined;
  return Ack(m);
}

// ------------------------------------------------------------ bands

// "T?": current band name, "," and its frequency in 7 characters.
Reply CurrentBand(UnitState& u, const Row&, const Match& m) {
  std::string band = "band." + Value(u, "band.current");
  if (!Has(u, "band.current") || !Has(u, band + ".name")) return Reply::Nak(m.prefix);
  return Reply::Ack("T" + Value(u, band + ".name") + "," + Pad(Value(u, band + ".freq"), 7, ' '));
}

Reply SelectBand(UnitState& u, const Row&, const Match& m) {
  for (int n = 1; n <= 4; ++n) {
    std::string name = Value(u, "band." + std::to_string(n) + ".name");
    if (!name.empty() && name == m.v) {
      u.values["band.current"] = std::to_string(n);
      return Ack(m);
    }
  }
  return Refuse(m);
}

// ".?B" + n: ".B" + n + name + "," + frequency; an absent band has no name.
Reply BandInfo(UnitState& u, const Row&, const Match& m) {
  std::string band = "band." + m.n;
  if (m.n < "1" || m.n > "4" || !Has(u, band + ".name")) return Reply::Nak(m.prefix);
  std::string body = ".B" + m.n + Value(u, band + ".name");
  if (!Value(u, band + ".name").empty() && !Value(u, band + ".freq").empty())
    body += "," + Value(u, band + ".freq");
  return Reply::Ack(body);
}

// ".B" + n + name [+ "," + GHz].
Reply SetBandInfo(UnitState& u, const Row&, const Match& m) {
  std::string band = "band." + m.n;
  if (m.n < "1" || m.n > "4" || !Has(u, band + ".name")) return Refuse(m);
  size_t comma = m.v.find(',');
  std::string name = m.v.substr(0, comma);
  if (name.empty() || !std::all_of(name.begin(), name.end(), [](char c) {
        return std::isalpha(static_cast<unsigned char>(c));
      }))
    return Refuse(m);
  std::string freq;
  if (comma != std::string::npos) {
    double ghz = 0;
    if (!Number(m.v.substr(comma + 1), &ghz) || ghz <= 0) return Refuse(m);
    freq = Fixed(ghz, 2);
  }
  u.values[band + ".name"] = name;
  u.values[band + ".freq"] = freq;
  return Ack(m);
}

// "PBS?": the current sub-band's digit and its frequency; 0 when none.
Reply CurrentSubBand(UnitState& u, const Row&, const Match& m) {
  if (!Has(u, "subband.current")) return Reply::Nak(m.prefix);
  std::string n = Value(u, "subband.current");
  std::string freq = n == "0" ? "00.00" : Value(u, "subband." + n + ".freq");
  return Reply::Ack("PBS" + n + freq);
}

// "PBS" + n: select a sub-band that has a frequency.
Reply SelectSubBand(UnitState& u, const Row&, const Match& m) {
  double ghz = 0;
  if (m.n == "0" || m.n == "9" || !Has(u, "subband.current") ||
      !Number(Value(u, "subband." + m.n + ".freq"), &ghz) || ghz <= 0)
    return Refuse(m);
  u.values["subband.current"] = m.n;
  return Ack(m);
}

// ------------------------------------------------------------ tables

const char* TableName(char letter) {
  switch (letter) {
    case 'F':
      return "forward";
    case 'R':
      return "reverse";
    case 'S':
      return "drive";
    case 'A':
      return "atten";
  }
  return "";
}

// "YxC" + key: one entry, "<key> dBm  Entry#<count>" ("dB" for the
// attenuator table), or "NO ENTRY".
Reply CalQuery(UnitState& u, const Row& row, const Match& m) {
  auto it = u.calTables.find(TableName(row.form[0]));
  double key = 0;
  if (it == u.calTables.end()) return Reply::Nak(m.prefix);
  if (!Number(m.v, &key)) return Refuse(m);
  std::string body = m.prefix;
  auto entry = it->second.entries.find(static_cast<int>(std::lround(key * 10)));
  if (entry == it->second.entries.end()) {
    body += "NO ENTRY";
  } else {
    body += Pad(Fixed(key, 1), 5, ' ') + (row.form[0] == 'A' ? " dB" : " dBm") + "  Entry#" +
            Pad(std::to_string(entry->second), 4, '0');
  }
  return Reply::Ack(body);
}

// "YxI" begin, "YxF" + value + " " + count write, "YxS" save, "YxA" abort,
// "YAP" + dB mark the attenuation at the present DAC count.
Reply CalEdit(UnitState& u, const Row& row, const Match& m) {
  auto it = u.calTables.find(TableName(row.form[0]));
  if (it == u.calTables.end()) return Reply::Nak(m.prefix);
  CalTable& t = it->second;
  switch (row.form[1]) {
    case 'I':
      t.editing = true;
      t.pending.clear();
      return Ack(m);
    case 'F': {
      size_t blank = m.v.find(' ');
      double key = 0;
      long count = 0;
      if (!t.editing || blank == std::string::npos || !Number(m.v.substr(0, blank), &key) ||
          !Integer(m.v.substr(blank + 1), &count) || count < 0 || count > 4095)
        return Refuse(m);
      t.pending[static_cast<int>(std::lround(key * 10))] = static_cast<int>(count);
      return Ack(m);
    }
    case 'P': {
      double key = 0;
      if (!t.editing || !Number(m.v, &key)) return Refuse(m);
      t.pending[static_cast<int>(std::lround(key * 10))] = std::atoi(Value(u, "atn_count").c_str());
      return Ack(m);
    }
    case 'S':
      if (!t.editing) return Refuse(m);
      t.entries = t.pending;
      [[fallthrough]];
    case 'A':
      t.editing = false;
      t.pending.clear();
      return Ack(m);
  }
  return Refuse(m);
}

// ------------------------------------------------------------ logs

constexpr std::string_view kEndOfLog = "--------------------";
constexpr size_t kTrendRecord = 200;

bool StartIndex(std::string_view v, size_t* out) {
  long n = 0;
  if (!Integer(v, &n) || n < 0 || v.find_first_not_of("0123456789") != std::string_view::npos)
    return false;
  *out = static_cast<size_t>(n);
  return true;
}

// Records start .. start+count-1 of a list that ends with the end-of-log
// record, each followed by "!".
std::string Records(const std::vector<std::string>& list, size_t start, size_t count) {
  std::string out;
  for (size_t i = start; i < start + count && i <= list.size(); ++i) {
    out += i < list.size() ? list[i] : std::string(kEndOfLog);
    out += '!';
  }
  return out;
}

// "4" alone: the last hundred fault events; "4" + N: ten from event N.
// "4P", "4H", "4D", "4M", "4C" + N: ten parameter records from N. The reply
// repeats only the letters of the query, not the index.
Reply LogPage(UnitState& u, const Row& row, const Match& m) {
  auto it = u.lists.find(row.key);
  if (it == u.lists.end()) return Reply::Nak(m.prefix);
  size_t start = 0, count = 10;
  if (m.v.empty()) {
    if (m.prefix != "4") return Refuse(m);
    count = 100;
  } else if (!StartIndex(m.v, &start)) {
    return Refuse(m);
  }
  return Reply::Ack(m.prefix + Records(it->second, start, count));
}

// "4TS" / "4TL" + N: ten fixed 200-character records from N; the record
// after the last begins with "----".
Reply TrendPage(UnitState& u, const Row& row, const Match& m) {
  auto it = u.lists.find(row.key);
  size_t start = 0;
  if (it == u.lists.end()) return Reply::Nak(m.prefix);
  if (!StartIndex(m.v, &start)) return Refuse(m);
  std::string body = m.prefix;
  const auto& list = it->second;
  for (size_t i = start; i < start + 10 && i <= list.size(); ++i) {
    std::string record = i < list.size() ? list[i] : std::string(kEndOfLog);
    record.resize(kTrendRecord, ' ');
    body += record;
  }
  return Reply::Ack(body);
}

// "QF" + page [";" ...]: the counted fault log. Head "page;count;lines;",
// then up to ten events, each ended by "!".
Reply CountedLog(UnitState& u, const Row& row, const Match& m) {
  auto it = u.lists.find(row.key);
  if (it == u.lists.end()) return Reply::Nak(m.prefix);
  std::string_view v = m.v;
  size_t start = 0;
  if (!StartIndex(v.substr(0, v.find(';')), &start)) return Refuse(m);
  const auto& list = it->second;
  size_t lines = start < list.size() ? std::min<size_t>(10, list.size() - start) : 0;
  std::string body = "QF" + std::to_string(start) + ";" + std::to_string(list.size()) + ";" +
                     std::to_string(lines) + ";";
  for (size_t i = start; i < start + lines; ++i) body += list[i] + "!";
  return Reply::Ack(body);
}

// ------------------------------------------------------------ the table

const std::vector<Row>& Rows() {
  static const std::vector<Row> rows = {
      // Status and identity
      Ask("?!{*}", "status", StatusItems),
      Ask("?#{*}", "status", StatusItems),
      Ask("?({*}", "alarm_words", StatusItems),
      Ask("1", "unit_id", UnitId),
      Get("00", "version", "00{unit.part}/{unit.serial}/{fw.rev}/{fw.date}"),
      Get("0S", "serial_text", "0S{fw.secondary}"),
      Get("0C", "cpld", "0C{fw.cpld}"),
      Get("YT", "identity", "YT{fw.identity}"),
      Get("YM?", "cfg_word", "YM{unit.cfg}"),
      Put("YM{i}", "cfg_word", "unit.cfg", "int:0:65535"),
      Set("YK{v}", "part_number", PartNumber),
      Put("YL{v}", "serial_number", "unit.serial", "word"),
      Get(".?P{i}", "param", ".P{n} {param.{n}}"),
      Set(".P{i} {v}", "param", ParamWrite),
      Get("?%", "clock", "?{clock}"),
      Put("%{v}", "clock", "clock", "text"),
      Act("~", "reset", UnitReset),
      Get("YO{i}?", "adc_scalers", "YO{n} {adc.{n}}"),
      Put("YO{i} {v}", "adc_scalers", "adc.{n}", "int"),
      Get("YP{d}?", "digital_pots", "YP{n} {pot.{n}}"),
      Put("YP{d}{v}", "digital_pots", "pot.{n}", "num"),
      Get("YB?", "temp_comp", "YB{tempco}"),
      Get("YB{d}?", "subband_tempco", "YB{subband.{n}.tempco}s{n}"),
      Put("YB{v}s{d}", "subband_tempco", "subband.{n}.tempco", "num"),
      Put("YB{v}", "temp_comp", "tempco", "num"),
      Put("YBT{v}", "temp_comp", "tempco.twt", "num"),
      Put("PJT{v}", "temp_comp", "ambient.twt", "num"),
      Put("PJ{v}", "temp_comp", "ambient", "num"),
      Put("PI{d}", "temp_comp", "gain_tempcomp", "digit:01"),
      Get("PBUH?", "upc_avail", "PBUH{upc_avail}"),
      Put("PBUH{d}", "upc_avail", "upc_avail", "digit:01"),
      Get("PBW?", "led_mode", "PBW{led_mode}"),
      Put("PBW{d}", "led_mode", "led_mode", "digit:01"),
      Get("PBO?", "product_id", "PBO{product_id}"),
      Set("PC{d}", "waveguide", WaveguideConfig),
      Act("UA", "waveguide", Waveguide, "A"),
      Act("UM", "waveguide", Waveguide, "M"),
      Act("U0", "waveguide", Waveguide, "0"),
      Act("U1", "waveguide", Waveguide, "1"),
      Act("U2", "waveguide", Waveguide, "2"),
      Act("U3", "waveguide", Waveguide, "3"),

      // Transmitter
      Act("@", "transmitter", TxOn),
      Act("A", "transmitter", TxOff),
      Act("I", "inhibit", Inhibit, "1"),
      Act("J", "inhibit", Inhibit, "0"),
      Act("B", "fault_reset", FaultReset),
      Get("PTI?", "rfi_polarity", "PTI{rfi.polarity}"),
      Put("PTI{d}", "rfi_polarity", "rfi.polarity", "digit:01"),
      Get("PBA?", "auto_restore", "PBA{auto_restore}"),
      Put("PBA{d}", "auto_restore", "auto_restore", "digit:01"),
      Get("PX?", "startup", "PX{startup}"),
      Put("PX{d}", "startup", "startup", "digit:012"),
      Get(":?", "heater_standby", ":{heater.standby}"),
      Put(":{d}", "heater_standby", "heater.standby", "digit:01", HeaterStandbyBit),
      Get("PBH?", "heater_state", "PBH{heater.on}"),
      Put("PBH{d}", "heater_state", "heater.on", "digit:01"),
      Get("?M", "hours", "?{hours.heater:06}"),
      Get("?N", "hours", "?{hours.tx:06}"),
      Set("YH{v}", "hours", Hours),
      Get("?VIvi", "helix_dual", "?{helix.v:4}{helix.i:4}{helix2.v:4}{helix2.i:4}"),
      Get("?VI", "helix", "?{helix.v:4}{helix.i:4}"),
      Get("YGHI?", "helix_ratio", "YGHI{helix.ratio}"),
      Put("YGHI{v}", "helix_ratio", "helix.ratio", "int:0:9999"),
      Get("YFTH?", "helix_trip", "YFTH{helix.trip}"),
      Put("YFTH{v}", "helix_trip", "helix.trip", "num:0:999"),
      Get("PHV?", "heater_voltage", "PHV{heater.v:4}"),
      Get("?J", "heater_voltage_old", "?{heater.v:4}"),
      Get("PHI?", "heater_current", "PHI{heater.i:4}"),
      Get("?C", "cathode_current", "?{cathode.i:4}"),
      Get("PBFC?", "cathode_monitor", "PBFC{cathode.i}"),
      Get("PBFS?", "cathode_monitor", "PBFS{cathode.mode}"),
      Put("PBFS{d}", "cathode_monitor", "cathode.mode", "digit:0123456"),
      Get("PBFM?", "cathode_monitor", "PBFM{cathode.mode}"),
      Get("PBFT?", "cathode_monitor", "PBFT{cathode.anode_scale}"),
      Put("PBFT{v}", "cathode_monitor", "cathode.anode_scale", "int:0:99999"),
      Get("PBFE?", "cathode_monitor", "PBFE{cathode.neg_anode}"),
      Put("PBFE{d}", "cathode_monitor", "cathode.neg_anode", "digit:01"),
      Get("PBFF?", "cathode_monitor", "PBFF{cathode.neg_start}"),
      Put("PBFF{v}", "cathode_monitor", "cathode.neg_start", "int:0:9999"),
      Get("PBFA?", "cathode_monitor", "PBFA{cathode.anode_v}"),
      Put("PBFA{v}", "cathode_monitor", "cathode.anode_v", "int:0:9999"),
      Get("PBFO?", "cathode_monitor", "PBFO{cathode.scalar}"),
      Put("PBFO{v}", "cathode_monitor", "cathode.scalar", "int:0:4095"),
      Get("PBFI?", "cathode_monitor", "PBFI{cathode.ideal}"),
      Put("PBFI{v}", "cathode_monitor", "cathode.ideal", "int:0:999"),
      Get("QEP?", "tube_life", "QEP{eol.params}"),
      Get("QEC", "tube_life", "QEC{eol.estimate};"),

      // RF power
      Set("K{v}", "attenuation", Attenuation),
      Get("?A", "attenuation", "?{atten}"),
      Get("8", "atten_count", "8{atn_count}"),
      Set(".D{i} {v}", "atten_count", AttenCount, "D"),
      Set("C{v}", "atten_count", AttenCount, "C"),
      Get("?/", "atten_dac", "?{slope:4}"),
      Put("P/{v}:{d}", "subband_linearizer", "subband.{n}.slope", "num"),
      Put("P/{v}", "atten_dac", "slope", "num:0:4095"),
      Get("?Zz", "linearizer", "?{lin.amp:4}{lin.phase:4}"),
      Put("PZ{v}:{d}", "subband_linearizer", "subband.{n}.lin.amp", "int:0:4096"),
      Put("PZ{v}", "linearizer", "lin.amp", "int:0:4096"),
      Put("Pz{v}:{d}", "subband_linearizer", "subband.{n}.lin.phase", "int:0:4096"),
      Put("Pz{v}", "linearizer", "lin.phase", "int:0:4096"),
      Put("P|{v}:{d}", "subband_linearizer", "subband.{n}.lin.tilt", "num"),
      Put("P|{v}", "linearizer", "lin.tilt", "num"),
      Get("PZ?{d}", "subband_linearizer", "PZ{n}{subband.{n}.lin.amp:4}"),
      Get("Pz?{d}", "subband_linearizer", "Pz{n}{subband.{n}.lin.phase:4}"),
      Get("P/?{d}", "subband_linearizer", "P/{n}{subband.{n}.slope:4}"),
      Get("P|?{d}", "subband_linearizer", "P|{n}{subband.{n}.lin.tilt:4}"),
      Get("PG?{d}", "subband_gain", "PG{gb.state}{subband.{n}.gb:4}"),
      Put("PG{v}:{d}", "subband_gain", "subband.{n}.gb", "num1"),
      Get("PG?", "gain_balance", "PG{gb.state}{gb.value:4}"),
      Set("PG{v}", "gain_balance", SwitchOrValue, "gb"),
      Get("PBCG?", "if_gain_balance", "PBCG{if_gain_balance}"),
      Get("PBJ?", "unit_gain", "PBJ{ug.state}{ug.value:4}"),
      Set("PBJ{v}", "unit_gain", SwitchOrValue, "ug"),
      Get("G?", "const_power", "G{const_level}"),
      Set("GM{v}", "const_power", ConstLevel, "", "M"),
      Set("G{v}", "const_power", ConstLevel, "", "W"),
      Act("<", "const_power", ConstPower, "1"),
      Act("H", "const_power", ConstPower, "0"),
      Set("EM{v}", "goto_power", GoToPower, "", "M"),
      Set("E{v}", "goto_power", GoToPower, "", "W"),
      Ask("?P", "rf_power", RfPower, "fwd_power"),
      Ask("?Q", "rf_power", RfPower, "rev_power"),
      Get(".?A{i}", "analog_counts", ".A{n} {acount.{n}}"),
      Get("?HLR", "trip_levels",
          "?{trip.fwd_hi.type}{trip.fwd_hi.level:4}{trip.fwd_lo.type}{trip.fwd_lo.level:4}"
          "{trip.rev_hi.type}{trip.rev_hi.level:4}"),
      Set("MFM{v}", "trip_levels", TripLevel, "trip.fwd_hi", "FM"),
      Set("MAM{v}", "trip_levels", TripLevel, "trip.fwd_hi", "AM"),
      Set("MDM{v}", "trip_levels", TripLevel, "trip.fwd_hi", "DM"),
      Set("MF{v}", "trip_levels", TripLevel, "trip.fwd_hi", "FW"),
      Set("MA{v}", "trip_levels", TripLevel, "trip.fwd_hi", "AW"),
      Set("MD{v}", "trip_levels", TripLevel, "trip.fwd_hi", "DW"),
      Set("LFM{v}", "trip_levels", TripLevel, "trip.fwd_lo", "FM"),
      Set("LAM{v}", "trip_levels", TripLevel, "trip.fwd_lo", "AM"),
      Set("LDM{v}", "trip_levels", TripLevel, "trip.fwd_lo", "DM"),
      Set("LF{v}", "trip_levels", TripLevel, "trip.fwd_lo", "FW"),
      Set("LA{v}", "trip_levels", TripLevel, "trip.fwd_lo", "AW"),
      Set("LD{v}", "trip_levels", TripLevel, "trip.fwd_lo", "DW"),
      Set("OFM{v}", "trip_levels", TripLevel, "trip.rev_hi", "FM"),
      Set("OAM{v}", "trip_levels", TripLevel, "trip.rev_hi", "AM"),
      Set("ODM{v}", "trip_levels", TripLevel, "trip.rev_hi", "DM"),
      Set("OF{v}", "trip_levels", TripLevel, "trip.rev_hi", "FW"),
      Set("OA{v}", "trip_levels", TripLevel, "trip.rev_hi", "AW"),
      Set("OD{v}", "trip_levels", TripLevel, "trip.rev_hi", "DW"),
      Get("YFTF?", "factory_trips", "YFTF{factory.fwd_trip}"),
      Put("YFTF{v}", "factory_trips", "factory.fwd_trip", "num1:0:99"),
      Get("YFTR?", "factory_trips", "YFTR{factory.rev_trip}"),
      Put("YFTR{v}", "factory_trips", "factory.rev_trip", "num1:0:99"),
      Put("YFTM{v}", "factory_trips", "factory.margin", "int:0:99"),
      Get("PR?", "rev_offset", "PR{rev_offset}"),
      Put("PR{v}", "rev_offset", "rev_offset", "num1:-50:50"),
      Get("PS?", "return_loss", "PS{return_loss}"),
      Put("PS{v}", "return_loss", "return_loss", "num1:0:99"),
      Get("PO?", "power_limit", "PO{plimit.state}{plimit.level}"),
      Set("PO{v}", "power_limit", PowerLimit),
      Get("POO?", "power_limit", "POO{plimit.fault}"),
      Put("POO{v}", "power_limit", "plimit.fault", "num1:0:99"),
      Get("PBRC?", "band_limits", "PBRC{band.max}"),
      Get("PBRF?", "band_limits", "PBRF{band.min}"),
      Set("YAM{v}", "max_atten", MaxAtten),

      // RF bands
      Ask("T?", "band", CurrentBand),
      Set("T{v}", "band", SelectBand),
      Ask(".?B{d}", "band_table", BandInfo),
      Set(".B{d}{v}", "band_table", SetBandInfo),
      Get("TF?", "rf_freq", "TF{rf_freq}"),
      Put("TF{v}", "rf_freq", "rf_freq", "int:1:99999"),
      Ask("PBS?", "subbands", CurrentSubBand),
      Get("PBS{d}?", "subbands", "PBS{n}{subband.{n}.freq}"),
      Set("PBS{d}", "subbands", SelectSubBand),
      Put("PBS{d}{v}", "subbands", "subband.{n}.freq", "freq"),
      Get("QS?", "cal_factors", "QS{calfactors}"),
      Put("QS{v}", "cal_factors", "calfactors", "text"),

      // Fault configuration
      Get("YIF?", "fault_enable", "YIF{fault_enable}"),
      Put("YIF{v}", "fault_enable", "fault_enable", "masks"),
      Get("YIA?", "alarm_enable", "YIA{alarm_enable}"),
      Put("YIA{v}", "alarm_enable", "alarm_enable", "int:0:99999999"),
      Get("PBDAL?", "dc_input", "PBDAL{dc.alarm_lo}"),
      Put("PBDAL{v}", "dc_input", "dc.alarm_lo", "num"),
      Get("PBDAH?", "dc_input", "PBDAH{dc.alarm_hi}"),
      Put("PBDAH{v}", "dc_input", "dc.alarm_hi", "num"),
      Get("PBDFL?", "dc_input", "PBDFL{dc.fault_lo}"),
      Put("PBDFL{v}", "dc_input", "dc.fault_lo", "num"),
      Get("PBDFH?", "dc_input", "PBDFH{dc.fault_hi}"),
      Put("PBDFH{v}", "dc_input", "dc.fault_hi", "num"),
      Get("PBDV?", "dc_input", "PBDV{dc.input}"),
      Get("PBDR?", "dc_input", "PBDR{dc.ratio}"),
      Put("PBDR{v}", "dc_input", "dc.ratio", "num"),
      Get("PBKF?", "temp_trips", "PBKF{temp.fault}"),
      Put("PBKF{v}", "temp_trips", "temp.fault", "int:0:150"),
      Get("PBKA?", "temp_trips", "PBKA{temp.alarm}"),
      Put("PBKA{v}", "temp_trips", "temp.alarm", "int:0:150"),
      Get("PBKI?", "temp_trips", "PBKI{temp.inlet_diff}"),
      Put("PBKI{v}", "temp_trips", "temp.inlet_diff", "int:0:150"),
      Get("PBKL?", "temp_trips", "PBKL{temp.latch}"),
      Put("PBKL{d}", "temp_trips", "temp.latch", "digit:01"),
      Get("?TT", "temperature2", "?{temp:4}{temp2:4}"),
      Get("?T", "temperature", "?{temp:4}"),
      Get("?t", "inlet_temp", "?{inlet_temp}"),
      Get("PBG?", "fan_temp", "PBG{fan_temp}"),
      Put("PBG{v}", "fan_temp", "fan_temp", "int:0:150"),
      Get("?IiJj", "current_sense", "?{isense.1:4}{isense.2:4}{isense.3:4}{isense.4:4}"),
      Put("YIG{v}", "current_sense", "param.92", "num1"),
      Put("YIR{v}", "current_sense", "param.93", "num"),
      Act("PCT", "arc_test", SelfTest, "A"),
      Act("PCS", "fault_test", SelfTest, "S"),
      Get("PTW?", "arc_detector", "PTW{arc_detector}"),
      Put("PTW{d}", "arc_detector", "arc_detector", "digit:01"),

      // Upconverter and float supply
      Get("PBCA?", "buc", "PBCA{buc.atten}"),
      Put("PBCA{v}", "buc", "buc.atten", "num1:0:31.5"),
      Get("PBCP?", "buc", "PBCP{buc.power}"),
      Get("PBCS?", "buc", "PBCS{buc.setpoint}"),
      Put("PBCS{v}", "buc", "buc.setpoint", "num1:-60:30"),
      Get("PBCT?", "buc", "PBCT{buc.temp}"),
      Get("PBCN?", "buc", "PBCN{buc.max_atten}"),
      Put("PBCN{v}", "buc", "buc.max_atten", "num1:0:31.5"),
      Get("PBCO?", "buc", "PBCO{buc.offset}"),
      Put("PBCO{v}", "buc", "buc.offset", "num1:-31.5:31.5"),
      Get("PBCM?", "buc", "PBCM{buc.mode}"),
      Put("PBCM{v}", "buc", "buc.mode", "digit:012"),
      Get("PBCI?", "buc", "PBCI{buc.ideal}"),
      Get("YCA?", "float_supply", "YCA{amc.analogs}"),
      Get("YCD?", "float_supply", "YCD{amc.settings}"),
      Set("YCD{d} {v}", "float_supply", FloatSetting),
      Get("YCI?", "float_supply", "YCI{amc.status}"),
      Get("YC?:{d}", "psv", "YC{psv}:{n}"),
      Get("YC?", "psv", "YC{psv}"),
      Put("YC{v}", "psv", "psv", "int:0:99999"),
      Get("YJ?", "model_cfg", "YJ{model_cfg}"),

      // Ports and network
      Get("X1?", "com_ports", "X1{com1}"),
      Put("X1{v}", "com_ports", "com1", "com"),
      Get("X2?", "com_ports", "X2{com2}"),
      Put("X2{v}", "com_ports", "com2", "com"),
      Get("XR?", "rs485", "XR{rs485.wire}{rs485.term}{address}"),
      Set("XR{v}", "rs485", Rs485, "", "R"),
      Set("XA{v}", "rs485", Rs485, "", "A"),
      Get("PEI?", "ethernet", "PEI{net.ip}"),
      Put("PEI{v}", "ethernet", "net.ip", "ip"),
      Get("PEN?", "ethernet", "PEN{net.mask}"),
      Put("PEN{v}", "ethernet", "net.mask", "ip"),
      Get("PER?", "ethernet", "PER{net.router}"),
      Put("PER{v}", "ethernet", "net.router", "ip"),
      Get("PEM?", "ethernet", "PEM{net.mac}"),
      Get("PEP?", "ethernet", "PEP{net.port}"),
      Put("PEP{v}", "ethernet", "net.port", "int:1:65535"),
      Get("PEO?", "ethernet", "PEO{net.dhcp}"),
      Put("PEO{d}", "ethernet", "net.dhcp", "digit:01"),
      Act("PES", "ethernet", Plain),
      Get("QlldpFactorySetup?", "lldp", "QlldpFactorySetup {lldp.factory}"),
      Put("QlldpFactorySetup {v}", "lldp", "lldp.factory", "fields3"),
      Get("QlldpSetupConfig?", "lldp", "QlldpSetupConfig {lldp.user}"),
      Put("QlldpSetupConfig {v}", "lldp", "lldp.user", "fields5"),
      Get("N?", "power_save", "N{psave.mode}"),
      Put("N{d}", "power_save", "psave.mode", "digit:01"),
      Get("NP?", "power_save", "NP{psave.level}"),
      Put("NP{d}", "power_save", "psave.level", "digit:01234567"),

      // Calibration tables
      Ask("YFC{v}", "cal_forward", CalQuery, "", "F"),
      Set("YFF{v}", "cal_forward", CalEdit, "", "FF"),
      Set("YFI", "cal_forward", CalEdit, "", "FI"),
      Set("YFS", "cal_forward", CalEdit, "", "FS"),
      Set("YFA", "cal_forward", CalEdit, "", "FA"),
      Ask("YRC{v}", "cal_reverse", CalQuery, "", "R"),
      Set("YRF{v}", "cal_reverse", CalEdit, "", "RF"),
      Set("YRI", "cal_reverse", CalEdit, "", "RI"),
      Set("YRS", "cal_reverse", CalEdit, "", "RS"),
      Set("YRA", "cal_reverse", CalEdit, "", "RA"),
      Ask("YSC{v}", "cal_drive", CalQuery, "", "S"),
      Set("YSF{v}", "cal_drive", CalEdit, "", "SF"),
      Set("YSI", "cal_drive", CalEdit, "", "SI"),
      Set("YSS", "cal_drive", CalEdit, "", "SS"),
      Set("YSA", "cal_drive", CalEdit, "", "SA"),
      Ask("YAC{v}", "cal_atten", CalQuery, "", "A"),
      Set("YAF{v}", "cal_atten", CalEdit, "", "AF"),
      Set("YAI", "cal_atten", CalEdit, "", "AI"),
      Set("YAS", "cal_atten", CalEdit, "", "AS"),
      Set("YAA", "cal_atten", CalEdit, "", "AA"),
      Set("YAP{v}", "cal_atten", CalEdit, "", "AP"),
      Ask("YAL", "cal_atten", Plain),

      // Logs
      Ask("QF{v}", "counted_log", CountedLog, "faultlog"),
      Ask("4{*}", "fault_log", LogPage, "faultlog"),
      Ask("4P{*}", "param_logs", LogPage, "log.10min"),
      Ask("4H{*}", "param_logs", LogPage, "log.hourly"),
      Ask("4D{*}", "param_logs", LogPage, "log.daily"),
      Ask("4M{*}", "param_logs", LogPage, "log.monthly"),
      Ask("4C{*}", "param_logs", LogPage, "log.cathode"),
      Ask("4TS{*}", "trend_logs", TrendPage, "trend.short"),
      Ask("4TL{*}", "trend_logs", TrendPage, "trend.long"),
  };
  return rows;
}

// ------------------------------------------------------------ dispatch

std::string LiteralPrefix(std::string_view pattern) {
  return std::string(pattern.substr(0, pattern.find('{')));
}

std::regex Compile(std::string_view pattern) {
  std::string re;
  for (size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] == '{') {
      size_t close = pattern.find('}', i);
      std::string_view token = pattern.substr(i + 1, close - i - 1);
      re += token == "d" ? "([0-9])" : token == "i" ? "([0-9]+)" : token == "v" ? "(.+)" : "(.*)";
      i = close;
    } else {
      if (std::string_view("\\^$.|?*+()[]{}").find(pattern[i]) != std::string_view::npos)
        re += '\\';
      re += pattern[i];
    }
  }
  return std::regex(re);
}

struct Compiled {
  const Row* row;
  std::regex re;
  bool indexFirst;  // the index is the first capture, the value the second
  bool hasIndex, hasValue;
};

const std::vector<Compiled>& CompiledRows() {
  static const std::vector<Compiled> compiled = [] {
    std::vector<Compiled> out;
    for (const Row& row : Rows()) {
      std::string_view p = row.pattern;
      size_t idx = std::min(p.find("{d}"), p.find("{i}"));
      size_t val = std::min(p.find("{v}"), p.find("{*}"));
      out.push_back({&row, Compile(p), idx < val, idx != std::string_view::npos,
                     val != std::string_view::npos});
    }
    return out;
  }();
  return compiled;
}

bool RemoteOnly(Op op) { return op == Op::Put || op == Op::Act || op == Op::FnSet; }

Reply Run(UnitState& unit, const Row& row, const Match& m) {
  std::string family = row.family;
  if (family == "param") family += "." + m.n;
  if (unit.Lacks(family)) return Reply::Nak(m.prefix);
  if (RemoteOnly(row.op) && !unit.remote) return Reply::Nak(m.prefix);
  switch (row.op) {
    case Op::Get: {
      std::string body;
      if (!Render(unit, row.form, m, &body)) return Reply::Nak(m.prefix);
      return Reply::Ack(std::move(body));
    }
    case Op::Put: {
      std::string key = Subst(row.key, m), value;
      if (!Has(unit, key)) return Reply::Nak(m.prefix);
      if (!Normalize(row.form, m.v, &value)) return Refuse(m);
      unit.values[key] = value;
      return row.fn ? row.fn(unit, row, m) : Ack(m);
    }
    default:
      return row.fn(unit, row, m);
  }
}

// Every row sharing one literal prefix is served by one table entry; the
// first row whose pattern matches the whole text answers.
Reply Dispatch(UnitState& unit, const std::vector<const Compiled*>& group, std::string_view prefix,
               std::string_view args) {
  std::string text = std::string(prefix) + std::string(args);
  for (const Compiled* c : group) {
    std::smatch sm;
    if (!std::regex_match(text, sm, c->re)) continue;
    Match m;
    m.text = text;
    m.prefix = std::string(prefix);
    int next = 1;
    auto take = [&](bool present) { return present ? sm[next++].str() : std::string(); };
    if (c->indexFirst) {
      m.n = take(c->hasIndex);
      m.v = take(c->hasValue);
    } else {
      m.v = take(c->hasValue);
      m.n = take(c->hasIndex);
    }
    if (!c->hasValue) m.v = m.n;  // "PX{d}": the digit is the value written
    return Run(unit, *c->row, m);
  }
  return Reply::Nak(text);
}

}  // namespace

void AddStandardCommands(CommandTable& table) {
  std::map<std::string, std::vector<const Compiled*>> groups;
  std::vector<std::string> order;
  for (const Compiled& c : CompiledRows()) {
    std::string prefix = LiteralPrefix(c.row->pattern);
    if (!groups.count(prefix)) order.push_back(prefix);
    groups[prefix].push_back(&c);
  }
  for (const std::string& prefix : order) {
    table.Add(prefix, [group = groups[prefix], prefix](UnitState& unit, std::string_view args) {
      return Dispatch(unit, group, prefix, args);
    });
  }
}

CommandTable StandardCommands() {
  CommandTable table;
  AddStandardCommands(table);
  return table;
}

bool ChangesUnit(std::string_view text) {
  // As the table answers: the longest literal prefix wins, then the first
  // row of that prefix whose pattern takes the whole text.
  const Compiled* best = nullptr;
  size_t bestLength = 0;
  for (const Compiled& c : CompiledRows()) {
    const std::string prefix = LiteralPrefix(c.row->pattern);
    if (!text.starts_with(prefix) || (best && prefix.size() <= bestLength)) continue;
    if (!std::regex_match(text.begin(), text.end(), c.re)) continue;
    best = &c;
    bestLength = prefix.size();
  }
  return best && RemoteOnly(best->row->op);
}

bool IsCommandFamily(std::string_view name) {
  if (name.starts_with("param.") && name.size() > 6 &&
      name.substr(6).find_first_not_of("0123456789") == std::string_view::npos)
    return true;
  for (const Row& row : Rows())
    if (name == row.family && name != "param") return true;
  return false;
}

}  // namespace amp::sim
