// A modal dialog where nothing can show it: it loads, and the operator
// closes it at once without a choice, as if with the window's close box.
// The form's own cancel path (QueryUnload) decides what that means for the
// values it edits. Header-only, so a Dialogs of any layer can use it.
#pragma once

#include "display/form.h"

namespace amp::ui {

inline void CancelModal(Form& form) {
  form.SetLoaded(true);
  if (form.Load) form.Load();
  if (form.Loaded() && form.QueryUnload) form.QueryUnload();
  form.SetLoaded(false);
}

}  // namespace amp::ui
