// Figures for the link layer, reported, never judged:
//  1. TCP loopback: median round trip of the status poll through
//     ExchangeCommand against ampsim, next to a bare blocking socket sending
//     the same bytes to the same ampsim, as a ratio.
//  2. Serial through a pseudo-terminal with ampsim timing its bytes at 9600
//     baud: the exchange time against the wire time of its bytes.
//  3. CPU: polling a serial unit every 2.5 s for a while (60 s by default),
//     the process's own CPU time as a share of one core.
// Usage: link_bench [--cpu-seconds N] [--rounds N]
#include <QCoreApplication>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "link/comms.h"
#include "qt/qt_comm_port.h"
#include "qt/qt_event_pump.h"
#include "qt/qt_tcp_socket.h"
#include "qt/qt_timer.h"
#include "qt/sim_process.h"
#include "sim/simulator.h"

namespace {

using Clock = std::chrono::steady_clock;

double Median(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  return v.empty() ? 0 : v[v.size() / 2];
}

class NullDialogs : public amp::Dialogs {
 public:
  amp::MsgResult MsgBox(const std::string&, amp::MsgButtons, amp::MsgIcon, const std::string&,
                        amp::MsgDefault) override {
    return amp::MsgResult::OK;
  }
  std::optional<std::string> InputBox(const std::string&, const std::string&,
                                      const std::string&) override {
    return std::nullopt;
  }
  void ShowModal(amp::ui::Form&) override {}  // the exchanges measured open no dialog
  std::optional<std::string> ShowOpen(const std::string&, const std::string&,
                                      const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> ShowSave(const std::string&, const std::string&,
                                      const std::string&) override {
    return std::nullopt;
  }
};

struct Host {
  amp::ComSlots comSlots;
  amp::QtCommPort port{comSlots};
  amp::QtTcpSocket sock;
  amp::QtTimer timer;
  amp::QtEventPump pump;
  amp::QtClock clock;
  NullDialogs dialogs;
  amp::LinkPanel panel;
  amp::Comms comms{amp::LinkHost{sock, timer, pump, clock, dialogs}, panel};
  Host() {
    comms.Link.SetCommControl(&port);
    comms.Link.SetCheckAddress(false);
    comms.Link.SetMsgTimeout(2.0f);
    comms.Link.SetDeviceAddress("A");
  }
};

// A plain blocking socket with the same request, the floor of what any
// exchange can do.
class BareClient {
 public:
  explicit BareClient(int port) {
    fd_ = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_port = htons(static_cast<uint16_t>(port));
    a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(fd_, reinterpret_cast<sockaddr*>(&a), sizeof a) != 0) {
      ::close(fd_);
      fd_ = -1;
    }
  }
  ~BareClient() {
    if (fd_ >= 0) ::close(fd_);
  }
  bool Exchange() {
    static const char req[] =
        "\x02"
        "A?!#(\x03M\r\n";
    if (fd_ < 0 || ::send(fd_, req, sizeof req - 1, 0) < 0) return false;
    char buf[256];
    for (;;) {
      const ssize_t n = ::recv(fd_, buf, sizeof buf, 0);
      if (n <= 0) return false;
      if (std::memchr(buf, '\r', static_cast<size_t>(n))) return true;
    }
  }

 private:
  int fd_ = -1;
};

void TcpFigures(int rounds) {
  // Two units, one for each client, and the clients take turns, so that the
  // load of a busy machine falls on both alike.
  amp::sim::Simulator::Options o;
  o.tcpPort = 0;
  amp::sim::Simulator unit(o), bareUnit(o);
  std::string err;
  if (!unit.Start(&err) || !bareUnit.Start(&err)) {
    std::printf("tcp: cannot start the unit: %s\n", err.c_str());
    return;
  }
  Host h;
  h.comms.gUseEnet = true;
  h.sock.SetRemoteHost("127.0.0.1");
  h.sock.SetRemotePort(unit.TcpPort());
  h.sock.Connect();
  for (int i = 0; i < 200 && h.sock.State() != amp::TcpSocket::sckConnected; ++i)
    h.pump.WaitForEvents(10);
  BareClient bare(bareUnit.TcpPort());
  std::vector<double> tl, tb;
  int failed = 0;
  for (int i = 0; i < rounds; ++i) {
    auto t0 = Clock::now();
    failed += !h.comms.ExchangeCommand("?!#(");
    tl.push_back(std::chrono::duration<double, std::micro>(Clock::now() - t0).count());
    t0 = Clock::now();
    failed += !bare.Exchange();
    tb.push_back(std::chrono::duration<double, std::micro>(Clock::now() - t0).count());
  }
  const double link = Median(tl), floor = Median(tb);
  std::printf(
      "tcp loopback, %d status polls each: ExchangeCommand median %.1f us, bare socket median %.1f "
      "us, ratio %.2f (%d failed)\n",
      rounds, link, floor, floor > 0 ? link / floor : 0.0, failed);
}

void SerialFigures(int rounds) {
  amp::sim::Simulator::Options o;
  o.tcp = false;
  o.serial = true;
  o.baud = 9600;
  amp::sim::Simulator unit(o);
  std::string err;
  if (!unit.Start(&err)) {
    std::printf("serial: cannot start the unit: %s\n", err.c_str());
    return;
  }
  Host h;
  h.comSlots.Bind(1, unit.SerialPath());
  h.comms.Link.SetCommSettings("9600,N,8,1");
  h.comms.Link.SetPortNumber(1);
  h.comms.ExchangeCommand("1");  // open and settle
  std::vector<double> t;
  int failed = 0;
  for (int i = 0; i < rounds; ++i) {
    const auto t0 = Clock::now();
    failed += !h.comms.ExchangeCommand("?!#(");
    t.push_back(std::chrono::duration<double, std::milli>(Clock::now() - t0).count());
  }
  // 10 bits a character at 9600 baud. The pseudo-terminal takes the request
  // at once; the unit paces its 17-byte reply. A real line carries both.
  const double ms = 10.0 / 9600 * 1000;
  const double replyWire = 17 * ms, bothWire = (8 + 17) * ms;
  const double med = Median(t);
  std::printf(
      "serial 9600 baud via pseudo-terminal, %d status polls: median %.2f ms; reply wire time %.2f "
      "ms (+%.2f ms); request+reply wire time %.2f ms (%d failed)\n",
      rounds, med, replyWire, med - replyWire, bothWire, failed);
}

double CpuSeconds() {
  rusage u{};
  ::getrusage(RUSAGE_SELF, &u);
  return u.ru_utime.tv_sec + u.ru_stime.tv_sec + (u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1e6;
}

void CpuFigures(int seconds) {
  // The unit runs as its own process, so only the host's time is counted.
  amp::SimProcess unit;
  std::string err;
  if (!unit.Start(amp::SimProcess::Locate(QCoreApplication::applicationDirPath().toStdString()),
                  {"--no-tcp", "--serial", "--baud", "9600"}, &err)) {
    std::printf("cpu: cannot start ampsim: %s\n", err.c_str());
    return;
  }
  Host h;
  h.comSlots.Bind(1, unit.SerialPath());
  h.comms.Link.SetCommSettings("9600,N,8,1");
  h.comms.Link.SetPortNumber(1);
  int polls = 0, good = 0;
  h.timer.SetHandler([&] {
    ++polls;
    good += h.comms.UpdateStatus();
  });
  h.timer.SetInterval(2500);
  const double cpu0 = CpuSeconds();
  const auto t0 = Clock::now();
  h.timer.SetEnabled(true);
  const auto deadline = t0 + std::chrono::seconds(seconds);
  while (Clock::now() < deadline) h.pump.WaitForEvents(100);
  const double wall = std::chrono::duration<double>(Clock::now() - t0).count();
  const double cpu = CpuSeconds() - cpu0;
  std::printf(
      "cpu, serial polling every 2.5 s for %.1f s: %d polls (%d good), %.3f s CPU = %.3f%% of one "
      "core\n",
      wall, polls, good, cpu, 100.0 * cpu / wall);
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  int cpuSeconds = 60, rounds = 2000;
  for (int i = 1; i + 1 < argc; i += 2) {
    if (std::string(argv[i]) == "--cpu-seconds") cpuSeconds = std::atoi(argv[i + 1]);
    if (std::string(argv[i]) == "--rounds") rounds = std::atoi(argv[i + 1]);
  }
  TcpFigures(rounds);
  SerialFigures(std::max(10, rounds / 40));
  if (cpuSeconds > 0) CpuFigures(cpuSeconds);
  return 0;
}
