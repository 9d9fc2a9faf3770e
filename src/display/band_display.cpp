// RF bands, their power limits, sub-bands and gain balance on the panel.
#include <array>
#include <string>

#include "basic/numbers.h"
#include "basic/one_of.h"
#include "basic/text.h"
#include "commands/reader_support.h"
#include "commands/rf_band_cmds.h"
#include "commands/rf_power_cmds.h"
#include "display/panel_setup.h"

namespace amp {

namespace {

constexpr float kDefaultFwdMaxdBm = 50.0f;
constexpr float kDefaultFwdMindBm = 0.1f;
constexpr int kSubBands = 8;

std::string SubBandCaption(int n, const std::string& frequency) {
  return "#" + std::to_string(n) + "   " + frequency + " GHz";
}

}  // namespace

void PanelSetup::SetupFrame27() {
  const bool tube = u_.gIsTWTA || u_.gIsKPA;
  f_.Frame27.SetVisible(tube || !OneOf(u_.gProjectID, {30, 50, 93, 102}));
}

void PanelSetup::InitcmbRfBand() {
  f_.cmbRfBand.Clear();
  for (int n = 1; n <= 4; ++n) {
    const std::string name = ReadBandInfo(c_, n);
    if (name == kBandNotSupported) {
      // A unit without the band command has none of the four.
      v_.gRfBandSupported = false;
      return;
    }
    v_.gRfBandSupported = true;
    if (name.empty()) {
      v_.gBandNames[n].clear();
      v_.gBandFrequencies[n].clear();
      continue;
    }
    const std::string frequency = c_.gRespFields[0];
    f_.cmbRfBand.AddItem(name);
    v_.gBandNames[n] = name;
    v_.gBandFrequencies[n] = frequency.empty() ? std::string() : Format(Val(frequency), "#0.00");
  }
}

void PanelSetup::InitRFBand() {
  if (v_.gRfBandSupported) f_.cmbRfBand.SetEnabled(v_.gRfBandSelectable);
  std::string current;
  Guarded([&] { current = ReadCurrentBand(c_); });
  if (current.empty()) return;
  // From the last entry down: a name listed twice selects the later one.
  for (int i = f_.cmbRfBand.ListCount() - 1; i >= 0; --i) {
    if (f_.cmbRfBand.List(i) == current) {
      f_.cmbRfBand.SetListIndex(i);
      v_.gCurrentRFBand = current;
      return;
    }
  }
}

void PanelSetup::InitBandParameters(int band) {
  if (band < 1 || band > 4) band = 1;
  v_.gCurrentRFBand = band - 1 < f_.cmbRfBand.ListCount() ? f_.cmbRfBand.List(band - 1) : "";

  const std::string high = ReadBandMaxPower(c_, u_.gFWVersion, u_.gProjectID, band);
  v_.gFwdMaxdBm = high.empty() ? kDefaultFwdMaxdBm : static_cast<float>(Val(high));
  const std::string low = ReadBandMinPower(c_, u_.gFWVersion, u_.gProjectID, band);
  v_.gFwdMindBm = low.empty() ? kDefaultFwdMindBm : static_cast<float>(Val(low));
  // The readouts clamp to the same range.
  s_.gFwdRFMax = v_.gFwdMaxdBm;
  s_.gPowerFloor = v_.gFwdMindBm;

  UpdateGainBalance();
}

void PanelSetup::UpdateGainBalance() {
  const int16_t state = ReadGainBalance(c_);
  v_.gGainBalanceState = state;
  v_.gGainBalanceOn = state > 0;
  if (state >= 0) v_.gGainBalance = c_.gRespFields[0];
  f_.mnuGainBal.SetVisible(state >= 0);
  f_.mnuGainBal.SetEnabled(state >= 0);
}

void PanelSetup::ClearSubBands(bool HideItems) {
  for (int n = 1; n <= kSubBands; ++n) f_.mnuSubB(n).SetChecked(false);
  if (!HideItems) return;
  // The entries are hidden with their menu shown, as the menu would
  // otherwise not take the change; its own visibility is put back after.
  const bool menuVisible = f_.mnuSubBands.Visible();
  f_.mnuSubBands.SetVisible(true);
  for (int n = 2; n <= kSubBands; ++n) f_.mnuSubB(n).SetVisible(false);
  f_.mnuSubBands.SetVisible(menuVisible);
}

void PanelSetup::UpdateSubBands() {
  for (int n = 1; n <= kSubBands; ++n) v_.gSubBandFreqs[n].clear();
  v_.gSubBandCount = 0;
  v_.gCurrentSubBand = 0;
  ClearSubBands(true);

  auto noCurrentSubBand = [&] {
    v_.gCurrentSubBand = 0;
    f_.mnuSubBands.SetVisible(false);
    f_.lblSBandFrq.SetVisible(false);
    f_.lblSband.SetVisible(false);
  };

  if (!ReadSubBandTable(c_)) {
    noCurrentSubBand();
    return;
  }
  f_.mnuSubBands.SetVisible(true);
  const std::array<std::string, 11> table = c_.gRespFields;
  for (int i = 1; i <= kSubBands; ++i) {
    const std::string& entry = table[i - 1];
    // A hole ends the list: a later good entry is not counted.
    const bool taken = !entry.empty() && Val(entry) > 0 && v_.gSubBandCount == i - 1;
    if (taken) {
      v_.gSubBandFreqs[i] = entry;
      ++v_.gSubBandCount;
      f_.mnuSubB(i).SetCaption(SubBandCaption(i, entry));
    }
    f_.mnuSubB(i).SetVisible(taken);
  }

  const int16_t current = ReadCurrentSubBand(c_);
  if (Val(c_.gRespFields[0]) == 0 || current < 1 || current > kSubBands) {
    noCurrentSubBand();
    return;
  }
  v_.gCurrentSubBand = current;
  f_.mnuSubBands.SetVisible(true);
  f_.lblSBandFrq.SetVisible(true);
  f_.lblSband.SetVisible(true);
  f_.mnuSubB(current).SetChecked(true);
  f_.lblSBandFrq.SetCaption(f_.mnuSubB(current).Caption());
}

}  // namespace amp
