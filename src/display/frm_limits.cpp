#include "display/frm_limits.h"

namespace amp::ui {

FrmPwrLimit::FrmPwrLimit() : Form("frmPwrLimit") {
  SetCaption("Max RF Power Level");
  Label3.SetCaption("Max Power Level");
  Label1.SetCaption("dBm");
  Label4.SetCaption("Fault Level");
  Label2.SetCaption("dB");
  Check1.SetCaption("Enable");
  cmdOK.SetCaption("OK");
  cmdCancel.SetCaption("Cancel");
}

FrmTempLimits::FrmTempLimits() : Form("frmTempLimits") {
  SetCaption("Temperature Trip Levels");
  Label1.SetCaption("Fault Trip Level (C)");
  Label2.SetCaption("Alarm Trip Level (C)");
  chkLatchFlts.SetCaption("Latch Temperature Faults");
  btnOK.SetCaption("OK");
  btnCancel.SetCaption("Cancel");
}

FrmPowerSave::FrmPowerSave() : Form("FrmPowerSave") {
  SetCaption("Power Save Mode");
  chkPowerMode.SetCaption("Power Save Enabled");
  Label1.SetCaption("Power Level");
  for (const char* level : kLevels) cmbPowerLevel.AddItem(level);
  cmdOK.SetCaption("OK");
  cmdCancel.SetCaption("Cancel");
}

FrmGainBal::FrmGainBal() : Form("frmGainBal") {
  SetCaption("Gain Balance");
  Label2.SetCaption("Gain Balance");
  Label1.SetCaption("dB");
  Check1.SetCaption("Enable");
  cmdOK.SetCaption("OK");
  cmdCancel.SetCaption("Cancel");
}

FrmStartup::FrmStartup() : Form("frmStartup") {
  SetCaption("Amplifier Startup ");
  Frame1.SetCaption("Transmitter at Power Up");
  optNorm.SetCaption("Normal (last state)");
  optOff.SetCaption("Off");
  optOn.SetCaption("On");
  for (OptionButton* o : {&optNorm, &optOff, &optOn}) o->SetGroup("Startup");
  Command1.SetCaption("Close");
}

}  // namespace amp::ui
