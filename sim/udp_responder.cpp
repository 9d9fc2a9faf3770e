#include "sim/udp_responder.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace amp::sim {

namespace {

constexpr size_t kProbeLength = 8;
constexpr int kPollMs = 100;

bool IsProbe(const char* data, ssize_t n) {
  if (n != static_cast<ssize_t>(kProbeLength) || data[0] != '\x01') return false;
  for (size_t i = 1; i < kProbeLength; ++i)
    if (data[i] != '\0') return false;
  return true;
}

}  // namespace

UdpResponder::UdpResponder(Options options) : opts_(std::move(options)) {}

UdpResponder::~UdpResponder() { Stop(); }

std::string UdpResponder::Answer(const Options& o) { return std::string(kHead) + o.description; }

// Twenty characters with the maker's name in them: one short of an answer.
std::string UdpResponder::ShortAnswer() { return std::string(kHead) + "Orvan short"; }

bool UdpResponder::IsLoopback(const std::string& address) {
  in_addr a{};
  return inet_pton(AF_INET, address.c_str(), &a) == 1 && (ntohl(a.s_addr) >> 24) == 127;
}

namespace {

// A UDP socket bound to address:port; -1 with the reason in `error`.
int BoundSocket(const std::string& address, int port, bool shared, std::string* error) {
  const int fd = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  sockaddr_in addr{};
  addr.sin_family = AF_INET;
  addr.sin_port = htons(static_cast<uint16_t>(port));
  const int one = 1;
  if (fd < 0 || inet_pton(AF_INET, address.c_str(), &addr.sin_addr) != 1 ||
      (shared && setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one) != 0) ||
      bind(fd, reinterpret_cast<sockaddr*>(&addr), sizeof addr) != 0) {
    *error = "udp " + address + ":" + std::to_string(port) + ": " + std::strerror(errno);
    if (fd >= 0) close(fd);
    return -1;
  }
  return fd;
}

}  // namespace

bool UdpResponder::Start(std::string* error) {
  if (!IsLoopback(opts_.host) || !IsLoopback(opts_.from)) {
    *error = "the unit search answers on loopback (127.0.0.0/8) only";
    return false;
  }
  fd_ = BoundSocket(opts_.host, opts_.port, true, error);
  if (fd_ < 0) return false;
  replyFd_ = BoundSocket(opts_.from, 0, false, error);
  sockaddr_in addr{};
  socklen_t len = sizeof addr;
  if (replyFd_ < 0 || getsockname(fd_, reinterpret_cast<sockaddr*>(&addr), &len) != 0) {
    Stop();
    return false;
  }
  port_ = ntohs(addr.sin_port);
  thread_ = std::thread([this] { Run(); });
  return true;
}

void UdpResponder::Stop() {
  stopping_ = true;
  if (thread_.joinable()) thread_.join();
  for (int* fd : {&fd_, &replyFd_}) {
    if (*fd >= 0) close(*fd);
    *fd = -1;
  }
}

void UdpResponder::Run() {
  const std::string answer = Answer(opts_);
  const std::string shortAnswer = ShortAnswer();
  char buf[512];
  while (!stopping_) {
    pollfd p{fd_, POLLIN, 0};
    if (poll(&p, 1, kPollMs) <= 0) continue;
    sockaddr_in from{};
    socklen_t fromLen = sizeof from;
    const ssize_t n =
        recvfrom(fd_, buf, sizeof buf, 0, reinterpret_cast<sockaddr*>(&from), &fromLen);
    if (!IsProbe(buf, n)) continue;
    auto send = [&](const std::string& d) {
      sendto(replyFd_, d.data(), d.size(), 0, reinterpret_cast<sockaddr*>(&from), fromLen);
    };
    if (opts_.shortFirst) send(shortAnswer);
    const int copies = opts_.flood > 0 ? opts_.flood : 1;
    for (int i = 0; i < copies && !stopping_; ++i) send(answer);
  }
}

}  // namespace amp::sim
