// The windows of the dialogs, from their .ui files, registered by form name
// so that QtDialogs::ShowModal can show them.
#pragma once

#include "qt/qt_dialogs.h"

namespace amp {

void RegisterDialogWindows(QtDialogs& dialogs);

}  // namespace amp
