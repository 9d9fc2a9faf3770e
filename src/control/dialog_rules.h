// What every configuration dialog and menu switch does around its work: the
// poll stopped while a dialog is up and put back as it was on every way out,
// and the program's own writes to a dialog's controls kept from sending.
#pragma once

#include "control/panel_context.h"

namespace amp {

// Holds gInPanelUpdate for its lifetime and then puts back what it was, so a
// dialog's Load can set its controls (and raise their Clicks) without a
// command going out, whatever state the panel was in.
class PanelUpdateHold {
 public:
  explicit PanelUpdateHold(PanelState& s) : s_(s), saved_(s.gInPanelUpdate) {
    s_.gInPanelUpdate = true;
  }
  ~PanelUpdateHold() { s_.gInPanelUpdate = saved_; }
  PanelUpdateHold(const PanelUpdateHold&) = delete;
  PanelUpdateHold& operator=(const PanelUpdateHold&) = delete;

 private:
  PanelState& s_;
  bool saved_;
};

// Stops Timer1 for its lifetime and puts its state back after, so a poll
// never lands between a dialog's exchanges and a poll the operator switched
// off stays off. With `shortTimeout` the link's reply time-out is 2 seconds
// meanwhile, and put back too.
class ModalPause {
 public:
  ModalPause(PanelContext& p, bool shortTimeout);
  ~ModalPause();
  ModalPause(const ModalPause&) = delete;
  ModalPause& operator=(const ModalPause&) = delete;

 private:
  PanelContext& p_;
  bool timerWasOn_;
  bool shortTimeout_;
  float savedTimeout_;
};

}  // namespace amp
