#include "display/frm_com.h"

namespace amp::ui {

FrmCom::FrmCom() : Form("frmCom") {
  SetCaption("Com Port Settings");
  lblBaud.SetCaption("Baud Rate");
  for (const char* baud : kBauds) cbBaud.AddItem(baud);
  fraParity.SetCaption("Parity");
  fraDataBits.SetCaption("Data Bits");
  fraStopBits.SetCaption("Stop Bits");
  const char* parityNames[] = {"None", "Even", "Odd"};
  for (int i = 0; i < optParity.size(); ++i) {
    optParity[i].SetCaption(parityNames[i]);
    optParity[i].SetGroup("Parity");
  }
  for (int i = 0; i < optDataBits.size(); ++i) {
    optDataBits[i].SetCaption(std::string(1, kDataBits[i]));
    optDataBits[i].SetGroup("DataBits");
  }
  for (int i = 0; i < optStopBits.size(); ++i) {
    optStopBits[i].SetCaption(std::string(1, kStopBits[i]));
    optStopBits[i].SetGroup("StopBits");
  }
  cmdOK.SetCaption("OK");
  cmdCancel.SetCaption("Cancel");
}

}  // namespace amp::ui
