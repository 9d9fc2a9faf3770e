#include "control/band_controls.h"

#include <algorithm>
#include <optional>
#include <string>

#include "basic/numbers.h"
#include "commands/identity_cmds.h"
#include "commands/rf_band_cmds.h"
#include "commands/upconverter_cmds.h"
#include "control/panel_rules.h"

namespace amp {

namespace {

constexpr int kSubBands = 8;
// This unit keeps a temperature coefficient per sub-band and reports the
// current one: it is read again on every change.
constexpr int32_t kPerSubBandCoefficientProject = 129;
// The unit whose hour meters and trip levels follow the sub-band.
constexpr int32_t kPerSubBandTripsProject = 139;

std::string SelectedItem(const ui::ComboBox& box) {
  const int i = box.ListIndex();
  return i >= 0 && i < box.ListCount() ? box.List(i) : std::string();
}

}  // namespace

BandControls::BandControls(PanelContext& ctx) : p_(ctx) {}

void BandControls::Wire() {
  ui::FrmMain& f = p_.frm;
  f.cmbRfBand.Click = [this] { cmbRfBand_Click(); };
  f.mnuRfBandCfg.Click = [this] { mnuRfBandCfg_Click(); };
  for (int n = 1; n <= kSubBands; ++n) f.mnuSubB(n).Click = [this, n] { mnuSubB_Click(n); };
  f.lblSBandFrq.DblClick = [this] { lblSBandFrq_DblClick(); };
  f.lblRFFrqVal.DblClick = [this] { lblRFFrqVal_DblClick(); };

  frmSetSubBand.Load = [this] { frmSetSubBand_Load(); };
  // Closing the window picks nothing.
  frmSetSubBand.QueryUnload = [this] { frmSetSubBand.Unload(); };
  for (int i = 0; i < frmSetSubBand.optSelectedSB.size(); ++i)
    frmSetSubBand.optSelectedSB[i].Click = [this, i] { frmSetSubBand_optSelectedSB_Click(i); };
}

// ------------------------------------------------------------------ bands

void BandControls::cmbRfBand_Click() {
  if (p_.panel.gInPanelUpdate) return;
  // Outside remote mode the combo keeps the operator's choice until the next
  // InitRFBand shows the unit's band again.
  if (!RemoteGuard(p_)) return;
  const std::string name = SelectedItem(p_.frm.cmbRfBand);
  if (name.empty()) return;
  p_.comms.ExchangeCommand(CmdCurrentBand(name), false);
}

void BandControls::mnuRfBandCfg_Click() {
  PollPause pause(p_);
  // Rebuilding the list moves its selection, which must not send "T".
  p_.panel.gInPanelUpdate = true;
  p_.setup.InitcmbRfBand();
  p_.setup.InitRFBand();
  p_.panel.gInPanelUpdate = false;
}

// -------------------------------------------------------------- sub-bands

void BandControls::UpdateCurrentSubBand() {
  ui::FrmMain& f = p_.frm;
  if (!f.mnuSubBands.Visible()) return;
  const int16_t current = ReadCurrentSubBand(p_.comms);
  // A read that did not get through says nothing about the sub-band; taking
  // it as "none" would clear the mark and reload every setting on a bad line.
  if (current < 0) return;
  if (current == p_.values.gCurrentSubBand) return;
  p_.values.gCurrentSubBand = current;
  p_.setup.ClearSubBands();
  if (current >= 1 && current <= kSubBands) {
    f.mnuSubB(current).SetChecked(true);
    f.lblSBandFrq.SetCaption(f.mnuSubB(current).Caption());
  }
  p_.comms.host().pump.DoEvents();
  LoadSubBandParameters();
  if (p_.unit.gProjectID == kPerSubBandTripsProject) {
    p_.display.UpdateHours();
    p_.setup.InitRFTripLevels();
  }
}

void BandControls::SetCurrentSubBand(int n) {
  ui::FrmMain& f = p_.frm;
  p_.setup.ClearSubBands();
  if (n >= 1 && n <= kSubBands) {
    f.mnuSubB(n).SetChecked(true);
    // Only the upper four update the label here; the lower four wait for the
    // next slow poll, which also reloads the sub-band's settings.
    if (n >= 5) f.lblSBandFrq.SetCaption(f.mnuSubB(n).Caption());
  }
  p_.comms.ExchangeCommand(CmdSelectSubBand(n), false);
  p_.comms.host().pump.DoEvents();
  p_.setup.UpdateGainBalance();
}

void BandControls::LoadSubBandParameters() {
  EventPump& pump = p_.comms.host().pump;
  p_.setup.UpdateGainBalance();
  pump.DoEvents();
  p_.display.UpdateAtn();
  pump.DoEvents();
  p_.setup.InitDLAtten();
  pump.DoEvents();
  if (p_.unit.gProjectID == kPerSubBandCoefficientProject) {
    const std::string coefficient = ReadTempCoefficient(p_.comms);
    if (!coefficient.empty()) p_.values.gTempCoefficient = coefficient;
  }
  const PSVsetRecord psv = ReadPSVset(p_.comms);
  if (psv.status == 0 && psv.value > -1) p_.values.gPSVset = psv.value;
}

void BandControls::mnuSubB_Click(int n) { SetCurrentSubBand(n); }

// ------------------------------------------------------- sub-band dialog

void BandControls::lblSBandFrq_DblClick() {
  PollPause pause(p_);
  p_.dialogs.ShowModal(frmSetSubBand);
}

void BandControls::frmSetSubBand_Load() {
  loadingSubBands_ = true;
  // The dialog is shown again and again; start each time from no buttons.
  for (int i = 0; i < frmSetSubBand.optSelectedSB.size(); ++i) {
    ui::OptionButton& button = frmSetSubBand.optSelectedSB[i];
    button.SetValue(false);
    button.SetVisible(false);
  }
  const int count = std::min<int>(p_.values.gSubBandCount, kSubBands);
  for (int i = 1; i <= count; ++i) {
    ui::OptionButton& button = frmSetSubBand.optSelectedSB[i - 1];
    button.SetCaption("#" + std::to_string(i) + "  " + p_.values.gSubBandFreqs[i] + " GHz");
    button.SetVisible(true);
  }
  const int current = p_.values.gCurrentSubBand;
  if (current >= 1 && current <= kSubBands) frmSetSubBand.optSelectedSB[current - 1].SetValue(true);
  loadingSubBands_ = false;
}

void BandControls::frmSetSubBand_optSelectedSB_Click(int index) {
  if (loadingSubBands_) return;
  SetCurrentSubBand(index + 1);
  frmSetSubBand.Unload();
}

// ------------------------------------------------------------ RF frequency

void BandControls::lblRFFrqVal_DblClick() {
  const std::optional<std::string> answer = p_.dialogs.InputBox(
      "Enter new Frequency in MHz:", "RF Frequency", p_.frm.lblRFFrqVal.Caption());
  if (!answer || answer->empty() || !IsNumeric(*answer)) return;
  const double mhz = Val(*answer);
  p_.values.gRfFrequency = Format(mhz, "####0");
  // The unit alone judges the frequency; its refusal is the box.
  p_.comms.ExchangeCommand(CmdRFFrequency(mhz), true);
  p_.display.UpdateRFFrequency();
}

}  // namespace amp
