#include "exporter/serial_bus.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <map>

namespace amp::exporter {

namespace {

constexpr int kWaitForLineMs = 2;
constexpr int kWriteStallMs = 2000;

// "9600,N,8,1" onto a raw line; "" or what is wrong.
std::string Apply(int fd, const std::string& settings) {
  static const std::map<std::string, speed_t> kSpeeds = {
      {"1200", B1200},   {"2400", B2400},     {"4800", B4800},
      {"9600", B9600},   {"19200", B19200},   {"38400", B38400},
      {"57600", B57600}, {"115200", B115200}, {"230400", B230400}};
  std::string parts[4];
  size_t b = 0;
  for (int i = 0; i < 4; ++i) {
    const size_t e = settings.find(',', b);
    parts[i] = settings.substr(b, e == std::string::npos ? std::string::npos : e - b);
    b = e == std::string::npos ? settings.size() : e + 1;
  }
  const auto speed = kSpeeds.find(parts[0]);
  if (speed == kSpeeds.end()) return "baud rate " + parts[0] + " is not supported here";
  termios t{};
  if (tcgetattr(fd, &t) != 0) return std::strerror(errno);
  cfmakeraw(&t);
  t.c_cflag |= CLOCAL | CREAD;
  cfsetispeed(&t, speed->second);
  cfsetospeed(&t, speed->second);
  t.c_cflag &= ~(CSIZE | PARENB | PARODD | CSTOPB);
  const char data = parts[2].empty() ? '8' : parts[2][0];
  t.c_cflag |= data == '5' ? CS5 : data == '6' ? CS6 : data == '7' ? CS7 : CS8;
  const char parity = parts[1].empty() ? 'N' : static_cast<char>(std::toupper(parts[1][0]));
  if (parity == 'E') t.c_cflag |= PARENB;
  if (parity == 'O') t.c_cflag |= PARENB | PARODD;
  if (parts[3] != "1") t.c_cflag |= CSTOPB;
  if (tcsetattr(fd, TCSANOW, &t) != 0) return std::strerror(errno);
  return "";
}

}  // namespace

SerialBus::~SerialBus() {
  if (fd_ >= 0) ::close(fd_);
}

std::string SerialBus::Open(const std::string& settings) {
  if (fd_ < 0) {
    fd_ = ::open(device_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd_ < 0) return device_ + ": " + std::strerror(errno);
    const std::string why = Apply(fd_, settings);
    if (!why.empty()) {
      ::close(fd_);
      fd_ = -1;
      return device_ + ": " + why;
    }
  }
  ++users_;
  return "";
}

void SerialBus::Close() {
  if (users_ > 0 && --users_ == 0 && fd_ >= 0) {
    ::close(fd_);
    fd_ = -1;
  }
}

void SerialBus::Acquire(const void* who) {
  if (holder_ == who) return;
  waiting_.push_back(who);
  while (holder_ != nullptr || waiting_.front() != who) loop_.Sleep(kWaitForLineMs);
  waiting_.pop_front();
  holder_ = who;
}

void SerialBus::Release(const void* who) {
  if (holder_ == who) holder_ = nullptr;
}

void SerialBus::ReadAvailable() {
  if (fd_ < 0) return;
  char buffer[1024];
  for (ssize_t n; (n = ::read(fd_, buffer, sizeof buffer)) > 0;) {
    rx_.append(buffer, static_cast<size_t>(n));
    if (rx_.size() > 65536) rx_.erase(0, rx_.size() - 65536);  // a babbling line
  }
}

void SerialBus::Drain() {
  ReadAvailable();
  rx_.clear();
}

bool SerialBus::WaitForInput(int ms) {
  ReadAvailable();
  if (!rx_.empty() || fd_ < 0) return !rx_.empty();
  if (loop_.Wait(fd_, EPOLLIN, ms)) ReadAvailable();
  return !rx_.empty();
}

std::string SerialBus::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    if (fd_ < 0) return "Port is closed";
    const ssize_t n = ::write(fd_, bytes.data(), bytes.size());
    if (n > 0) {
      bytes.remove_prefix(static_cast<size_t>(n));
    } else if (n < 0 && errno == EAGAIN) {
      if (!loop_.Wait(fd_, EPOLLOUT, kWriteStallMs)) return "write stalled";
    } else {
      return std::strerror(errno);
    }
  }
  return "";
}

std::string BusPort::SetSettings(std::string_view settings) {
  settings_ = std::string(settings);
  return "";
}

std::string BusPort::SetPortOpen(bool open) {
  if (open == open_) return open ? "Port already open" : "";
  if (open) {
    const std::string why = bus_.Open(settings_);
    if (!why.empty()) return why;
  } else {
    bus_.Release(this);
    bus_.Close();
  }
  open_ = open;
  return "";
}

int BusPort::InBufferCount() {
  bus_.ReadAvailable();
  return static_cast<int>(bus_.rx().size());
}

// Every exchange starts by dropping what is left on the line: that is where
// this unit takes its turn.
void BusPort::SetInBufferCount(int n) {
  if (n != 0) return;
  bus_.Acquire(this);
  bus_.Drain();
}

std::string BusPort::Input() {
  std::string& rx = bus_.rx();
  const size_t n = inputLen_ <= 0 ? rx.size() : std::min(rx.size(), static_cast<size_t>(inputLen_));
  std::string out = rx.substr(0, n);
  rx.erase(0, n);
  return out;
}

std::string BusPort::Output(std::string_view bytes) {
  bus_.Acquire(this);
  return bus_.Write(bytes);
}

bool BusPort::WaitForInput(int ms) { return bus_.WaitForInput(ms); }

}  // namespace amp::exporter
