#include "link/frame_trace.h"

#include <cerrno>
#include <cstring>

#include "basic/text.h"

namespace amp {

FrameTrace::~FrameTrace() {
  if (file_ && ownsFile_) std::fclose(file_);
}

bool FrameTrace::Open(const std::string& path, std::string* error) {
  if (path == "-") {
    file_ = stderr;
    ownsFile_ = false;
  } else {
    file_ = std::fopen(path.c_str(), "a");
    if (!file_) {
      if (error) *error = "cannot write the trace file " + path + ": " + std::strerror(errno);
      return false;
    }
    ownsFile_ = true;
  }
  startMs_ = clock_.NowMs();
  return true;
}

std::string FrameTrace::FormatLine(double seconds, char direction, std::string_view bytes) {
  char stamp[32];
  std::snprintf(stamp, sizeof stamp, "%10.3f %s ", seconds, direction == 't' ? "tx" : "rx");
  return std::string(stamp) + Hex(bytes) + "  " + Readable(bytes);
}

void FrameTrace::Write(char direction, std::string_view bytes) {
  if (!file_) return;
  const double s = static_cast<double>(clock_.NowMs() - startMs_) / 1000.0;
  const std::string line = FormatLine(s, direction, bytes);
  std::fprintf(file_, "%s\n", line.c_str());
  std::fflush(file_);
}

}  // namespace amp
