// The unit search on UDP: the probe a unit answers, and the rule that takes
// or refuses an answer. Datagrams come from the network and are untrusted:
// any bytes at all must give a clean yes or no.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace amp {

// Where the probe goes and where the answers come back.
inline constexpr const char* kDiscoveryBroadcast = "255.255.255.255";
inline constexpr int kDiscoveryRemotePort = 2000;
inline constexpr int kDiscoveryLocalPort = 2001;

// Eight bytes: 0x01, then seven 0x00.
std::string DiscoveryProbe();

// An answer is taken when it has at least 21 characters and holds "Orvan"
// in any case anywhere; the description is the text from the ninth
// character on (the first eight are a head the units fill in themselves).
// nullopt for a refused answer.
std::optional<std::string> ParseDiscoveryReply(std::string_view datagram);

// A line of the list of units: the address, blanks up to column 16 (none
// when it is 16 characters or longer), then the description.
std::string FoundUnitLine(const std::string& address, const std::string& description);

}  // namespace amp
