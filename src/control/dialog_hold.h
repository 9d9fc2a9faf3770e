// What every configuration dialog of the unit does around itself: the poll
// held off while it is open and put back as it was on every way out, the
// echo guard held while the dialog writes its own controls, and the focus
// moved from field to field by a key.
#pragma once

#include "control/panel_context.h"
#include "display/form.h"

namespace amp {

// Stops Timer1 and, at the end of the scope, puts it back as it stood: a
// dialog opened with no session running does not start the poll.
class TimerHold {
 public:
  explicit TimerHold(PanelContext& p)
      : timer_(p.frm.Timer1), wasEnabled_(p.frm.Timer1.TimerEnabled()) {
    timer_.SetTimerEnabled(false);
  }
  ~TimerHold() { timer_.SetTimerEnabled(wasEnabled_); }
  TimerHold(const TimerHold&) = delete;
  TimerHold& operator=(const TimerHold&) = delete;

 private:
  ui::TimerControl& timer_;
  bool wasEnabled_;
};

// Holds gInPanelUpdate for the scope and then restores the value it had, so
// that filling a dialog raises no handler that sends.
class PanelUpdateHold {
 public:
  explicit PanelUpdateHold(PanelContext& p) : flag_(p.panel.gInPanelUpdate), saved_(flag_) {
    flag_ = true;
  }
  ~PanelUpdateHold() { flag_ = saved_; }
  PanelUpdateHold(const PanelUpdateHold&) = delete;
  PanelUpdateHold& operator=(const PanelUpdateHold&) = delete;

 private:
  bool& flag_;
  bool saved_;
};

// Moves the focus from `from` to `to`. A front end that shows the form does
// it for real; without one the model plays the same steps: `from` is
// validated and may keep the focus, then loses it, then `to` gets it.
inline void MoveFocus(ui::Form& form, ui::Control& from, ui::Control& to) {
  if (form.focusMover) {
    form.focusMover(to);
    return;
  }
  bool cancel = false;
  if (from.Validate) from.Validate(cancel);
  if (cancel) return;
  if (from.LostFocus) from.LostFocus();
  if (to.GotFocus) to.GotFocus();
}

}  // namespace amp
