// The command console: any command text of the unit, typed or taken from
// the history, and the raw replies, newest at the top. Its logic lives with
// the command console controls.
#pragma once

#include "display/form.h"

namespace amp::ui {

struct FrmCmdLine : Form {
  FrmCmdLine();
  Label Label1{this, "Label1"};
  ComboBox cmbCmd{this, "cmbCmd"};
  ListBox List1{this, "List1"};
  CommandButton btnClose{this, "btnClose"};
};

}  // namespace amp::ui
