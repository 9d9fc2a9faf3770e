// What the main panel's handlers work on: the link, the unit, the panel
// model and its state, and the host's dialogs. The application owns all of
// it; each group of handlers holds this one bundle of references.
#pragma once

#include "display/frm_main.h"
#include "display/panel_setup.h"
#include "display/panel_state.h"
#include "display/session_values.h"
#include "display/status_display.h"
#include "link/comms.h"
#include "model/unit_descriptor.h"
#include "platform/dialogs.h"

namespace amp {

struct PanelContext {
  Comms& comms;
  UnitDescriptor& unit;
  ui::FrmMain& frm;
  PanelState& panel;
  SessionValues& values;
  StatusDisplay& display;
  PanelSetup& setup;
  Dialogs& dialogs;
};

}  // namespace amp
