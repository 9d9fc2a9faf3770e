// Modal boxes the logic shows. Front ends render them (a window, a line on
// stderr answered from options, a scripted expectation in tests).
#pragma once

#include <optional>
#include <string>

namespace amp {

enum class MsgIcon { None, Critical, Question, Exclamation, Information };
enum class MsgButtons { OK, OKCancel, YesNo, YesNoCancel, RetryCancel };
enum class MsgResult { OK, Cancel, Yes, No, Retry };

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  virtual MsgResult MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                           const std::string& title) = 0;
  // Empty result (nullopt) when the operator cancels.
  virtual std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                              const std::string& defaultText) = 0;
};

}  // namespace amp
