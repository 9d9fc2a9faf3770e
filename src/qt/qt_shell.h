// Documents open with the desktop's own opener (the user's text editor for a
// .txt file), by URL: no shell command line, so blanks in paths are safe.
#pragma once

#include "platform/shell.h"

namespace amp {

class QtShell : public Shell {
 public:
  void OpenDocument(const std::string& path) override;
};

}  // namespace amp
