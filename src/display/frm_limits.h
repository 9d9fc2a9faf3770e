// The small configuration dialogs of the Configuration menu: the maximum RF
// power, the temperature trip levels, power save, gain balance and the
// start-up mode. Their logic lives with the limit dialog controls.
#pragma once

#include "display/form.h"

namespace amp::ui {

struct FrmPwrLimit : Form {
  FrmPwrLimit();
  Label Label3{this, "Label3"};
  TextBox Text1{this, "Text1"};
  Label Label1{this, "Label1"};  // the unit of Text1: "dBm" or "Watts"
  Label Label4{this, "Label4"};
  TextBox Text2{this, "Text2"};
  Label Label2{this, "Label2"};
  CheckBox Check1{this, "Check1"};
  CommandButton cmdOK{this, "cmdOK"};
  CommandButton cmdCancel{this, "cmdCancel"};
};

struct FrmTempLimits : Form {
  FrmTempLimits();
  Label Label1{this, "Label1"};
  TextBox txtFltTripLvl{this, "txtFltTripLvl"};
  Label Label2{this, "Label2"};
  TextBox txtAlrmTripLvl{this, "txtAlrmTripLvl"};
  CheckBox chkLatchFlts{this, "chkLatchFlts"};
  CommandButton btnOK{this, "btnOK"};
  CommandButton btnCancel{this, "btnCancel"};
};

struct FrmPowerSave : Form {
  FrmPowerSave();
  // The delay levels in list order: the list index is the number sent.
  static constexpr const char* kLevels[] = {"0 (Min)", "1", "2", "3", "4", "5", "6", "7 (Max)"};
  CheckBox chkPowerMode{this, "chkPowerMode"};
  Label Label1{this, "Label1"};
  ComboBox cmbPowerLevel{this, "cmbPowerLevel"};
  CommandButton cmdOK{this, "cmdOK"};
  CommandButton cmdCancel{this, "cmdCancel"};
};

struct FrmGainBal : Form {
  FrmGainBal();
  Label Label2{this, "Label2"};
  TextBox Text1{this, "Text1"};
  Label Label1{this, "Label1"};
  CheckBox Check1{this, "Check1"};
  CommandButton cmdOK{this, "cmdOK"};
  CommandButton cmdCancel{this, "cmdCancel"};
};

struct FrmStartup : Form {
  FrmStartup();
  Frame Frame1{this, "Frame1"};
  OptionButton optNorm{this, "optNorm"};
  OptionButton optOff{this, "optOff"};
  OptionButton optOn{this, "optOn"};
  CommandButton Command1{this, "Command1"};
};

}  // namespace amp::ui
