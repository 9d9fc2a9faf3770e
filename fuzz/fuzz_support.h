// Helpers shared by the fuzz targets: a reader that turns the fuzzer's bytes
// into decisions without ever failing, and a check that stops the run with a
// message naming the broken property (libFuzzer records the input).
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#define AMP_FUZZ_CHECK(cond)                                                                   \
  do {                                                                                         \
    if (!(cond)) {                                                                             \
      std::fprintf(stderr, "\nINVARIANT BROKEN: %s\n  at %s:%d\n", #cond, __FILE__, __LINE__); \
      std::abort();                                                                            \
    }                                                                                          \
  } while (0)

namespace amp::fuzz {

// Reads from the front. Past the end every byte reads as 0, so a short input
// is simply a plain one rather than a rejected one.
class ByteReader {
 public:
  ByteReader(const uint8_t* data, size_t size) : data_(data), size_(size) {}

  bool Empty() const { return pos_ >= size_; }
  size_t Left() const { return size_ - pos_; }
  uint8_t Byte() { return Empty() ? 0 : data_[pos_++]; }
  std::string Bytes(size_t n) {
    n = std::min(n, Left());
    std::string out(reinterpret_cast<const char*>(data_ + pos_), n);
    pos_ += n;
    return out;
  }
  std::string Rest() { return Bytes(Left()); }

 private:
  const uint8_t* data_;
  size_t size_;
  size_t pos_ = 0;
};

// AMPDESK_FUZZ_VERBOSE=1 prints what each operation of a run did, for
// reading a crash input by hand; fuzzing runs leave it off.
inline bool Verbose() {
  static const bool on = [] {
    const char* v = std::getenv("AMPDESK_FUZZ_VERBOSE");
    return v != nullptr && v[0] == '1';
  }();
  return on;
}

// Bytes as text with the control bytes named, for the verbose lines.
inline std::string Printed(std::string_view bytes, size_t limit = 80) {
  static const char* const kNames[] = {"NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL",
                                       "BS",  "HT",  "LF",  "VT",  "FF",  "CR",  "SO",  "SI",
                                       "DLE", "DC1", "DC2", "DC3", "DC4", "NAK", "SYN", "ETB",
                                       "CAN", "EM",  "SUB", "ESC", "FS",  "GS",  "RS",  "US"};
  std::string out;
  for (size_t i = 0; i < bytes.size() && i < limit; ++i) {
    const auto c = static_cast<unsigned char>(bytes[i]);
    if (c < 32) {
      out += '<';
      out += kNames[c];
      out += '>';
    } else if (c >= 127) {
      char hex[8];
      std::snprintf(hex, sizeof hex, "<%02X>", c);
      out += hex;
    } else {
      out += static_cast<char>(c);
    }
  }
  if (bytes.size() > limit) out += "...(" + std::to_string(bytes.size()) + " bytes)";
  return out;
}

// A delay byte: milliseconds as is, or in steps of 64 ms (up to 16.3 s, past
// every time-out of the link) when the scale bit is set.
inline int64_t DelayMs(bool coarse, uint8_t d) { return coarse ? int64_t{d} * 64 : int64_t{d}; }

}  // namespace amp::fuzz
