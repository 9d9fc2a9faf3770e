// The command console from a terminal: any command text goes to the unit as
// typed (no remote-mode check, no vocabulary of its own) and the reply is
// shown as the console dialog shows it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "link/comms.h"

namespace amp::cli {

struct SendResult {
  bool sent = false;               // the text was not empty, so it went out
  bool ok = false;                 // the exchange succeeded
  std::string frame;               // the whole reply frame as received
  std::string readable;            // its readable form, "" when it has none
  std::vector<std::string> lines;  // the readable form in lines of at most 100 characters
};

// "[ACK]A1..." : the status byte named, the text up to the end byte, and the
// end byte named; what follows the end byte (the checksum) is left out. ""
// when the frame has no end byte after its first character.
std::string ReadableReply(std::string_view frame);
// The readable text cut as the console's list takes it: the first 100
// characters, then the rest.
std::vector<std::string> ConsoleLines(const std::string& readable);

SendResult SendCommand(Comms& comms, const std::string& text);
// "TEXT -> reply" lines for the terminal; a reply too long for one line of
// the console goes on below, in line with the first.
std::vector<std::string> FormatSendLines(const std::string& text, const SendResult& r);

}  // namespace amp::cli
