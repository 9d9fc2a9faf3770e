// A simulated amplifier unit: answers the framed protocol on a TCP listener
// and/or a pseudo-terminal, from its own thread, with faults that can be
// switched on to exercise the host's error handling.
#pragma once

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "sim/commands.h"
#include "sim/framing.h"
#include "sim/line_settings.h"
#include "sim/unit_state.h"

namespace amp::sim {

class Simulator {
 public:
  // Misbehaviour on demand. "Every Nth" counters start when the faults are set
  // and count the frames addressed to this unit (replies, for the checksum
  // and silent-after faults); 0 switches a fault off.
  struct Faults {
    int dropEvery = 0;         // no reply to every Nth frame (1 = never answer)
    int nakEvery = 0;          // NAK instead of the real reply on every Nth frame
    int badChecksumEvery = 0;  // corrupt the checksum byte of every Nth reply
    int closeEvery = 0;        // TCP: close the connection instead of replying to every Nth frame
    int delayMs = 0;           // wait this long before each reply
    std::string prefix;        // bytes sent before each reply's first byte
    bool babble = false;       // send junk continuously (about 1 kB/s)
    int splitMs = 0;           // send each reply in two writes with this pause between
    bool lfSeparate = false;   // TCP: send the LF of CR LF as its own write 50 ms later
    int silentAfter = 0;       // stop answering after N replies
  };

  struct Options {
    std::string tcpHost = "127.0.0.1";
    int tcpPort = 2000;  // 0 picks a free port, see TcpPort()
    bool tcp = true;
    bool serial = false;              // open a pseudo-terminal, see SerialPath()
    bool printable = false;           // '{' ... '}' framing with the printable checksum
    int baud = 0;                     // byte timing on serial: 0 = as fast as possible
    bool byteTimingOnTcp = false;     // also pace TCP replies at `baud`
    std::string line = "9600,N,8,1";  // the unit's own serial settings
    bool tcpCrOnly = false;           // end TCP replies with CR instead of CR LF
    std::string frameLog;             // append one line per received frame
    UnitState unit;                   // starting state: address, id, status ...
    Faults faults;
  };

  explicit Simulator(Options options);
  ~Simulator();
  Simulator(const Simulator&) = delete;
  Simulator& operator=(const Simulator&) = delete;

  // Opens the listener and/or pseudo-terminal and starts the unit's thread.
  bool Start(std::string* error);
  // Stops the thread and closes everything; safe to call twice.
  void Stop();

  int TcpPort() const;             // the bound port, or -1
  std::string SerialPath() const;  // e.g. /dev/pts/7, or ""

  void SetFaults(const Faults& faults);
  Faults CurrentFaults() const;

  // Puts the three status groups as a unit in trouble would report them:
  // a fault raised or cleared at run time.
  void SetStatus(const StatusWords& summary, const StatusWords& fault, const StatusWords& alarm);

  // Silent: the unit hears nothing and says nothing, as with the cable
  // pulled. Clearing it also restarts the silent-after count.
  void SetSilent(bool silent);
  bool Silent() const;

  // Command text of each frame received for this unit, oldest first; the
  // most recent kKeptFrames only, so a long soak run does not grow forever.
  static constexpr size_t kKeptFrames = 100'000;
  std::vector<std::string> ReceivedFrames() const;
  void ClearReceivedFrames();

 private:
  struct Channel {
    int fd = -1;
    bool tcp = false;
    FrameParser parser;
  };

  void Run();
  void Wake();
  void DrainWake();
  // Sleeps until the steady-clock deadline (ns); false when stopping.
  bool SleepUntil(long long deadlineNs);
  bool SleepFor(long long ns);

  void AcceptClient();
  void CloseClient();
  void ReadChannel(Channel& ch);
  // False when the channel was closed and the rest of the input must go.
  bool HandleFrame(Channel& ch, const RxFrame& frame);
  void LogFrame(const RxFrame& frame);
  // Writes one chunk, paced per byte when byte timing applies. False when
  // the peer went away.
  bool WriteChunk(Channel& ch, std::string_view bytes);
  bool WriteAll(Channel& ch, std::string_view bytes);
  void Babble();
  bool SerialLineMatches() const;
  void CloseAll();

  Options opts_;
  LineSettings line_;

  mutable std::mutex mu_;  // guards everything below up to the fds
  void ReportListenAddress();
  UnitState state_;
  CommandTable commands_;
  Faults faults_;
  bool silent_ = false;
  long frameCount_ = 0;
  long replyCount_ = 0;
  std::deque<std::string> received_;
  std::FILE* log_ = nullptr;

  // Owned by the unit's thread once it runs; set up before it starts.
  int wakeRead_ = -1;
  int wakeWrite_ = -1;
  int listenFd_ = -1;
  int boundPort_ = -1;
  Channel client_{-1, true, FrameParser(false, false)};
  Channel serial_{-1, false, FrameParser(false, true)};
  int slaveKeepFd_ = -1;
  bool ptyCarriesCharFormat_ = true;
  std::string slavePath_;
  uint32_t junkSeed_ = 0x2545F491u;

  std::atomic<bool> stopping_{false};
  std::thread thread_;
};

}  // namespace amp::sim
