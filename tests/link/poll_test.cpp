// The status poll: parsing the status block, the miss counter that ends a
// session, and the fast and slow groups riding on good polls.
#include <gtest/gtest.h>

#include "support/link_parts.h"

namespace amp {
namespace {

using namespace amp::test;

struct PollFixture : ::testing::Test, LinkParts {
  std::string answer = Reply("\006A?P@@@@@@@@@@@\003");  // the unit's status block

  void SetUp() override {
    port.isOpen = true;
    port.onWrite = [this](const std::string&) {
      if (!answer.empty()) port.Arrive(answer, 20);
    };
    timer.enabled = true;
  }
  int PollsWith(const std::string& entry, int polls) {
    int n = 0;
    for (int i = 0; i < polls; ++i) {
      panel.log.clear();
      comms.UpdateStatus();
      n += panel.Saw(entry);
    }
    return n;
  }
};

TEST_F(PollFixture, StatusBlockFields) {
  // The documented example reply: checksum 0x6B.
  EXPECT_EQ(static_cast<uint8_t>(answer.back()), 0x6B);
  answer = Reply("\006A?PABCDEFGHIJK\003");
  ASSERT_TRUE(comms.ReadStatusBlock());
  EXPECT_EQ(port.writes.back(), std::string("\x02\x41\x3F\x21\x23\x28\x03\x55", 8));
  EXPECT_EQ(comms.gRespFields[0], "PABC");
  EXPECT_EQ(comms.gRespFields[1], "DEFG");
  EXPECT_EQ(comms.gRespFields[2], "HIJK");

  // One-character alarms: the query ends in 9 and the alarm is one character.
  comms.gOneCharAlarm = true;
  answer = Reply("\006A?PQRSTUVWX\003");
  ASSERT_TRUE(comms.ReadStatusBlock());
  EXPECT_EQ(port.writes.back().substr(2, 4), "?!#9");
  EXPECT_EQ(comms.gRespFields[2], "X");

  // The "?" is searched over the whole frame, here in the address byte.
  comms.gOneCharAlarm = false;
  answer = Reply("\x06?PABCDEFGHIJK\x03");
  ASSERT_TRUE(comms.ReadStatusBlock());
  EXPECT_EQ(comms.gRespFields[0], "PABC");
}

TEST_F(PollFixture, ShortBlocksLeaveEarlierFields) {
  comms.gRespFields = {"s0", "f0", "a0"};
  // No "?" at all: failure, nothing touched.
  answer = Reply("\006APABCDEFGHIJK\003");
  EXPECT_FALSE(comms.ReadStatusBlock());
  EXPECT_EQ(comms.gRespFields[0], "s0");
  // Seven data characters: the frame ends before the alarm field.
  answer = Reply("\006A?PABCDEF\003");
  EXPECT_FALSE(comms.ReadStatusBlock());
  EXPECT_EQ(comms.gRespFields[0], "PABC");
  EXPECT_EQ(comms.gRespFields[1], "f0");  // too short for the fault word
  // Eight data characters: the poll still passes, the alarm field takes the
  // end byte and checksum (the fields are located by count, not by ETX).
  answer = Reply("\006A?PABCDEFG\003");
  EXPECT_TRUE(comms.ReadStatusBlock());
  EXPECT_EQ(comms.gRespFields[1], "DEFG");
  EXPECT_EQ(comms.gRespFields[2], answer.substr(answer.size() - 2));
  // A refused poll.
  answer = Reply("\025A?\003");
  EXPECT_FALSE(comms.ReadStatusBlock());
}

TEST_F(PollFixture, GoodPollUpdatesPanelInOrder) {
  answer = Reply("\006A?PABCDEFGHIJK\003");
  comms.session.gMissedPolls = 0;
  EXPECT_TRUE(comms.UpdateStatus());
  const std::vector<std::string> expected = {"summary:PABC", "fault:DEFG", "alarm:HIJK",
                                             "UpdateFwdRF", "UpdateRevRF"};
  EXPECT_EQ(panel.log, expected);
  EXPECT_EQ(comms.session.gMissedPolls, 2);
  EXPECT_EQ(comms.mFastCycle, 1);
  EXPECT_EQ(comms.mSlowCycle, 1);
}

TEST_F(PollFixture, ThirdMissEndsSession) {
  comms.gFirstReadDone = comms.gFirstReadPending = true;
  comms.mFastCycle = 2;
  comms.mSlowCycle = 7;
  answer.clear();  // the unit stops answering
  EXPECT_FALSE(comms.UpdateStatus());
  EXPECT_FALSE(comms.UpdateStatus());
  EXPECT_EQ(comms.session.gMissedPolls, 0);
  EXPECT_TRUE(panel.log.empty());  // nothing on the panel changes yet
  EXPECT_EQ(comms.mFastCycle, 2);  // failed polls advance no counter
  EXPECT_EQ(comms.mSlowCycle, 7);
  EXPECT_TRUE(timer.enabled);

  // Two misses and a good poll restore the full tolerance.
  answer = Reply("\006A?P@@@@@@@@@@@\003");
  EXPECT_TRUE(comms.UpdateStatus());
  EXPECT_EQ(comms.session.gMissedPolls, 2);
  answer.clear();
  EXPECT_FALSE(comms.UpdateStatus());
  EXPECT_FALSE(comms.UpdateStatus());
  EXPECT_TRUE(timer.enabled);
  panel.log.clear();
  EXPECT_FALSE(comms.UpdateStatus());
  EXPECT_FALSE(timer.enabled);
  EXPECT_EQ(panel.caption, "Connect");
  EXPECT_TRUE(panel.Saw("ClearForm"));
  EXPECT_TRUE(panel.Saw("DisableForm"));
  EXPECT_TRUE(panel.Saw("enable:mnuConnect"));
  EXPECT_TRUE(panel.Saw("enable:mnuAdvSrch"));  // serial only
  EXPECT_FALSE(comms.gFirstReadDone);
  EXPECT_FALSE(comms.gFirstReadPending);
  EXPECT_EQ(comms.mSlowCycle, 0);  // reset, while the fast counter stays
  EXPECT_EQ(comms.mFastCycle, 3);
  // Each failed poll waited the serial time-out: about 3 x 2 s to notice.
  EXPECT_GE(clock.now, 1000 + 3 * 2000);
}

TEST_F(PollFixture, FastAndSlowGroups) {
  // Fast group on every fourth good poll, the tube or the solid-state set.
  EXPECT_EQ(PollsWith("UpdateAtn", 3), 0);
  EXPECT_EQ(PollsWith("UpdateAtn", 1), 1);
  EXPECT_TRUE(panel.Saw("UpdateCurrentSense"));
  EXPECT_TRUE(panel.Saw("UpdateDCVIn"));
  EXPECT_FALSE(panel.Saw("UpdateHelixHeater"));
  const std::vector<std::string> fast = {
      "UpdateAtn",        "UpdateTemperature",    "UpdateCurrentSense", "UpdateDCVIn",
      "InitRFTripLevels", "UpdateCurrentSubBand", "UpdateRFFrequency"};
  EXPECT_EQ(std::vector<std::string>(panel.log.begin() + 5, panel.log.end()), fast);
  panel.twta = true;
  EXPECT_EQ(PollsWith("UpdateHelixHeater", 4), 1);
  EXPECT_TRUE(panel.Saw("UpdateCathodeCurrent"));
  EXPECT_FALSE(panel.Saw("UpdateCurrentSense"));
}

TEST_F(PollFixture, SlowGroupYieldsToFastGroup) {
  // Count good polls from the start of a session: the fast group runs at
  // 4, 8, ..., 84; the slow group on the first poll past 20 that is not a
  // fast one. At 84 both are due, so the slow group slips to 85.
  std::vector<int> slow, fast;
  for (int poll = 1; poll <= 110; ++poll) {
    panel.log.clear();
    ASSERT_TRUE(comms.UpdateStatus());
    if (panel.Saw("UpdateHours")) slow.push_back(poll);
    if (panel.Saw("UpdateAtn")) fast.push_back(poll);
    if (panel.Saw("UpdateHours")) {
      EXPECT_TRUE(panel.Saw("UpdateDateTime"));
    }
    EXPECT_FALSE(panel.Saw("UpdateHours") && panel.Saw("UpdateAtn")) << poll;
  }
  EXPECT_EQ(fast.size(), 27u);
  EXPECT_EQ(slow, (std::vector<int>{21, 42, 63, 85, 106}));
}

TEST_F(PollFixture, TimerTickFollowsSessionState) {
  // Serial: every tick polls.
  comms.Timer1_Timer();
  EXPECT_TRUE(panel.Saw("UpdateFwdRF"));

  // TCP: the first tick after connect runs the first read once, then polls.
  comms.gUseEnet = true;
  sock.state = TcpSocket::sckConnected;
  sock.onSend = [this](const std::string&) { sock.Deliver(answer + "\r\n", 5); };
  panel.log.clear();
  comms.Timer1_Timer();
  EXPECT_TRUE(panel.log.empty());  // neither pending nor done: nothing

  comms.gFirstReadPending = true;
  panel.onFirstTimeRead = [this] { comms.gFirstReadDone = true; };
  comms.session.gMissedPolls = 0;
  comms.Timer1_Timer();
  EXPECT_EQ(panel.Count("FirstTimeRead"), 1);
  EXPECT_EQ(comms.session.gMissedPolls, 2);
  EXPECT_EQ(panel.caption, "Disconnect");
  EXPECT_FALSE(panel.Saw("UpdateFwdRF"));
  panel.log.clear();
  comms.Timer1_Timer();
  EXPECT_EQ(panel.Count("FirstTimeRead"), 0);
  EXPECT_TRUE(panel.Saw("UpdateFwdRF"));

  // A session ending over TCP leaves the search menu alone.
  answer.clear();
  sock.onSend = nullptr;
  comms.session.gMissedPolls = 0;
  panel.log.clear();
  EXPECT_FALSE(comms.UpdateStatus());
  EXPECT_TRUE(panel.Saw("enable:mnuConnect"));
  EXPECT_FALSE(panel.Saw("enable:mnuAdvSrch"));
}

}  // namespace
}  // namespace amp
