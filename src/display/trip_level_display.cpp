// RF trip lines, factory trips, reverse offset, maximum power limit and the
// unit's analog count commands.
#include <array>
#include <initializer_list>
#include <string>

#include "basic/numbers.h"
#include "basic/one_of.h"
#include "basic/text.h"
#include "commands/rf_power_cmds.h"
#include "display/panel_setup.h"

namespace amp {

namespace {

// Combo index of a trip type letter: "F" fault, "A" alarm, anything else
// disabled (the order of the combo's items).
int TripTypeIndex(const std::string& field) {
  const std::string letter = Left(field, 1);
  if (letter == "F") return 1;
  if (letter == "A") return 2;
  return 0;
}

}  // namespace

void PanelSetup::InitRFTripLevels() {
  if (!ReadRFTripLevels(c_)) return;
  const std::array<std::string, 3> fields = {c_.gRespFields[0], c_.gRespFields[1],
                                             c_.gRespFields[2]};
  struct Line {
    bool hasFocus;
    ui::ComboBox& type;
    ui::TextBox& level;
  };
  const Line lines[3] = {{v_.mFhiHasFocus, f_.cmbFhiTripType, f_.txtFhiLvl},
                         {v_.mFloHasFocus, f_.cmbFloTripType, f_.txtFloLvl},
                         {v_.mRhiHasFocus, f_.cmbRhiTripType, f_.txtRhiLvl}};

  // Writing the combos raises their Click; the flag keeps that from
  // sending the level straight back.
  const bool saved = s_.gInPanelUpdate;
  s_.gInPanelUpdate = true;
  for (int i = 0; i < 3; ++i) {
    const Line& line = lines[i];
    if (line.hasFocus) continue;
    const int index = TripTypeIndex(fields[i]);
    if (line.type.ListIndex() != index) line.type.SetListIndex(index);
    float level = static_cast<float>(Val(Mid(fields[i], 2)));
    if (level < v_.gFwdMindBm) level = v_.gFwdMindBm;
    line.level.SetText(s_.gDisplayWatts ? Format(WattsFromdBm(level), "###0.0")
                                        : Format(level, "#0.0"));
  }
  s_.gInPanelUpdate = saved;
}

bool PanelSetup::CanUsedBmTripLevels() const {
  const int32_t p = u_.gProjectID;
  const int fw = u_.gFWVersion;
  if (p < 0) return false;
  if (OneOf(p, {99, 500, 510})) return true;
  if (u_.gIsTWTA) return fw > 533;
  if (OneOf(p, {30, 50, 93})) return fw > 7;
  if (OneOf(p, {102, 107})) return true;
  return fw > 260;
}

void PanelSetup::InitFactoryTripLevels() {
  v_.gFactoryFwdTrip = "0.0";
  v_.gFactoryRevTrip = "0.0";
  v_.gFactoryTripMargin = "0";
  if (ReadFactoryTripLevels(c_) != 0) return;
  if (!c_.gRespFields[0].empty()) v_.gFactoryFwdTrip = c_.gRespFields[0];
  if (!c_.gRespFields[1].empty()) v_.gFactoryRevTrip = c_.gRespFields[1];
  // The margin has no query of its own. The third scratch field holds only
  // what an unrelated earlier read left there, and a saved file would replay
  // that as the unit's margin: it stays at its default, which is not saved.
}

void PanelSetup::InitReverseRFOffset() {
  const std::string offset = ReadRevRFOffset(c_);
  v_.gRevRFOffset = IsNumeric(offset) ? static_cast<float>(Val(offset)) : -100.0f;
}

void PanelSetup::InitPowerLimit() {
  v_.gMaxPowerFault = "-1";
  const PowerLimitRecord limit = ReadPowerLimit(c_);
  if (!limit.ok) {
    f_.mnuMaxPwrLvl.SetVisible(false);
    return;
  }
  f_.mnuMaxPwrLvl.SetVisible(true);
  f_.mnuMaxPwrLvl.SetEnabled(true);
  v_.gMaxPowerOn = limit.state == "1";
  v_.gMaxPowerLevel = limit.limit;
  v_.gMaxPowerLevel2 = limit.limit2;
  const PowerLimitRecord fault = ReadPowerLimitFaultLevel(c_);
  if (fault.ok) v_.gMaxPowerFault = fault.state;
}

void PanelSetup::SetFwdRFCountCommand() {
  const ui::ComboBox& band = f_.cmbRfBand;
  const std::string bandName = band.ListIndex() >= 0 ? band.List(band.ListIndex()) : "";
  v_.gFwdRFCountCommand = ForwardAnalogCountCommand(u_.gProjectID, bandName);
}

void PanelSetup::SetRevRFCountCommand() {
  v_.gRevRFCountCommand = ReverseAnalogCountCommand(u_.gProjectID, u_.gFWVersion, u_.gIsTWTA);
}

}  // namespace amp
