// The dialog that sets one serial port's speed and character format. Its
// logic (load, OK, Cancel) lives with the application, which owns the values
// it edits.
#pragma once

#include "display/form.h"

namespace amp::ui {

struct FrmCom : Form {
  FrmCom();

  // The speeds offered, in list order; index 3 is the usual 9600.
  static constexpr const char* kBauds[] = {"1200",  "2400",  "4800", "9600",
                                           "19200", "38400", "57600"};
  static constexpr int kDefaultBaudIndex = 3;
  // Each option group's settings character, in the order of its buttons; the
  // first of each is the default.
  static constexpr char kParities[] = {'N', 'E', 'O'};
  static constexpr char kDataBits[] = {'8', '7'};
  static constexpr char kStopBits[] = {'1', '2'};

  Label lblBaud{this, "lblBaud"};
  ComboBox cbBaud{this, "cbBaud"};
  Frame fraParity{this, "fraParity"};
  ControlArray<OptionButton, 3> optParity{this, "optParity"};
  Frame fraDataBits{this, "fraDataBits"};
  ControlArray<OptionButton, 2> optDataBits{this, "optDataBits"};
  Frame fraStopBits{this, "fraStopBits"};
  ControlArray<OptionButton, 2> optStopBits{this, "optStopBits"};
  CommandButton cmdOK{this, "cmdOK"};
  CommandButton cmdCancel{this, "cmdCancel"};
};

}  // namespace amp::ui
