// The Watts menu entry. The unit always reports dBm; the panel converts the
// power fields in place and the entry's caption offers the other unit.
#include "app/amp_desk.h"

namespace amp {

namespace {
constexpr const char* kOfferWatts = "Display Watts";
constexpr const char* kOfferdBm = "Display dBm";
}  // namespace

void AmpDesk::mnuWatts_Click() {
  if (panel.gDisplayWatts) {
    display.DisplayTodBm();
    frmMain.mnuWatts.SetCaption(kOfferWatts);
  } else {
    display.DisplayToWatts();
    frmMain.mnuWatts.SetCaption(kOfferdBm);
  }
}

}  // namespace amp
