// Start-up and shutdown: the ten persisted settings, their defaults on a
// first start, their way through an unload into the next run, and values
// that cannot be used.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/desk_rig.h"

namespace amp {
namespace {

using namespace amp::test;

TEST(Settings, FirstStartUsesTheDefaults) {
  DeskRig rig;
  AmpDesk& d = rig.Load();
  const AmpLink& link = d.comms.Link;
  EXPECT_EQ(link.PortNumber(), 1);
  EXPECT_EQ(link.CommSettings(), "9600,N,8,1");
  EXPECT_EQ(link.DeviceAddress(), "A");
  EXPECT_FLOAT_EQ(link.MsgTimeout(), 2.0f);
  EXPECT_FALSE(link.CheckAddress());
  EXPECT_FALSE(rig.port.isOpen);  // closed until the first send

  EXPECT_EQ(d.gPollAddress, 'A');
  EXPECT_EQ(rig.sock.host, "10.0.0.254");
  EXPECT_EQ(rig.sock.port, 2000);
  EXPECT_FALSE(d.comms.gUseEnet);
  EXPECT_FALSE(d.panel.gDisplayWatts);
  EXPECT_FLOAT_EQ(d.panel.gRRFFloor, 27.0f);

  const ui::FrmMain& f = d.frmMain;
  EXPECT_TRUE(f.Loaded());
  EXPECT_EQ(f.Caption(), "AmpDesk Control Utility");
  EXPECT_TRUE(f.mnuComPort[0].Checked());
  EXPECT_EQ(f.mnuWatts.Caption(), "Display Watts");
  EXPECT_FALSE(f.mnuPollEn.Checked());
  EXPECT_FALSE(f.mnuUseEnet.Checked());
  EXPECT_TRUE(f.mnuAdvSrch.Enabled());
  EXPECT_FALSE(f.Frame30.Visible());
  EXPECT_EQ(f.btnConnect.Caption(), "Connect");
  EXPECT_FALSE(f.Timer1.TimerEnabled());
  // The panel is empty and disabled until a unit is connected.
  EXPECT_FALSE(f.txtAtnDB.Enabled());
  EXPECT_FALSE(f.chkPS.Enabled());
  EXPECT_TRUE(d.panel.gInPanelUpdate);
  EXPECT_TRUE(rig.dialogs.boxes.empty());
}

TEST(Settings, ValuesSurviveUnloadIntoTheNextRun) {
  DeskRig rig;
  {
    AmpDesk& d = rig.Load();
    d.comms.Link.SetPortNumber(3);
    d.comms.Link.SetCommSettings("19200,E,7,1");
    d.frmMain.mnuPollEn.RaiseClick();
    rig.dialogs.inputs = {"K", "127.0.0.1", "2101"};
    d.frmMain.mnuPollAdrs.RaiseClick();
    d.frmMain.mnuEnterIP.RaiseClick();
    d.frmMain.mnuEthPort.RaiseClick();
    d.frmMain.mnuUseEnet.RaiseClick();
    d.panel.gDisplayWatts = true;
    d.panel.gRRFFloor = 30.5f;
    d.gLastDir = "/data/unit 7";
    int ends = 0;
    d.EndProgram = [&] { ++ends; };
    rig.timer.enabled = true;
    d.frmMain.mnuFileExit.RaiseClick();
    EXPECT_EQ(ends, 1);
    EXPECT_FALSE(rig.timer.enabled);
    EXPECT_FALSE(d.frmMain.Loaded());
    EXPECT_GE(rig.sock.closes, 1);
    d.Form_Unload();  // a second unload (the window closing after Exit) does nothing
    EXPECT_EQ(ends, 1);
  }
  const MemorySettings& s = rig.settings;
  EXPECT_EQ(s.Get("CurrentPort"), "3");
  EXPECT_EQ(s.Get("ComSettings"), "19200,E,7,1");
  EXPECT_EQ(s.Get("PollStatus"), "1");
  EXPECT_EQ(s.Get("PollAddress"), "75");
  EXPECT_EQ(s.Get("UseIP"), "127.0.0.1");
  EXPECT_EQ(s.Get("EthPort"), "2101");
  EXPECT_EQ(s.Get("UseEnet"), "True");
  EXPECT_EQ(s.Get("RRFFloor"), "30.5");
  EXPECT_EQ(s.Get("UnitsSetting"), "True");
  EXPECT_EQ(s.Get("FilePath"), "/data/unit 7");
  EXPECT_EQ(s.values.size(), 10u);

  AmpDesk& d = rig.Load();
  EXPECT_EQ(d.comms.Link.PortNumber(), 3);
  EXPECT_EQ(d.comms.Link.CommSettings(), "19200,E,7,1");
  EXPECT_EQ(d.frmMain.mnuCom.Caption(), "Serial Port:   COM3");
  EXPECT_TRUE(d.frmMain.mnuComPort[2].Checked());
  EXPECT_TRUE(d.frmMain.mnuPollEn.Checked());
  EXPECT_FALSE(d.frmMain.mnuAdvSrch.Enabled());
  EXPECT_EQ(d.gPollAddress, 'K');
  EXPECT_EQ(rig.sock.host, "127.0.0.1");
  EXPECT_EQ(rig.sock.port, 2101);
  EXPECT_EQ(d.frmMain.mnuEthPort.Caption(), "Ethernet Port: 2101");
  EXPECT_TRUE(d.comms.gUseEnet);
  EXPECT_TRUE(d.frmMain.mnuUseEnet.Checked());
  EXPECT_TRUE(d.panel.gDisplayWatts);
  EXPECT_EQ(d.frmMain.mnuWatts.Caption(), "Display dBm");
  EXPECT_FLOAT_EQ(d.panel.gRRFFloor, 30.5f);
  // The folder is stored only; nothing reads it back.
  EXPECT_EQ(d.gLastDir, "");
}

TEST(Settings, UnusableStoredValuesDoNotStopStartUp) {
  DeskRig rig;
  rig.settings.Set("CurrentPort", "12");
  rig.settings.Set("ComSettings", "4800,N,8,1");
  rig.settings.Set("PollAddress", "200");
  rig.settings.Set("PollStatus", "off");
  rig.settings.Set("EthPort", "http");
  rig.settings.Set("RRFFloor", "low");
  rig.settings.Set("UnitsSetting", "maybe");
  rig.settings.Set("UseEnet", "");
  AmpDesk& d = rig.Load();
  EXPECT_EQ(d.comms.Link.PortNumber(), 1);
  EXPECT_EQ(d.comms.Link.CommSettings(), "4800,N,8,1");
  EXPECT_EQ(d.gPollAddress, 'A');
  EXPECT_FALSE(d.frmMain.mnuPollEn.Checked());
  EXPECT_EQ(rig.sock.port, 2000);
  EXPECT_EQ(d.values.gEthPort, 2000);
  EXPECT_FLOAT_EQ(d.panel.gRRFFloor, 27.0f);
  EXPECT_FALSE(d.panel.gDisplayWatts);
  EXPECT_FALSE(d.comms.gUseEnet);
  EXPECT_TRUE(rig.dialogs.boxes.empty());

  // A port number that is fine but whose device is gone: the slot is kept,
  // the port simply fails to open later, and nothing is shown now.
  rig.settings.Set("CurrentPort", "4");
  rig.port.openError = "No such file or directory";
  AmpDesk& d2 = rig.Load();
  EXPECT_EQ(d2.comms.Link.PortNumber(), 4);
  EXPECT_FALSE(rig.port.isOpen);
  EXPECT_FALSE(d2.frmMain.mnuComPort[3].Visible());
  EXPECT_TRUE(d2.frmMain.mnuComPort[3].Checked());
  EXPECT_TRUE(rig.dialogs.boxes.empty());
}

TEST(Settings, UnloadClosesOpenDialogsByTheirCancelPath) {
  DeskRig rig;
  AmpDesk& d = rig.Load();
  // The program is closed while the port dialog is open, after the
  // operator had changed its speed: nothing of it is taken.
  rig.dialogs.onModal = [&](ui::Form& form) {
    d.frmCom.cbBaud.SetListIndex(5);
    d.Form_Unload();
    EXPECT_FALSE(form.Loaded());
  };
  EXPECT_FALSE(d.ConfigPort(2));
  EXPECT_EQ(d.comms.Link.PortNumber(), 1);
  EXPECT_EQ(rig.settings.Get("CurrentPort"), "1");
  EXPECT_EQ(rig.settings.Get("ComSettings"), "9600,N,8,1");
}

TEST(Settings, AboutShowsVersionTitleAndNoSystemTool) {
  DeskRig rig;
  AmpDesk& d = rig.Load();
  rig.dialogs.onModal = [&](ui::Form& form) {
    EXPECT_EQ(form.Name(), "frmAbout");
    EXPECT_THAT(d.frmAbout.lblVersion.Caption(),
                ::testing::MatchesRegex("Version [0-9]+\\.[0-9]+\\.[0-9]+"));
    EXPECT_EQ(d.frmAbout.lblTitle.Caption().rfind("AmpDesk Control Utility (AmpDesk)\r\n\r\n", 0),
              0u);
    d.frmAbout.cmdSysInfo.RaiseClick();
    EXPECT_TRUE(form.Loaded());  // the box does not close the dialog
    d.frmAbout.cmdOK.RaiseClick();
  };
  d.frmMain.mnuHelpAbout.RaiseClick();
  ASSERT_EQ(rig.dialogs.modals, std::vector<std::string>{"frmAbout"});
  EXPECT_FALSE(d.frmAbout.Loaded());
  EXPECT_EQ(rig.BoxTexts(),
            std::vector<std::string>{"AmpDesk: System Information Is Unavailable At This Time"});
}

}  // namespace
}  // namespace amp
