// Message and input boxes on a terminal: each box is printed to stderr as
// "TITLE: TEXT" (line ends shown as \n), recorded for the JSON state and
// answered from the command line. Modal forms are handed to whoever drives
// the panel (a panel script); with nobody to drive them they are cancelled.
#pragma once

#include <cstdio>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "frontend/state_json.h"
#include "platform/dialogs.h"
#include "platform/shell.h"

namespace amp::cli {

// A document or a web page "opened" on a terminal is only named:
// "open: PATH" on stderr; nothing is launched.
class ConsoleShell : public Shell {
 public:
  explicit ConsoleShell(std::FILE* err = stderr) : err_(err) {}
  void OpenDocument(const std::string& path) override;
  bool OpenUrl(const std::string& url) override;

 private:
  std::FILE* err_;
};

class ConsoleDialogs : public Dialogs {
 public:
  // `err` receives the box lines; stderr unless a test redirects it.
  explicit ConsoleDialogs(std::FILE* err = stderr) : err_(err) {}

  // A terminal has no Enter to press: the box takes the --answer, whatever
  // its default button.
  MsgResult MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                   const std::string& title, MsgDefault = MsgDefault::First) override;
  std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                      const std::string& defaultText) override;
  // Loads the form and lets `modalDriver` act on it; a form the driver left
  // open (or any form when there is no driver) is closed as by its close
  // box, so the form's own cancel path decides what that means.
  void ShowModal(ui::Form& form) override;
  // Answered from --file, in order; with none left the dialog is cancelled,
  // except that a save dialog takes its proposed name when
  // `saveTakesProposal` is set.
  std::optional<std::string> ShowOpen(const std::string& fileName, const std::string& filter,
                                      const std::string& initDir) override;
  std::optional<std::string> ShowSave(const std::string& fileName, const std::string& filter,
                                      const std::string& initDir) override;

  // The box as one line: CR LF, CR and LF each become the two characters \n.
  static std::string OneLine(const std::string& title, const std::string& text);
  // The button a box returns for the --answer given: an answer the box does
  // not offer falls back to its first button.
  static MsgResult Pick(MsgButtons buttons, MsgResult answer);
  // A box reporting that something went wrong: one that offers only OK and
  // is not merely informative. Questions are not failures.
  static bool IsFailure(MsgButtons buttons, MsgIcon icon);

  MsgResult answer = MsgResult::OK;  // --answer
  std::deque<std::string> inputs;    // --input, used in order
  std::deque<std::string> files;     // --file, used in order
  bool saveTakesProposal = false;
  using Shown = frontend::ShownMessage;
  std::vector<Shown> shown;  // every message box, in order
  bool AnyFailure() const;

  // Runs while `form` is shown and returns when it should close (or when
  // there is nothing more to do with it).
  std::function<void(ui::Form& form)> modalDriver;
  // Forms being shown, innermost last.
  const std::vector<ui::Form*>& OpenForms() const { return open_; }

 private:
  void Note(const std::string& line);
  std::FILE* err_;
  std::vector<ui::Form*> open_;
};

}  // namespace amp::cli
