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

#include "link/comms.h"
#include "support/recording_panel.h"

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

// A delay byte: milliseconds as is, or in steps of 64 ms (up to 16.3 s, past
// every time-out of the link) when the scale bit is set.
inline int64_t DelayMs(bool coarse, uint8_t d) { return coarse ? int64_t{d} * 64 : int64_t{d}; }

// What a status poll leaves, over either link: the three words are found by
// count after the first "?" of the reply (4, 4, then 1 or 4 characters; a
// block two or three characters short still passes, the alarm word then
// taking the end byte and checksum as the unit's hosts always did), they
// reach the panel in order, and a miss counts down from 2 until the third
// in a row ends the session. `exchanged`: the reply came back acknowledged.
inline void CheckPoll(const Comms& comms, const test::RecordingPanel& panel, bool timerEnabled,
                      bool ok, bool exchanged, int16_t missedBefore) {
  const std::string& rx = comms.Link.RxMessage;
  const size_t q = rx.find('?');
  AMP_FUZZ_CHECK(ok == (exchanged && q != std::string::npos && rx.size() >= q + 11));
  AMP_FUZZ_CHECK(comms.session.gMissedPolls >= 0 && comms.session.gMissedPolls <= 2);
  if (ok) {
    const auto& f = comms.gRespFields;
    AMP_FUZZ_CHECK(f[0] == rx.substr(q + 1, 4) && f[1] == rx.substr(q + 5, 4));
    AMP_FUZZ_CHECK(f[2] == rx.substr(q + 9, comms.gOneCharAlarm ? 1 : 4));
    AMP_FUZZ_CHECK(f[0].size() == 4 && f[1].size() == 4);
    if (comms.gOneCharAlarm) {
      AMP_FUZZ_CHECK(f[2].size() == 1);
    } else {
      AMP_FUZZ_CHECK(f[2].size() >= 2 && f[2].size() <= 4);
      AMP_FUZZ_CHECK(f[2].size() == 4 || rx.size() < q + 13);
    }
    // The socket's events during the wait may have logged first.
    const auto& log = panel.log;
    const auto at = std::find(log.begin(), log.end(), "summary:" + f[0]);
    AMP_FUZZ_CHECK(log.end() - at >= 3 && at[1] == "fault:" + f[1] && at[2] == "alarm:" + f[2]);
    AMP_FUZZ_CHECK(comms.session.gMissedPolls == 2);
  } else if (missedBefore > 0) {
    AMP_FUZZ_CHECK(comms.session.gMissedPolls == missedBefore - 1);
  } else {
    AMP_FUZZ_CHECK(comms.session.gMissedPolls == 0 && panel.Saw("ClearForm") && !timerEnabled);
  }
}

}  // namespace amp::fuzz
