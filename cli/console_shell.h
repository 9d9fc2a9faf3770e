// A terminal opens nothing: what the panel would open is named on stderr
// as "open: URL", for the operator (and scripts) to take from there.
#pragma once

#include <cstdio>
#include <string>

#include "platform/shell.h"

namespace amp::cli {

class ConsoleShell final : public Shell {
 public:
  bool OpenUrl(const std::string& url) override {
    std::fprintf(stderr, "open: %s\n", url.c_str());
    std::fflush(stderr);
    return true;
  }
};

}  // namespace amp::cli
