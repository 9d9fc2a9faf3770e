// A connected main panel over a scripted unit for the trip line and band
// tests: the program is not writing the panel and the unit is in remote
// mode, with the band limits of a 0.1 to 60 dBm band.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "control/panel_context.h"
#include "display/panel_setup.h"
#include "display/status_display.h"
#include "support/scripted_unit.h"

namespace amp::test {

struct BandTripRig {
  ScriptedUnit s;
  UnitDescriptor u;
  ui::FrmMain f;
  PanelState st;
  SessionValues v;
  StatusDisplay d{s.comms, u, f, st};
  PanelSetup setup{s.comms, u, f, st, v};
  PanelContext ctx{s.comms, u, f, st, v, d, setup, s.dialogs};

  BandTripRig() {
    st.gInPanelUpdate = false;
    st.gRemoteMode = true;
    u.gProjectID = 40;
    v.gFwdMindBm = 0.1f;
    v.gFwdMaxdBm = 60.0f;
  }

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
  std::vector<std::string> BoxTitles() const {
    std::vector<std::string> t;
    for (const Box& b : s.dialogs.boxes) t.push_back(b.title);
    return t;
  }
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
  // Writes a combo as the program does, without its Click reaching a handler.
  void Show(ui::ComboBox& box, int index) {
    const bool saved = st.gInPanelUpdate;
    st.gInPanelUpdate = true;
    box.SetListIndex(index);
    st.gInPanelUpdate = saved;
  }
};

}  // namespace amp::test
