// Readouts against scripted replies laid out as the unit sends them: each
// update writes its field from a good reading and leaves it otherwise; power
// shows in dBm or Watts.
#include <gtest/gtest.h>

#include "basic/numbers.h"
#include "display_rig.h"

namespace amp {
namespace {

using test::DisplayRig;

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

TEST(ForwardPower, ReadingAndBelowRange) {
  DisplayRig r;
  r.s.Answer("?P", "?43.2");
  r.s.Answer("?P", "?<9.5");
  r.s.Answer("?P", "?60.0");
  r.d.UpdateFwdRF();
  EXPECT_EQ(r.f.txtFdBm.Text(), "43.2");
  r.d.UpdateFwdRF();
  EXPECT_EQ(r.f.txtFdBm.Text(), "< 9.5");
  r.st.gDisplayWatts = true;
  r.d.UpdateFwdRF();
  EXPECT_EQ(r.f.txtFdBm.Text(), "1000");
}

TEST(ForwardPower, FailedOrEmptyReadingKeepsTheField) {
  DisplayRig r;
  r.f.txtFdBm.SetText("41.0");
  r.s.Refuse("?P");
  r.d.UpdateFwdRF();
  EXPECT_EQ(r.f.txtFdBm.Text(), "41.0");

  DisplayRig blank;
  blank.f.txtFdBm.SetText("41.0");
  blank.s.Answer("?P", "?    ");
  blank.d.UpdateFwdRF();
  EXPECT_EQ(blank.f.txtFdBm.Text(), "41.0");
}

TEST(ReversePower, BelowRangeShowsTheFloorNotTheUnitsNumber) {
  DisplayRig r;
  r.st.gPowerFloor = 12.5f;
  r.s.Answer("?Q", "?<5.0");
  r.d.UpdateRevRF();
  EXPECT_EQ(r.f.txtRdBm.Text(), "< 12.5");

  r.st.gDisplayWatts = true;
  r.st.gPowerFloor = 30.0f;
  r.d.UpdateRevRF();
  EXPECT_EQ(r.f.txtRdBm.Text(), "< 1.0");

  // With no floor the unit's own number stands.
  r.st.gDisplayWatts = false;
  r.st.gPowerFloor = 0.0f;
  r.d.UpdateRevRF();
  EXPECT_EQ(r.f.txtRdBm.Text(), "< 5.0");
}

TEST(ReversePower, PlainReading) {
  DisplayRig r;
  r.s.Answer("?Q", "?21.7");
  r.s.Answer("?P", "?47.0");
  r.d.UpdateRFPower();
  EXPECT_EQ(r.f.txtRdBm.Text(), "21.7");
  EXPECT_EQ(r.f.txtFdBm.Text(), "47.0");
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

TEST(DisplayUnits, FormattedPowerIsClampedToTheRange) {
  DisplayRig r;
  r.st.gPowerFloor = 0.1f;
  r.st.gFwdRFMax = 50.0f;
  std::string out = "stale";
  EXPECT_TRUE(r.d.GetFormatedPwr(20.04f, out));
  EXPECT_EQ(out, "20.0");
  EXPECT_FALSE(r.d.GetFormatedPwr(60.0f, out));
  EXPECT_EQ(out, "50.0");
  EXPECT_FALSE(r.d.GetFormatedPwr(-5.0f, out));
  EXPECT_EQ(out, "0.1");

  // In Watts the range is converted too: 50 dBm is 100 W.
  r.st.gDisplayWatts = true;
  EXPECT_FALSE(r.d.GetFormatedPwr(150.0f, out));
  EXPECT_EQ(out, "100.0");
  EXPECT_TRUE(r.d.GetFormatedPwr(75.0f, out));
  EXPECT_EQ(out, "75.0");
}

// ------------------------------------------------------- temperatures

TEST(Temperature, NoReadingLeavesTheOldText) {
  DisplayRig r;
  r.s.Answer("?T", "?  45");
  r.s.Answer("?T", "?-125");
  r.s.Answer("?T", "? 121");
  r.d.UpdateTemperature();
  EXPECT_EQ(r.f.txtTemp.Text(), "45");
  r.d.UpdateTemperature();
  EXPECT_EQ(r.f.txtTemp.Text(), "45");
  r.d.UpdateTemperature();
  EXPECT_EQ(r.f.txtTemp.Text(), "45");
  EXPECT_EQ(r.Sent("?T"), 3);
}

TEST(Temperature, SecondTubeAndInletReadings) {
  DisplayRig dual;
  dual.u.gIsDualTWT = true;
  dual.s.Answer("?TT", "?  45  50");
  dual.s.Answer("?TT", "?  46  xx");
  dual.d.UpdateTemperature();
  EXPECT_EQ(dual.f.txtTemp.Text(), "45, 50");
  dual.d.UpdateTemperature();
  EXPECT_EQ(dual.f.txtTemp.Text(), "46");

  DisplayRig inlet;
  inlet.st.gInletTemp = true;
  inlet.s.Answer("?TT", "?  45  22");
  inlet.d.UpdateTemperature();
  EXPECT_EQ(inlet.f.txtTemp.Text(), "45");
  EXPECT_EQ(inlet.f.txtTemp2.Text(), "22");
}

// ------------------------------------------------------ tube readings

TEST(HelixHeater, SingleTubeReadsTheHeaterSeparately) {
  DisplayRig r;
  r.s.Answer("?VI", "?500012.5");
  r.s.Answer("PHV?", "PHV6.30");
  r.s.Answer("PHI?", "PHI0.80");
  r.d.UpdateHelixHeater();
  EXPECT_EQ(r.f.txtHelixV.Text(), "5000.0");
  EXPECT_EQ(r.f.txtHelixI.Text(), "12.5");
  EXPECT_EQ(r.f.txtHeaterV.Text(), "6.3");
  EXPECT_EQ(r.f.txtHelix2I.Text(), "0.8");
}

TEST(HelixHeater, TwoTubesComeInOneReply) {
  DisplayRig r;
  r.u.gIsDualTWT = true;
  r.s.Answer("?VIvi", "?500012.5510013.0");
  r.d.UpdateHelixHeater();
  EXPECT_EQ(r.f.txtHelixV.Text(), "5000.0");
  EXPECT_EQ(r.f.txtHelixI.Text(), "12.5");
  EXPECT_EQ(r.f.txtHeaterV.Text(), "5100.0");
  EXPECT_EQ(r.f.txtHelix2I.Text(), "13.0");
  EXPECT_EQ(r.Sent("PHV?"), 0);
}

TEST(HelixHeater, ShortReplyWritesNothing) {
  DisplayRig r;
  r.u.gIsDualTWT = true;
  r.f.txtHelixV.SetText("4900.0");
  r.s.Answer("?VIvi", "?500012.5");
  r.d.UpdateHelixHeater();
  EXPECT_EQ(r.f.txtHelixV.Text(), "4900.0");
  EXPECT_EQ(r.f.txtHeaterV.Text(), "");
}

TEST(Cathode, OnlyWithTheCathodeFrame) {
  DisplayRig r;
  r.s.Answer("?C", "?  42");
  r.s.Answer("PBFA?", "PBFA3500");
  r.d.UpdateCathodeCurrent();
  EXPECT_TRUE(r.s.sent.empty());
  EXPECT_EQ(r.d.CathodeCurrent(), -1);

  r.st.gCathodeDisplay = true;
  r.d.UpdateCathodeCurrent();
  EXPECT_EQ(r.f.txtCathI.Text(), "42");
  EXPECT_EQ(r.f.txtAnodeV.Text(), "3500");
  EXPECT_EQ(r.d.CathodeCurrent(), 42);
  EXPECT_EQ(r.d.AnodeVoltage(), 3500);
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

// ------------------------------------------------------------- others

TEST(Frequency, ShownWhenTheUnitGivesOne) {
  DisplayRig r;
  r.s.Answer("TF?", "TF14250");
  r.s.Refuse("TF?");
  r.d.UpdateRFFrequency();
  EXPECT_EQ(r.f.lblRFFrqVal.Caption(), "14250 MHz");
  EXPECT_TRUE(r.f.lblRFFrqVal.Visible());
  EXPECT_TRUE(r.f.lblRFFrq.Visible());
  r.d.UpdateRFFrequency();
  EXPECT_FALSE(r.f.lblRFFrqVal.Visible());
  EXPECT_FALSE(r.f.lblRFFrq.Visible());
}

TEST(Attenuation, OneDecimalAndTheCountOnFamilyD) {
  DisplayRig r;
  r.s.Answer("?A", "?12.25");
  r.s.Refuse("?A");
  r.d.UpdateAtn();
  EXPECT_EQ(r.f.txtAtnDB.Text(), "12.3");
  EXPECT_EQ(r.Sent("8"), 0);

  r.u.gFWFamilyD = true;
  r.f.txtAtnCnt.SetText("700");
  r.s.Answer("8", "81024");
  r.d.UpdateAtn();
  EXPECT_EQ(r.f.txtAtnDB.Text(), "12.3");
  EXPECT_EQ(r.Sent("8"), 1);
  EXPECT_EQ(r.f.txtAtnCnt.Text(), "700");
}

TEST(Clock, UnitTimeIntoTheField) {
  DisplayRig r;
  r.s.Answer("?%", "?2024/05/01,12:30");
  r.s.Refuse("?%");
  r.d.UpdateDateTime();
  EXPECT_EQ(r.f.txtDateTime.Text(), "2024/05/01,12:30");
  r.d.UpdateDateTime();
  EXPECT_EQ(r.f.txtDateTime.Text(), "2024/05/01,12:30");
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
