#include "control/band_controls.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "panel_rig.h"

namespace amp::test {
namespace {

struct BandTest : ::testing::Test {
  BandTripRig r;
  BandControls bands{r.ctx};
  void SetUp() override {
    bands.Wire();
    r.f.Timer1.SetTimerEnabled(true);
  }

  // The unit's sub-band table ("" for a slot without a frequency), read as
  // the first read does, and its answers to "PBS?" from then on, in order
  // ("" for a refusal; the last one stays).
  void LoadSubBands(const std::vector<std::string>& freqs,
                    const std::vector<std::string>& currents) {
    for (int n = 1; n <= 8; ++n) {
      const std::string ask = "PBS" + std::to_string(n) + "?";
      const size_t i = static_cast<size_t>(n - 1);
      if (i < freqs.size())
        r.s.Answer(ask, "PBS" + std::to_string(n) + (freqs[i].empty() ? "00.00" : freqs[i]));
      else
        r.s.Refuse(ask);
    }
    for (const std::string& current : currents) {
      if (current.empty())
        r.s.Refuse("PBS?");
      else
        r.s.Answer("PBS?", current);
    }
    r.setup.UpdateSubBands();
    r.s.sent.clear();
  }
  // The operator's double click on the sub-band label, with `act` playing
  // the operator inside the dialog. Records whether the poll ran meanwhile.
  void OpenSubBandDialog(std::function<void(ui::FrmSetSubBand&)> act) {
    r.s.dialogs.onModal = [this, act](ui::Form& form) {
      pollRanInDialog = pollRanInDialog || r.f.Timer1.TimerEnabled();
      if (act) act(static_cast<ui::FrmSetSubBand&>(form));
    };
    r.f.lblSBandFrq.DblClick();
  }
  bool pollRanInDialog = false;
};

// ------------------------------------------------------------- the label

TEST_F(BandTest, LowerFourWaitForThePollUpperFourShowAtOnce) {
  LoadSubBands({"10.00", "11.00", "12.00", "13.00", "14.00", "15.00"}, {"PBS110.00", "PBS211.00"});
  ASSERT_EQ(r.f.lblSBandFrq.Caption(), "#1   10.00 GHz");

  r.f.mnuSubB2.Click();
  EXPECT_EQ(r.SetCommands(), std::vector<std::string>{"PBS2"});
  EXPECT_TRUE(r.f.mnuSubB2.Checked());
  EXPECT_FALSE(r.f.mnuSubB1.Checked());
  EXPECT_EQ(r.f.lblSBandFrq.Caption(), "#1   10.00 GHz");  // not yet

  // The slow poll sees the unit on sub-band 2 and catches up.
  r.s.Answer("YC?", "YC1234");
  r.s.sent.clear();
  bands.UpdateCurrentSubBand();
  EXPECT_EQ(r.f.lblSBandFrq.Caption(), "#2   11.00 GHz");
  EXPECT_EQ(r.v.gCurrentSubBand, 2);
  // ... and reloads what the sub-band carries.
  for (const char* read : {"PG?", "?A", "YC?"}) EXPECT_EQ(r.Sent(read), 1) << read;
  EXPECT_EQ(r.v.gPSVset, 1234);

  r.f.mnuSubB6.Click();
  EXPECT_EQ(r.Sent("PBS6"), 1);
  EXPECT_EQ(r.f.lblSBandFrq.Caption(), "#6   15.00 GHz");
  EXPECT_TRUE(r.f.mnuSubB6.Checked());
  EXPECT_FALSE(r.f.mnuSubB2.Checked());
}

TEST_F(BandTest, PollWithoutNewsChangesNothing) {
  LoadSubBands({"10.00", "11.00"}, {"PBS110.00", "PBS110.00", ""});
  // Same sub-band: nothing reloaded.
  bands.UpdateCurrentSubBand();
  EXPECT_EQ(r.s.sent, std::vector<std::string>{"PBS?"});

  // No answer: the mark and the label stay.
  r.s.sent.clear();
  bands.UpdateCurrentSubBand();
  EXPECT_EQ(r.s.sent, std::vector<std::string>{"PBS?"});
  EXPECT_EQ(r.v.gCurrentSubBand, 1);
  EXPECT_TRUE(r.f.mnuSubB1.Checked());

  // A unit without sub-bands is not asked at all.
  BandTripRig bare;
  BandControls none{bare.ctx};
  bare.f.mnuSubBands.SetVisible(false);
  none.UpdateCurrentSubBand();
  EXPECT_TRUE(bare.s.sent.empty());
}

TEST_F(BandTest, SubBandOfTheTripUnitRereadsHoursAndTrips) {
  LoadSubBands({"10.00", "11.00"}, {"PBS110.00", "PBS211.00"});
  r.u.gProjectID = 139;
  r.s.Answer("?HLR", "?F57.0A40.0D47.0");
  bands.UpdateCurrentSubBand();
  EXPECT_EQ(r.Sent("?HLR"), 1);
  EXPECT_EQ(r.f.txtFhiLvl.Text(), "57.0");
}

TEST_F(BandTest, OutOfRangeSubBandSendsTheBareCommand) {
  LoadSubBands({"10.00"}, {"PBS110.00"});
  bands.SetCurrentSubBand(9);
  EXPECT_EQ(r.SetCommands(), std::vector<std::string>{"PBS"});
  for (int n = 1; n <= 8; ++n) EXPECT_FALSE(r.f.mnuSubB(n).Checked()) << n;
}

// ------------------------------------------------------------- the dialog

TEST_F(BandTest, DialogChoiceSelectsAndClosesWithThePollStopped) {
  LoadSubBands({"10.00", "11.00", "12.00"}, {"PBS110.00"});
  OpenSubBandDialog([](ui::FrmSetSubBand& d) { d.optSelectedSB[2].SetValue(true); });
  EXPECT_EQ(r.SetCommands(), std::vector<std::string>{"PBS3"});
  EXPECT_TRUE(r.f.mnuSubB3.Checked());
  EXPECT_FALSE(bands.frmSetSubBand.Loaded());
  EXPECT_FALSE(pollRanInDialog);
  EXPECT_TRUE(r.f.Timer1.TimerEnabled());
  EXPECT_EQ(r.s.dialogs.modals, std::vector<std::string>{"frmSetSubBand"});
}

TEST_F(BandTest, DialogClosedWithoutAChoiceSendsNothing) {
  LoadSubBands({"10.00", "11.00", "12.00"}, {"PBS211.00"});
  OpenSubBandDialog(nullptr);
  EXPECT_TRUE(r.s.sent.empty());
  EXPECT_FALSE(bands.frmSetSubBand.Loaded());
  EXPECT_FALSE(pollRanInDialog);
  EXPECT_TRUE(r.f.Timer1.TimerEnabled());
  EXPECT_TRUE(r.f.mnuSubB2.Checked());

  // Shown again after the unit lost sub-bands, it forgets the old ones.
  r.v.gSubBandCount = 1;
  r.v.gCurrentSubBand = 1;
  int visible = 0;
  OpenSubBandDialog([&](ui::FrmSetSubBand& d) {
    for (int i = 0; i < 8; ++i) visible += d.optSelectedSB[i].Visible() ? 1 : 0;
    EXPECT_FALSE(d.optSelectedSB[1].Value());
  });
  EXPECT_EQ(visible, 1);
}

// ------------------------------------------------------------------ bands

TEST_F(BandTest, BandChoiceSendsItsNameAndTheUnitsBandComesBack) {
  r.s.Answer(".?B1", ".B1C,6.00");
  r.s.Answer(".?B2", ".B2Ku,14.25");
  r.s.Answer(".?B3", ".B3");
  r.s.Answer(".?B4", ".B4");
  r.s.Answer("T?", "TC");
  r.s.Answer("T?", "TKu");  // later on
  r.v.gRfBandSelectable = true;
  r.f.mnuRfBandCfg.Click();
  ASSERT_EQ(r.f.cmbRfBand.Items(), (std::vector<std::string>{"C", "Ku"}));
  EXPECT_EQ(r.f.cmbRfBand.ListIndex(), 0);
  EXPECT_TRUE(r.f.cmbRfBand.Enabled());
  // Showing the unit's band did not send it back, and the poll runs again.
  EXPECT_EQ(r.SetCommands(), std::vector<std::string>{});
  EXPECT_FALSE(r.st.gInPanelUpdate);
  EXPECT_TRUE(r.f.Timer1.TimerEnabled());

  r.s.sent.clear();
  r.f.cmbRfBand.SetListIndex(1);
  EXPECT_EQ(r.s.sent, std::vector<std::string>{"TKu"});

  // A pick the unit did not take is put right when the band is shown again.
  r.s.sent.clear();
  r.Show(r.f.cmbRfBand, 0);
  r.st.gInPanelUpdate = true;  // as every caller holds it
  r.setup.InitRFBand();
  r.st.gInPanelUpdate = false;
  EXPECT_EQ(r.f.cmbRfBand.ListIndex(), 1);
  EXPECT_EQ(r.SetCommands(), std::vector<std::string>{});
}

// ----------------------------------------------------------- RF frequency

TEST_F(BandTest, FrequencyBoxSendsWholeMegahertzAndShowsTheUnitsValue) {
  r.f.lblRFFrqVal.SetCaption("14000 MHz");
  r.s.dialogs.inputs = {"14250.4"};
  r.s.Answer("TF14250", "");
  r.s.Answer("TF?", "TF14250");
  r.s.Refuse("TF?");  // later on
  r.f.lblRFFrqVal.DblClick();
  EXPECT_EQ(r.s.dialogs.prompts,
            std::vector<std::string>{"RF Frequency|Enter new Frequency in MHz:|14000 MHz"});
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"TF14250", "TF?"}));
  EXPECT_TRUE(r.s.dialogs.boxes.empty());
  EXPECT_EQ(r.v.gRfFrequency, "14250");
  EXPECT_EQ(r.f.lblRFFrqVal.Caption(), "14250 MHz");
  EXPECT_TRUE(r.f.lblRFFrqVal.Visible());

  // Cancelled, empty or not a number: nothing at all.
  r.s.sent.clear();
  r.s.dialogs.inputs = {"", "14 GHz"};
  r.f.lblRFFrqVal.DblClick();  // ""
  r.f.lblRFFrqVal.DblClick();  // "14 GHz"
  r.f.lblRFFrqVal.DblClick();  // cancelled
  EXPECT_TRUE(r.s.sent.empty());
  EXPECT_EQ(r.v.gRfFrequency, "14250");

  // A refusal is reported, and the label follows the unit.
  r.s.Refuse("TF99999");
  r.s.dialogs.inputs = {"99999"};
  r.f.lblRFFrqVal.DblClick();
  EXPECT_EQ(r.Sent("TF99999"), 1);
  EXPECT_EQ(r.BoxTitles(), std::vector<std::string>{"Communication Error"});
  EXPECT_FALSE(r.f.lblRFFrqVal.Visible());
}

}  // namespace
}  // namespace amp::test
