// Every control that sets something on the unit, operated while the unit is
// under front-panel (local) control: nothing goes out, one box says why,
// and the panel is left as the guard of that control means to leave it.
#include <gtest/gtest.h>

#include <functional>

#include "control/band_controls.h"
#include "control/identity_controls.h"
#include "control/trip_level_controls.h"
#include "control/waveguide_controls.h"
#include "panel_rig.h"

namespace amp::test {
namespace {

constexpr int kEnter = 13;

struct AllControlsRig : PowerControlsRig {
  IdentityControls id{p};
  WaveguideControls wg{p};
  TripLevelControls trips{p};
  BandControls bands{p};
  AllControlsRig() {
    id.Wire();
    wg.Wire();
    trips.Wire();
    bands.Wire();
    v.gFwdMindBm = 0.1f;
    v.gFwdMaxdBm = 60.0f;
    st.gRemoteMode = false;
  }
};

struct Row {
  const char* control;
  std::function<void(AllControlsRig&)> prepare;  // the panel as the poll left it
  std::function<void(AllControlsRig&)> operate;  // the operator's gesture
  std::function<bool(AllControlsRig&)> after;    // what the panel shows then
};

const auto kAny = [](AllControlsRig&) { return true; };
const auto kNone = [](AllControlsRig&) {};

TEST(RemoteGuard, EveryGuardedControlRefusesOutsideRemoteMode) {
  const std::vector<Row> rows{
      {"transmitter box", kNone, [](auto& r) { r.f.chkPS.SetValue(1); },
       [](auto& r) { return r.f.chkPS.Value() == 0; }},
      {"RF inhibit box", [](auto& r) { r.SetHeld(r.f.chkRFI, 1); },
       [](auto& r) { r.f.chkRFI.SetValue(0); }, [](auto& r) { return r.f.chkRFI.Value() == 1; }},
      {"fault reset", kNone, [](auto& r) { r.f.btnFaultReset.RaiseClick(); }, kAny},
      {"heater entry", [](auto& r) { r.f.mnuHeaterState.SetChecked(true); },
       [](auto& r) { r.f.mnuHeaterState.RaiseClick(); },
       [](auto& r) { return r.f.mnuHeaterState.Checked(); }},
      {"heater standby entry", [](auto& r) { r.f.mnuHtrStby.SetChecked(true); },
       [](auto& r) { r.f.mnuHtrStby.RaiseClick(); },
       [](auto& r) { return r.f.mnuHtrStby.Checked(); }},
      // In the value fields the key still reaches the field; only the set is refused.
      {"attenuation key", kNone, [](auto& r) { r.Key(r.f.txtAtnDB, '5'); },
       [](auto& r) { return r.f.txtAtnDB.Text() == "5"; }},
      {"attenuation arrow", [](auto& r) { r.f.txtAtnDB.SetText("5.0"); },
       [](auto& r) { r.f.UpDown1.UpClick(); },
       [](auto& r) { return r.f.txtAtnDB.Text() == "5.0"; }},
      {"downconverter count key", [](auto& r) { r.v.gIsFBDCUnit = true; },
       [](auto& r) { r.Key(r.f.txtAtnCnt, kEnter); }, kAny},
      {"count arrow", [](auto& r) { r.v.gIsFBDCUnit = true, r.f.txtAtnCnt.SetText("12"); },
       [](auto& r) { r.f.UpDown2.UpClick(); },
       [](auto& r) { return r.f.txtAtnCnt.Text() == "12"; }},
      {"linearizer key", kNone, [](auto& r) { r.Key(r.f.txtLinPhase, kEnter); }, kAny},
      {"linearizer arrow", [](auto& r) { r.f.txtLinAmp.SetText("7"); },
       [](auto& r) { r.f.UpDown3.UpClick(); }, [](auto& r) { return r.f.txtLinAmp.Text() == "7"; }},
      {"constant power box", kNone, [](auto& r) { r.f.chkConstPwr.SetValue(1); },
       [](auto& r) { return r.f.chkConstPwr.Value() == 0; }},
      {"constant power key", kNone, [](auto& r) { r.Key(r.f.txtConstLvl, kEnter); }, kAny},
      {"go to power", kNone, [](auto& r) { r.f.btnGoToPwr.RaiseClick(); }, kAny},
      {"band choice", [](auto& r) { r.f.cmbRfBand.AddItem("C"), r.f.cmbRfBand.AddItem("Ku"); },
       [](auto& r) { r.f.cmbRfBand.SetListIndex(1); },
       [](auto& r) { return r.f.cmbRfBand.ListIndex() == 1; }},
      {"trip level Enter", [](auto& r) { r.f.txtFhiLvl.SetText("45.0"); },
       [](auto& r) { r.Key(r.f.txtFhiLvl, kEnter); },
       [](auto& r) { return r.f.txtFhiLvl.Text() == "45.0" && !r.v.mEnterHandled; }},
      {"trip type", [](auto& r) { r.f.txtFhiLvl.SetText("45.0"); },
       [](auto& r) { r.f.cmbFhiTripType.SetListIndex(2); },
       [](auto& r) { return r.f.cmbFhiTripType.ListIndex() == 2; }},
      {"waveguide configuration", kNone, [](auto& r) { r.f.cmbWgCfg.SetListIndex(3); },
       [](auto& r) { return r.f.cmbWgCfg.ListIndex() == 3; }},
      {"waveguide switch", kNone, [](auto& r) { r.f.cmbWgSw2.SetListIndex(1); },
       [](auto& r) { return r.f.cmbWgSw2.ListIndex() == 1; }},
      {"waveguide automatic box", kNone, [](auto& r) { r.f.chkAutoMode.SetValue(1); },
       [](auto& r) { return r.f.chkAutoMode.Value() == 0; }},
      {"address", [](auto& r) { r.f.txtAdr.SetText("D"); }, [](auto& r) { r.id.SetUnitAddress(); },
       [](auto& r) { return r.s.comms.Link.DeviceAddress() == "A"; }},
      {"clock Now", [](auto& r) { r.f.txtDateTime.SetText("2020/01/01,00:00"); },
       [](auto& r) { r.f.Command7.Click(); },
       [](auto& r) { return r.f.txtDateTime.Text() == "2020/01/01,00:00"; }},
      {"clock set", [](auto& r) { r.f.txtDateTime.SetText("2020/01/01,00:00"); },
       [](auto& r) { r.id.SetDateTime(); }, kAny},
      {"hours key", [](auto& r) { r.f.txtPSHours.SetText("5"); },
       [](auto& r) { r.Key(r.f.txtPSHours, kEnter); }, kAny},
      {"clear hours", [](auto& r) { r.f.txtPSHours.SetText("5"); },
       [](auto& r) { r.f.mnuClrHrs.Click(); },
       [](auto& r) { return r.f.txtPSHours.Text() == "5"; }},
      {"name entry", kNone, [](auto& r) { r.f.mnuOemName.Click(); }, kAny},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.control);
    AllControlsRig r;
    row.prepare(r);
    r.s.sent.clear();
    row.operate(r);
    EXPECT_TRUE(r.s.sent.empty());
    ASSERT_EQ(r.s.dialogs.boxes.size(), 1u);  // a put-back is no second click
    EXPECT_EQ(r.s.dialogs.boxes[0].title, "Communication Error");
    EXPECT_EQ(r.s.dialogs.boxes[0].text, "Not in Remote Mode");
    EXPECT_EQ(r.s.dialogs.boxes[0].icon, MsgIcon::Exclamation);
    EXPECT_TRUE(row.after(r));
    EXPECT_FALSE(r.st.gInPanelUpdate);
  }
}

}  // namespace
}  // namespace amp::test
