// Datagrams answering the unit search come from anyone on the network. Any
// bytes must give a clean yes or no, a description that is a tail of the
// datagram, and a list line that starts with the sender's address.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "basic/text.h"
#include "commands/discovery_reply.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view datagram(reinterpret_cast<const char*>(data), size);
  const auto description = amp::ParseDiscoveryReply(datagram);
  if (!description) return 0;
  if (size < 21 || description->size() != size - 8 ||
      datagram.substr(8) != std::string_view(*description))
    std::abort();
  // The sender's address as a host may report it, then the line the list shows.
  const std::string address = size > 24 ? std::string(datagram.substr(0, 16)) : "127.0.0.1";
  const std::string line = amp::FoundUnitLine(address, *description);
  if (line.compare(0, address.size(), address) != 0 || line.size() < 16) std::abort();
  amp::Like(line.substr(0, line.find(' ')), "**#.**#.**#.**#");
  return 0;
}
