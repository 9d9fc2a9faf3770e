// What the desktop opens for the operator: a URL in the browser, a saved
// file in the user's text editor. Always through the desktop's opener with
// the address as one argument, never through a command line. Front ends
// decide what that means (the desktop opener, a line on the terminal).
#pragma once

#include <string>

namespace amp {

class Shell {
 public:
  virtual ~Shell() = default;
  // False when nothing could be started.
  virtual bool OpenUrl(const std::string& url) = 0;
  virtual bool OpenDocument(const std::string& path) = 0;
};

}  // namespace amp
