// The RF band group of the main panel and the unit's sub-bands: the band
// combo (cmbRfBand), the sub-band menu (mnuSubBands, mnuSubB1..mnuSubB8),
// the sub-band label with its picking dialog (lblSBandFrq, frmSetSubBand)
// and the free RF frequency (lblRFFrqVal). What the first read builds (the
// band list, the menu, the limits) is PanelSetup's; this is the operator's
// side and the poll's follow-up of the current sub-band.
#pragma once

#include <cstdint>

#include "control/panel_context.h"
#include "display/frm_set_sub_band.h"

namespace amp {

class BandControls {
 public:
  explicit BandControls(PanelContext& ctx);
  BandControls(const BandControls&) = delete;
  BandControls& operator=(const BandControls&) = delete;

  // The sub-band dialog. The application registers it with its forms.
  ui::FrmSetSubBand frmSetSubBand;

  // Installs the handlers below on the controls' hooks, the dialog's
  // included.
  void Wire();

  // Sends "T" and the chosen band's name. The band's power limits are not
  // read again here.
  void cmbRfBand_Click();
  // Reads the band list and the current band again, with the poll paused.
  void mnuRfBandCfg_Click();

  // The slow poll: follows a sub-band changed at the unit (or by
  // SetCurrentSubBand) and reloads what depends on it. Nothing happens while
  // the unit has no sub-band menu, or when the unit does not answer.
  void UpdateCurrentSubBand();
  // Selects sub-band `n` (1 to 8; any other value sends the bare "PBS").
  // Only sub-bands 5 to 8 update lblSBandFrq at once; for 1 to 4 the label
  // catches up at the next UpdateCurrentSubBand.
  void SetCurrentSubBand(int n);
  // The settings that follow the sub-band: gain balance, attenuation, the
  // downlink attenuator, the temperature coefficient (project 129) and the
  // supply set value.
  void LoadSubBandParameters();

  // mnuSubB1..mnuSubB8. No remote guard: like the dialog, the menu selects
  // a sub-band whatever the mode. (mnuSubBands itself only opens its list.)
  void mnuSubB_Click(int n);

  // Opens frmSetSubBand with the poll stopped while it is shown.
  void lblSBandFrq_DblClick();
  void frmSetSubBand_Load();
  void frmSetSubBand_optSelectedSB_Click(int index);

  // Asks for a new RF frequency in MHz and sends it.
  void lblRFFrqVal_DblClick();

 private:
  PanelContext& p_;
  // Set while the dialog writes its own buttons, so that selecting the
  // current sub-band on load is not taken as the operator's choice.
  bool loadingSubBands_ = false;
};

}  // namespace amp
