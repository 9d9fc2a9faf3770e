// Shell on the desktop's own opener (QDesktopServices): the URL or file is
// handed over as one argument, never through a command line, so blanks in
// paths are safe; a .txt file opens in the user's text editor.
#pragma once

#include "platform/shell.h"

namespace amp {

class QtShell final : public Shell {
 public:
  bool OpenUrl(const std::string& url) override;
  bool OpenDocument(const std::string& path) override;
};

}  // namespace amp
