// Modal boxes and forms the logic shows. Front ends render them (a window, a
// line on stderr answered from options, a scripted expectation in tests).
#pragma once

#include <optional>
#include <string>

namespace amp::ui {
class Form;
}

namespace amp {

enum class MsgIcon { None, Critical, Question, Exclamation, Information };
enum class MsgButtons { OK, OKCancel, YesNo, YesNoCancel, RetryCancel };
enum class MsgResult { OK, Cancel, Yes, No, Retry };
// The button that Enter presses, counted in the order MsgButtons names them
// (the box style's 0, 256 and 512). A box that resets a unit or takes it off
// the air names the harmless one, so that a stray Enter does nothing.
enum class MsgDefault { First, Second, Third };

// The harmless answer to a box nobody answered (closed without a button, or
// shown where no operator can answer): OK when that is all it offers, else No
// for a yes/no question, else Cancel.
inline MsgResult SafeAnswer(MsgButtons buttons) {
  switch (buttons) {
    case MsgButtons::OK:
      return MsgResult::OK;
    case MsgButtons::YesNo:
      return MsgResult::No;
    default:
      return MsgResult::Cancel;
  }
}

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  // Escape answers Cancel, or No when there is no Cancel.
  virtual MsgResult MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                           const std::string& title, MsgDefault def = MsgDefault::First) = 0;
  // Empty result (nullopt) when the operator cancels.
  virtual std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                              const std::string& defaultText) = 0;

  // Shows a dialog of the panel model modally and returns when it has closed.
  // Contract: mark the form loaded and run form.Load; then let the operator
  // act on its controls (their handlers run as usual) until something calls
  // form.Unload() -- the dialog's OK or Cancel, or the logic itself. Closing
  // the window without a button runs form.QueryUnload, the form's cancel
  // path, which must end in Unload as well.
  //
  // Every Dialogs says how it shows forms; there is no silent default. One
  // with no way to show a form (a console, a batch run) cancels at once:
  // ui::CancelModal in display/modal.h does exactly that.
  virtual void ShowModal(ui::Form& form) = 0;

  // The file dialogs. `fileName` is the name proposed ("" for none), `filter`
  // the choices in the form "Text Files (*.txt);;All Files (*)", `initDir`
  // the folder shown first. The chosen path, or nullopt when the operator
  // cancels. ShowOpen offers only files that exist; ShowSave asks before it
  // lets a file be overwritten.
  virtual std::optional<std::string> ShowOpen(const std::string& fileName,
                                              const std::string& filter,
                                              const std::string& initDir) = 0;
  virtual std::optional<std::string> ShowSave(const std::string& fileName,
                                              const std::string& filter,
                                              const std::string& initDir) = 0;
};

}  // namespace amp
