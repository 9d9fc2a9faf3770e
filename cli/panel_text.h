// The main panel as text for a terminal: what an operator reads off the
// panel (session, unit, status lists, readouts), not every control.
#pragma once

#include <string>

#include "display/frm_main.h"

namespace amp::cli {

// Several lines, each "Heading   values", ending in a line break.
std::string PanelText(const ui::FrmMain& f, bool connected);
// The status lists and the RF readouts on one line, for the monitor.
std::string PanelLine(const ui::FrmMain& f);

}  // namespace amp::cli
