// A frame trace for bug reports: every frame both ways with a timestamp, its
// bytes in hex and as readable text, one line each.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

#include "platform/event_pump.h"

namespace amp {

class FrameTrace {
 public:
  explicit FrameTrace(Clock& clock) : clock_(clock) {}
  ~FrameTrace();
  FrameTrace(const FrameTrace&) = delete;
  FrameTrace& operator=(const FrameTrace&) = delete;

  // Opens (appends to) the file; "-" is standard error. False with a reason
  // in `error` when the file cannot be written.
  bool Open(const std::string& path, std::string* error);
  bool IsOpen() const { return file_ != nullptr; }
  // direction 't' (to the unit) or 'r' (from the unit)
  void Write(char direction, std::string_view bytes);
  // One line per frame: "   12.345 tx 02 41 31 03 71  <STX>A1<ETX>q"
  static std::string FormatLine(double seconds, char direction, std::string_view bytes);

 private:
  Clock& clock_;
  std::FILE* file_ = nullptr;
  bool ownsFile_ = false;
  int64_t startMs_ = 0;
};

}  // namespace amp
