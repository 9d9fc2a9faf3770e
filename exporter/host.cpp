#include "exporter/host.h"

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "display/modal.h"

namespace amp::exporter {

namespace {

// How long one frame may take to leave when the peer does not read.
constexpr int kSendStallMs = 2000;

}  // namespace

void LoopTcpSocket::Connect() {
  Close();
  addrinfo hints{};
  hints.ai_family = AF_UNSPEC;
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_flags = AI_NUMERICSERV;
  addrinfo* res = nullptr;
  const std::string port = std::to_string(port_);
  if (getaddrinfo(host_.c_str(), port.c_str(), &hints, &res) != 0 || !res) {
    state_ = sckError;
    return;
  }
  fd_ = socket(res->ai_family, res->ai_socktype | SOCK_NONBLOCK | SOCK_CLOEXEC, res->ai_protocol);
  if (fd_ < 0) {
    freeaddrinfo(res);
    state_ = sckError;
    return;
  }
  int one = 1;
  setsockopt(fd_, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
  const int rc = ::connect(fd_, res->ai_addr, res->ai_addrlen);
  freeaddrinfo(res);
  if (rc == 0) {
    state_ = sckConnected;
    if (events_.Connect) events_.Connect();
  } else if (errno == EINPROGRESS) {
    state_ = sckConnecting;
  } else {
    Fail(errno);
  }
}

void LoopTcpSocket::Fail(int error) {
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
  state_ = sckError;
  if (events_.Error) events_.Error(10000 + error, std::strerror(error), 0, "LoopTcpSocket");
}

void LoopTcpSocket::SendData(std::string_view bytes) {
  while (!bytes.empty() && state_ == sckConnected) {
    const ssize_t n = ::send(fd_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (n > 0) {
      bytes.remove_prefix(static_cast<size_t>(n));
    } else if (n < 0 && errno == EAGAIN) {
      if (!loop_.Wait(fd_, EPOLLOUT, kSendStallMs)) return;  // the exchange's time-out tells
    } else {
      state_ = sckError;
      return;
    }
  }
}

std::string LoopTcpSocket::GetData() {
  std::string out;
  out.swap(rx_);
  return out;
}

void LoopTcpSocket::Close() {
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
  state_ = sckClosed;
  rx_.clear();
}

void LoopTcpSocket::Pump(int ms) {
  if (state_ == sckConnecting) {
    if (!loop_.Wait(fd_, EPOLLOUT, ms) || state_ != sckConnecting) return;
    int error = 0;
    socklen_t len = sizeof error;
    getsockopt(fd_, SOL_SOCKET, SO_ERROR, &error, &len);
    if (error != 0) {
      Fail(error);
      return;
    }
    state_ = sckConnected;
    if (events_.Connect) events_.Connect();
    return;
  }
  if (state_ != sckConnected) {
    loop_.Sleep(ms);
    return;
  }
  if (!loop_.Wait(fd_, EPOLLIN | EPOLLRDHUP, ms) || state_ != sckConnected) return;
  char buffer[4096];
  size_t got = 0;
  bool peerClosed = false;
  for (;;) {
    const ssize_t n = ::recv(fd_, buffer, sizeof buffer, 0);
    if (n > 0) {
      rx_.append(buffer, static_cast<size_t>(n));
      got += static_cast<size_t>(n);
      // A babbling peer cannot hold the fiber: what came so far is delivered.
      if (got >= 65536) break;
      continue;
    }
    if (n == 0) peerClosed = true;
    if (n < 0 && errno != EAGAIN && errno != EINTR) {
      if (got == 0) {
        Fail(errno);
        return;
      }
    }
    break;
  }
  if (got > 0 && events_.DataArrival) events_.DataArrival(static_cast<long>(got));
  if (peerClosed && state_ == sckConnected) {
    state_ = sckClosing;
    if (events_.Close) events_.Close();
  }
}

MsgResult QuietDialogs::MsgBox(const std::string& text, MsgButtons buttons, MsgIcon,
                               const std::string& title, MsgDefault) {
  last = title + ": " + text;
  return SafeAnswer(buttons);
}

void QuietDialogs::ShowModal(ui::Form& form) { ui::CancelModal(form); }

}  // namespace amp::exporter
