#include "basic/checksum.h"

namespace amp {

uint8_t XorChecksum(std::string_view frame) {
  uint8_t sum = 0;
  for (unsigned char c : frame) sum ^= c;
  return sum;
}

uint8_t PrintableChecksum(std::string_view frame) {
  // 32-bit signed sum as the unit computes it; truncating modulo.
  int32_t sum = 0;
  for (unsigned char c : frame) sum += c;
  return static_cast<uint8_t>(((sum - 32) % 95) + 32);
}

}  // namespace amp
