// The panel script: operator actions on the panel model, one per line, run
// against the forms an application registers. A script is parsed and checked
// as a whole first (every action known, every control found on its form and
// able to take the action), so a bad line is reported with its number before
// anything reaches the unit. Running it raises the same events a front end
// raises; a modal dialog that an action opens takes the following lines
// until one of them closes it.
//
//   click CONTROL              button, menu entry, option button; a check box toggles
//   type CONTROL TEXT          each character through the field's key handler
//   key CONTROL KEY            Enter, Esc, Backspace or a single character
//   set CONTROL TEXT           replace the text without key handling
//   leave CONTROL              Validate, then LostFocus unless Validate cancelled
//   focus CONTROL              GotFocus
//   select CONTROL INDEX|TEXT  choose an item of a combo or list (its Click runs)
//   up CONTROL / down CONTROL  up-down clicks
//   dblclick CONTROL
//   poll [N]                   N ticks of the poll timer now (default 1)
//   wait MS                    let the program run (and poll) for MS ms
//   dump                       the state now
//
// CONTROL is a name of the main panel ("txtAtnDB", "FaultAbit(3)") or
// "frmName.control" inside a dialog. A line whose first non-blank character
// is '#' is a comment, and so is '#' after a blank in a line without TEXT.
// TEXT runs to the end of the line; quotes around it keep outer blanks.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "display/form.h"

namespace amp::ui {

struct ScriptAction {
  enum class Verb {
    Click,
    Type,
    Key,
    Set,
    Leave,
    Focus,
    Select,
    Up,
    Down,
    DblClick,
    Poll,
    Wait,
    Dump
  };
  int line = 0;
  Verb verb = Verb::Dump;
  std::string form;     // the form's name; empty for poll, wait and dump
  std::string control;  // the control's full name on that form
  std::string text;     // TEXT, KEY or INDEX|TEXT
  int count = 0;        // poll N, wait MS
};

struct ScriptError {
  int line = 0;  // 0: not tied to a line
  std::string message;
  std::string Text() const;  // "line 3: ..."
};

const char* VerbName(ScriptAction::Verb verb);

// Reads the script's lines into actions. Only the grammar is checked here.
std::optional<ScriptError> ParseScript(std::string_view text, std::vector<ScriptAction>& out);

// Checks every action against the forms: the form is registered, the
// control is on it, and the control is of a kind that takes the action.
// `forms[0]` is the main panel, which plain control names address.
std::optional<ScriptError> ValidateScript(const std::vector<ScriptAction>& actions,
                                          const std::vector<Form*>& forms);

// The name a script goes by in messages: "<stdin>" for "-".
std::string ScriptName(const std::string& file);

// Reads the script of `file` ("-": standard input), parses it and checks it
// against `forms`. False with the reason in `error`: the file that cannot be
// read, or the script's name and its bad line.
bool LoadScript(const std::string& file, const std::vector<Form*>& forms,
                std::vector<ScriptAction>& out, std::string* error);

class PanelScript {
 public:
  // What the script needs of the program around it.
  struct Host {
    std::vector<Form*> forms;  // as registered, main panel first
    // One tick of the poll timer, and whether the timer runs at all.
    std::function<void()> pollTick;
    std::function<bool()> pollRunning;
    // Let the program run for `ms` milliseconds.
    std::function<void(int ms)> wait;
    // Print the state; `dialog` is the dialog in front, or null.
    std::function<void(const Form* dialog)> dump;
    // Told before each action runs.
    std::function<void(const ScriptAction&)> beforeAction;
    // Notes for the operator (not errors).
    std::function<void(const std::string&)> note;
  };

  PanelScript(Host host, std::vector<ScriptAction> actions);

  // Runs the actions from the first. Returns when all have run or one could
  // not run; a dialog still open then is left to the caller's ShowModal.
  void Run();
  // For the Dialogs' ShowModal: runs the following actions on the loaded
  // `form` until it closes or the script ends.
  void RunModal(Form& form);

  // Ends the run: no further action starts (the program is going away).
  // The action under way finishes; onEnd is not told.
  void Stop() {
    stopped_ = true;
    ended_ = true;
  }

  // Told once, when the last action has run or the script stopped, while a
  // dialog left open is still open: `dialog` is that dialog or null.
  std::function<void(const Form* dialog)> onEnd;

  // The action that could not run, if one could not.
  const std::optional<ScriptError>& Failure() const { return failure_; }
  bool Done() const { return stopped_ || next_ >= actions_.size() || failure_.has_value(); }

 private:
  void RunUntil(const std::function<bool()>& stop);
  void Finish();
  std::optional<std::string> Execute(const ScriptAction& a);
  Form* FormNamed(const std::string& name) const;

  Host host_;
  std::vector<ScriptAction> actions_;
  size_t next_ = 0;
  std::vector<Form*> open_;  // dialogs this script is inside, innermost last
  std::optional<ScriptError> failure_;
  bool ended_ = false;
  bool stopped_ = false;
};

}  // namespace amp::ui
