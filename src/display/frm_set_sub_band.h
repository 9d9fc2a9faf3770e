// The dialog that picks the unit's current sub-band: one option button per
// sub-band the unit reported, captioned with its number and frequency.
// Choosing a button selects that sub-band and closes the dialog; closing the
// window chooses nothing. Its logic lives with the band controls.
#pragma once

#include "display/form.h"

namespace amp::ui {

struct FrmSetSubBand : Form {
  FrmSetSubBand();

  static constexpr int kSubBands = 8;

  // optSelectedSB(0) is sub-band 1. All hidden until the dialog loads.
  ControlArray<OptionButton, kSubBands> optSelectedSB{this, "optSelectedSB"};
};

}  // namespace amp::ui
