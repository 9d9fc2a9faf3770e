// A unit named on the command line is for that run only: the stored
// connection survives the run, whatever the session changed on its way,
// while the panel's other settings are stored as usual.
#include "frontend/run_settings.h"

#include <gtest/gtest.h>

#include "app/desk_rig.h"
#include "app/settings_keys.h"

namespace amp::frontend {
namespace {

namespace key = setting_key;

struct OneRun {
  test::DeskRig rig;
  RunSettings settings{rig.settings};
  std::unique_ptr<AmpDesk> desk;

  AmpDesk& Load(const RunTarget& target) {
    settings.LayTarget(target);
    desk = std::make_unique<AmpDesk>(AmpDeskHost{rig.port, rig.slots, rig.sock, rig.timer, rig.pump,
                                                 rig.clock, rig.dialogs, settings});
    desk->Form_Load();
    return *desk;
  }
  // What a session changes on its way: the line settings a search found,
  // the unit's own IP address from the first read, the operator's menus.
  void Session() {
    desk->comms.Link.SetCommSettings("38400,O,7,1");
    desk->values.gIPAddress = "192.0.2.77";
    desk->gPollAddress = 'Z';
    desk->panel.gDisplayWatts = true;
    desk->Form_Unload();
  }
};

void StoreSerialConnection(test::MemorySettings& s) {
  s.Set(key::kCurrentPort, "3");
  s.Set(key::kComSettings, "19200,E,7,1");
  s.Set(key::kPollStatus, "0");
  s.Set(key::kPollAddress, "75");
  s.Set(key::kUseIP, "10.1.1.1");
  s.Set(key::kEthPort, "2101");
  s.Set(key::kUseEnet, "False");
}

TEST(RunSettings, NamedUnitIsUsedAndTheStoredConnectionKept) {
  RunTarget tcp;
  tcp.tcpHost = "127.0.0.1";
  tcp.tcpPort = 2200;
  RunTarget serial;
  serial.serialSlot = 2;
  serial.lineSettings = "4800,N,8,1";
  serial.address = 'B';
  for (const RunTarget& target : {tcp, serial}) {
    OneRun run;
    StoreSerialConnection(run.rig.settings);
    const auto stored = run.rig.settings.values;
    AmpDesk& d = run.Load(target);
    if (!target.tcpHost.empty()) {
      EXPECT_TRUE(d.comms.gUseEnet);
      EXPECT_EQ(run.rig.sock.host, "127.0.0.1");
      EXPECT_EQ(run.rig.sock.port, 2200);
    } else {
      EXPECT_FALSE(d.comms.gUseEnet);
      EXPECT_EQ(d.comms.Link.PortNumber(), 2);
      EXPECT_EQ(d.comms.Link.CommSettings(), "4800,N,8,1");
      EXPECT_EQ(d.gPollAddress, 'B');
      EXPECT_TRUE(d.frmMain.mnuPollEn.Checked());
    }
    run.Session();
    for (const char* k : key::kTargetKeys)
      EXPECT_EQ(run.rig.settings.Get(k), stored.at({key::kAppTitle, key::kSection, k})) << k;
    EXPECT_EQ(run.rig.settings.Get(key::kUnitsSetting), "True");
    EXPECT_EQ(run.settings.SaveError(), "");
  }

  // Without a unit named, the session's connection is stored as before.
  OneRun run;
  StoreSerialConnection(run.rig.settings);
  run.Load({});
  run.Session();
  EXPECT_EQ(run.rig.settings.Get(key::kComSettings), "38400,O,7,1");
  EXPECT_EQ(run.rig.settings.Get(key::kUseIP), "192.0.2.77");
  EXPECT_EQ(run.rig.settings.Get(key::kPollAddress), "90");
}

TEST(RunSettings, AFailedSaveIsKeptForTheOperator) {
  struct Unwritable : test::MemorySettings {
    std::string LastError() const override { return "Cannot save settings to /ro/AmpDesk.ini"; }
  };
  test::DeskRig rig;
  Unwritable store;
  RunSettings settings(store);
  AmpDesk d(AmpDeskHost{rig.port, rig.slots, rig.sock, rig.timer, rig.pump, rig.clock, rig.dialogs,
                        settings});
  d.Form_Load();
  d.Form_Unload();
  EXPECT_EQ(settings.SaveError(), "Cannot save settings to /ro/AmpDesk.ini");
}

}  // namespace
}  // namespace amp::frontend
