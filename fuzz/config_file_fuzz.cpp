// The configuration file loader's reading side: the fuzzer's bytes as a file
// on disk, read through FileIO and ReadCmdScript. Whatever the bytes, the
// reader ends, and either refuses the file (no commands at all) or gives
// exactly its lines that are neither empty nor comments, each a command that
// can go into a frame.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "datafiles/config_files.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const std::string path = "/dev/shm/config_file_fuzz." + std::to_string(getpid());
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  if (std::FILE* out = std::fopen(path.c_str(), "wb")) {
    std::fwrite(bytes.data(), 1, bytes.size(), out);
    std::fclose(out);
  }
  amp::FileIO file;
  if (!file.OpenCmdFile(path, true)) __builtin_trap();
  const amp::CmdScript script = amp::ReadCmdScript(file);
  if (!script.error.empty()) {
    if (!script.commands.empty() || script.errorLine < 1) __builtin_trap();
    return 0;
  }
  std::vector<std::string> expected;
  for (size_t start = 0; start < bytes.size();) {
    size_t end = bytes.find('\n', start);
    if (end == std::string::npos) end = bytes.size();
    std::string line = bytes.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty() && line[0] != '#') expected.push_back(line);
    start = end + 1;
  }
  if (script.commands != expected) __builtin_trap();
  for (const std::string& c : script.commands)
    if (!amp::CheckCommandLine(c).empty()) __builtin_trap();
  return 0;
}
