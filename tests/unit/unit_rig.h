// A main panel over a scripted unit for the first read and panel setup
// tests, with what the unit was sent, and the version reply's layout.
#pragma once

#include <algorithm>
#include <string>

#include "../display/display_rig.h"
#include "display/frm_main.h"
#include "display/panel_setup.h"
#include "display/panel_state.h"
#include "display/session_values.h"
#include "display/status_display.h"
#include "model/unit_descriptor.h"
#include "support/scripted_unit.h"
#include "unit/first_read.h"

namespace amp::test {

struct UnitBench : DisplayRig {
  SessionValues v;
  FirstRead first{s.comms, u, f, st, d, v};
  PanelSetup& setup = first.setup();
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
