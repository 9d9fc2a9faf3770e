#include "control/dialog_rules.h"

namespace amp {

ModalPause::ModalPause(PanelContext& p, bool shortTimeout)
    : p_(p),
      timerWasOn_(p.frm.Timer1.TimerEnabled()),
      shortTimeout_(shortTimeout),
      savedTimeout_(p.comms.Link.MsgTimeout()) {
  if (shortTimeout_) p_.comms.Link.SetMsgTimeout(2.0f);
  p_.frm.Timer1.SetTimerEnabled(false);
}

ModalPause::~ModalPause() {
  p_.frm.Timer1.SetTimerEnabled(timerWasOn_);
  if (shortTimeout_) p_.comms.Link.SetMsgTimeout(savedTimeout_);
}

}  // namespace amp
