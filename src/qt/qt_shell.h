// Shell on the desktop's own opener (QDesktopServices): the URL is handed
// over as one argument, never through a command line.
#pragma once

#include "platform/shell.h"

namespace amp {

class QtShell final : public Shell {
 public:
  bool OpenUrl(const std::string& url) override;
};

}  // namespace amp
