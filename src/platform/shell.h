// Handing a document to the desktop: a saved file opens in the user's text
// editor. Front ends decide what that means (the desktop opener, a line on
// the terminal); the logic only names the file.
#pragma once

#include <string>

namespace amp {

class Shell {
 public:
  virtual ~Shell() = default;
  virtual void OpenDocument(const std::string& path) = 0;
};

}  // namespace amp
