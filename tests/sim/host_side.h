// The host's end of the wire for the simulator tests: frames built from the
// protocol rules (not from the simulator's encoder), plain sockets and
// pseudo-terminal access, and reads that always end within a time limit.
#pragma once

#include <termios.h>

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace simtest {

using Clock = std::chrono::steady_clock;

std::string Bytes(std::initializer_list<int> codes);

// Request frames as a host sends them.
std::string SerialFrame(char address, std::string_view text);  // STX .. ETX xor
// { .. } sum; a unit's reply in this framing is built alike, a refusal
// having an empty body.
std::string PrintableFrame(char address, std::string_view text);
std::string TcpFrame(char address, std::string_view text);  // STX .. ETX 'M' CR LF

// The reply a unit should send (without any TCP line ending).
std::string ExpectedReply(bool ack, char address, std::string_view body);

// Owns a file descriptor.
class Fd {
 public:
  Fd() = default;
  explicit Fd(int fd) : fd_(fd) {}
  ~Fd() { Reset(); }
  Fd(Fd&& o) noexcept : fd_(o.Release()) {}
  Fd& operator=(Fd&& o) noexcept {
    if (this != &o) {
      Reset();
      fd_ = o.Release();
    }
    return *this;
  }
  int get() const { return fd_; }
  bool valid() const { return fd_ >= 0; }
  int Release() {
    int f = fd_;
    fd_ = -1;
    return f;
  }
  void Reset();

 private:
  int fd_ = -1;
};

Fd ConnectTcp(int port);
bool SendAll(int fd, std::string_view bytes);

// Reads until `n` bytes arrived, the peer closed, or `timeoutMs` passed.
std::string ReadExactly(int fd, size_t n, int timeoutMs);
// Reads until the data ends with `suffix` (or close/timeout).
std::string ReadUntil(int fd, std::string_view suffix, int timeoutMs);
// Reads whatever arrives within `timeoutMs`; always waits the full time
// unless the peer closes.
std::string ReadFor(int fd, int timeoutMs);

struct Chunk {
  Clock::time_point at;
  std::string bytes;
};
// Like ReadExactly but keeps each read() separately with its arrival time.
std::vector<Chunk> ReadChunks(int fd, size_t n, int timeoutMs);

// True when the peer closed the connection within `timeoutMs`.
bool PeerClosed(int fd, int timeoutMs);

// Opens a pseudo-terminal slave as the host does: raw, 8 data bits, the
// given speed and any extra c_cflag bits (CSTOPB, PARENB ...).
Fd OpenSerial(const std::string& path, speed_t speed, tcflag_t extraFlags = 0);
bool SetSerialSpeed(int fd, speed_t speed, tcflag_t extraFlags = 0);

}  // namespace simtest
