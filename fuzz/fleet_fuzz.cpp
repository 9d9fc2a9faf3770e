// Fuzzes the fleet file loader: any text either loads into units that keep
// the rules (unique names, one unit per address on a bus) or is refused with
// a message that names a line.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>

#include "fleet/fleet_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  amp::fleet::Fleet fleet;
  std::string error;
  if (!amp::fleet::ParseFleet(text, "f", &fleet, &error)) {
    if (error.rfind("f:", 0) != 0) std::abort();
    return 0;
  }
  std::set<std::string> names, busAddresses;
  for (const auto& u : fleet.units) {
    if (!names.insert(u.name).second || u.Tcp() == !u.serialDevice.empty()) std::abort();
    if (!u.Tcp() && !busAddresses.insert(u.serialDevice + '\n' + u.address).second) std::abort();
  }
  return 0;
}
