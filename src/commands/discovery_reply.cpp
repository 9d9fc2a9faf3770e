#include "commands/discovery_reply.h"

#include "basic/text.h"

namespace amp {

namespace {

constexpr size_t kShortestReply = 21;
constexpr size_t kHeadLength = 8;
constexpr size_t kAddressColumn = 16;

}  // namespace

std::string DiscoveryProbe() {
  std::string probe(8, '\0');
  probe[0] = '\x01';
  return probe;
}

std::optional<std::string> ParseDiscoveryReply(std::string_view datagram) {
  if (datagram.size() < kShortestReply) return std::nullopt;
  if (InStr(UCase(datagram), "ORVAN") == 0) return std::nullopt;
  return std::string(datagram.substr(kHeadLength));
}

std::string FoundUnitLine(const std::string& address, const std::string& description) {
  std::string line = address;
  if (line.size() < kAddressColumn) line.append(kAddressColumn - line.size(), ' ');
  return line + description;
}

}  // namespace amp
