#include "sim/unit_state.h"

namespace amp::sim {

std::string EncodeWords(const StatusWords& words) {
  std::string out;
  for (uint8_t w : words) out += EncodeWord(w);
  return out;
}

bool DecodeWords(std::string_view text, StatusWords* out, std::string* error) {
  if (text.size() != out->size()) {
    if (error) *error = "status group '" + std::string(text) + "' must be exactly 4 characters";
    return false;
  }
  StatusWords words{};
  for (size_t i = 0; i < text.size(); ++i) {
    auto c = static_cast<unsigned char>(text[i]);
    if (c < 0x40 || c > 0x7F) {
      if (error)
        *error = "status group '" + std::string(text) + "': character " + std::to_string(i + 1) +
                 " is outside '@'..DEL (0x40..0x7F)";
      return false;
    }
    words[i] = c & 0x3F;
  }
  *out = words;
  return true;
}

bool ValidUnitId(unsigned value) { return value <= 0x3F3F && (value & 0xFF) <= 0x3F; }

std::string EncodeUnitId(uint16_t id) {
  std::string out;
  out += EncodeWord(static_cast<uint8_t>(id >> 8));
  out += EncodeWord(static_cast<uint8_t>(id & 0xFF));
  return out;
}

}  // namespace amp::sim
