// The unit's command language from the unit's side: every mnemonic of the
// host's index answered (or deliberately refused) by every profile, settings
// read back in the form the host writes them, local mode, actions on the
// status words, wandering readouts, logs and calibration tables.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "sim/commands.h"
#include "sim/profile.h"

using namespace amp::sim;

namespace {

const CommandTable& Table() {
  static const CommandTable table = StandardCommands();
  return table;
}

Reply Send(UnitState& unit, std::string_view text) { return Table().Dispatch(unit, text); }

// The body of an acknowledged reply, or "<NAK ...>" so a failed expectation
// shows what happened.
std::string Ask(UnitState& unit, std::string_view text) {
  Reply r = Send(unit, text);
  return r.ack ? r.body : "<NAK " + r.body + ">";
}

UnitState Load(const std::string& name) {
  UnitState unit;
  std::string error;
  EXPECT_TRUE(LoadProfile(ResolveProfile(name), unit, &error)) << name << ": " << error;
  return unit;
}

// Decodes the summary, fault and alarm groups the way the host reads them
// from a "?!#(" reply: four status characters each, right after the "?".
struct Status {
  StatusWords summary{}, fault{}, alarm{};
};
Status Poll(UnitState& unit) {
  Reply r = Send(unit, "?!#(");
  Status s;
  EXPECT_TRUE(r.ack);
  EXPECT_EQ(r.body.size(), 13u) << r.body;
  if (r.body.size() != 13) return s;
  for (int i = 0; i < 4; ++i) {
    s.summary[i] = r.body[1 + i] & 0x3F;
    s.fault[i] = r.body[5 + i] & 0x3F;
    s.alarm[i] = r.body[9 + i] & 0x3F;
  }
  return s;
}

const std::vector<std::string> kProfiles = {"sspa120", "sspa102",    "bucsspa", "fbdc2295",
                                            "twta127", "dualtwt108", "oldunit"};

// One command of the host's index. The queries of the first read are not
// here: the end-to-end first read compares what the host's readers make of
// every profile's replies. `body` is what the host's reader needs to find in
// the reply (from its request, location pattern and position test);
// sets and actions have none, their reply counts only as ACK or NAK. A query
// marked kEcho is a setting whose reply is also the command that writes it:
// sent back, it must be taken and read back unchanged. `before` is sent first
// (a table write needs its begin).
constexpr bool kEcho = true;
struct Probe {
  const char* request;
  const char* family;
  const char* body = nullptr;
  bool echo = false;
  const char* before = nullptr;
};

const std::vector<Probe>& IndexProbes() {
  static const std::vector<Probe> probes = {
      // status and identity
      {"?!#(", "alarm_words", R"(\?[@-\x7F]{12})"},
      {"1", "unit_id", R"(1[@-\x7F]{2})"},
      {"0S", "serial_text", R"(0S[ -~]+)"},
      {"YM?", "cfg_word", R"(YM\d+)", kEcho},
      {"YK426-9999-001", "part_number"},
      {"YLQ123", "serial_number"},
      {"%2024/04/01,10:00", "clock"},
      {"~", "reset"},
      {"YO10?", "adc_scalers", R"(YO10 \d+)", kEcho},
      {"YP3?", "digital_pots", R"(YP3 [\d.]+)", kEcho},
      {"YB?", "temp_comp", R"(YB[-\d.]{5}[ -~]*)"},
      {"YB0.080", "temp_comp"},
      {"YB1?", "subband_tempco", R"(YB[-\d.]{5}s1)", kEcho},
      {"PBUH?", "upc_avail", R"(PBUH[01])", kEcho},
      {"PBW?", "led_mode", R"(PBW[01])", kEcho},
      {"U3", "waveguide"},
      // transmitter
      {"@", "transmitter"},
      {"I", "inhibit"},
      {"B", "fault_reset"},
      {".?P54", "param.54", R"(\.P54 [01])"},
      {"PTI?", "rfi_polarity", R"(PTI[01])", kEcho},
      {"PBA?", "auto_restore", R"(PBA\d)", kEcho},
      {"PX?", "startup", R"(PX[012])", kEcho},
      {":?", "heater_standby", R"(:[01])", kEcho},
      {"PBH?", "heater_state", R"(PBH[01])", kEcho},
      {"YH001234005678", "hours"},
      {"YGHI?", "helix_ratio", R"(YGHI\d+)", kEcho},
      {"YFTH?", "helix_trip", R"(YFTH[\d.]+)", kEcho},
      {"PHI?", "heater_current", R"(PHI[ \d.]{4})"},
      {"PBFS?", "cathode_monitor", R"(PBFS\d)", kEcho},
      {"PBFT?", "cathode_monitor", R"(PBFT\d+)", kEcho},
      {"PBFI?", "cathode_monitor", R"(PBFI\d+)", kEcho},
      // RF power
      {"K12.5", "attenuation"},
      {"8", "atten_count", R"(8\d+)"},
      {"%DN% 4095", "atten_count"},
      {"C2048", "atten_count"},
      {"?/", "atten_dac", R"(\?[ \d.]{4})"},
      {"P/100", "atten_dac"},
      {"?Zz", "linearizer", R"(\?[ \d]{4}[ \d]{4})"},
      {"PZ2000", "linearizer"},
      {"PZ?1", "subband_linearizer", R"(PZ1[ \d]{4})"},
      {"P|?1", "subband_linearizer", R"(P\|1[ \-\d.]{4})"},
      {"P/120:1", "subband_linearizer"},
      {"PG?1", "subband_gain", R"(PG[01][ \-\d.]{4})"},
      {"PG0.5:1", "subband_gain"},
      {"PG?", "gain_balance", R"(PG[01] *-?\d+\.\d)"},
      {"PG0.5", "gain_balance"},
      {"PBCG?", "if_gain_balance", R"(PBCG-?[\d.]+)"},
      {"PBJ?", "unit_gain", R"(PBJ[01][ \-\d.]{4})"},
      {"PBJ2.5", "unit_gain"},
      {"<", "const_power"},
      {"EM52.0", "goto_power"},
      {"?Q", "rf_power", R"(\?[ <\d.]{4})"},
      {".?A10", "analog_counts", R"(\.A10 \d+)"},
      {"LAM40.0", "trip_levels"},
      {"YFTF?", "factory_trips", R"(YFTF[\d.]+)", kEcho},
      {"YFTR?", "factory_trips", R"(YFTR[\d.]+)", kEcho},
      {"YFTM10", "factory_trips"},
      {"PR?", "rev_offset", R"(PR[ -<]+)", kEcho},
      {"PS?", "return_loss", R"(PS[\d.]+)", kEcho},
      {"PO?", "power_limit", R"(PO[01][\d.]+(;[\d.]+)?)"},
      {"PO1", "power_limit"},
      {"POO?", "power_limit", R"(POO[\d.]+)", kEcho},
      {".?P126", "param.126", R"(\.P126 \d+)"},
      {".?P320", "param.320", R"(\.P320 \d+)", kEcho},
      {".?P334", "param.334", R"(\.P334 \d+)", kEcho},
      {"YAM25.0", "max_atten"},
      // RF bands
      {"T%BAND%", "band"},
      {".?B1", "band_table", R"(\.B1[A-Za-z]+(,\d+\.\d+)?)", kEcho},
      {".?B4", "band_table", R"(\.B4([A-Za-z]+(,\d+\.\d+)?)?)"},
      {".P110 255", "param.110"},
      {"TF?", "rf_freq", R"(TF\d+)", kEcho},
      {"PBS8?", "subbands", R"(PBS8\d\d\.\d\d)", kEcho},
      {"PBS1", "subbands"},
      {"QS?", "cal_factors", R"(QS(-?[\d.]+,-?[\d.]+;){10})", kEcho},
      // fault configuration
      {"YIF?", "fault_enable", R"(YIF\d+(,\d+)?)", kEcho},
      {"YIA?", "alarm_enable", R"(YIA\d+)", kEcho},
      {".?P151", "param.151", R"(\.P151 \d)", kEcho},
      {".?P212", "param.212", R"(\.P212 \d)", kEcho},
      {"PBDAL?", "dc_input", R"(PBDAL[\d.]+)", kEcho},
      {"PBDFH?", "dc_input", R"(PBDFH[\d.]+)", kEcho},
      {"PBDR?", "dc_input", R"(PBDR[\d.]+)", kEcho},
      {"PBKF?", "temp_trips", R"(PBKF\d+)", kEcho},
      {"PBKA?", "temp_trips", R"(PBKA\d+)", kEcho},
      {"PBKI?", "temp_trips", R"(PBKI\d+)", kEcho},
      {"PBKL?", "temp_trips", R"(PBKL[01])", kEcho},
      {".?P4", "param.4", R"(\.P4 \d+)", kEcho},
      {".?P136", "param.136", R"(\.P136 \d+)", kEcho},
      {".?P179", "param.179", R"(\.P179 \d+)", kEcho},
      {".?P333", "param.333", R"(\.P333 -?\d+)", kEcho},
      {"PBG?", "fan_temp", R"(PBG\d+)", kEcho},
      {".?P92", "param.92", R"(\.P92 [\d.]+)"},
      {"YIG12.0", "current_sense"},
      {"PCT", "arc_test"},
      {"PCS", "fault_test"},
      {"PTW?", "arc_detector", R"(PTW[01])", kEcho},
      // upconverter and float supply
      {"PBCA?", "buc", R"(PBCA[\d.]+)", kEcho},
      {"PBCP?", "buc", R"(PBCP-?[\d.]+)"},
      {"PBCS?", "buc", R"(PBCS-?[\d.]+)", kEcho},
      {"PBCO?", "buc", R"(PBCO-?[\d.]+)", kEcho},
      {"PBCM?", "buc", R"(PBCM\d)", kEcho},
      {"YCD3 2.6", "float_supply"},
      {"YCI?", "float_supply", R"(YCI-?\d+)"},
      {"YC?", "psv", R"(YC\d+)", kEcho},
      {"YC?:1", "psv", R"(YC\d+:1)"},
      // ports and network
      {"X1?", "com_ports", R"(X1\d{6}[NEO][78][12])", kEcho},
      {"X2?", "com_ports", R"(X2\d{6}[NEO][78][12])", kEcho},
      {"XR?", "rs485", R"(XR[24][TU][!-~])", kEcho},
      {"XAA", "rs485"},
      {"PEI?", "ethernet", R"(PEI\d+\.\d+\.\d+\.\d+)", kEcho},
      {"PEM?", "ethernet", R"(PEM[ -~]{14,})"},
      {"PEP?", "ethernet", R"(PEP\d+)", kEcho},
      {"PEO?", "ethernet", R"(PEO[01])", kEcho},
      {"PES", "ethernet"},
      {"QlldpFactorySetup?", "lldp", R"(QlldpFactorySetup [^;]+;[^;]+;[^;]+)", kEcho},
      {"QlldpSetupConfig?", "lldp", R"(QlldpSetupConfig [01];\d+;\d+;\d;[ -~]+)", kEcho},
      {"N?", "power_save", R"(N[01])", kEcho},
      {"NP?", "power_save", R"(NP\d)", kEcho},
      // calibration tables
      {"YFC00.0", "cal_forward", R"(YFC(NO ENTRY| *-?\d+\.\d dBm +Entry#\d{4}))"},
      {"YFF12.3 0042", "cal_forward", nullptr, false, "YFI"},
      {"YFS", "cal_forward", nullptr, false, "YFI"},
      {"YRC00.0", "cal_reverse", R"(YRC(NO ENTRY| *-?\d+\.\d dBm +Entry#\d{4}))"},
      {"YRF12.3 0042", "cal_reverse", nullptr, false, "YRI"},
      {"YSC-50.0", "cal_drive", R"(YSC(NO ENTRY| *-?\d+\.\d dBm +Entry#\d{4}))"},
      {"YSF-12.3 0042", "cal_drive", nullptr, false, "YSI"},
      {"YAC-04.0", "cal_atten", R"(YAC(NO ENTRY| *-?\d+\.\d dB +Entry#\d{4}))"},
      {"YAL", "cal_atten", "YAL"},
      {"YAP-2.0", "cal_atten", nullptr, false, "YAI"},
      // logs
      {"QF0;0", "counted_log", R"(QF0;\d+;\d+;([^!]+!)*)"},
      {"4", "fault_log", R"(4([^!]+!)+)"},
      {"4100", "fault_log", R"(4([^!]+!)*)"},
      {"4P0", "param_logs", R"(4P([^!]+!)+)"},
      {"4C0", "param_logs", R"(4C([^!]+!)+)"},
      {"4TS0", "trend_logs", R"(4TS([ -~]{200})+)"},
      {"4TL0", "trend_logs", R"(4TL([ -~]{200})+)"},
  };
  return probes;
}

// The state each probe starts from: the profile's unit, in remote mode,
// transmitting with RF flowing, nothing faulted, switches in manual mode.
UnitState Prepared(const std::string& profile) {
  UnitState u = Load(profile);
  u.SetRemote(true);
  u.summary[0] = (u.summary[0] | summary::kTxOn) & ~(summary::kStandby | summary::kInhibit);
  u.summary[1] &= ~summary::kSummaryFault;
  u.summary[2] &= ~summary::kAutoMode;
  u.fault = {};
  return u;
}

std::string RequestFor(const Probe& p, const UnitState& unit) {
  std::string text = p.request;
  auto fill = [&](const char* mark, const char* key, const char* otherwise) {
    if (size_t at = text.find(mark); at != std::string::npos) {
      auto it = unit.values.find(key);
      text.replace(at, std::strlen(mark), it == unit.values.end() ? otherwise : it->second);
    }
  };
  fill("%BAND%", "band.1.name", "Ku");
  fill("%DN%", "atn_count.mnemonic", "");
  return text;
}

}  // namespace

TEST(CommandIndex, EveryProfileAnswersEachMnemonicOrRefusesItsLackingFamilies) {
  for (const Probe& p : IndexProbes())
    EXPECT_TRUE(IsCommandFamily(p.family)) << p.request << ": family " << p.family;
  for (const std::string& profile : kProfiles) {
    const UnitState base = Prepared(profile);
    int acked = 0;
    for (const Probe& p : IndexProbes()) {
      SCOPED_TRACE(profile + ": " + p.request);
      UnitState u = base;
      const bool lacking = u.Lacks(p.family);
      if (p.before) {
        EXPECT_EQ(Send(u, p.before).ack, !lacking);
      }
      Reply r = Send(u, RequestFor(p, u));
      EXPECT_EQ(r.ack, !lacking) << r.body;
      if (!r.ack || !p.body) continue;
      ++acked;
      EXPECT_TRUE(std::regex_match(r.body, std::regex(p.body))) << r.body << " !~ " << p.body;
      if (!p.echo) continue;
      EXPECT_TRUE(Send(u, r.body).ack) << "the setting is not taken back: " << r.body;
      EXPECT_EQ(Ask(u, p.request), r.body);
    }
    EXPECT_GT(acked, 25) << profile;
  }
}

TEST(CommandIndex, LocalModeRefusesEverySetAndActionButAnswersQueries) {
  for (const char* profile : {"sspa120", "twta127", "bucsspa"}) {
    UnitState base = Prepared(profile);
    base.SetRemote(false);
    EXPECT_EQ(Poll(base).summary[0] & summary::kRemote, 0) << profile;
    for (const Probe& p : IndexProbes()) {
      SCOPED_TRACE(std::string(profile) + ": " + p.request);
      UnitState u = base;
      if (u.Lacks(p.family)) continue;
      std::string request = RequestFor(p, u);
      if (p.body) {
        Reply r = Send(u, request);
        EXPECT_TRUE(r.ack) << "query refused in local mode";
        if (!p.echo) continue;
        request = r.body;  // the setting written back
      }
      const UnitState before = u;
      EXPECT_FALSE(Send(u, request).ack) << request << " accepted in local mode";
      EXPECT_EQ(u.values, before.values);
      EXPECT_EQ(u.summary, before.summary);
      EXPECT_EQ(u.address, before.address);
    }
    // Back in remote mode the same unit takes commands again.
    base.SetRemote(true);
    EXPECT_EQ(Ask(base, "K7.5"), "K7.5");
    EXPECT_EQ(Ask(base, "?A"), "?7.5");
  }
}

// Sets whose query answers in another form or another unit than was sent.
TEST(SetCommands, ConvertedAndIndexedSettingsReadBack) {
  UnitState u = Prepared("sspa120");
  EXPECT_TRUE(Send(u, "K12.5").ack);
  EXPECT_EQ(Ask(u, "?A"), "?12.5");
  EXPECT_TRUE(Send(u, "YK426-9999-001").ack);
  EXPECT_TRUE(Ask(u, "00").starts_with("009999-001/")) << Ask(u, "00");
  EXPECT_TRUE(Send(u, "YK7654321").ack);
  EXPECT_TRUE(Ask(u, "00").starts_with("007654-321/")) << Ask(u, "00");
  EXPECT_TRUE(Send(u, "YLQ4711").ack);
  EXPECT_NE(Ask(u, "00").find("/Q4711/"), std::string::npos);
  EXPECT_TRUE(Send(u, "GM50.0").ack);
  EXPECT_EQ(Ask(u, "G?"), "G50.0");
  EXPECT_TRUE(Send(u, "G200.0").ack);  // Watts: 10 log10(200) + 30 = 53.0 dBm
  EXPECT_EQ(Ask(u, "G?"), "G53.0");
  EXPECT_TRUE(Send(u, "MFM57.5").ack);
  EXPECT_TRUE(Send(u, "LA10.0").ack);  // 10 W = 40.0 dBm
  EXPECT_TRUE(Send(u, "ODM45.0").ack);
  EXPECT_EQ(Ask(u, "?HLR"), "?F57.5A40.0D45.0");
  EXPECT_TRUE(Send(u, "PO55.0;54.0").ack);
  EXPECT_TRUE(Send(u, "PO1").ack);
  EXPECT_EQ(Ask(u, "PO?"), "PO155.0;54.0");
  EXPECT_TRUE(Send(u, "YAM25.0").ack);
  EXPECT_EQ(Ask(u, ".?P203"), ".P203 250");
  EXPECT_FALSE(Send(u, "K25.5").ack);  // above the new maximum
  EXPECT_TRUE(Send(u, "YH000100000200").ack);
  EXPECT_EQ(Ask(u, "?M"), "?000100");
  EXPECT_EQ(Ask(u, "?N"), "?000200");
  EXPECT_TRUE(Send(u, "PG1").ack);
  EXPECT_TRUE(Send(u, "PG-1.5").ack);
  EXPECT_EQ(Ask(u, "PG?"), "PG1-1.5");
  EXPECT_TRUE(Send(u, "XR2UC").ack);
  EXPECT_EQ(u.address, 'C');
  EXPECT_EQ(Ask(u, "XR?"), "XR2UC");
  EXPECT_TRUE(Send(u, "XAD").ack);
  EXPECT_EQ(Ask(u, "XR?"), "XR2UD");

  UnitState b = Prepared("bucsspa");
  EXPECT_EQ(Ask(b, "PBS?"), "PBS214.00");
  EXPECT_TRUE(Send(b, "PBS3").ack);
  EXPECT_EQ(Ask(b, "PBS?"), "PBS314.25");
  EXPECT_TRUE(Send(b, "PBS814.8").ack);
  EXPECT_EQ(Ask(b, "PBS8?"), "PBS814.80");
  EXPECT_TRUE(Send(b, "PBS8").ack);
  EXPECT_TRUE(Send(b, "PBS800.00").ack);  // clears it; it can no longer be selected
  EXPECT_FALSE(Send(b, "PBS8").ack);
  EXPECT_TRUE(Send(b, "PZ2100:1").ack);
  EXPECT_EQ(Ask(b, "PZ?1"), "PZ12100");
  EXPECT_TRUE(Send(b, "PG0.7:2").ack);
  EXPECT_EQ(Ask(b, "PG?2").substr(3), " 0.7");

  UnitState d = Prepared("dualtwt108");
  EXPECT_EQ(Ask(d, ".?B2"), ".B2Ka,29.50");
  EXPECT_TRUE(Send(d, "TKa").ack);
  EXPECT_EQ(Ask(d, "T?"), "TKa,  29.50");
  EXPECT_TRUE(Send(d, ".B3Q,30.00").ack);
  EXPECT_EQ(Ask(d, ".?B3"), ".B3Q,30.00");
  EXPECT_TRUE(Send(d, ".P110 255").ack);  // band 3 removed from the table
  EXPECT_EQ(Ask(d, ".?B3"), ".B3");
  EXPECT_FALSE(Send(d, "TQ").ack);
  // YCD numbers its settings differently from the reply's order: heater
  // current is the fourth element, focus off the second.
  EXPECT_EQ(Ask(d, "YCD?").substr(3), "6.30;0.0;2.5;1.20");
  EXPECT_TRUE(Send(d, "YCD1 1.25").ack);
  EXPECT_TRUE(Send(d, "YCD2 0.5").ack);
  EXPECT_EQ(Ask(d, "YCD?").substr(3), "6.30;0.5;2.5;1.25");
}

TEST(SetCommands, BadArgumentsAreRefusedAndChangeNothing) {
  UnitState u = Prepared("sspa120");
  const UnitState before = u;
  // ".D1 100": the long count form this unit does not know.
  for (const char* bad : {"K99",
                          "K-1",
                          "Kx",
                          "PX3",
                          "PTI2",
                          "X1009601N81",
                          "X1009600N9",
                          "PEI1.2.3",
                          "PEI1.2.3.256",
                          "PC5",
                          "PC7",
                          "YK12-34",
                          "YK426-22A1-004",
                          "YH123",
                          "YH0000010000002",
                          "G0",
                          "GM64.0",
                          "MF-5",
                          "E0",
                          ".P999 1",
                          ".P4 x",
                          "TXx",
                          "YIFa",
                          "NP8",
                          "QlldpSetupConfig 1;2",
                          ".D5 100",
                          ".D9 4096",
                          ".D1 100",
                          "C-1",
                          "PBS9",
                          "PBS5",
                          "TF0",
                          "PBCO40"}) {
    Reply r = Send(u, bad);
    EXPECT_FALSE(r.ack) << bad;
  }
  EXPECT_EQ(u.values, before.values);
  EXPECT_EQ(u.summary, before.summary);
  // An unknown command is refused with its whole text; a lacking family with
  // the mnemonic.
  EXPECT_EQ(Send(u, "ZZZ9").body, "ZZZ9");
  EXPECT_EQ(Send(u, "PBCA?").body, "PBCA?");
  EXPECT_EQ(Send(u, "?VI").body, "?VI");
}

// Switching the transmitter and the waveguide configuration go through the
// operator end-to-end tests; these are the status bits they do not reach.
TEST(Actions, ChangeTheStatusWordsAsTheHostReadsThem) {
  UnitState u = Prepared("sspa120");
  Status s;
  ASSERT_TRUE(Send(u, "I").ack);
  EXPECT_TRUE(Poll(u).summary[0] & summary::kInhibit);
  EXPECT_EQ(Ask(u, ".?P54"), ".P54 1");
  EXPECT_EQ(Ask(u, "?Q"), "?<0.1");
  EXPECT_FALSE(Send(u, "EM52.0").ack);  // no going to a power while inhibited
  ASSERT_TRUE(Send(u, "J").ack);
  EXPECT_FALSE(Poll(u).summary[0] & summary::kInhibit);
  EXPECT_EQ(Ask(u, ".?P54"), ".P54 0");

  // The level to hold switches constant power on; "H" off, "<" on again.
  ASSERT_TRUE(Send(u, "GM52.0").ack);
  EXPECT_TRUE(Poll(u).summary[0] & summary::kConstPower);
  double fwd = std::atof(Ask(u, "?P").substr(1).c_str());
  EXPECT_NEAR(fwd, 52.0, 0.35);  // the forward power follows the level
  ASSERT_TRUE(Send(u, "H").ack);
  EXPECT_FALSE(Poll(u).summary[0] & summary::kConstPower);
  ASSERT_TRUE(Send(u, "<").ack);
  EXPECT_TRUE(Poll(u).summary[0] & summary::kConstPower);
  ASSERT_TRUE(Send(u, "H").ack);

  // Waveguide: manual moves, refused in automatic mode, configuration index.
  ASSERT_TRUE(Send(u, "U0").ack);
  ASSERT_TRUE(Send(u, "U3").ack);
  s = Poll(u);
  EXPECT_EQ(s.summary[2] & (summary::kSw1A | summary::kSw1B), summary::kSw1B);
  EXPECT_EQ(s.summary[2] & (summary::kSw2A | summary::kSw2B), summary::kSw2A);
  ASSERT_TRUE(Send(u, "UA").ack);
  EXPECT_TRUE(Poll(u).summary[2] & summary::kAutoMode);
  EXPECT_FALSE(Send(u, "U1").ack);
  EXPECT_EQ(Poll(u).summary[2] & (summary::kSw1A | summary::kSw1B), summary::kSw1B);
  ASSERT_TRUE(Send(u, "UM").ack);
  ASSERT_TRUE(Send(u, "U1").ack);
  ASSERT_TRUE(Send(u, "U2").ack);
  s = Poll(u);
  EXPECT_EQ(s.summary[2] & (summary::kSw1A | summary::kSw1B | summary::kAutoMode), summary::kSw1A);
  EXPECT_EQ(s.summary[2] & (summary::kSw2A | summary::kSw2B), summary::kSw2B);
  // The summary fault test and fault reset.
  ASSERT_TRUE(Send(u, "PCS").ack);
  EXPECT_TRUE(Poll(u).summary[1] & summary::kSummaryFault);
  ASSERT_TRUE(Send(u, "A").ack);
  EXPECT_FALSE(Send(u, "@").ack);  // no transmitting while a fault stands
  ASSERT_TRUE(Send(u, "B").ack);
  EXPECT_FALSE(Poll(u).summary[1] & summary::kSummaryFault);
  EXPECT_TRUE(Send(u, "@").ack);
}

TEST(Actions, FaultResetKeepsHeldFaultsAndTubeCommandsTouchTheirBits) {
  UnitState t = Prepared("twta127");
  ASSERT_TRUE(Send(t, "PCT").ack);  // arc test: waveguide arc (B0) and summary fault
  Status s = Poll(t);
  EXPECT_EQ(s.fault[1] & 1, 1);
  EXPECT_TRUE(s.summary[1] & summary::kSummaryFault);
  t.fault[0] = 0x09;      // Low Line and Over Temp latched ...
  t.faultHold[0] = 0x08;  // ... but the unit is still too hot
  ASSERT_TRUE(Send(t, "B").ack);
  s = Poll(t);
  EXPECT_EQ(s.fault, (StatusWords{0x08, 0, 0, 0}));
  EXPECT_TRUE(s.summary[1] & summary::kSummaryFault);
  t.faultHold = {};
  ASSERT_TRUE(Send(t, "B").ack);
  s = Poll(t);
  EXPECT_EQ(s.fault, (StatusWords{}));
  EXPECT_FALSE(s.summary[1] & summary::kSummaryFault);

  ASSERT_TRUE(Send(t, ":1").ack);
  EXPECT_TRUE(Poll(t).summary[1] & summary::kHeaterStandby);
  EXPECT_EQ(Ask(t, ":?"), ":1");
  ASSERT_TRUE(Send(t, ":0").ack);
  EXPECT_FALSE(Poll(t).summary[1] & summary::kHeaterStandby);

  // A reset clears latched faults and brings the transmitter up as the
  // start-up mode says.
  ASSERT_TRUE(Send(t, "PX1").ack);
  t.fault[3] = 0x02;
  ASSERT_TRUE(Send(t, "~").ack);
  s = Poll(t);
  EXPECT_FALSE(s.summary[0] & summary::kTxOn);
  EXPECT_EQ(s.fault[3], 0);
  ASSERT_TRUE(Send(t, "PX2").ack);
  ASSERT_TRUE(Send(t, "~").ack);
  EXPECT_TRUE(Poll(t).summary[0] & summary::kTxOn);
}

TEST(Readouts, WanderWithinTheirBoundsAndRepeatRunForRun) {
  for (const std::string& profile : kProfiles) {
    UnitState u = Load(profile);
    ASSERT_FALSE(u.wander.empty()) << profile;
    UnitState again = u;
    for (const auto& [key, amount] : u.wander) {
      const std::string& centre = u.values.at(key);
      size_t dot = centre.find('.');
      double halfDigit =
          0.5 * std::pow(10.0, -(dot == std::string::npos ? 0 : int(centre.size() - dot - 1)));
      std::set<std::string> seen;
      for (int i = 0; i < 60; ++i) {
        std::string v = ReadValue(u, key);
        EXPECT_EQ(v, ReadValue(again, key)) << profile << " " << key;  // same count, same value
        EXPECT_LE(std::fabs(std::atof(v.c_str()) - std::atof(centre.c_str())),
                  amount + halfDigit + 1e-9)
            << profile << " " << key << " = " << v;
        seen.insert(v);
      }
      EXPECT_GT(seen.size(), 2u) << profile << " " << key << " does not move";
    }
  }
  // Through the wire: "?P" keeps its four-character field while it wanders.
  UnitState u = Prepared("sspa120");
  for (int i = 0; i < 30; ++i) EXPECT_EQ(Ask(u, "?P").size(), 5u);
}

TEST(Logs, PagesComeFromTheProfileRecordsAndEndWithTheEndRecord) {
  auto records = [](std::string_view body) {
    std::vector<std::string> out;
    size_t start = 0;
    for (size_t bang; (bang = body.find('!', start)) != std::string_view::npos; start = bang + 1)
      out.emplace_back(body.substr(start, bang - start));
    return out;
  };
  UnitState u = Load("sspa120");
  const auto& faults = u.lists.at("faultlog");
  ASSERT_LT(faults.size(), 100u);
  std::vector<std::string> all = faults;
  all.push_back("--------------------");
  EXPECT_EQ(records(Ask(u, "4").substr(1)), all);  // the short log: everything, then the end
  EXPECT_EQ(records(Ask(u, "410").substr(1)),
            std::vector<std::string>(all.begin() + 10, all.end()));

  const auto& tenMin = u.lists.at("log.10min");
  ASSERT_GT(tenMin.size(), 20u);
  std::vector<std::string> paged;
  for (int start = 0; start < 60; start += 10) {
    std::string body = Ask(u, "4P" + std::to_string(start));
    ASSERT_TRUE(body.starts_with("4P")) << body;
    for (auto& r : records(body.substr(2))) paged.push_back(r);
  }
  std::vector<std::string> expected = tenMin;
  expected.push_back("--------------------");
  EXPECT_EQ(paged, expected);

  // Counted form: head "page;count;lines;", a short page ends the log.
  std::string head = "QF0;" + std::to_string(faults.size()) + ";10;";
  std::string first = Ask(u, "QF0;0");
  ASSERT_TRUE(first.starts_with(head)) << first;
  EXPECT_EQ(records(first.substr(head.size())),
            std::vector<std::string>(faults.begin(), faults.begin() + 10));
  std::string second = Ask(u, "QF10");
  EXPECT_TRUE(second.starts_with("QF10;" + std::to_string(faults.size()) + ";" +
                                 std::to_string(faults.size() - 10) + ";"))
      << second;

  // Trend: 200-character records, the one after the last begins with dashes.
  const auto& trend = u.lists.at("trend.short");
  std::string t0 = Ask(u, "4TS0"), t10 = Ask(u, "4TS10");
  ASSERT_EQ((t0.size() - 3) % 200, 0u);
  EXPECT_EQ((t0.size() - 3) / 200, 10u);
  EXPECT_EQ(t0.substr(3, trend[0].size()), trend[0]);
  EXPECT_EQ(t0.substr(3 + trend[0].size(), 200 - trend[0].size()),
            std::string(200 - trend[0].size(), ' '));
  EXPECT_EQ((t10.size() - 3) / 200, trend.size() - 10 + 1);
  EXPECT_TRUE(t10.substr(3 + 200 * (trend.size() - 10)).starts_with("-----"));

  EXPECT_FALSE(Send(u, "4Px").ack);
  EXPECT_FALSE(Send(u, "4P").ack);  // a parameter log page needs its index
}

TEST(CalTables, EntriesReadAsLinesAndWritesTakeEffectOnSave) {
  UnitState u = Prepared("sspa120");
  // The first entry's count is the profile's first count; keys outside the
  // table have no entry.
  EXPECT_EQ(Ask(u, "YFC20.0"), "YFC 20.0 dBm  Entry#0180");
  EXPECT_EQ(Ask(u, "YFC60.0"), "YFC 60.0 dBm  Entry#3950");
  EXPECT_EQ(Ask(u, "YFC19.9"), "YFCNO ENTRY");
  EXPECT_EQ(Ask(u, "YAC-04.0"), "YAC -4.0 dB  Entry#4095");  // the attenuator table's keys are dB
  EXPECT_FALSE(Send(u, "YFF12.3 0042").ack);                 // no writing before a begin
  ASSERT_TRUE(Send(u, "YFI").ack);
  ASSERT_TRUE(Send(u, "YFF12.3 0042").ack);
  ASSERT_TRUE(Send(u, "YFF12.4 0050").ack);
  EXPECT_EQ(Ask(u, "YFC12.3"), "YFCNO ENTRY");  // not before the save
  ASSERT_TRUE(Send(u, "YFS").ack);
  EXPECT_EQ(Ask(u, "YFC12.3"), "YFC 12.3 dBm  Entry#0042");
  EXPECT_EQ(Ask(u, "YFC20.0"), "YFCNO ENTRY");  // the written table replaced the old one
  ASSERT_TRUE(Send(u, "YFI").ack);
  ASSERT_TRUE(Send(u, "YFF30.0 1000").ack);
  ASSERT_TRUE(Send(u, "YFA").ack);  // abort keeps the table
  EXPECT_EQ(Ask(u, "YFC30.0"), "YFCNO ENTRY");
  EXPECT_EQ(Ask(u, "YFC12.4"), "YFC 12.4 dBm  Entry#0050");

  // The attenuator calibration marks the present DAC count.
  ASSERT_TRUE(Send(u, "YAI").ack);
  ASSERT_TRUE(Send(u, ".D9 4095").ack);
  ASSERT_TRUE(Send(u, "YAP-2.0").ack);
  ASSERT_TRUE(Send(u, ".D9 3001").ack);
  ASSERT_TRUE(Send(u, "YAP1.0").ack);
  ASSERT_TRUE(Send(u, "YAS").ack);
  EXPECT_EQ(Ask(u, "YAC-02.0"), "YAC -2.0 dB  Entry#4095");
  EXPECT_EQ(Ask(u, "YAC01.0"), "YAC  1.0 dB  Entry#3001");
}

TEST(Numbers, ReadAndWrittenWithAPointWhateverTheLocale) {
  double v = 0;
  for (const char* good : {"12.5", "-0.5", "+3", "7.", ".25", "0"})
    EXPECT_TRUE(ParseNumber(good, &v)) << good;
  EXPECT_TRUE(ParseNumber("-12.25", &v));
  EXPECT_EQ(v, -12.25);
  for (const char* bad : {"", "-", ".", "1e3", "1,5", "--1", "1-2", "1.2.3", " 1", "0x10", "nan"})
    EXPECT_FALSE(ParseNumber(bad, &v)) << bad;
  EXPECT_EQ(FormatFixed(55.04, 1), "55.0");
  EXPECT_EQ(FormatFixed(-0.04, 1), "0.0");  // no negative zero on the wire
  EXPECT_EQ(FormatFixed(-2.5, 2), "-2.50");
  EXPECT_EQ(FormatFixed(14.255, 0), "14");
}
