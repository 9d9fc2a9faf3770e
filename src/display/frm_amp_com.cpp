#include "display/frm_amp_com.h"

namespace amp::ui {

FrmAmpCom::FrmAmpCom() : Form("frmAmpCom") {
  SetCaption("Serial Communication");
  fra232.SetCaption("232 Port");
  fra485.SetCaption("485 Port");
  for (ComboBox* c : {&cmb232Baud, &cmb485Baud})
    for (const char* b : kBauds) c->AddItem(b);
  for (ComboBox* c : {&cmb232Parity, &cmb485Parity})
    for (const char* p : kParities) c->AddItem(p);
  for (ComboBox* c : {&cmb232Data, &cmb485Data}) {
    c->AddItem("7");
    c->AddItem("8");
  }
  for (ComboBox* c : {&cmb232Stop, &cmb485Stop}) {
    c->AddItem("1");
    c->AddItem("2");
  }
  cmb485Wire.AddItem("2 Wire");
  cmb485Wire.AddItem("4 Wire");
  cmb485Term.AddItem("Terminated");
  cmb485Term.AddItem("Unterminated");
  btnSet232.SetCaption("Set");
  btnSet485.SetCaption("Set");
  Command1.SetCaption("Close");
}

}  // namespace amp::ui
