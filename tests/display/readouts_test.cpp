// Readouts against scripted replies laid out as the unit sends them: each
// update writes its field from a good reading and leaves it otherwise; power
// shows in dBm or Watts.
#include <gtest/gtest.h>

#include <functional>
#include "basic/numbers.h"

#include "display_rig.h"

namespace amp {
namespace {

using test::DisplayRig;

std::string Text(bool b) { return b ? "1" : "0"; }

// ------------------------------------------------------------- RF power

TEST(PowerFormat, DecimalsDependOnTheSize) {
  DisplayRig r;
  EXPECT_EQ(r.d.FormatPower(43.25f), "43.3");
  EXPECT_EQ(r.d.FormatPower(0.0f), "0.0");
  r.st.gDisplayWatts = true;
  EXPECT_EQ(r.d.FormatPower(60.0f), "1000");
  EXPECT_EQ(r.d.FormatPower(static_cast<float>(dBmFromWatts(999.9))), "999.9");
  EXPECT_EQ(r.d.FormatPower(static_cast<float>(dBmFromWatts(2500.4))), "2500");
  EXPECT_EQ(r.d.FormatPower(30.0f), "1.0");
}

// One readout update after another against the unit's replies in order
// (kRefused for a refusal): each writes its field from a good reading and
// leaves the field as it stood otherwise.
const std::string kRefused = "\025";

struct Readout {
  const char* name;
  std::function<void(DisplayRig&)> setup;
  std::vector<std::pair<std::string, std::string>> replies;  // command, body
  std::function<void(DisplayRig&)> update;
  std::function<std::string(DisplayRig&)> shown;
  std::vector<std::string> want;  // what shows after each update
};

TEST(Readouts, EachUpdateWritesOnlyAGoodReading) {
  const auto none = [](DisplayRig&) {};
  const auto fwd = [](DisplayRig& r) { r.d.UpdateFwdRF(); };
  const auto temp = [](DisplayRig& r) { r.d.UpdateTemperature(); };
  const auto helix = [](DisplayRig& r) { r.d.UpdateHelixHeater(); };
  const auto tubes = [](DisplayRig& r) {
    return r.f.txtHelixV.Text() + "|" + r.f.txtHelixI.Text() + "|" + r.f.txtHeaterV.Text() + "|" +
           r.f.txtHelix2I.Text();
  };
  const std::vector<Readout> rows{
      {"forward",
       [](DisplayRig& r) { r.f.txtFdBm.SetText("41.0"); },
       {{"?P", kRefused}, {"?P", "?    "}, {"?P", "?43.2"}, {"?P", "?<9.5"}},
       fwd,
       [](DisplayRig& r) { return r.f.txtFdBm.Text(); },
       {"41.0", "41.0", "43.2", "< 9.5"}},
      {"forward in Watts",
       [](DisplayRig& r) { r.st.gDisplayWatts = true; },
       {{"?P", "?60.0"}},
       fwd,
       [](DisplayRig& r) { return r.f.txtFdBm.Text(); },
       {"1000"}},
      // Below range the floor shows, not the unit's number; with no floor the number stands.
      {"reverse below range",
       [](DisplayRig& r) { r.st.gPowerFloor = 12.5f; },
       {{"?Q", "?<5.0"}, {"?P", "?47.0"}},
       [](DisplayRig& r) {
         r.d.UpdateRFPower();
         r.st.gPowerFloor = 0;
       },
       [](DisplayRig& r) { return r.f.txtRdBm.Text() + "|" + r.f.txtFdBm.Text(); },
       {"< 12.5|47.0", "< 5.0|47.0"}},
      {"reverse floor in Watts",
       [](DisplayRig& r) { r.st.gDisplayWatts = true, r.st.gPowerFloor = 30.0f; },
       {{"?Q", "?<5.0"}},
       [](DisplayRig& r) { r.d.UpdateRevRF(); },
       [](DisplayRig& r) { return r.f.txtRdBm.Text(); },
       {"< 1.0"}},
      {"temperature",
       none,
       {{"?T", "?  45"}, {"?T", "?-125"}, {"?T", "? 121"}},
       temp,
       [](DisplayRig& r) { return r.f.txtTemp.Text(); },
       {"45", "45", "45"}},
      {"two tubes' temperatures",
       [](DisplayRig& r) { r.u.gIsDualTWT = true; },
       {{"?TT", "?  45  50"}, {"?TT", "?  46  xx"}},
       temp,
       [](DisplayRig& r) { return r.f.txtTemp.Text(); },
       {"45, 50", "46"}},
      {"inlet temperature",
       [](DisplayRig& r) { r.st.gInletTemp = true; },
       {{"?TT", "?  45  22"}},
       temp,
       [](DisplayRig& r) { return r.f.txtTemp.Text() + "|" + r.f.txtTemp2.Text(); },
       {"45|22"}},
      {"one tube reads the heater apart",
       none,
       {{"?VI", "?500012.5"}, {"PHV?", "PHV6.30"}, {"PHI?", "PHI0.80"}},
       helix,
       tubes,
       {"5000.0|12.5|6.3|0.8"}},
      // Two tubes come in one reply, without the heater reads; a short one writes nothing.
      {"two tubes",
       [](DisplayRig& r) { r.u.gIsDualTWT = true; },
       {{"?VIvi", "?500012.5510013.0"}, {"?VIvi", "?490012.5"}, {"PHV?", "PHV6.30"}},
       helix,
       tubes,
       {"5000.0|12.5|5100.0|13.0", "5000.0|12.5|5100.0|13.0"}},
      {"frequency",
       none,
       {{"TF?", "TF14250"}, {"TF?", kRefused}},
       [](DisplayRig& r) { r.d.UpdateRFFrequency(); },
       [](DisplayRig& r) {
         return r.f.lblRFFrqVal.Caption() + "|" + Text(r.f.lblRFFrqVal.Visible()) +
                Text(r.f.lblRFFrq.Visible());
       },
       {"14250 MHz|11", "14250 MHz|00"}},
      // The count is asked on family D only, and not shown.
      {"attenuation",
       [](DisplayRig& r) { r.f.txtAtnCnt.SetText("700"); },
       {{"?A", "?12.25"}, {"?A", kRefused}, {"8", "81024"}},
       [](DisplayRig& r) {
         r.d.UpdateAtn();
         r.u.gFWFamilyD = true;
       },
       [](DisplayRig& r) {
         return r.f.txtAtnDB.Text() + "|" + r.f.txtAtnCnt.Text() + "|" +
                std::to_string(r.Sent("8"));
       },
       {"12.3|700|0", "12.3|700|1"}},
      {"clock",
       none,
       {{"?%", "?2024/05/01,12:30"}, {"?%", kRefused}},
       [](DisplayRig& r) { r.d.UpdateDateTime(); },
       [](DisplayRig& r) { return r.f.txtDateTime.Text(); },
       {"2024/05/01,12:30", "2024/05/01,12:30"}},
  };
  for (const Readout& row : rows) {
    SCOPED_TRACE(row.name);
    DisplayRig r;
    row.setup(r);
    for (const auto& [command, body] : row.replies)
      body == kRefused ? r.s.Refuse(command) : r.s.Answer(command, body);
    for (const std::string& want : row.want) {
      row.update(r);
      EXPECT_EQ(row.shown(r), want);
    }
  }
}

// ------------------------------------------------------- display units

TEST(DisplayUnits, SixFieldsConvertBothWays) {
  DisplayRig r;
  r.f.txtFdBm.SetText("40.0");
  r.f.txtRdBm.SetText("< 0.1");
  r.f.txtConstLvl.SetText("");
  r.f.txtFhiLvl.SetText("0.0");
  r.f.txtFloLvl.SetText("30.0");
  r.f.txtRhiLvl.SetText("60.0");

  r.d.DisplayToWatts();
  EXPECT_TRUE(r.st.gDisplayWatts);
  for (ui::Label* l :
       {&r.f.Label64, &r.f.Label5, &r.f.Label8, &r.f.Label67, &r.f.Label69, &r.f.Label71})
    EXPECT_EQ(l->Caption(), "Watts") << l->Name();
  EXPECT_EQ(r.f.txtFdBm.Text(), "10.0");
  EXPECT_EQ(r.f.txtFloLvl.Text(), "1.0");
  EXPECT_EQ(r.f.txtRhiLvl.Text(), "1000");
  // A "<" reading, an empty field and 0 are left for their next update.
  EXPECT_EQ(r.f.txtRdBm.Text(), "< 0.1");
  EXPECT_EQ(r.f.txtConstLvl.Text(), "");
  EXPECT_EQ(r.f.txtFhiLvl.Text(), "0.0");

  r.d.DisplayTodBm();
  EXPECT_FALSE(r.st.gDisplayWatts);
  for (ui::Label* l :
       {&r.f.Label64, &r.f.Label5, &r.f.Label8, &r.f.Label67, &r.f.Label69, &r.f.Label71})
    EXPECT_EQ(l->Caption(), "dBm") << l->Name();
  EXPECT_EQ(r.f.txtFdBm.Text(), "40.0");
  EXPECT_EQ(r.f.txtFloLvl.Text(), "30.0");
  EXPECT_EQ(r.f.txtRhiLvl.Text(), "60.0");
  EXPECT_EQ(r.f.txtRdBm.Text(), "< 0.1");
}

TEST(Cathode, OnlyWithTheCathodeFrame) {
  DisplayRig r;
  r.s.Answer("?C", "?  42");
  r.s.Answer("PBFA?", "PBFA3500");
  r.d.UpdateCathodeCurrent();
  EXPECT_TRUE(r.s.sent.empty());

  r.st.gCathodeDisplay = true;
  r.d.UpdateCathodeCurrent();
  EXPECT_EQ(r.f.txtCathI.Text(), "42");
  EXPECT_EQ(r.f.txtAnodeV.Text(), "3500");
}

TEST(Hours, MetersAboveTheirRangeAreIgnored) {
  DisplayRig r;
  r.f.txtPSHours.SetText("12");
  r.s.Answer("?M", "?1E6");  // six characters that read as 1000000
  r.s.Answer("?M", "?000123");
  r.s.Answer("?N", "?999999");
  EXPECT_FALSE(r.d.UpdateHours());
  EXPECT_EQ(r.f.txtPSHours.Text(), "12");
  EXPECT_EQ(r.f.txtXmtHours.Text(), "999999");

  EXPECT_TRUE(r.d.UpdateHours());
  EXPECT_EQ(r.f.txtPSHours.Text(), "123");
}

// ---------------------------------------------- solid-state readings

TEST(CurrentSense, AskedOnlyOfTheUnitsThatHaveIt) {
  auto asks = [](auto setup) {
    DisplayRig r;
    r.u.gProjectID = 20;
    setup(r);
    r.d.UpdateCurrentSense();
    return r.Sent("?IiJj") == 1;
  };
  EXPECT_TRUE(asks([](DisplayRig&) {}));
  EXPECT_FALSE(asks([](DisplayRig& r) { r.u.gIsTWTA = true; }));
  EXPECT_FALSE(asks([](DisplayRig& r) { r.u.gFWVersion = 200; }));
  EXPECT_TRUE(asks([](DisplayRig& r) { r.u.gFWVersion = 199; }));
  for (int p : {102, 107, 30, 50, 93}) {
    EXPECT_FALSE(asks([p](DisplayRig& r) { r.u.gProjectID = p; })) << p;
  }

  DisplayRig r;
  r.s.Answer("?IiJj", "?1.202.303.404.50");
  r.d.UpdateCurrentSense();
  EXPECT_EQ(r.f.txtCS1.Text(), "1.20");
  EXPECT_EQ(r.f.txtCS2.Text(), "2.30");
  EXPECT_EQ(r.f.txtCS3.Text(), "3.40");
  EXPECT_EQ(r.f.txtCS4.Text(), "4.50");
}

TEST(DCInput, AskedOfPicUnitsAndNewerProject20) {
  auto asks = [](int project, int fw, bool pic) {
    DisplayRig r;
    r.u.gProjectID = project;
    r.u.gFWVersion = static_cast<int16_t>(fw);
    r.u.gPICProcessor = pic;
    r.d.UpdateDCVIn();
    return r.Sent("PBDV?") == 1;
  };
  EXPECT_TRUE(asks(20, 257, false));
  EXPECT_FALSE(asks(20, 256, false));
  EXPECT_FALSE(asks(21, 300, false));
  EXPECT_TRUE(asks(21, 100, true));
  EXPECT_FALSE(asks(102, 100, true));

  DisplayRig r;
  r.u.gPICProcessor = true;
  r.f.txtCS2.SetText("47.0");
  r.s.Answer("PBDV?", "PBDV48.5");
  r.s.Answer("PBDV?", "PBDVn/a");
  r.d.UpdateDCVIn();
  EXPECT_EQ(r.f.txtCS2.Text(), "48.5");
  r.d.UpdateDCVIn();
  EXPECT_EQ(r.f.txtCS2.Text(), "48.5");
}

TEST(StatusLine, WritesTheFirstPanelOnly) {
  DisplayRig r;
  r.f.sbStatusBar.SetPanelText(1, "COM1");
  r.d.DisplayStatusMsg("Searching: A, 9600,N,8,1");
  EXPECT_EQ(r.f.sbStatusBar.PanelText(0), "Searching: A, 9600,N,8,1");
  EXPECT_EQ(r.f.sbStatusBar.PanelText(1), "COM1");
}

}  // namespace
}  // namespace amp
