// The command console: any command text goes to the unit as typed, with no
// remote-mode check and no vocabulary of its own, and the reply is shown in
// its readable form. The desktop's "Commandline" window and the command
// line's `send` both run a text through SendCommand here.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "control/panel_context.h"
#include "display/frm_cmd_line.h"

namespace amp {

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
// Sends `text` (nothing when empty). A failed exchange gives no lines.
SendResult SendCommand(Comms& comms, const std::string& text);

class CommandConsole {
 public:
  explicit CommandConsole(PanelContext& ctx) : p_(ctx) {}
  CommandConsole(const CommandConsole&) = delete;
  CommandConsole& operator=(const CommandConsole&) = delete;

  ui::FrmCmdLine frmCmdLine;

  void Wire();
  // Opens the console with the poll stopped while it is up.
  void mnuCmdLine_Click();
  void frmCmdLine_Load();
  // Choosing a history item puts it in the command field; only Enter sends,
  // so an arrow key or the wheel moving through the history never does.
  void cmbCmd_Click();
  void cmbCmd_KeyPress(int& KeyAscii);
  // Remembers `text` in the history (once) and sends it; the reply's lines
  // go to the top of List1.
  void RunText(const std::string& text);

 private:
  PanelContext& p_;
};

}  // namespace amp
