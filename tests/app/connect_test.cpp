// Connecting from the panel on fake parts with fake time: the button's
// states, the searches and single-address polling, the TCP connect, and the
// menus that set the poll address and the TCP target.
#include <gtest/gtest.h>

#include "app/desk_rig.h"
#include "app/fake_unit.h"

namespace amp {
namespace {

using namespace amp::test;

struct ConnectFixture : ::testing::Test {
  DeskRig rig;
  AmpDesk* d = nullptr;
  ui::FrmMain* f = nullptr;

  void SetUp() override {
    d = &rig.Load();
    f = &d->frmMain;
  }
  void Click(ui::Control& c) { c.RaiseClick(); }
};

TEST_F(ConnectFixture, SearchFindsTheUnitAndTheSessionStarts) {
  FakeLineUnit unit(rig.port, 'B', "19200,N,8,1");
  std::vector<std::string> captions;
  f->btnConnect.Click = [&, connect = f->btnConnect.Click] {
    connect();
    captions.push_back(f->btnConnect.Caption());
  };
  // The button reads "Terminate" for every probe, and still during the first
  // read, which only repaints: nothing the operator does runs there (a press
  // would act on a panel the read is about to enable).
  std::vector<std::string> captionAtProbe;
  int eventRunsAtFirstRead = -1;
  rig.port.onWrite = [&, inner = rig.port.onWrite](const std::string& frame) {
    const std::string text = frame.size() > 4 ? frame.substr(2, frame.size() - 4) : "";
    if (text == "1") captionAtProbe.push_back(f->btnConnect.Caption());
    if (text == "YT" && eventRunsAtFirstRead < 0)
      eventRunsAtFirstRead = rig.pump.doEventsCalls + rig.pump.waitCalls;
    inner(frame);
  };
  const int refreshesBefore = rig.pump.refreshCalls;
  Click(f->btnConnect);
  EXPECT_EQ(captionAtProbe, std::vector<std::string>(5, "Terminate"));  // A-C at 9600, A-B at 19200
  EXPECT_EQ(rig.pump.doEventsCalls + rig.pump.waitCalls, eventRunsAtFirstRead);
  EXPECT_GT(rig.pump.refreshCalls, refreshesBefore);
  EXPECT_EQ(unit.probes.back(), "B 19200,N,8,1");
  EXPECT_EQ(d->comms.Link.DeviceAddress(), "B");
  EXPECT_EQ(d->comms.Link.CommSettings(), "19200,N,8,1");
  // The first read ran before the poll started.
  EXPECT_GT(unit.commands.size(), 20u);
  EXPECT_TRUE(d->comms.gFirstReadDone);
  EXPECT_EQ(captions, std::vector<std::string>{"Disconnect"});
  EXPECT_TRUE(rig.timer.enabled);
  EXPECT_TRUE(f->Timer1.TimerEnabled());
  EXPECT_EQ(d->comms.session.gMissedPolls, 2);
  EXPECT_TRUE(f->mnuAtnCal.Enabled());
  EXPECT_TRUE(f->txtAtnDB.Enabled());
  EXPECT_FALSE(f->mnuConnect.Enabled());
  EXPECT_FALSE(f->mnuExtSrch.Enabled());
  EXPECT_FALSE(f->mnuAdvSrch.Enabled());
  // The transmitter is off, so constant power cannot be set.
  EXPECT_FALSE(f->chkConstPwr.Enabled());
  EXPECT_FALSE(f->txtConstLvl.Enabled());
  EXPECT_TRUE(rig.dialogs.boxes.empty());

  // A poll tick reaches the unit through the timer.
  const size_t before = unit.commands.size();
  rig.timer.Tick();
  ASSERT_GT(unit.commands.size(), before);
  EXPECT_EQ(unit.commands[before].substr(0, 3), "?!#");

  Click(f->btnConnect);  // Disconnect
  EXPECT_EQ(f->btnConnect.Caption(), "Connect");
  EXPECT_FALSE(rig.timer.enabled);
  EXPECT_FALSE(f->txtAtnDB.Enabled());
  EXPECT_TRUE(f->mnuConnect.Enabled());
  EXPECT_TRUE(f->mnuExtSrch.Enabled());
  EXPECT_TRUE(f->mnuAdvSrch.Enabled());
  EXPECT_FALSE(d->comms.gFirstReadDone);
}

TEST_F(ConnectFixture, NoUnitGivesUnitNotFoundAndTheButtonBack) {
  FakeLineUnit unit(rig.port, 'E', "9600,N,8,1");
  Click(f->btnConnect);
  EXPECT_EQ(unit.probes.size(), 36u);
  EXPECT_EQ(rig.BoxTexts(), std::vector<std::string>{"Connect: Unit Not Found"});
  EXPECT_EQ(f->btnConnect.Caption(), "Connect");
  EXPECT_TRUE(f->mnuConnect.Enabled());
  EXPECT_TRUE(f->mnuExtSrch.Enabled());
  EXPECT_TRUE(f->mnuAdvSrch.Enabled());
  EXPECT_FALSE(rig.timer.enabled);
  EXPECT_EQ(d->comms.Link.CommSettings(), "9600,N,8,1");
  EXPECT_EQ(d->comms.Link.DeviceAddress(), "A");
  EXPECT_EQ(f->sbStatusBar.PanelText(0), "");
}

TEST_F(ConnectFixture, ClosingTheProgramStopsASearch) {
  FakeLineUnit unit(rig.port, 'A', "1200,N,8,1");  // on no settings a search tries
  int ends = 0;
  d->EndProgram = [&] { ++ends; };
  rig.pump.After(2000, [&] { f->mnuFileExit.RaiseClick(); });
  Click(f->btnConnect);
  EXPECT_EQ(ends, 1);
  EXPECT_LT(unit.probes.size(), 6u);
  EXPECT_TRUE(rig.dialogs.boxes.empty());
  EXPECT_EQ(rig.settings.Get("ComSettings"), "9600,N,8,1");  // saved as they stood
}

TEST_F(ConnectFixture, PollSingleAddress) {
  FakeLineUnit unit(rig.port, 'D', "9600,N,8,1");
  Click(f->mnuPollEn);
  EXPECT_TRUE(f->mnuPollEn.Checked());
  EXPECT_FALSE(f->mnuAdvSrch.Enabled());

  // One probe at the poll address, on the link's settings, and no search.
  d->gExtendedSearch = true;
  Click(f->mnuConnect);
  EXPECT_EQ(unit.probes, std::vector<std::string>{"A 9600,N,8,1"});
  EXPECT_EQ(rig.BoxTexts(), std::vector<std::string>{"Connect: Unit Not Found"});
  EXPECT_FALSE(d->gExtendedSearch);

  rig.dialogs.inputs = {"D"};
  Click(f->mnuPollAdrs);
  Click(f->btnConnect);
  EXPECT_EQ(unit.probes.back(), "D 9600,N,8,1");
  EXPECT_EQ(unit.probes.size(), 2u);
  EXPECT_EQ(f->btnConnect.Caption(), "Disconnect");
  EXPECT_EQ(d->comms.Link.DeviceAddress(), "D");

  // With polling on, a disconnect leaves the search menus off.
  Click(f->btnConnect);
  EXPECT_TRUE(f->mnuConnect.Enabled());
  EXPECT_FALSE(f->mnuAdvSrch.Enabled());
  EXPECT_FALSE(f->mnuExtSrch.Enabled());
  Click(f->mnuPollEn);
  EXPECT_FALSE(f->mnuPollEn.Checked());
  EXPECT_TRUE(f->mnuAdvSrch.Enabled());
}

TEST_F(ConnectFixture, PollAddressBox) {
  rig.dialogs.inputs = {"", "AB", "a", "[", "?", "Z"};
  for (int i = 0; i < 6; ++i) Click(f->mnuPollAdrs);
  EXPECT_EQ(rig.dialogs.prompts.front(), "Unit Address|Enter Unit Address (A-Z)|A");
  EXPECT_EQ(rig.BoxTexts(), std::vector<std::string>(3, "AmpDesk: Address Error"));
  EXPECT_EQ(d->gPollAddress, 'Z');
  EXPECT_EQ(f->mnuPollAdrs.Caption(), "Poll Address Z");
  EXPECT_EQ(rig.dialogs.prompts.back(), "Unit Address|Enter Unit Address (A-Z)|?");
  Click(f->mnuPollAdrs);  // cancelled: nothing changes
  EXPECT_EQ(d->gPollAddress, 'Z');
}

TEST_F(ConnectFixture, TcpTargetMenus) {
  rig.dialogs.inputs = {"", "10.0.0", "my.unit.local", "192.168.1.20"};
  for (int i = 0; i < 4; ++i) Click(f->mnuEnterIP);
  EXPECT_EQ(rig.dialogs.prompts.front(),
            "IP Address|Enter IP Address (xxx.xxx.xxx.xxx)|10.0.0.254");
  EXPECT_EQ(rig.BoxTexts(), std::vector<std::string>(2, "Format Error: Invalid Address"));
  EXPECT_EQ(rig.sock.host, "192.168.1.20");
  EXPECT_EQ(d->values.gIPAddress, "192.168.1.20");
  EXPECT_EQ(f->mnuEnterIP.Caption(), "IP Address:    192.168.1.20");

  rig.dialogs.boxes.clear();
  rig.dialogs.inputs = {"", "0", "65535", "x12", "0.4", "65534", "2101"};
  for (int i = 0; i < 7; ++i) Click(f->mnuEthPort);
  EXPECT_EQ(rig.BoxTexts(), std::vector<std::string>(4, "Ethernet Port Error: Value out of range"));
  EXPECT_EQ(rig.sock.port, 2101);
  EXPECT_EQ(d->values.gEthPort, 2101);
  EXPECT_EQ(f->mnuEthPort.Caption(), "Ethernet Port: 2101");
  EXPECT_EQ(rig.dialogs.prompts.back(), "Ethernet Port|Enter Ethernet Port Number (1-65535)|65534");
}

TEST_F(ConnectFixture, UseEthernetSwitchesTheAdvancedSearch) {
  Click(f->mnuUseEnet);
  EXPECT_TRUE(d->comms.gUseEnet);
  EXPECT_TRUE(f->mnuUseEnet.Checked());
  EXPECT_FALSE(f->mnuAdvSrch.Enabled());
  Click(f->mnuUseEnet);
  EXPECT_FALSE(d->comms.gUseEnet);
  EXPECT_TRUE(f->mnuAdvSrch.Enabled());
  // Not while a session stands.
  Click(f->mnuUseEnet);
  d->comms.session.phase = SessionPhase::Up;
  Click(f->mnuUseEnet);
  EXPECT_FALSE(f->mnuAdvSrch.Enabled());
}

TEST_F(ConnectFixture, TcpConnectionRefused) {
  Click(f->mnuUseEnet);
  const size_t serialWrites = rig.port.writes.size();
  // The socket never connects.
  Click(f->btnConnect);
  EXPECT_EQ(rig.sock.connects, 1);
  EXPECT_EQ(rig.dialogs.boxes.size(), 1u);  // its text is checked end to end
  EXPECT_EQ(rig.sock.state, TcpSocket::sckClosed);
  EXPECT_EQ(f->btnConnect.Caption(), "Connect");
  EXPECT_TRUE(f->btnConnect.Enabled());
  EXPECT_TRUE(f->mnuConnect.Enabled());
  EXPECT_FALSE(rig.timer.enabled);
  EXPECT_EQ(rig.port.writes.size(), serialWrites);  // nothing went to the serial line
}

TEST_F(ConnectFixture, TcpConnectRunsTheFirstReadFromTheConnectEvent) {
  Click(f->mnuUseEnet);
  // A unit that refuses every command at once, and connects after 100 ms.
  rig.sock.onSend = [&](const std::string& frame) {
    rig.sock.Deliver(std::string("\x15") + frame[1] + "?\x03M\r", 2);
  };
  bool disabledWhileConnecting = false;
  rig.pump.After(100, [&] {
    disabledWhileConnecting = !f->btnConnect.Enabled();
    rig.sock.FireConnect();
  });
  Click(f->btnConnect);
  EXPECT_TRUE(disabledWhileConnecting);
  EXPECT_TRUE(rig.dialogs.boxes.empty());
  EXPECT_TRUE(d->comms.gFirstReadDone);
  EXPECT_GT(rig.sock.sent.size(), 20u);
  EXPECT_EQ(f->btnConnect.Caption(), "Disconnect");
  EXPECT_TRUE(f->btnConnect.Enabled());
  EXPECT_TRUE(rig.timer.enabled);
  EXPECT_FALSE(f->mnuConnect.Enabled());

  Click(f->btnConnect);
  EXPECT_EQ(f->btnConnect.Caption(), "Connect");
  EXPECT_EQ(rig.sock.state, TcpSocket::sckClosed);
  EXPECT_FALSE(rig.timer.enabled);
  EXPECT_TRUE(f->mnuConnect.Enabled());
  EXPECT_FALSE(f->mnuAdvSrch.Enabled());  // still on Ethernet
}

}  // namespace
}  // namespace amp
