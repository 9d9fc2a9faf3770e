// COM1..COM10 are slots bound to host serial devices. A slot can be pointed
// at any device path, such as a pseudo-terminal.
#pragma once

#include <array>
#include <string>

namespace amp {

class ComSlots {
 public:
  static constexpr int kCount = 10;

  // "" when the slot is unbound or the number is outside 1..10.
  const std::string& Path(int port) const {
    static const std::string none;
    return (port >= 1 && port <= kCount) ? paths_[port - 1] : none;
  }
  bool Bind(int port, std::string path) {
    if (port < 1 || port > kCount) return false;
    paths_[port - 1] = std::move(path);
    return true;
  }
  // The slot bound to `path`, or 0.
  int SlotOf(const std::string& path) const {
    for (int i = 0; i < kCount; ++i)
      if (!path.empty() && paths_[i] == path) return i + 1;
    return 0;
  }

 private:
  std::array<std::string, kCount> paths_{};
};

}  // namespace amp
