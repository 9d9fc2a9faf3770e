// A main panel with its context wired to a scripted unit, for the handler
// tests of the identity and waveguide groups. The panel starts connected:
// the program is not writing it and the unit is in remote mode.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "control/panel_context.h"
#include "display/panel_setup.h"
#include "display/status_display.h"
#include "support/scripted_unit.h"

namespace amp::test {

struct IdentityWaveguideRig {
  ScriptedUnit s;
  UnitDescriptor u;
  ui::FrmMain f;
  PanelState st;
  SessionValues v;
  StatusDisplay d{s.comms, u, f, st};
  PanelSetup setup{s.comms, u, f, st, v};
  PanelContext ctx{s.comms, u, f, st, v, d, setup, s.dialogs};

  IdentityWaveguideRig() {
    st.gInPanelUpdate = false;
    st.gRemoteMode = true;
    u.gProjectID = 40;
  }

  // How many times the unit was sent `command`.
  int Sent(const std::string& command) const {
    return static_cast<int>(std::count(s.sent.begin(), s.sent.end(), command));
  }
  // Titles of the boxes shown so far.
  std::vector<std::string> BoxTitles() const {
    std::vector<std::string> t;
    for (const Box& b : s.dialogs.boxes) t.push_back(b.title);
    return t;
  }
  // Types one key into `box` through its key filter; returns the key as the
  // filter left it, and adds a surviving printable key to the text, as the
  // front end does.
  int Type(ui::TextBox& box, int key) {
    if (box.KeyPress) box.KeyPress(key);
    if (key >= 32) box.SetText(box.Text() + static_cast<char>(key));
    return key;
  }
};

}  // namespace amp::test
