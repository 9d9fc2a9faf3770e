#include "cli/console_dialogs.h"

#include <algorithm>

#include "display/form.h"

namespace amp::cli {

std::string ConsoleDialogs::OneLine(const std::string& title, const std::string& text) {
  std::string flat;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r') {
      if (i + 1 < text.size() && text[i + 1] == '\n') ++i;
      flat += "\\n";
    } else if (text[i] == '\n') {
      flat += "\\n";
    } else {
      flat += text[i];
    }
  }
  return title + ": " + flat;
}

MsgResult ConsoleDialogs::Pick(MsgButtons buttons, MsgResult answer) {
  switch (buttons) {
    case MsgButtons::OK:
      return MsgResult::OK;
    case MsgButtons::OKCancel:
      return answer == MsgResult::Cancel || answer == MsgResult::No ? MsgResult::Cancel
                                                                    : MsgResult::OK;
    case MsgButtons::YesNo:
      return answer == MsgResult::No || answer == MsgResult::Cancel ? MsgResult::No
                                                                    : MsgResult::Yes;
    case MsgButtons::YesNoCancel:
      return (answer == MsgResult::No || answer == MsgResult::Cancel) ? answer : MsgResult::Yes;
    case MsgButtons::RetryCancel:
      return answer == MsgResult::Cancel || answer == MsgResult::No ? MsgResult::Cancel
                                                                    : MsgResult::Retry;
  }
  return MsgResult::OK;
}

bool ConsoleDialogs::IsFailure(MsgButtons buttons, MsgIcon icon) {
  return buttons == MsgButtons::OK && icon != MsgIcon::Information;
}

bool ConsoleDialogs::AnyFailure() const {
  return std::any_of(shown.begin(), shown.end(), [](const Shown& s) { return s.failure; });
}

void ConsoleDialogs::Note(const std::string& line) {
  std::fprintf(err_, "%s\n", line.c_str());
  std::fflush(err_);
}

MsgResult ConsoleDialogs::MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                                 const std::string& title, MsgDefault) {
  shown.push_back({title, text, IsFailure(buttons, icon)});
  Note(OneLine(title, text));
  return Pick(buttons, answer);
}

std::optional<std::string> ConsoleDialogs::InputBox(const std::string& prompt,
                                                    const std::string& title, const std::string&) {
  // An input box is a question, not a message: printed, not recorded.
  Note(OneLine(title, prompt));
  if (inputs.empty()) {
    Note("ampdesk-cli: no --input left for \"" + title + "\": cancelled");
    return std::nullopt;
  }
  std::string v = inputs.front();
  inputs.pop_front();
  return v;
}

void ConsoleDialogs::ShowModal(ui::Form& form) {
  open_.push_back(&form);
  form.SetLoaded(true);
  if (form.Load) form.Load();
  if (form.Loaded() && modalDriver) modalDriver(form);
  if (form.Loaded()) {
    Note(
        "ampdesk-cli: " + form.Name() + " (" + form.Caption() + ") cancelled" +
        (modalDriver ? ": left open by the script" : ": nothing answers dialogs outside a script"));
    if (form.QueryUnload) form.QueryUnload();
    // A cancel path that leaves the form up would hang the caller.
    if (form.Loaded()) form.Unload();
  }
  open_.erase(std::find(open_.begin(), open_.end(), &form));
}

std::optional<std::string> ConsoleDialogs::ShowOpen(const std::string& fileName, const std::string&,
                                                    const std::string&) {
  if (files.empty()) {
    Note("ampdesk-cli: no --file left for the open dialog: cancelled");
    return std::nullopt;
  }
  std::string v = files.front();
  files.pop_front();
  return v;
}

std::optional<std::string> ConsoleDialogs::ShowSave(const std::string& fileName, const std::string&,
                                                    const std::string& initDir) {
  if (!files.empty()) {
    std::string v = files.front();
    files.pop_front();
    return v;
  }
  if (saveTakesProposal && !fileName.empty())
    return initDir.empty() || fileName.find('/') != std::string::npos ? fileName
                                                                      : initDir + "/" + fileName;
  Note("ampdesk-cli: no --file left for the save dialog: cancelled");
  return std::nullopt;
}

void ConsoleShell::OpenDocument(const std::string& path) {
  std::fprintf(err_, "open: %s\n", path.c_str());
  std::fflush(err_);
}

bool ConsoleShell::OpenUrl(const std::string& url) {
  OpenDocument(url);
  return true;
}

}  // namespace amp::cli
