// The unit's answer to the UDP search probe: a datagram of an eight
// character head and the unit's description. Listens on loopback only, from
// its own thread. On demand it also sends a short datagram first (which the
// host must refuse) or a flood of copies of its answer.
#pragma once

#include <atomic>
#include <string>
#include <thread>

namespace amp::sim {

class UdpResponder {
 public:
  struct Options {
    // Where the probe is heard and where the answer comes from, both on
    // loopback. Several units may listen on 127.255.255.255 and the same
    // port, each answering from its own 127.x address.
    std::string host = "127.0.0.1";
    int port = 0;  // 0 picks a free one
    std::string from = "127.0.0.1";
    std::string description = "Orvan AmpSim simulated unit";
    bool shortFirst = false;  // a 20-character datagram before the answer
    int flood = 0;            // send the answer this many times (0: once)
  };

  // The head every answer starts with; the host skips it.
  static constexpr const char* kHead = "AMPSIM01";

  explicit UdpResponder(Options options);
  ~UdpResponder();
  UdpResponder(const UdpResponder&) = delete;
  UdpResponder& operator=(const UdpResponder&) = delete;

  bool Start(std::string* error);
  void Stop();
  int Port() const { return port_; }

  // True for an IPv4 address text inside 127.0.0.0/8.
  static bool IsLoopback(const std::string& address);

  // The datagrams answering one probe, in the order they are sent.
  static std::string Answer(const Options& o);
  static std::string ShortAnswer();

 private:
  void Run();

  Options opts_;
  int fd_ = -1;
  int replyFd_ = -1;
  int port_ = -1;
  std::atomic<bool> stopping_{false};
  std::thread thread_;
};

}  // namespace amp::sim
