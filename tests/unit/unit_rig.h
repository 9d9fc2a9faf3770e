// A main panel over a scripted unit for the first read and panel setup
// tests, with what the unit was sent, and the version reply's layout.
#pragma once

#include <algorithm>
#include <string>

#include "display/frm_main.h"
#include "display/panel_setup.h"
#include "display/panel_state.h"
#include "display/session_values.h"
#include "display/status_display.h"
#include "model/unit_descriptor.h"
#include "support/scripted_unit.h"
#include "unit/first_read.h"

namespace amp::test {

struct UnitBench {
  ScriptedUnit s;
  UnitDescriptor u;
  ui::FrmMain f;
  PanelState ps;
  SessionValues v;
  StatusDisplay d{s.comms, u, f, ps};
  FirstRead first{s.comms, u, f, ps, d, v};
  PanelSetup& setup = first.setup();

  bool Sent(const std::string& command) const { return Position(command) >= 0; }
  long Position(const std::string& command) const {
    auto it = std::find(s.sent.begin(), s.sent.end(), command);
    return it == s.sent.end() ? -1 : static_cast<long>(it - s.sent.begin());
  }
  int Count(const std::string& command) const {
    return static_cast<int>(std::count(s.sent.begin(), s.sent.end(), command));
  }
};

// The "00" body: echo "00", then firmware number, serial, revision and
// compile date separated by "/". The firmware field is counted from the
// echo's second "0", so an 8-character number gives a 9-character field
// whose first character is stepped over (and gets the "426-" prefix).
inline std::string VersionBody(const std::string& fw, const std::string& serial,
                               const std::string& rev, const std::string& date) {
  return "00" + fw + "/" + serial + "/" + rev + "/" + date;
}

}  // namespace amp::test
