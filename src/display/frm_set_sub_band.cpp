#include "display/frm_set_sub_band.h"

namespace amp::ui {

FrmSetSubBand::FrmSetSubBand() : Form("frmSetSubBand") {
  SetCaption("Select Sub-Band");
  for (int i = 0; i < optSelectedSB.size(); ++i) {
    optSelectedSB[i].SetGroup("SubBand");
    optSelectedSB[i].SetVisible(false);
  }
}

}  // namespace amp::ui
