// The host's default for the data directory: "AmpDesk" in the user's data
// location ($XDG_DATA_HOME, usually ~/.local/share); "" when the host has none.
#pragma once

#include <string>

namespace amp {

std::string DefaultDataDirectory();

}  // namespace amp
