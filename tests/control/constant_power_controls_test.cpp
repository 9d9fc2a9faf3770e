// Constant power and go-to-power: the range rule in dBm and in Watts with its
// exact box texts, what is sent on a unit that takes dBm and on one that
// takes Watts, the box that drops back without reaching the unit, and the
// states in which the go-to button keeps quiet.
#include <gtest/gtest.h>

#include "panel_rig.h"

namespace amp::test {
namespace {

// Transmitter up and unfaulted, as the summary status shows it, on a unit of
// 0.1 to 50 dBm.
struct CpRig : PowerControlsRig {
  CpRig() {
    v.gFwdMindBm = 0.1f;
    v.gFwdMaxdBm = 50.0f;
    s.Answer("H", "");
    f.Label31.SetCaption("Tx On");
    f.Label31.SetVisible(true);
    f.Label35.SetVisible(false);
    f.Label36.SetVisible(false);
  }
  // The constant power box checked by the program, and the level the unit
  // reads back.
  void Held(const char* readBack) {
    SetHeld(f.chkConstPwr, 1);
    s.Answer("G?", readBack);
  }
  bool LastBoxSays(const std::string& range) const {
    return s.dialogs.boxes.back().text == "Value out of Range\r\n\r\nValid Range: " + range &&
           s.dialogs.boxes.back().icon == MsgIcon::Exclamation;
  }
};
using R = CpRig;
const std::vector<std::string> kNone;
const std::vector<std::string> kRange = {"Range Error"};

TEST(ConstantPower, LevelsReachTheUnitInItsOwnUnitWithinTheRange) {
  RunRows<R>({
      // The dBm floor, one dB above the minimum, runs end to end.
      // The box names 1.1 dBm, yet in Watts the floor is about 1.001 W.
      {"Watt unit, 30.0 dBm", [](R& r) { r.Held("G30.1"); }, [](R& r) { r.cp.SetConstPwr(30.0f); },
       kNone, kRange, [](R& r) { return r.LastBoxSays("1.1 to 50.0 dBm"); }},
      {"Watt unit, 30.1 dBm",
       [](R& r) { r.Held("G30.1"); },
       [](R& r) { r.cp.SetConstPwr(30.1f); },
       {"G1.0", "G?"},
       kNone,
       [](R& r) { return r.f.txtConstLvl.Text() == "30.1"; }},
      // Watts shown: the Watt range, and the plain "G" form even on a dBm unit.
      {"Watts shown, 1.0 W",
       [](R& r) { r.st.gDisplayWatts = r.v.gUsedBmTripLevels = true, r.Held("G40.0"); },
       [](R& r) { r.cp.SetConstPwr(1.0f); }, kNone, kRange,
       [](R& r) { return r.LastBoxSays("1.0 to 100.0 Watts"); }},
      {"Watts shown, 100.5 W",
       [](R& r) { r.st.gDisplayWatts = r.v.gUsedBmTripLevels = true, r.Held("G40.0"); },
       [](R& r) { r.cp.SetConstPwr(100.5f); }, kNone, kRange, nullptr},
      {"Watts shown, 10 W",
       [](R& r) { r.st.gDisplayWatts = r.v.gUsedBmTripLevels = true, r.Held("G40.0"); },
       [](R& r) { r.cp.SetConstPwr(10.0f); },
       {"G10.0", "G?"},
       kNone,
       [](R& r) { return r.f.txtConstLvl.Text() == "10.0"; }},  // 40 dBm read back in Watts
      {"Enter with the box off checks the range only", [](R& r) { r.v.gUsedBmTripLevels = true; },
       [](R& r) { r.TypeEnter(r.f.txtConstLvl, "60"), r.TypeEnter(r.f.txtConstLvl, "40"); }, kNone,
       kRange, [](R& r) { return r.f.txtConstLvl.Text() == "40"; }},
  });
}

TEST(ConstantPower, TheBoxAndLeavingTheField) {
  const auto dBm = [](R& r) { r.v.gUsedBmTripLevels = true; };
  RunRows<R>(
      {
          {"unchecking",
           [](R& r) { r.SetHeld(r.f.chkConstPwr, 1); },
           [](R& r) { r.f.chkConstPwr.SetValue(0); },
           {"H"},
           kNone,
           nullptr},
          {"below the detector range the level field counts",
           [](R& r) { r.s.Answer("G?", "G20.0"), r.f.txtFdBm.SetText("< 10.0"); },
           [](R& r) { r.f.txtConstLvl.SetText("20.0"), r.f.chkConstPwr.SetValue(1); },
           {"GM20.0", "G?"},
           kNone,
           nullptr},
          // An empty level is 0: the box drops back without a word.
          {"empty level", [](R& r) { r.f.txtFdBm.SetText("< 10.0"); },
           [](R& r) { r.f.txtConstLvl.SetText(""), r.f.chkConstPwr.SetValue(1); }, kNone, kNone,
           [](R& r) { return r.f.chkConstPwr.Value() == 0; }},
          {"leaving with the box off", [](R& r) { r.f.txtConstLvl.SetText("33.0"); },
           [](R& r) { r.Leave(r.f.txtConstLvl); }, kNone, kNone, nullptr},
          {"leaving while held",
           [](R& r) { r.f.txtConstLvl.SetText("33.0"), r.Held("G33.0"); },
           [](R& r) { r.Leave(r.f.txtConstLvl); },
           {"GM33.0", "G?"},
           kNone,
           nullptr},
          {"leaving after an Enter was handled",
           [](R& r) {
             r.TypeEnter(r.f.txtAtnDB, "3");
             r.f.txtConstLvl.SetText("33.0"), r.Held("G33.0");
           },
           [](R& r) { r.Leave(r.f.txtConstLvl); }, kNone, kNone, nullptr},
      },
      dBm);
}

TEST(ConstantPower, GoToPower) {
  const auto dBmAt40 = [](R& r) { r.v.gUsedBmTripLevels = true, r.f.txtConstLvl.SetText("40"); };
  RunRows<R>({
      // Out of range: both boxes, the second in dBm even with Watts shown.
      {"500 W",
       [](R& r) { r.st.gDisplayWatts = true, r.f.txtConstLvl.SetText("500"); },
       [](R& r) { r.f.btnGoToPwr.RaiseClick(); },
       kNone,
       {"Range Error", "Range Error - GoTo Power"},
       [](R& r) { return r.LastBoxSays("1.1 to 50.0 dBm"); }},
      {"a level of 0 skips the first box",
       [](R& r) { r.f.txtConstLvl.SetText(""); },
       [](R& r) { r.f.btnGoToPwr.RaiseClick(); },
       kNone,
       {"Range Error - GoTo Power"},
       nullptr},
      // The form follows the unit alone; a dBm unit with Watts shown still
      // gets "EM", carrying the Watt value.
      {"Watt unit",
       [](R& r) { r.f.txtConstLvl.SetText("40"); },
       [](R& r) { r.f.btnGoToPwr.RaiseClick(); },
       {"E10.0"},
       kNone,
       nullptr},
      {"dBm unit", dBmAt40, [](R& r) { r.f.btnGoToPwr.RaiseClick(); }, {"EM40.0"}, kNone, nullptr},
      {"dBm unit, Watts shown",
       [](R& r) {
         r.v.gUsedBmTripLevels = r.st.gDisplayWatts = true, r.f.txtConstLvl.SetText("25");
       },
       [](R& r) { r.f.btnGoToPwr.RaiseClick(); },
       {"EM25.0"},
       kNone,
       nullptr},
      // Quiet unless the transmitter is up and unfaulted.
      {"not transmitting", dBmAt40,
       [](R& r) {
         for (const char* state : {"Standby", "FTD", "Warmup"}) {
           r.f.Label31.SetCaption(state);
           r.f.btnGoToPwr.RaiseClick();
         }
         r.f.Label31.SetCaption("HV On");
         r.f.Label31.SetVisible(false);
         r.f.btnGoToPwr.RaiseClick();
       },
       kNone, kNone, nullptr},
      {"RF inhibited", dBmAt40,
       [](R& r) { r.f.Label35.SetVisible(true), r.f.btnGoToPwr.RaiseClick(); }, kNone, kNone,
       nullptr},
      {"summary fault", dBmAt40,
       [](R& r) { r.f.Label36.SetVisible(true), r.f.btnGoToPwr.RaiseClick(); }, kNone, kNone,
       nullptr},
      {"the panel's own update", dBmAt40,
       [](R& r) {
         r.st.gInPanelUpdate = true;
         r.f.btnGoToPwr.RaiseClick();
         r.st.gInPanelUpdate = false;
       },
       kNone, kNone, nullptr},
  });
}

}  // namespace
}  // namespace amp::test
