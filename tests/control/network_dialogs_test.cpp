#include "control/network_dialogs.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "display/operator_input.h"
#include "panel_rig.h"

namespace amp::test {
namespace {

struct NetRig : PanelRig {
  NetworkDialogs net{ctx};
  bool pollRanInDialog = false;
  NetRig() {
    net.Wire();
    f.Timer1.SetTimerEnabled(true);
    v.gIPOctets = {10, 0, 0, 254};
    v.gEthPort = 2000;
    for (const char* taken : {"PEI300.20.0.254", "PEO1", "PES", "X2009600E71"})
      s.Answer(taken, taken);
  }
  // The operator opens the dialog by its menu entry and plays `act` in it.
  void Open(ui::MenuItem& menu, const std::function<void()>& act) {
    s.dialogs.onModal = [this, act](ui::Form&) {
      pollRanInDialog = pollRanInDialog || f.Timer1.TimerEnabled();
      act();
    };
    menu.RaiseClick();
  }
  ui::FrmEnetCfg& enet() { return net.enetCfg.frmEnetCfg; }
};

// ------------------------------------------------------------ Ethernet

TEST(EnetCfg, OctetKeysAndTheSecondOctetRangeCheck) {
  NetRig r;
  r.Open(r.f.mnuEnetCfg, [&r] {
    ui::FrmEnetCfg& e = r.enet();
    r.Key(e.txtIP3b, '5');
    r.Key(e.txtIP3b, 27);  // Esc: the text of the first key back, untouched
    EXPECT_EQ(e.txtIP3b.Text(), "0");
    r.Type(e.txtIP1b, "300");
    r.Key(e.txtIP1b, '.');  // passes: only the second octet is ever checked
    r.Type(e.txtIP2b, "300");
    r.Key(e.txtIP2b, '.');
    r.Key(e.txtNM4b, '.');  // a bad second octet holds any octet field
    r.Type(e.txtIP2b, "20");
    r.Key(e.txtIP2b, '.');
    e.cmdOK.RaiseClick();
  });
  EXPECT_EQ(r.SetCommands(), (std::vector<std::string>{"PEI300.20.0.254", "PES"}));
  EXPECT_EQ(r.BoxTitles(), (std::vector<std::string>{"Range Error", "Range Error"}));
  EXPECT_FALSE(r.pollRanInDialog);
  EXPECT_TRUE(r.f.Timer1.TimerEnabled());
}

TEST(EnetCfg, SerialSendsAndTheStickySave) {
  NetRig r;
  auto dhcpThenOk = [&r] {
    ui::OperatorClick(r.enet().optDhcp);
    r.enet().cmdOK.RaiseClick();
  };
  r.Open(r.f.mnuEnetCfg, dhcpThenOk);
  EXPECT_EQ(r.SetCommands(), (std::vector<std::string>{"PEO1", "PES"}));
  // Nothing changed this time, but a value went earlier: the unit stores again.
  r.Open(r.f.mnuEnetCfg, [&r] { r.enet().cmdOK.RaiseClick(); });
  EXPECT_EQ(r.SetCommands(), (std::vector<std::string>{"PEO1", "PES", "PES"}));

  NetRig esc;
  esc.Open(esc.f.mnuEnetCfg, [&esc] {
    esc.Key(esc.enet().txtGW1b, '7');
    esc.Key(esc.enet().txtGW1b, 27);
    esc.enet().cmdOK.RaiseClick();
  });
  EXPECT_EQ(esc.SetCommands(), std::vector<std::string>{});
}

TEST(EnetCfg, AHighUnitPortShowsTheDefaultDisabled) {
  NetRig r;
  r.v.gEthPort = 5000;
  r.Open(r.f.mnuEnetCfg, [&r] {
    EXPECT_EQ(r.enet().txtPort.Text(), "2000");
    EXPECT_FALSE(r.enet().txtPort.Enabled());
  });
}

// ---------------------------------------------------------------- LLDP

template <class F>
std::vector<std::string> LldpOk(NetRig& r, F edit) {
  r.v.gLldpUser = {true, 60, 120, 2, "hostA"};
  r.v.gLldpFactory = {80008, "A", "uuid-1"};
  r.Open(r.f.mnuLLDPCfg, [&r, edit] {
    edit(r.net.lldp.frmLLDPConfig);
    r.net.lldp.frmLLDPConfig.btnOK.RaiseClick();
  });
  return r.SetCommands();
}

TEST(Lldp, BothGroupsAreCheckedBeforeFactoryThenUserIsSent) {
  NetRig tooShort;
  EXPECT_EQ(LldpOk(tooShort,
                   [](ui::FrmLLDPConfig& d) {
                     d.txtlldpTxTimer.SetText("29");
                     d.txtlldpMED.SetText("5");
                   }),
            std::vector<std::string>{});
  EXPECT_EQ(tooShort.net.lldp.frmLLDPConfig.txtlldpTxTimer.BackColor(), LldpControls::kRefused);
  EXPECT_EQ(tooShort.net.lldp.frmLLDPConfig.txtlldpMED.BackColor(), LldpControls::kWindow);

  NetRig noHost;
  EXPECT_EQ(LldpOk(noHost,
                   [](ui::FrmLLDPConfig& d) {
                     d.txtlldpMED.SetText("5");
                     d.txtlldpHostname.SetText("");
                   }),
            std::vector<std::string>{});

  NetRig good;
  EXPECT_EQ(LldpOk(good,
                   [](ui::FrmLLDPConfig& d) {
                     d.txtlldpTxTimer.SetText("30");
                     d.txtlldpMED.SetText("5");
                   }),
            (std::vector<std::string>{"QlldpFactorySetup 5;A;uuid-1",
                                      "QlldpSetupConfig 1;30;120;2;hostA"}));
}

// ------------------------------------------------------- serial ports

TEST(AmpCom, PackedSettingsIncompleteCombosAndTheRs485Order) {
  struct Case {
    const char* what;
    int32_t baud;
    bool refuseXR;
    std::function<void(NetRig&)> act;
    std::vector<std::string> sent;
    std::vector<std::string> boxes;
  };
  const std::vector<Case> cases = {
      {"232 as read",
       9600,
       false,
       [](NetRig& r) { r.net.ampCom.frmAmpCom.btnSet232.RaiseClick(); },
       {"X1009600N81"},
       {}},
      {"a baud the list lacks",
       1234,
       false,
       [](NetRig& r) { r.net.ampCom.frmAmpCom.btnSet232.RaiseClick(); },
       {},
       {"Port Setting Error"}},
      {"parity takes 8 bits away",
       9600,
       false,
       [](NetRig& r) {
         r.net.ampCom.frmAmpCom.cmb232Parity.SetListIndex(1);
         r.net.ampCom.frmAmpCom.btnSet232.RaiseClick();
       },
       {"X1009600O71"},
       {}},
      {"485 after its wiring",
       9600,
       false,
       [](NetRig& r) { r.net.ampCom.frmAmpCom.btnSet485.RaiseClick(); },
       {"XR2TA", "X2009600E71"},
       {}},
      {"wiring refused",
       9600,
       true,
       [](NetRig& r) { r.net.ampCom.frmAmpCom.btnSet485.RaiseClick(); },
       {"XR2TA"},
       {"Communication Error"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    NetRig r;
    r.v.gCom1Baud = c.baud;
    r.v.gCom1Parity = "N";
    r.v.gCom1Data = 8;
    r.v.gCom1Stop = 1;
    r.v.gCom2Baud = 9600;
    r.v.gCom2Parity = "E";
    r.v.gCom2Data = 7;
    r.v.gCom2Stop = 1;
    r.v.gCom2Wire = 2;
    r.v.gCom2Term = "T";
    r.f.txtAdr.SetText("A");
    if (c.refuseXR)
      r.s.Refuse("XR2TA");
    else
      r.s.Answer("XR2TA", "XR2TA");
    r.Open(r.f.mnuAmpCom, [&] { c.act(r); });
    EXPECT_EQ(r.SetCommands(), c.sent);
    EXPECT_EQ(r.BoxTitles(), c.boxes);
  }
}

}  // namespace
}  // namespace amp::test
