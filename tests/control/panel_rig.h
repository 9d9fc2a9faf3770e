// A main panel over a scripted unit for the handler tests. The panel starts
// connected: the program is not writing it and the unit is in remote mode.
//   PanelRig          the panel with its own setup and context (identity,
//                     waveguide);
//   BandTripRig       the same with the limits of a 0.1 to 60 dBm band;
//   PowerControlsRig  the transmitter, attenuation and constant power
//                     handlers wired over the first read's setup, with the
//                     operator's gestures: typing, Enter, leaving a field.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "../display/display_rig.h"
#include "control/attenuation_controls.h"
#include "control/constant_power_controls.h"
#include "control/panel_context.h"
#include "control/transmit_controls.h"
#include "display/operator_input.h"
#include "display/panel_setup.h"
#include "display/status_display.h"
#include "support/scripted_unit.h"
#include "unit/first_read.h"

namespace amp::test {

struct PanelBase : DisplayRig {
  SessionValues v;

  PanelBase() {
    st.gInPanelUpdate = false;
    st.gRemoteMode = true;
  }

  // The operator's keys, as every front end delivers them.
  int Key(ui::TextBox& box, int code) { return ui::TypeKey(box, code); }
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
};

// One operator behaviour of a control: the panel as the poll left it, the
// operator's gesture (with the unit's replies scripted in `arrange`), the
// commands the unit then receives, the titles of the boxes shown, and what
// the panel shows afterwards.
template <class Rig>
struct Row {
  const char* what;
  std::function<void(Rig&)> arrange;
  std::function<void(Rig&)> act;
  std::vector<std::string> sent;
  std::vector<std::string> boxes;
  std::function<bool(Rig&)> after;
};

// Runs every row on a fresh rig; `wire` finishes the rig before the row.
template <class Rig>
void RunRows(const std::vector<Row<Rig>>& rows, std::function<void(Rig&)> wire = nullptr) {
  for (const Row<Rig>& row : rows) {
    SCOPED_TRACE(row.what);
    Rig r;
    if (wire) wire(r);
    if (row.arrange) row.arrange(r);
    r.s.sent.clear();
    row.act(r);
    EXPECT_EQ(r.s.sent, row.sent);
    EXPECT_EQ(r.BoxTitles(), row.boxes);
    if (row.after) {
      EXPECT_TRUE(row.after(r));
    }
    EXPECT_FALSE(r.st.gInPanelUpdate);
  }
}

}  // namespace amp::test
