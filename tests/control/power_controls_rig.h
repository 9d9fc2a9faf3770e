// The transmitter, attenuation and constant power handlers wired to a fresh
// main panel over a scripted unit, with the unit connected and in remote
// mode, plus the operator's gestures: typing into a field, Enter, leaving.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "control/attenuation_controls.h"
#include "control/constant_power_controls.h"
#include "control/panel_context.h"
#include "control/transmit_controls.h"
#include "support/scripted_unit.h"
#include "unit/first_read.h"

namespace amp::test {

struct PowerControlsRig {
  ScriptedUnit s;
  UnitDescriptor u;
  ui::FrmMain f;
  PanelState st;
  SessionValues v;
  StatusDisplay d{s.comms, u, f, st};
  FirstRead first{s.comms, u, f, st, d, v};
  PanelContext p{s.comms, u, f, st, v, d, first.setup(), s.dialogs};
  TransmitControls tx{p};
  AttenuationControls atn{p};
  ConstantPowerControls cp{p};

  PowerControlsRig() {
    st.gInPanelUpdate = false;
    st.gRemoteMode = true;
    f.Timer1.SetTimerEnabled(true);
    tx.Wire();
    atn.Wire();
    cp.Wire();
  }

  // How many times the unit was sent `command`.
  int Sent(const std::string& command) const {
    return static_cast<int>(std::count(s.sent.begin(), s.sent.end(), command));
  }

  // Writes a check box as the poll does, with the echo guard held.
  void SetHeld(ui::CheckBox& box, int value) {
    const bool was = st.gInPanelUpdate;
    st.gInPanelUpdate = true;
    box.SetValue(value);
    st.gInPanelUpdate = was;
  }

  // One key through the field's filter; a key that is not dropped lands in
  // the field as the front end would put it there. Gives the code left.
  int Key(ui::TextBox& box, int code) {
    int k = code;
    if (box.KeyPress) box.KeyPress(k);
    if (k == 8) {
      std::string t = box.Text();
      if (!t.empty()) t.pop_back();
      box.SetText(t);
    } else if (k >= 32) {
      box.SetText(box.Text() + static_cast<char>(k));
    }
    return k;
  }
  // Clears the field and types `keys` into it.
  void Type(ui::TextBox& box, const std::string& keys) {
    box.SetText("");
    for (char c : keys) Key(box, static_cast<unsigned char>(c));
  }
  void Enter(ui::TextBox& box) { Key(box, 13); }
  void TypeEnter(ui::TextBox& box, const std::string& keys) {
    Type(box, keys);
    Enter(box);
  }
  void Leave(ui::TextBox& box) {
    if (box.LostFocus) box.LostFocus();
  }

  // Box titles in the order shown.
  std::vector<std::string> BoxTitles() const {
    std::vector<std::string> titles;
    for (const auto& b : s.dialogs.boxes) titles.push_back(b.title);
    return titles;
  }
};

}  // namespace amp::test
