// COM1..COM10 are slots bound to host serial devices. A slot can be pointed
// at any device path, such as a pseudo-terminal.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

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

  // A slot the operator bound by hand (the environment): devices found later
  // never take it.
  void Pin(int port) {
    if (port >= 1 && port <= kCount) pinned_[port - 1] = true;
  }
  bool Pinned(int port) const { return port >= 1 && port <= kCount && pinned_[port - 1]; }

  // Binds each device not bound yet, in the order given, to the lowest slot
  // that is neither bound nor pinned. A bound device keeps its slot, also
  // while it is unplugged, so that a number means one device for the whole
  // run. Devices beyond the free slots are left out.
  void AddDevices(const std::vector<std::string>& devices) {
    int next = 1;
    for (const std::string& path : devices) {
      if (path.empty() || SlotOf(path) != 0) continue;
      while (next <= kCount && (Pinned(next) || !paths_[next - 1].empty())) ++next;
      if (next > kCount) return;
      paths_[next - 1] = path;
    }
  }

  // The host's serial devices as they are now, in the order they should take
  // slots; unset, a rescan finds nothing new.
  std::function<std::vector<std::string>()> listDevices;
  // Scan Ports: a device plugged in since start-up gets a free slot.
  void Rescan() {
    if (listDevices) AddDevices(listDevices());
  }

 private:
  std::array<std::string, kCount> paths_{};
  std::array<bool, kCount> pinned_{};
};

}  // namespace amp
