// Shell on the desktop's own opener (QDesktopServices): the file or the URL
// is handed over as one argument, never through a command line, so blanks in
// paths are safe.
#pragma once

#include "platform/shell.h"

namespace amp {

class QtShell final : public Shell {
 public:
  void OpenDocument(const std::string& path) override;
  bool OpenUrl(const std::string& url) override;
};

}  // namespace amp
