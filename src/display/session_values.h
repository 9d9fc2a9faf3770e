// What the first read learns about the unit beyond its identity: option
// words, limits and texts that later handlers and the configuration writer
// consult. Reset with the panel when a session ends.
#pragma once

#include <cstdint>
#include <string>

namespace amp {

struct SessionValues {
  std::string gOemName;        // ".?P131", kept only when exactly 20 characters
};

}  // namespace amp
