#include "host_side.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>

namespace simtest {
namespace {

char Xor(std::string_view s) {
  unsigned char x = 0;
  for (unsigned char c : s) x ^= c;
  return static_cast<char>(x);
}

char PrintableSum(std::string_view s) {
  int sum = 0;
  for (unsigned char c : s) sum += c;
  return static_cast<char>((sum - 32) % 95 + 32);
}

int RemainingMs(Clock::time_point deadline) {
  auto left =
      std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
  return left < 0 ? 0 : static_cast<int>(left);
}

// One read within the deadline: >0 bytes, 0 closed, -1 timed out.
ssize_t ReadSome(int fd, char* buf, size_t size, Clock::time_point deadline) {
  while (true) {
    pollfd p{fd, POLLIN, 0};
    int rc = poll(&p, 1, RemainingMs(deadline));
    if (rc < 0 && errno == EINTR) continue;
    if (rc <= 0) return -1;
    ssize_t n = ::read(fd, buf, size);
    if (n < 0 && (errno == EINTR || errno == EAGAIN)) {
      if (Clock::now() >= deadline) return -1;
      continue;
    }
    return n < 0 ? 0 : n;
  }
}

}  // namespace

std::string Bytes(std::initializer_list<int> codes) {
  std::string s;
  for (int c : codes) s += static_cast<char>(c);
  return s;
}

std::string SerialFrame(char address, std::string_view text) {
  std::string f = "\x02";
  f += address;
  f += text;
  f += '\x03';
  f += Xor(f);
  return f;
}

std::string PrintableFrame(char address, std::string_view text) {
  std::string f = "{";
  f += address;
  f += text;
  f += '}';
  f += PrintableSum(f);
  return f;
}

std::string TcpFrame(char address, std::string_view text) {
  std::string f = "\x02";
  f += address;
  f += text;
  f += "\x03M\r\n";
  return f;
}

std::string ExpectedReply(bool ack, char address, std::string_view body) {
  std::string f(1, ack ? '\x06' : '\x15');
  f += address;
  f += body;
  f += '\x03';
  f += Xor(f);
  return f;
}

void Fd::Reset() {
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
}

Fd ConnectTcp(int port) {
  Fd fd(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_in addr{};
  addr.sin_family = AF_INET;
  addr.sin_port = htons(static_cast<uint16_t>(port));
  addr.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (connect(fd.get(), reinterpret_cast<sockaddr*>(&addr), sizeof addr) != 0) fd.Reset();
  return fd;
}

bool SendAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    ssize_t n = ::send(fd, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (n < 0 && errno == ENOTSOCK) n = ::write(fd, bytes.data(), bytes.size());
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    bytes.remove_prefix(static_cast<size_t>(n));
  }
  return true;
}

std::string ReadExactly(int fd, size_t n, int timeoutMs) {
  auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
  std::string out;
  char buf[4096];
  while (out.size() < n) {
    ssize_t got = ReadSome(fd, buf, std::min(sizeof buf, n - out.size()), deadline);
    if (got <= 0) break;
    out.append(buf, static_cast<size_t>(got));
  }
  return out;
}

std::string ReadUntil(int fd, std::string_view suffix, int timeoutMs) {
  auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
  std::string out;
  char c;
  while (!out.ends_with(suffix)) {
    if (ReadSome(fd, &c, 1, deadline) <= 0) break;
    out += c;
  }
  return out;
}

std::string ReadFor(int fd, int timeoutMs) {
  auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
  std::string out;
  char buf[4096];
  while (true) {
    ssize_t got = ReadSome(fd, buf, sizeof buf, deadline);
    if (got <= 0) break;
    out.append(buf, static_cast<size_t>(got));
  }
  return out;
}

std::vector<Chunk> ReadChunks(int fd, size_t n, int timeoutMs) {
  auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
  std::vector<Chunk> chunks;
  size_t total = 0;
  char buf[4096];
  while (total < n) {
    ssize_t got = ReadSome(fd, buf, sizeof buf, deadline);
    if (got <= 0) break;
    chunks.push_back({Clock::now(), std::string(buf, static_cast<size_t>(got))});
    total += static_cast<size_t>(got);
  }
  return chunks;
}

bool PeerClosed(int fd, int timeoutMs) {
  auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
  char buf[256];
  while (true) {
    ssize_t got = ReadSome(fd, buf, sizeof buf, deadline);
    if (got == 0) return true;
    if (got < 0) return false;
  }
}

bool SetSerialSpeed(int fd, speed_t speed, tcflag_t extraFlags) {
  termios t{};
  if (tcgetattr(fd, &t) != 0) return false;
  cfmakeraw(&t);
  t.c_cflag &= ~(CSIZE | PARENB | PARODD | CSTOPB);
  t.c_cflag |= CS8 | CLOCAL | CREAD | extraFlags;
  cfsetispeed(&t, speed);
  cfsetospeed(&t, speed);
  return tcsetattr(fd, TCSANOW, &t) == 0;
}

Fd OpenSerial(const std::string& path, speed_t speed, tcflag_t extraFlags) {
  Fd fd(::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
  if (fd.valid() && !SetSerialSpeed(fd.get(), speed, extraFlags)) fd.Reset();
  return fd;
}

}  // namespace simtest
