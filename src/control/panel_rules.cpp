#include "control/panel_rules.h"

namespace amp {

void ShowNotInRemoteMode(PanelContext& p) {
  p.dialogs.MsgBox("Not in Remote Mode", MsgButtons::OK, MsgIcon::Exclamation,
                   "Communication Error");
}

bool CheckBoxGuard(PanelContext& p, ui::CheckBox& box) {
  if (p.panel.gInPanelUpdate) return false;
  if (p.panel.gRemoteMode) return true;
  p.panel.gInPanelUpdate = true;
  ShowNotInRemoteMode(p);
  box.SetValue(box.Value() == 1 ? 0 : 1);
  p.panel.gInPanelUpdate = false;
  return false;
}

bool RemoteGuard(PanelContext& p) {
  if (p.panel.gRemoteMode) return true;
  ShowNotInRemoteMode(p);
  return false;
}

PollPause::PollPause(PanelContext& p) : timer_(p.frm.Timer1) { timer_.SetTimerEnabled(false); }

PollPause::~PollPause() { timer_.SetTimerEnabled(true); }

}  // namespace amp
