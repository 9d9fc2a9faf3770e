// Message and input boxes on a terminal: each box is printed to stderr as
// "TITLE: TEXT" (line ends shown as \n) and answered from the command line.
// Modal forms are cancelled.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "platform/dialogs.h"

namespace amp::cli {

class ConsoleDialogs : public Dialogs {
 public:
  MsgResult MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                   const std::string& title) override;
  std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                      const std::string& defaultText) override;
  // A terminal cannot show a form: its title is printed as a box line with
  // the text "(cancelled)" and the form is cancelled at once.
  void ShowModal(ui::Form& form) override;

  // The box as one line: CR LF, CR and LF each become the two characters \n.
  static std::string OneLine(const std::string& title, const std::string& text);

  MsgResult answer = MsgResult::OK;     // --answer
  std::deque<std::string> inputs;       // --input, used in order
  struct Shown {
    std::string title, text;
  };
  std::vector<Shown> shown;             // every box, for the JSON state
};

}  // namespace amp::cli
