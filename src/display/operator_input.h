// What the operator's hand does to a control, the same from every front end:
// the desktop's binder, the panel script and the test rigs raise these so a
// click or a key means one thing wherever it comes from.
#pragma once

#include "display/controls.h"

namespace amp::ui {

// A click: a check box toggles (a grayed one is checked, as an unchecked
// one), an option button is chosen, and anything else raises Click. The
// change of value raises the box's or the button's Click.
void OperatorClick(Control& c);

// One key typed into a text field or a combo's edit: the control's
// KeyPress handler sees it first and may drop it (0) or replace it; what is
// left lands as an edit field takes it: Backspace takes the last character
// off, Enter and Esc add nothing, any other key is added. Gives the key as
// the handler left it.
int TypeKey(Control& c, int key);

}  // namespace amp::ui
