// What the desktop opens for the operator: a URL in the browser (and, later,
// a document in its program). Always through the desktop's opener with the
// address as one argument, never through a command line.
#pragma once

#include <string>

namespace amp {

class Shell {
 public:
  virtual ~Shell() = default;
  // False when nothing could be started.
  virtual bool OpenUrl(const std::string& url) = 0;
};

}  // namespace amp
