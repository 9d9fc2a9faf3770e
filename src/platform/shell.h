// What the desktop opens for the operator: a saved file in the user's text
// editor, a unit's web page in the browser. Front ends decide what that means
// (the desktop's opener, a line on the terminal); the logic only names the
// file or the address, and nothing goes through a shell command line.
#pragma once

#include <string>

namespace amp {

class Shell {
 public:
  virtual ~Shell() = default;
  virtual void OpenDocument(const std::string& path) = 0;
  // False when nothing could be started.
  virtual bool OpenUrl(const std::string& url) = 0;
};

}  // namespace amp
