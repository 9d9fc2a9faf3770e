// The three rules every set action of the main panel obeys: no set command
// unless the unit is in remote mode, no command while the program itself
// writes the panel (gInPanelUpdate), and the poll paused around long actions.
#pragma once

#include "control/panel_context.h"

namespace amp {

// "Not in Remote Mode" box, exclamation icon, OK only.
void ShowNotInRemoteMode(PanelContext& p);

// The guard of a check box's Click. False when the handler must stop: while
// the program writes the panel, or when the unit is not in remote mode (then
// the box is shown and the check box put back, without a second pass of the
// handler). True when the handler may send the command for the new value.
bool CheckBoxGuard(PanelContext& p, ui::CheckBox& box);

// True when a set command may be sent: shows the box and gives false when
// the unit is not in remote mode.
bool RemoteGuard(PanelContext& p);

// Stops Timer1 for its lifetime and starts it again at the end, so a long
// action is not interleaved with a poll.
class PollPause {
 public:
  explicit PollPause(PanelContext& p);
  ~PollPause();
  PollPause(const PollPause&) = delete;
  PollPause& operator=(const PollPause&) = delete;

 private:
  ui::TimerControl& timer_;
};

}  // namespace amp
