#include "sim/simulator.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>
#include <cmath>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>

#include "basic/checksum.h"

namespace amp::sim {
namespace {

long long NowNs() {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(
             std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

constexpr long long kMs = 1'000'000;
// Babble: a burst of 16 junk bytes every 16 ms, about 1 kB/s.
constexpr long long kBabbleIntervalNs = 16 * kMs;
constexpr size_t kBabbleBurst = 16;
// The LF of a TCP reply's CR LF, when sent on its own, follows this late.
constexpr long long kLfDelayNs = 50 * kMs;
// A peer that has not taken a reply within this time loses the rest of it;
// the unit never waits on the host for longer.
constexpr long long kWriteStallNs = 1000 * kMs;

void CloseFd(int& fd) {
  if (fd >= 0) ::close(fd);
  fd = -1;
}

bool SetNonBlocking(int fd) {
  int flags = fcntl(fd, F_GETFL);
  return flags >= 0 && fcntl(fd, F_SETFL, flags | O_NONBLOCK) == 0;
}

std::string Errno(const std::string& what) { return what + ": " + std::strerror(errno); }

}  // namespace

Simulator::Simulator(Options options) : opts_(std::move(options)) {
  state_ = opts_.unit;
  faults_ = opts_.faults;
  AddStandardCommands(commands_);
}

Simulator::~Simulator() { Stop(); }

bool Simulator::Start(std::string* error) {
  if (thread_.joinable()) {
    if (error) *error = "already running";
    return false;
  }
  auto fail = [&](const std::string& why) {
    if (error) *error = why;
    CloseAll();
    return false;
  };
  if (!opts_.tcp && !opts_.serial) return fail("neither TCP nor serial is enabled");
  std::string why;
  if (!ParseLineSettings(opts_.line, &line_, &why)) return fail(why);
  if (opts_.baud < 0) return fail("baud must not be negative");

  client_ = Channel{-1, true, FrameParser(opts_.printable, false)};
  serial_ = Channel{-1, false, FrameParser(opts_.printable, true)};

  // The unit's thread is not running yet: nothing else touches these.
  frameCount_ = replyCount_ = 0;
  if (!opts_.frameLog.empty()) {
    log_ = std::fopen(opts_.frameLog.c_str(), "a");
    if (!log_) return fail(Errno("cannot open frame log '" + opts_.frameLog + "'"));
  }

  int pipeFds[2];
  if (pipe2(pipeFds, O_NONBLOCK | O_CLOEXEC) != 0) return fail(Errno("pipe"));
  wakeRead_ = pipeFds[0];
  wakeWrite_ = pipeFds[1];

  if (opts_.tcp) {
    if (opts_.tcpPort < 0 || opts_.tcpPort > 65535)
      return fail("TCP port " + std::to_string(opts_.tcpPort) + " is out of range");
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_PASSIVE | AI_NUMERICSERV;
    addrinfo* res = nullptr;
    std::string port = std::to_string(opts_.tcpPort);
    int rc = getaddrinfo(opts_.tcpHost.c_str(), port.c_str(), &hints, &res);
    if (rc != 0 || !res) return fail("cannot resolve '" + opts_.tcpHost + "': " + gai_strerror(rc));
    std::string where = opts_.tcpHost + ":" + port;
    listenFd_ =
        socket(res->ai_family, res->ai_socktype | SOCK_NONBLOCK | SOCK_CLOEXEC, res->ai_protocol);
    if (listenFd_ < 0) {
      freeaddrinfo(res);
      return fail(Errno("socket"));
    }
    int one = 1;
    setsockopt(listenFd_, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
    bool ok = bind(listenFd_, res->ai_addr, res->ai_addrlen) == 0;
    freeaddrinfo(res);
    if (!ok) return fail(Errno("cannot listen on " + where));
    if (listen(listenFd_, 4) != 0) return fail(Errno("cannot listen on " + where));
    sockaddr_storage bound{};
    socklen_t len = sizeof bound;
    getsockname(listenFd_, reinterpret_cast<sockaddr*>(&bound), &len);
    boundPort_ =
        ntohs(bound.ss_family == AF_INET6 ? reinterpret_cast<sockaddr_in6*>(&bound)->sin6_port
                                          : reinterpret_cast<sockaddr_in*>(&bound)->sin_port);
    ReportListenAddress();
  }

  if (opts_.serial) {
    serial_.fd = posix_openpt(O_RDWR | O_NOCTTY);
    if (serial_.fd < 0) return fail(Errno("cannot open a pseudo-terminal"));
    fcntl(serial_.fd, F_SETFD, FD_CLOEXEC);
    char name[128];
    if (!SetNonBlocking(serial_.fd) || grantpt(serial_.fd) != 0 || unlockpt(serial_.fd) != 0 ||
        ptsname_r(serial_.fd, name, sizeof name) != 0)
      return fail(Errno("cannot set up the pseudo-terminal"));
    slavePath_ = name;
    // Holding the slave open means the master never reads EIO or sees a
    // hang-up when the host closes its side; this fd is never read.
    slaveKeepFd_ = ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (slaveKeepFd_ < 0) return fail(Errno("cannot open " + slavePath_));
    termios t{};
    if (tcgetattr(slaveKeepFd_, &t) != 0) return fail(Errno("tcgetattr " + slavePath_));
    // Raw, so ETX is not a signal key and CR is not turned into LF.
    cfmakeraw(&t);
    t.c_cflag |= CLOCAL | CREAD;
    // Find out whether this kernel's pseudo-terminals keep data bits and
    // parity (recent ones force 8 bits, no parity) before relying on them.
    termios probe = t;
    probe.c_cflag = (probe.c_cflag & ~CSIZE) | CS7 | PARENB;
    termios back{};
    ptyCarriesCharFormat_ = tcsetattr(slaveKeepFd_, TCSANOW, &probe) == 0 &&
                            tcgetattr(slaveKeepFd_, &back) == 0 && (back.c_cflag & CSIZE) == CS7 &&
                            (back.c_cflag & PARENB);
    // Start with the unit's own settings so a host that keeps them just works.
    line_.ApplyTo(t);
    if (tcsetattr(slaveKeepFd_, TCSANOW, &t) != 0) return fail(Errno("tcsetattr " + slavePath_));
  }

  stopping_ = false;
  thread_ = std::thread(&Simulator::Run, this);
  return true;
}

// A unit reports the address and port it answers on. A host that takes
// them over (as the first read does) must reach this simulator again, not
// the profile's made-up network, so they follow the listener. A name that is
// not a dotted address (such as "localhost") leaves the profile's address.
void Simulator::ReportListenAddress() {
  in_addr probe{};
  if (state_.values.count("net.ip") && inet_pton(AF_INET, opts_.tcpHost.c_str(), &probe) == 1)
    state_.values["net.ip"] = opts_.tcpHost;
  if (state_.values.count("net.port")) state_.values["net.port"] = std::to_string(boundPort_);
}

void Simulator::Stop() {
  if (thread_.joinable()) {
    stopping_ = true;
    Wake();
    thread_.join();
  }
  CloseAll();
}

void Simulator::CloseAll() {
  CloseFd(client_.fd);
  CloseFd(serial_.fd);
  CloseFd(slaveKeepFd_);
  CloseFd(listenFd_);
  CloseFd(wakeRead_);
  CloseFd(wakeWrite_);
  std::lock_guard<std::mutex> lock(mu_);
  if (log_) std::fclose(log_);
  log_ = nullptr;
}

int Simulator::TcpPort() const { return boundPort_; }
std::string Simulator::SerialPath() const { return slavePath_; }

void Simulator::SetFaults(const Faults& faults) {
  {
    std::lock_guard<std::mutex> lock(mu_);
    faults_ = faults;
    frameCount_ = replyCount_ = 0;
  }
  Wake();  // babble may have been switched on
}

Simulator::Faults Simulator::CurrentFaults() const {
  std::lock_guard<std::mutex> lock(mu_);
  return faults_;
}

void Simulator::SetStatus(const StatusWords& summary, const StatusWords& fault,
                          const StatusWords& alarm) {
  std::lock_guard<std::mutex> lock(mu_);
  state_.summary = summary;
  state_.fault = fault;
  state_.alarm = alarm;
}

void Simulator::SetSilent(bool silent) {
  {
    std::lock_guard<std::mutex> lock(mu_);
    silent_ = silent;
    if (!silent) replyCount_ = 0;
  }
  Wake();
}

bool Simulator::Silent() const {
  std::lock_guard<std::mutex> lock(mu_);
  return silent_;
}

std::vector<std::string> Simulator::ReceivedFrames() const {
  std::lock_guard<std::mutex> lock(mu_);
  return {received_.begin(), received_.end()};
}

void Simulator::ClearReceivedFrames() {
  std::lock_guard<std::mutex> lock(mu_);
  received_.clear();
}

void Simulator::Wake() {
  if (wakeWrite_ >= 0) {
    char c = 1;
    [[maybe_unused]] ssize_t n = ::write(wakeWrite_, &c, 1);  // full pipe: already awake
  }
}

void Simulator::DrainWake() {
  char buf[64];
  while (::read(wakeRead_, buf, sizeof buf) > 0) {
  }
}

bool Simulator::SleepUntil(long long deadlineNs) {
  while (!stopping_) {
    long long left = deadlineNs - NowNs();
    if (left <= 0) return true;
    timespec ts{static_cast<time_t>(left / 1'000'000'000), static_cast<long>(left % 1'000'000'000)};
    pollfd p{wakeRead_, POLLIN, 0};
    if (ppoll(&p, 1, &ts, nullptr) > 0) DrainWake();
  }
  return false;
}

bool Simulator::SleepFor(long long ns) { return SleepUntil(NowNs() + ns); }

void Simulator::Run() {
  long long nextBabble = NowNs();
  while (!stopping_) {
    bool babble;
    {
      std::lock_guard<std::mutex> lock(mu_);
      babble = faults_.babble && !silent_;
    }
    pollfd fds[4];
    int n = 0;
    fds[n++] = {wakeRead_, POLLIN, 0};
    int listenIdx = -1, clientIdx = -1, serialIdx = -1;
    if (listenFd_ >= 0) {
      listenIdx = n;
      fds[n++] = {listenFd_, POLLIN, 0};
    }
    if (client_.fd >= 0) {
      clientIdx = n;
      fds[n++] = {client_.fd, POLLIN, 0};
    }
    if (serial_.fd >= 0) {
      serialIdx = n;
      fds[n++] = {serial_.fd, POLLIN, 0};
    }
    int timeoutMs = -1;
    if (babble) {
      long long now = NowNs();
      if (nextBabble < now - kBabbleIntervalNs) nextBabble = now;  // don't catch up after a stall
      timeoutMs = static_cast<int>(std::max(0LL, (nextBabble - now + kMs - 1) / kMs));
    }
    int rc = poll(fds, n, timeoutMs);
    if (rc < 0 && errno != EINTR) break;
    if (stopping_) break;
    if (rc > 0) {
      if (fds[0].revents) DrainWake();
      bool accepted = listenIdx >= 0 && (fds[listenIdx].revents & POLLIN);
      if (accepted) AcceptClient();
      // After an accept the polled client may be gone and its fd number
      // reused; the newcomer is polled on the next round.
      if (!accepted && clientIdx >= 0 && fds[clientIdx].revents) ReadChannel(client_);
      if (serialIdx >= 0 && fds[serialIdx].revents) {
        if (fds[serialIdx].revents & POLLIN) {
          ReadChannel(serial_);
        } else {
          SleepFor(20 * kMs);  // hang-up without data: don't spin
        }
      }
    }
    if (babble && NowNs() >= nextBabble) {
      Babble();
      nextBabble += kBabbleIntervalNs;
    }
  }
}

void Simulator::Babble() {
  std::string junk;
  while (junk.size() < kBabbleBurst) {
    junkSeed_ = junkSeed_ * 1664525u + 1013904223u;
    char c = static_cast<char>(junkSeed_ >> 24);
    // Junk never holds a byte that starts or ends a frame, so the host's
    // resynchronisation is exercised without random frames being forged.
    if (c == STX || c == ETX || c == ACK || c == NAK || c == PSTART || c == PEND) continue;
    junk += c;
  }
  for (Channel* ch : {&client_, &serial_}) {
    if (ch->fd < 0) continue;
    ssize_t n = ch->tcp ? ::send(ch->fd, junk.data(), junk.size(), MSG_NOSIGNAL | MSG_DONTWAIT)
                        : ::write(ch->fd, junk.data(), junk.size());
    (void)n;  // a full buffer just loses noise
  }
}

void Simulator::AcceptClient() {
  int fd = accept4(listenFd_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
  if (fd < 0) return;
  // One host at a time, as with the serial-to-network adapters such units
  // sit behind: a new connection takes over from the old one.
  CloseClient();
  int one = 1;
  setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
  client_.fd = fd;
  client_.parser.Reset();
}

void Simulator::CloseClient() {
  CloseFd(client_.fd);
  client_.parser.Reset();
}

bool Simulator::SerialLineMatches() const {
  termios t{};
  // On Linux the master reports the slave's settings, i.e. the host's.
  if (tcgetattr(serial_.fd, &t) != 0) return true;
  return line_.Matches(t, ptyCarriesCharFormat_);
}

void Simulator::ReadChannel(Channel& ch) {
  char buf[4096];
  ssize_t n = ::read(ch.fd, buf, sizeof buf);
  if (n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR)) return;
  if (n <= 0) {
    if (ch.tcp) {
      CloseClient();
    } else {
      SleepFor(20 * kMs);  // EIO from the master: nothing to read yet
    }
    return;
  }
  if (!ch.tcp && !SerialLineMatches()) {
    // Sent at the wrong speed or framing, the bytes arrive as garbage.
    ch.parser.Reset();
    return;
  }
  std::string_view in(buf, static_cast<size_t>(n));
  RxFrame frame;
  while (ch.parser.Next(in, &frame)) {
    if (!HandleFrame(ch, frame)) return;
  }
}

void Simulator::LogFrame(const RxFrame& frame) {
  if (!log_) return;
  long long ms = NowNs() / kMs;
  std::fprintf(log_, "%lld.%03lld rx %s  %s\n", ms / 1000, ms % 1000, HexBytes(frame.raw).c_str(),
               ReadableBytes(frame.raw).c_str());
  std::fflush(log_);
}

bool Simulator::HandleFrame(Channel& ch, const RxFrame& frame) {
  std::string out;
  Faults f;
  {
    std::lock_guard<std::mutex> lock(mu_);
    LogFrame(frame);
    const char own = state_.address;
    // On the bus every unit hears every frame and answers only its own;
    // over TCP the link is point to point, so any address is ours.
    if (!ch.tcp && frame.address != own) return true;
    // Recorded even when silent, so a test can see the host kept trying.
    received_.push_back(frame.text);
    if (received_.size() > kKeptFrames) received_.pop_front();
    if (silent_) return true;
    f = faults_;
    ++frameCount_;
    if (f.dropEvery > 0 && frameCount_ % f.dropEvery == 0) return true;
    if (ch.tcp && f.closeEvery > 0 && frameCount_ % f.closeEvery == 0) {
      CloseClient();
      return false;
    }
    Reply reply;
    if (!frame.checksumOk) {
      reply = Reply::Nak();
    } else if (f.nakEvery > 0 && frameCount_ % f.nakEvery == 0) {
      const auto* entry = commands_.Find(frame.text);
      reply = Reply::Nak(entry ? entry->mnemonic : frame.text);
    } else {
      reply = commands_.Dispatch(state_, frame.text);
    }
    out = EncodeReply(opts_.printable, reply.ack, own, reply.body);
    ++replyCount_;
    if (f.badChecksumEvery > 0 && replyCount_ % f.badChecksumEvery == 0) {
      char& sum = out.back();
      if (opts_.printable) {
        sum = sum == '~' ? ' ' : static_cast<char>(sum + 1);  // still printable, still wrong
      } else {
        sum = static_cast<char>(sum ^ 0x01);
      }
    }
    if (f.silentAfter > 0 && replyCount_ >= f.silentAfter) silent_ = true;
  }

  out.insert(0, f.prefix);
  std::string tail;
  if (ch.tcp) {
    if (opts_.tcpCrOnly) {
      out += '\r';
    } else if (f.lfSeparate) {
      out += '\r';
      tail = "\n";
    } else {
      out += "\r\n";
    }
  }
  if (f.delayMs > 0 && !SleepFor(f.delayMs * kMs)) return false;
  bool ok;
  if (f.splitMs > 0 && out.size() >= 2) {
    size_t half = out.size() / 2;
    ok = WriteChunk(ch, std::string_view(out).substr(0, half)) && SleepFor(f.splitMs * kMs) &&
         WriteChunk(ch, std::string_view(out).substr(half));
  } else {
    ok = WriteChunk(ch, out);
  }
  if (ok && !tail.empty()) ok = SleepFor(kLfDelayNs) && WriteChunk(ch, tail);
  if (!ok && ch.tcp && ch.fd >= 0 && !stopping_) {
    CloseClient();
    return false;
  }
  return !stopping_;
}

bool Simulator::WriteChunk(Channel& ch, std::string_view bytes) {
  bool paced = opts_.baud > 0 && (!ch.tcp || opts_.byteTimingOnTcp);
  if (!paced) return WriteAll(ch, bytes);
  // Each byte leaves once its wire time has passed, on an absolute schedule so
  // sleep overshoot on one byte is made up on the next.
  const long long charNs = std::llround(line_.BitsPerChar() * 1e9 / opts_.baud);
  long long due = NowNs();
  for (char c : bytes) {
    due += charNs;
    if (!SleepUntil(due)) return false;
    if (!WriteAll(ch, std::string_view(&c, 1))) return false;
  }
  return true;
}

bool Simulator::WriteAll(Channel& ch, std::string_view bytes) {
  if (ch.fd < 0) return false;
  const long long giveUp = NowNs() + kWriteStallNs;
  size_t done = 0;
  while (done < bytes.size()) {
    const char* p = bytes.data() + done;
    size_t left = bytes.size() - done;
    ssize_t n = ch.tcp ? ::send(ch.fd, p, left, MSG_NOSIGNAL) : ::write(ch.fd, p, left);
    if (n > 0) {
      done += static_cast<size_t>(n);
      continue;
    }
    if (n < 0 && errno == EINTR) continue;
    if (n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) {
      long long wait = giveUp - NowNs();
      if (wait <= 0 || stopping_) return true;  // nobody is draining: the rest is lost
      pollfd p2[2] = {{ch.fd, POLLOUT, 0}, {wakeRead_, POLLIN, 0}};
      if (poll(p2, 2, static_cast<int>(wait / kMs) + 1) > 0 && p2[1].revents) DrainWake();
      continue;
    }
    // TCP: the peer is gone. Serial: bytes into a line nobody listens on.
    return !ch.tcp;
  }
  return true;
}

}  // namespace amp::sim
