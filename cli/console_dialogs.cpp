#include "cli/console_dialogs.h"

#include <cstdio>

#include "display/modal.h"

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

MsgResult ConsoleDialogs::MsgBox(const std::string& text, MsgButtons buttons, MsgIcon,
                                 const std::string& title) {
  shown.push_back({title, text});
  std::fprintf(stderr, "%s\n", OneLine(title, text).c_str());
  std::fflush(stderr);
  // An answer the box does not offer falls back to its first button.
  switch (buttons) {
    case MsgButtons::OK:
      return MsgResult::OK;
    case MsgButtons::OKCancel:
      return answer == MsgResult::Cancel ? MsgResult::Cancel : MsgResult::OK;
    case MsgButtons::YesNo:
      return answer == MsgResult::No ? MsgResult::No : MsgResult::Yes;
    case MsgButtons::YesNoCancel:
      return (answer == MsgResult::No || answer == MsgResult::Cancel) ? answer : MsgResult::Yes;
    case MsgButtons::RetryCancel:
      return answer == MsgResult::Cancel ? MsgResult::Cancel : MsgResult::Retry;
  }
  return MsgResult::OK;
}

std::optional<std::string> ConsoleDialogs::InputBox(const std::string& prompt,
                                                    const std::string& title,
                                                    const std::string&) {
  std::fprintf(stderr, "%s\n", OneLine(title, prompt).c_str());
  if (inputs.empty()) return std::nullopt;
  std::string v = inputs.front();
  inputs.pop_front();
  return v;
}

void ConsoleDialogs::ShowModal(ui::Form& form) {
  ui::CancelModal(form);
  // The caption the form's load gave it names the dialog.
  shown.push_back({form.Caption(), "(cancelled)"});
  std::fprintf(stderr, "%s\n", OneLine(form.Caption(), "(cancelled)").c_str());
  std::fflush(stderr);
}

}  // namespace amp::cli
