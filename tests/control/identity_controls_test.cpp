#include "control/identity_controls.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "basic/dates.h"
#include "panel_rig.h"

namespace amp::test {
namespace {

constexpr int kBackspace = 8;
constexpr int kEnter = 13;

struct IdentityTest : ::testing::Test {
  PanelRig r;
  IdentityControls id{r.ctx};
  DateTime now{2024, 3, 5, 7, 9, 41};
  void SetUp() override {
    id.LocalNow = [this] { return now; };
    id.Wire();
    r.f.Timer1.SetTimerEnabled(true);
  }
  void Enter(ui::TextBox& box) {
    int k = kEnter;
    box.KeyPress(k);
    EXPECT_EQ(k, 0) << "Enter must not reach " << box.Name();
  }
};

// ---------------------------------------------------------------- address

TEST_F(IdentityTest, AddressKeyFilterTakesCapitalsOnly) {
  EXPECT_EQ(r.Key(r.f.txtAdr, 'b'), 'B');
  EXPECT_EQ(r.Key(r.f.txtAdr, kBackspace), kBackspace);  // takes the B off again
  EXPECT_EQ(r.Key(r.f.txtAdr, 'Z'), 'Z');
  for (int bad : std::initializer_list<int>{'1', '@', ' ', '-', '[', '{', 127, 200})
    EXPECT_EQ(r.Key(r.f.txtAdr, bad), 0) << bad;
  EXPECT_EQ(r.f.txtAdr.Text(), "Z");
  EXPECT_TRUE(r.s.sent.empty());

  // The filter has no remote guard of its own: typing is allowed, sending is not.
  r.st.gRemoteMode = false;
  EXPECT_EQ(r.Key(r.f.txtAdr, 'q'), 'Q');
  EXPECT_TRUE(r.s.dialogs.boxes.empty());
}

TEST_F(IdentityTest, AddressFallsBackToTheAddressCommand) {
  r.s.Refuse("XR?");
  r.s.Refuse("XAC");
  r.f.txtAdr.SetText("C");
  Enter(r.f.txtAdr);
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"XR?", "XAC"}));
  // Refused or not, the link follows the new address, in silence.
  EXPECT_EQ(r.s.comms.Link.DeviceAddress(), "C");
  EXPECT_TRUE(r.s.dialogs.boxes.empty());
}

TEST_F(IdentityTest, AddressOfAnyOtherLengthSendsNothing) {
  for (const char* text : {"", "AB"}) {
    r.f.txtAdr.SetText(text);
    Enter(r.f.txtAdr);
  }
  EXPECT_TRUE(r.s.sent.empty());
  EXPECT_TRUE(r.s.dialogs.boxes.empty());
  EXPECT_FALSE(r.v.mEnterHandled);
  EXPECT_EQ(r.s.comms.Link.DeviceAddress(), "A");
}

TEST_F(IdentityTest, LeavingTheAddressSendsItOnlyUntilAnEnter) {
  r.s.Refuse("XR?");
  r.f.txtAdr.SetText("E");
  r.f.txtAdr.LostFocus();
  EXPECT_EQ(r.Sent("XAE"), 1);
  // That set counts as handled: leaving again sends nothing.
  r.f.txtAdr.SetText("F");
  r.f.txtAdr.LostFocus();
  EXPECT_EQ(r.Sent("XAF"), 0);
  EXPECT_EQ(r.s.comms.Link.DeviceAddress(), "E");
}

// ---------------------------------------------------------------- clock

TEST_F(IdentityTest, ClockTextIsYearFirstWithMinutes) {
  EXPECT_EQ(IdentityControls::ClockText(now), "2024/03/05,07:09");
  EXPECT_EQ(IdentityControls::ClockText(DateTime{1999, 12, 31, 23, 59, 59}), "1999/12/31,23:59");
  // What "Now" writes passes the field's own check.
  bool cancel = false;
  r.f.txtDateTime.SetText(IdentityControls::ClockText(now));
  r.f.txtDateTime.Validate(cancel);
  EXPECT_FALSE(cancel);
}

TEST_F(IdentityTest, ClockFieldRefusesToLeaveWithAnInvalidDate) {
  bool cancel = false;
  r.f.txtDateTime.SetText("");
  r.f.txtDateTime.Validate(cancel);
  EXPECT_FALSE(cancel);
  EXPECT_TRUE(r.s.dialogs.boxes.empty());

  r.f.txtDateTime.SetText("2024/02/30,10:00");
  r.f.txtDateTime.Validate(cancel);
  EXPECT_TRUE(cancel);
  ASSERT_EQ(r.s.dialogs.boxes.size(), 1u);
  EXPECT_EQ(r.s.dialogs.boxes[0].title, "Data Error");
  EXPECT_EQ(r.s.dialogs.boxes[0].text, "Invalid Date & Time.");
}

TEST_F(IdentityTest, NowAsksOnlyWhenTheResetWouldCutRadiatingRF) {
  struct Case {
    int ps, rfi;
    bool fbdc;
    int project;
    bool asks, resets;
  };
  const Case cases[] = {
      {0, 0, false, 40, false, true},  // transmitter off: the reset still comes
      {1, 1, false, 40, false, true},  // RF inhibited
      {1, 0, true, 40, false, false},  // takes the clock without a reset
      {1, 0, false, 127, false, false}, {1, 0, false, 40, true, true},
  };
  for (const Case& c : cases) {
    PanelRig rig;
    IdentityControls ctl{rig.ctx};
    ctl.LocalNow = [this] { return now; };
    ctl.Wire();
    rig.f.chkPS.SetValue(c.ps);
    rig.f.chkRFI.SetValue(c.rfi);
    rig.v.gIsFBDCUnit = c.fbdc;
    rig.u.gProjectID = c.project;
    rig.f.Command7.Click();
    SCOPED_TRACE(testing::Message() << c.ps << c.rfi << c.fbdc << c.project);
    EXPECT_EQ(rig.s.dialogs.boxes.size(), c.asks ? 1u : 0u);
    EXPECT_EQ(rig.Sent("%2024/03/05,07:09"), 1);
    EXPECT_EQ(rig.Sent("~"), c.resets ? 1 : 0);
    EXPECT_TRUE(rig.f.Timer1.TimerEnabled());
  }
}

TEST_F(IdentityTest, ClockSetPausesThePollWhileTheUnitRestarts) {
  r.s.Answer("%2024/03/05,07:09", "%");
  r.s.Answer("~", "~");
  r.f.txtDateTime.SetText("2024/03/05,07:09");
  std::vector<bool> pollDuringRestart;
  const int64_t start = r.s.clock.now;
  for (int64_t at : {1000, 2500, 3000})
    r.s.pump.At(start + at, [&] { pollDuringRestart.push_back(r.f.Timer1.TimerEnabled()); });
  id.SetDateTime();
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"%2024/03/05,07:09", "~"}));
  EXPECT_EQ(pollDuringRestart, (std::vector<bool>{false, false, false}));
  EXPECT_TRUE(r.f.Timer1.TimerEnabled());
  // The reset wait, then one drain of the line bounded by the time-out.
  const int64_t took = r.s.clock.now - start;
  EXPECT_GE(took, 3100);
  EXPECT_LT(took, 3100 + 2100 + 100);

  // An empty field sends nothing.
  r.s.sent.clear();
  r.f.txtDateTime.SetText("");
  id.SetDateTime();
  EXPECT_TRUE(r.s.sent.empty());
}

// ---------------------------------------------------------------- hours

TEST_F(IdentityTest, EitherHoursFieldSendsBothPadded) {
  r.f.txtPSHours.SetText("123");
  r.f.txtXmtHours.SetText("");
  EXPECT_EQ(r.Key(r.f.txtXmtHours, kBackspace), kBackspace);
  for (int k : {'4', 'x', '.', '-', ' '}) r.Key(r.f.txtXmtHours, k);
  EXPECT_EQ(r.f.txtXmtHours.Text(), "4");
  EXPECT_TRUE(r.s.sent.empty());

  Enter(r.f.txtXmtHours);
  r.f.txtXmtHours.SetText("1234567");  // no range test: seven digits go out
  Enter(r.f.txtPSHours);
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"YH000123000004", "YH0001231234567"}));
  EXPECT_FALSE(r.v.mEnterHandled);
}

TEST_F(IdentityTest, ClearHoursAsksNothing) {
  r.f.txtPSHours.SetText("4711");
  r.f.txtXmtHours.SetText("815");
  r.f.mnuClrHrs.Click();
  EXPECT_TRUE(r.s.dialogs.boxes.empty());
  EXPECT_EQ(r.f.txtPSHours.Text(), "0");
  EXPECT_EQ(r.f.txtXmtHours.Text(), "0");
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"YH000000000000"}));
}

// ---------------------------------------------------------------- menu entries

TEST_F(IdentityTest, MenuEntriesShowOrKeepWhatTheyFound) {
  r.v.gModelCfgPN = "MC-1042 Rev C";
  r.f.mnuModelCfgPN.Click();
  ASSERT_EQ(r.s.dialogs.boxes.size(), 1u);
  EXPECT_EQ(r.s.dialogs.boxes[0].title, "Model Config File");
  EXPECT_EQ(r.s.dialogs.boxes[0].text,
            "Model Config Part Number and Revision: \r\n\r\nMC-1042 Rev C");

  r.s.comms.Link.SetMsgTimeout(7.5f);
  r.f.Timer1.SetTimerEnabled(false);
  r.f.mnuMfgInfo.Click();
  EXPECT_FLOAT_EQ(r.s.comms.Link.MsgTimeout(), 7.5f);
  EXPECT_FALSE(r.f.Timer1.TimerEnabled());
}

}  // namespace
}  // namespace amp::test
