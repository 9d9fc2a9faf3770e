#include "display/frm_cmd_line.h"

namespace amp::ui {

FrmCmdLine::FrmCmdLine() : Form("frmCmdLine") {
  SetCaption("Commandline");
  Label1.SetCaption("Command:");
  btnClose.SetCaption("Close");
}

}  // namespace amp::ui
