// Binding of COM1..COM10 to the host's serial devices at start-up.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/com_slots.h"

namespace amp {

// AMPDESK_COMn, when set, binds COMn to its value (an empty value keeps the
// slot unbound on purpose). The remaining slots are filled in order from the
// serial devices the host reports: USB adapters (ttyUSB*, ttyACM*) first, as
// they are what the amplifiers are usually wired to, then other devices, then
// the on-board ttyS* ports. At most ten devices are bound. Scan Ports asks the
// host again: a device plugged in later takes a free slot, and the slots
// already bound stay as they are.
ComSlots DefaultComSlots();

// Devices in the order they take free slots (the rule above), duplicates
// dropped.
std::vector<std::string> RankDevices(std::vector<std::string> available);

// The rule above with its inputs made explicit. `env(n)` gives the value of
// AMPDESK_COMn or nullopt when it is not set; `available` is the device paths
// in any order.
ComSlots BuildComSlots(const std::function<std::optional<std::string>(int)>& env,
                       std::vector<std::string> available);

// The slot for a device named on a command line: COMn by its number, or the
// slot of a device path (binding the first free slot to it, or the last slot
// when all are taken). 0 when the name is not usable.
int SlotForDevice(ComSlots& slots, const std::string& device);

}  // namespace amp
