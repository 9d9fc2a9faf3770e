// The block upconverter dialog: the IF attenuation, set point and offset of
// a unit with a programmable upconverter, its mode, and the live IF readings
// its own timer takes while the upconverter is in use. Its logic lives with
// the upconverter controls.
#pragma once

#include "display/form.h"

namespace amp::ui {

struct FrmLcBucSetup : Form {
  FrmLcBucSetup();

  // ---- mode
  Frame Frame2{this, "Frame2"};
  OptionButton optLcbFixed{this, "optLcbFixed"};
  OptionButton optlcbVar{this, "optlcbVar"};
  OptionButton optlcbClosed{this, "optlcbClosed"};

  // ---- attenuation: hidden in the fixed mode
  Frame Frame6{this, "Frame6"};
  Label Label1{this, "Label1"};
  TextBox txtlcBucA{this, "txtlcBucA"};
  UpDown UpDown1{this, "UpDown1"};
  CommandButton btnadjAtn{this, "btnadjAtn"};

  // ---- set point and offset; the caption and unit follow the mode
  Frame Frame1{this, "Frame1"};
  Label lblUnits{this, "lblUnits"};
  Label Label2{this, "Label2"};
  TextBox txtlcBucS{this, "txtlcBucS"};
  Label Label3{this, "Label3"};
  TextBox txtlcBucO{this, "txtlcBucO"};

  // ---- live readings
  Frame Frame3{this, "Frame3"};
  Label Label4{this, "Label4"};
  TextBox txtlcBucPwr{this, "txtlcBucPwr"};
  Label Label5{this, "Label5"};
  TextBox txtlcBucIdeal{this, "txtlcBucIdeal"};
  Label Label6{this, "Label6"};
  TextBox txtlcBucTemp{this, "txtlcBucTemp"};

  CheckBox chklcBucEn{this, "chklcBucEn"};
  CommandButton btnOK{this, "btnOK"};
  TimerControl Timer1{this, "Timer1"};
};

}  // namespace amp::ui
