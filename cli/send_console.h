// The command console from a terminal: any command text goes to the unit as
// typed (no remote-mode check, no vocabulary of its own) and the reply is
// shown as the console dialog shows it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "control/command_console.h"

namespace amp::cli {

// The exchange and the readable reply are the console window's own
// (SendCommand, ReadableReply, ConsoleLines); only the terminal's layout is
// here.
// "TEXT -> reply" lines for the terminal; a reply too long for one line of
// the console goes on below, in line with the first.
std::vector<std::string> FormatSendLines(const std::string& text, const SendResult& r);

}  // namespace amp::cli
