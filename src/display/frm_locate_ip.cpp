#include "display/frm_locate_ip.h"

namespace amp::ui {

FrmLocateIP::FrmLocateIP() : Form("frmLocateIP") {
  SetCaption("Locate IP");
  lblUnits.SetCaption("Units Found:");
  lblPortNum.SetCaption("Port Number:");
  btnSearch.SetCaption("Search");
  btnClose.SetCaption("Close");
}

}  // namespace amp::ui
