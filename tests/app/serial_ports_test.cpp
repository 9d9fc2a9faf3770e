// The serial port menu and the port settings dialog: which ports are
// listed, what the dialog starts from, what it gives back, and when a
// choice changes the link.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "app/desk_rig.h"

namespace amp {
namespace {

using namespace amp::test;

// What the dialog showed when it loaded, in settings-text form.
struct Shown {
  std::string caption;
  int baudIndex = -2;
  std::string parity, data, stop;
};

struct PortFixture : ::testing::Test {
  DeskRig rig;
  AmpDesk* d = nullptr;
  std::vector<Shown> shown;

  void SetUp() override { d = &rig.Load(); }

  Shown Capture() const {
    const ui::FrmCom& c = d->frmCom;
    Shown s;
    s.caption = c.Caption();
    s.baudIndex = c.cbBaud.ListIndex();
    for (int i = 0; i < c.optParity.size(); ++i)
      if (c.optParity[i].Value()) s.parity += c.optParity[i].Caption();
    for (int i = 0; i < c.optDataBits.size(); ++i)
      if (c.optDataBits[i].Value()) s.data += c.optDataBits[i].Caption();
    for (int i = 0; i < c.optStopBits.size(); ++i)
      if (c.optStopBits[i].Value()) s.stop += c.optStopBits[i].Caption();
    return s;
  }
  // The operator looks at the dialog and presses OK (after `edit`).
  void PressOk(std::function<void(ui::FrmCom&)> edit = {}) {
    rig.dialogs.onModal = [this, edit](ui::Form&) {
      shown.push_back(Capture());
      if (edit) edit(d->frmCom);
      d->frmCom.cmdOK.RaiseClick();
    };
  }
  // What the dialog shows for a given settings text.
  Shown ShownFor(const std::string& settings) {
    d->comms.Link.SetCommSettings(settings);
    rig.dialogs.onModal = [this](ui::Form&) {
      shown.push_back(Capture());
      d->frmCom.cmdCancel.RaiseClick();
    };
    d->ConfigPort(d->comms.Link.PortNumber());
    return shown.back();
  }
};

TEST_F(PortFixture, ListShowsBoundPortsWhoseDeviceExists) {
  const auto dir =
      std::filesystem::temp_directory_path() /
      ("ampdesk-ports-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()));
  std::filesystem::create_directories(dir);
  const std::string present = (dir / "ttyUSB0").string();
  const std::string later = (dir / "ttyUSB1").string();
  std::ofstream(present).put('\n');
  rig.slots.Bind(1, present);
  rig.slots.Bind(2, later);  // bound, but no device yet
  rig.slots.Bind(7, present);
  d->BuildComPortList();
  std::vector<int> visible;
  for (int i = 0; i < 10; ++i)
    if (d->frmMain.mnuComPort[i].Visible()) visible.push_back(i + 1);
  EXPECT_EQ(visible, (std::vector<int>{1, 7}));
  EXPECT_EQ(d->frmMain.mnuComPort[0].Caption(), "Com1 (" + present + ")");
  EXPECT_EQ(d->frmMain.mnuComPort[2].Caption(), "Com3");

  // The device appears; a scan finds it.
  std::ofstream(later).put('\n');
  d->frmMain.mnuPortScan.RaiseClick();
  EXPECT_TRUE(d->frmMain.mnuComPort[1].Visible());
  std::filesystem::remove_all(dir);
  d->frmMain.mnuPortScan.RaiseClick();
  for (int i = 0; i < 10; ++i) EXPECT_FALSE(d->frmMain.mnuComPort[i].Visible()) << i;
}

TEST(PortSlots, AStoredPortFollowsItsDeviceOrOpensNothingAndScansAddNewDevices) {
  DeskRig rig;
  std::vector<std::string> devices;
  auto run = [&](std::vector<std::string> plugged) -> AmpDesk& {
    devices = std::move(plugged);
    rig.slots = ComSlots();
    rig.slots.listDevices = [&] { return devices; };
    rig.slots.Rescan();  // the slots of a fresh start
    return rig.Load();
  };
  const std::string usb0 = "/dev/ttyUSB0", usb1 = "/dev/ttyUSB1", usb5 = "/dev/ttyUSB5";
  run({usb0, usb1}).comms.Link.SetPortNumber(2);
  rig.desk->Form_Unload();
  EXPECT_EQ(rig.settings.Get("CurrentPort"), "2");

  // The first adapter is gone, so the second is dealt COM1: the link follows it.
  AmpDesk& moved = run({usb1});
  EXPECT_EQ(moved.comms.Link.PortNumber(), 1);
  moved.Form_Unload();

  // It is gone too and another adapter took COM1: the number stays its own
  // and opens nothing; the other adapter moves aside.
  AmpDesk& gone = run({usb5});
  EXPECT_EQ(gone.comms.Link.PortNumber(), 1);
  EXPECT_EQ(rig.slots.Path(1), usb1);
  EXPECT_EQ(rig.slots.Path(2), usb5);

  // Plugged back and one more: a scan keeps every slot and adds the new one.
  devices = {"/dev/ttyUSB7", usb5, usb1};
  gone.frmMain.mnuPortScan.RaiseClick();
  EXPECT_EQ(rig.slots.Path(1), usb1);
  EXPECT_EQ(rig.slots.Path(2), usb5);
  EXPECT_EQ(rig.slots.Path(3), "/dev/ttyUSB7");
  EXPECT_EQ(gone.frmMain.mnuComPort[2].Caption(), "Com3 (/dev/ttyUSB7)");
}

TEST_F(PortFixture, DialogSelectsThePartsOfTheSettingsText) {
  Shown s = ShownFor("38400,O,7,1");
  EXPECT_EQ(s.caption, "Com1 Port Settings");
  EXPECT_EQ(d->frmCom.cbBaud.Text(), "38400");
  EXPECT_EQ(s.parity, "Odd");
  EXPECT_EQ(s.data, "7");
  EXPECT_EQ(s.stop, "1");

  s = ShownFor("1200,E,8,2");
  EXPECT_EQ(s.baudIndex, 0);
  EXPECT_EQ(s.parity, "Even");
  EXPECT_EQ(s.data, "8");
  EXPECT_EQ(s.stop, "2");

  // An unknown speed selects 9600; unknown parts the first of their group.
  s = ShownFor("115200,M,5,3");
  EXPECT_EQ(d->frmCom.cbBaud.Text(), "9600");
  EXPECT_EQ(s.parity, "None");
  EXPECT_EQ(s.data, "8");
  EXPECT_EQ(s.stop, "1");

  // No text at all: the same defaults. Each group has one choice only.
  s = ShownFor("");
  EXPECT_EQ(s.baudIndex, 3);
  EXPECT_EQ(s.parity, "None");
  EXPECT_EQ(s.data, "8");
  EXPECT_EQ(s.stop, "1");
}

TEST_F(PortFixture, SamePortUnchangedChangesNothing) {
  PressOk();
  EXPECT_FALSE(d->ConfigPort(1));
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].caption, "Com1 Port Settings");
  EXPECT_EQ(d->gPortSettings, "9600,N,8,1");
  EXPECT_FALSE(d->SetupSerialPort(1));
  EXPECT_TRUE(d->frmMain.mnuComPort[0].Checked());
}

TEST_F(PortFixture, NewSettingsOnTheCurrentPortAreTaken) {
  d->comms.Link.SetCommSettings("19200,N,8,1");
  PressOk([](ui::FrmCom& c) {
    c.cbBaud.SetListIndex(5);
    c.optParity[1].SetValue(true);
    c.optDataBits[1].SetValue(true);
    c.optStopBits[1].SetValue(true);
  });
  EXPECT_TRUE(d->ConfigPort(1));
  EXPECT_EQ(shown[0].baudIndex, 4);  // it started from the port's own settings
  EXPECT_EQ(d->comms.Link.CommSettings(), "38400,E,7,2");
  EXPECT_EQ(d->comms.Link.PortNumber(), 1);
}

TEST_F(PortFixture, AnotherPortStartsFromTheUsualSettings) {
  d->comms.Link.SetCommSettings("38400,O,7,1");
  PressOk();
  d->frmMain.mnuComPort[4].RaiseClick();
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].caption, "Com5 Port Settings");
  EXPECT_EQ(shown[0].baudIndex, 3);
  EXPECT_EQ(shown[0].parity, "None");
  EXPECT_EQ(shown[0].data, "8");
  EXPECT_EQ(d->comms.Link.PortNumber(), 5);
  EXPECT_EQ(d->comms.Link.CommSettings(), "9600,N,8,1");
  EXPECT_EQ(rig.port.commPort, 5);  // the new port was opened
  EXPECT_EQ(d->frmMain.mnuCom.Caption(), "Serial Port:   COM5");
  for (int i = 0; i < 10; ++i) EXPECT_EQ(d->frmMain.mnuComPort[i].Checked(), i == 4) << i;
}

TEST_F(PortFixture, CancelAndCloseBoxLeaveEverything) {
  rig.dialogs.onModal = [this](ui::Form&) {
    d->frmCom.cbBaud.SetListIndex(6);
    d->frmCom.cmdCancel.RaiseClick();
  };
  d->frmMain.mnuComPort[1].RaiseClick();
  EXPECT_EQ(d->gPortSettings, "");
  // Closed without a button (no script: the fake closes at once).
  rig.dialogs.onModal = nullptr;
  EXPECT_FALSE(d->SetupSerialPort(2));
  EXPECT_EQ(rig.dialogs.modals.size(), 2u);
  EXPECT_EQ(d->comms.Link.PortNumber(), 1);
  EXPECT_EQ(d->comms.Link.CommSettings(), "9600,N,8,1");
  EXPECT_TRUE(d->frmMain.mnuComPort[0].Checked());
  EXPECT_FALSE(d->frmMain.mnuComPort[1].Checked());
  EXPECT_EQ(d->frmMain.mnuCom.Caption(), "Serial Port:   COM1");
  // Ports outside 1..10 are refused without a dialog.
  EXPECT_FALSE(d->ConfigPort(0));
  EXPECT_FALSE(d->SetupSerialPort(11));
  EXPECT_EQ(rig.dialogs.modals.size(), 2u);
}

TEST_F(PortFixture, TypedSpeedIsKept) {
  // The speed box takes a typed value as well as a listed one.
  PressOk([](ui::FrmCom& c) { c.cbBaud.SetText("115200"); });
  EXPECT_TRUE(d->ConfigPort(1));
  EXPECT_EQ(d->comms.Link.CommSettings(), "115200,N,8,1");
}

}  // namespace
}  // namespace amp
