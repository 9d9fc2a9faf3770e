// Frames that only some units show: the tube's cathode monitor and life
// estimate, the helix frame of a dual-tube unit, the solid-state supply frame
// and the constant power group.
#include <algorithm>
#include <initializer_list>

#include "basic/one_of.h"
#include "commands/transmitter_cmds.h"
#include "display/panel_setup.h"

namespace amp {

namespace {

// Cathode monitor modes in which the panel shows cathode current and anode
// voltage: 1 and 5 monitor and trip, 2 and 6 monitor only.
bool CathodeMonitored(int16_t mode) { return OneOf(mode, {1, 5, 2, 6}); }

constexpr int16_t kMaxCathodeScalar = 4095;

}  // namespace

void PanelSetup::InitCathodeCurrentDisplay() {
  v_.gNegAnodeEnabled = ReadNegativeAnodeEnable(c_);
  if (v_.gNegAnodeEnabled) v_.gNegAnodeStart = ReadNegativeAnodeStart(c_);
  v_.gAnodeVoltage = ReadAnodeVoltage(c_);
  v_.gAnodeScale = ReadAnodeScale(c_);
  v_.gCathodeMode = ReadCathodeMode(c_);
  v_.gCathodeSense = ReadCathodeSense(c_);

  s_.gCathodeDisplay = CathodeMonitored(v_.gCathodeMode);
  if (s_.gCathodeDisplay) {
    v_.gCathodeScalar = std::clamp<int16_t>(ReadCathodeScalar(c_), 0, kMaxCathodeScalar);
    v_.gIdealCathodeCurrent = ReadIdealCathodeCurrent(c_);
  }
  f_.txtCathI.SetVisible(s_.gCathodeDisplay);
  f_.txtAnodeV.SetVisible(s_.gCathodeDisplay);
}

void PanelSetup::InitTWTEOLParameters() {
  v_.gHasTwtEol = ReadTwtEolParams(c_);
  if (v_.gHasTwtEol) {
    for (size_t i = 0; i < v_.gTwtEolParams.size(); ++i) v_.gTwtEolParams[i] = c_.gRespFields[i];
    v_.gTwtEolEstimate = TwtEolEstimateText(ReadTwtEolEstimate(c_));
    f_.lblTWTLife.SetCaption(v_.gTwtEolEstimate);
  }
  f_.lblTWTLife.SetVisible(v_.gHasTwtEol);
  f_.lblTWTSrvc.SetVisible(v_.gHasTwtEol);
}

void PanelSetup::SetupFrame14() {
  // The supply frame holds the four current sense fields, the second of
  // which shows the DC input on units that report it. It runs before the
  // processor option is known, so the DC input units go by project here.
  const int32_t p = u_.gProjectID;
  const bool currentSense = !u_.gIsTWTA && !OneOf(p, {102, 107, 30, 50, 93}) && u_.gFWVersion < 200;
  const bool dcInput = p != 102 && ((p == 20 && u_.gFWVersion > 256) || OneOf(p, {30, 45, 50, 93}));
  f_.Frame14.SetVisible(currentSense || dcInput);
}

void PanelSetup::SetupFrame20() { f_.Frame20.SetVisible(u_.gProjectID != 102); }

void PanelSetup::SetupHelixHeaterForNewDualTWT(int tubes) {
  // A dual-tube unit shows the second tube's helix voltage and current in
  // the heater fields.
  f_.Frame30.SetCaption(tubes == 0 ? "TWT" : "TWT 1 / TWT 2");
  for (ui::TextBox* t : {&f_.txtHelixV, &f_.txtHelixI, &f_.txtHeaterV, &f_.txtHelix2I})
    t->SetVisible(true);
}

}  // namespace amp
