#include "display/frm_lcbuc_setup.h"

namespace amp::ui {

FrmLcBucSetup::FrmLcBucSetup() : Form("frmlcBucSetup") {
  SetCaption("Block UpConverter Setup");
  Frame2.SetCaption("Mode");
  optLcbFixed.SetCaption("Fixed Atten");
  optlcbVar.SetCaption("Variable Atten");
  optlcbClosed.SetCaption("Optimized");
  for (OptionButton* o : {&optLcbFixed, &optlcbVar, &optlcbClosed}) o->SetGroup("Mode");
  Frame6.SetCaption("Attenuation");
  Label1.SetCaption("IF Attenuation");
  UpDown1.SetRange(0, 63);
  btnadjAtn.SetCaption("Adjust Atten");
  Frame1.SetCaption("BUC Attenuation");
  lblUnits.SetCaption("dB");
  Label2.SetCaption("Optimal IF Input Power");
  Label3.SetCaption("IF Input Power Offset");
  Frame3.SetCaption("Readings");
  Label4.SetCaption("IF Input Power");
  Label5.SetCaption("IF Overdrive Level");
  Label6.SetCaption("BUC Temperature");
  chklcBucEn.SetCaption("Use Programmable UpConverter");
  btnOK.SetCaption("OK");
  Timer1.SetInterval(1000);
}

}  // namespace amp::ui
