#include "display/frm_about.h"

namespace amp::ui {

FrmAbout::FrmAbout() : Form("frmAbout") {
  SetCaption("About AmpDesk");
  cmdOK.SetCaption("OK");
  cmdSysInfo.SetCaption("&System Info...");
}

}  // namespace amp::ui
