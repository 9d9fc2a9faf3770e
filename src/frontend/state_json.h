// The panel's state as JSON, as both programs' `dump` and the command line's
// --json print it: whether a session is up, every control of the main panel,
// the message boxes shown, and the dialog open at the moment, if any.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "display/form.h"

namespace amp {
class JsonWriter;
}

namespace amp::frontend {

// A message box as it was shown.
struct ShownMessage {
  std::string title, text;
  bool failure = false;  // the box reports that something failed
};

struct StateView {
  bool connected = false;
  const ui::Form* form = nullptr;  // the main panel
  // null: the front end keeps no list of its boxes
  const std::vector<ShownMessage>* messages = nullptr;
  size_t firstMessage = 0;           // messages before this one are left out
  const ui::Form* dialog = nullptr;  // null: no dialog open
};

// Writes "connected", "form", "messages" and "dialog" into the object open
// in `w`, so callers can put their own keys around them.
void WriteState(JsonWriter& w, const StateView& state);
// The state as one JSON object on one line.
std::string StateJson(const StateView& state);

}  // namespace amp::frontend
