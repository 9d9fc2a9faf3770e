// Frame checksums shared by the host's link layer and the simulated unit.
// Both are computed over the frame from its start byte through its end byte.
#pragma once

#include <cstdint>
#include <string_view>

namespace amp {

// XOR of every byte; 0..255.
uint8_t XorChecksum(std::string_view frame);

// Sum of every byte, folded into the printable range: ((sum - 32) mod 95) + 32.
uint8_t PrintableChecksum(std::string_view frame);

// Frame bytes of the protocol.
inline constexpr char STX = 0x02;
inline constexpr char ETX = 0x03;
inline constexpr char ACK = 0x06;
inline constexpr char NAK = 0x15;
inline constexpr char PSTART = '{';
inline constexpr char PEND = '}';

}  // namespace amp
