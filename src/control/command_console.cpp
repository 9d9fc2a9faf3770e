#include "control/command_console.h"

#include <algorithm>

#include "control/dialog_rules.h"

namespace amp {

namespace {

constexpr char kSTX = 2, kETX = 3, kACK = 6, kNAK = 21;
constexpr int kEnter = 13;
constexpr size_t kLineWidth = 100;

std::string Named(char c) {
  switch (c) {
    case kSTX:
      return "[STX]";
    case kETX:
      return "[ETX]";
    case kACK:
      return "[ACK]";
    case kNAK:
      return "[NAK]";
    default:
      return {};
  }
}

}  // namespace

std::string ReadableReply(std::string_view frame) {
  if (frame.size() < 2) return {};
  const size_t etx = frame.find(kETX, 1);
  if (etx == std::string_view::npos) return {};
  return Named(frame[0]) + std::string(frame.substr(1, etx - 1)) + Named(kETX);
}

std::vector<std::string> ConsoleLines(const std::string& readable) {
  if (readable.empty()) return {};
  if (readable.size() <= kLineWidth) return {readable};
  return {readable.substr(0, kLineWidth), readable.substr(kLineWidth)};
}

SendResult SendCommand(Comms& comms, const std::string& text) {
  SendResult r;
  if (text.empty()) return r;
  r.sent = true;
  r.ok = comms.ExchangeCommand(text, false);
  r.frame = comms.Link.RxMessage;
  r.readable = ReadableReply(r.frame);
  if (r.ok) r.lines = ConsoleLines(r.readable);
  return r;
}

void CommandConsole::Wire() {
  p_.frm.mnuCmdLine.Click = [this] { mnuCmdLine_Click(); };
  frmCmdLine.Load = [this] { frmCmdLine_Load(); };
  frmCmdLine.QueryUnload = [this] { frmCmdLine.Unload(); };
  frmCmdLine.btnClose.Click = [this] { frmCmdLine.Unload(); };
  frmCmdLine.cmbCmd.Click = [this] { cmbCmd_Click(); };
  frmCmdLine.cmbCmd.KeyPress = [this](int& k) { cmbCmd_KeyPress(k); };
}

void CommandConsole::mnuCmdLine_Click() {
  ModalPause pause(p_, false);
  p_.dialogs.ShowModal(frmCmdLine);
}

// Each use of the console starts with an empty log and an empty history.
void CommandConsole::frmCmdLine_Load() {
  frmCmdLine.List1.Clear();
  frmCmdLine.cmbCmd.Clear();
}

void CommandConsole::cmbCmd_Click() {
  ui::ComboBox& box = frmCmdLine.cmbCmd;
  const int i = box.ListIndex();
  if (i >= 0 && i < box.ListCount()) box.SetText(box.List(i));
}

void CommandConsole::cmbCmd_KeyPress(int& KeyAscii) {
  if (KeyAscii != kEnter) return;
  KeyAscii = 0;
  RunText(frmCmdLine.cmbCmd.Text());
}

void CommandConsole::RunText(const std::string& text) {
  if (text.empty()) return;
  ui::ComboBox& box = frmCmdLine.cmbCmd;
  const auto& items = box.Items();
  if (std::find(items.begin(), items.end(), text) == items.end()) box.AddItem(text);
  const SendResult r = SendCommand(p_.comms, text);
  // The newest reply on top, its continuation right below it.
  for (size_t i = 0; i < r.lines.size(); ++i)
    frmCmdLine.List1.AddItem(r.lines[i], static_cast<int>(i));
}

}  // namespace amp
