// A main panel over a scripted unit for the handler tests. The panel starts
// connected: the program is not writing it and the unit is in remote mode.
//   PanelRig          the panel with its own setup and context (identity,
//                     waveguide);
//   BandTripRig       the same with the limits of a 0.1 to 60 dBm band;
//   PowerControlsRig  the transmitter, attenuation and constant power
//                     handlers wired over the first read's setup, with the
//                     operator's gestures: typing, Enter, leaving a field.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "control/attenuation_controls.h"
#include "control/constant_power_controls.h"
#include "control/panel_context.h"
#include "control/transmit_controls.h"
#include "display/panel_setup.h"
#include "display/status_display.h"
#include "support/scripted_unit.h"
#include "unit/first_read.h"

namespace amp::test {

struct PanelBase {
  ScriptedUnit s;
  UnitDescriptor u;
  ui::FrmMain f;
  PanelState st;
  SessionValues v;
  StatusDisplay d{s.comms, u, f, st};

  PanelBase() {
    st.gInPanelUpdate = false;
    st.gRemoteMode = true;
  }

  // How many times the unit was sent `command`.
  int Sent(const std::string& command) const {
    return static_cast<int>(std::count(s.sent.begin(), s.sent.end(), command));
  }
  // Sent commands that are not reads (no "?" in them).
  std::vector<std::string> SetCommands() const {
    std::vector<std::string> out;
    for (const auto& c : s.sent)
      if (c.find('?') == std::string::npos) out.push_back(c);
    return out;
  }
  // Box titles in the order shown.
  std::vector<std::string> BoxTitles() const {
    std::vector<std::string> t;
    for (const Box& b : s.dialogs.boxes) t.push_back(b.title);
    return t;
  }
  // Writes a combo or check box as the program does, with the echo guard
  // held, so that its Click reaches no handler.
  void Show(ui::ComboBox& box, int index) {
    const bool saved = st.gInPanelUpdate;
    st.gInPanelUpdate = true;
    box.SetListIndex(index);
    st.gInPanelUpdate = saved;
  }
  void SetHeld(ui::CheckBox& box, int value) {
    const bool saved = st.gInPanelUpdate;
    st.gInPanelUpdate = true;
    box.SetValue(value);
    st.gInPanelUpdate = saved;
  }
};

struct PanelRig : PanelBase {
  PanelSetup setup{s.comms, u, f, st, v};
  PanelContext ctx{s.comms, u, f, st, v, d, setup, s.dialogs};

  PanelRig() { u.gProjectID = 40; }

  // One key through the field's filter; a surviving printable key is added
  // to the text as the front end does. Gives the key as the filter left it.
  int Type(ui::TextBox& box, int key) {
    if (box.KeyPress) box.KeyPress(key);
    if (key >= 32) box.SetText(box.Text() + static_cast<char>(key));
    return key;
  }
  void TypeText(ui::TextBox& box, const std::string& text) {
    for (char ch : text) Type(box, static_cast<unsigned char>(ch));
  }
};

struct BandTripRig : PanelRig {
  BandTripRig() {
    v.gFwdMindBm = 0.1f;
    v.gFwdMaxdBm = 60.0f;
  }
};

struct PowerControlsRig : PanelBase {
  FirstRead first{s.comms, u, f, st, d, v};
  PanelContext p{s.comms, u, f, st, v, d, first.setup(), s.dialogs};
  TransmitControls tx{p};
  AttenuationControls atn{p};
  ConstantPowerControls cp{p};

  PowerControlsRig() {
    f.Timer1.SetTimerEnabled(true);
    tx.Wire();
    atn.Wire();
    cp.Wire();
  }

  // One key through the field's filter; a key that is not dropped lands in
  // the field as the front end would put it there (8 takes the last
  // character off). Gives the code left.
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
};

}  // namespace amp::test
