// Fuzzes what a unit sends back over TCP: the input becomes segments that
// arrive at chosen times, mixed with the socket closing, failing and coming
// back, while Comms runs several command exchanges and status polls in a row.
//
// Input layout (missing bytes read as 0):
//   [flags] [nex] [ex]*nex  then events [h][d]...
//   flags bits0-1 socket at the start: 0,1 connected, 2 connecting, 3 closed
//         bit2 Close() leaves the socket closing (the close wait runs out)
//         bit3 one-character alarm   bit4 frame trace on
//   nex   1 + (nex & 7) exchanges
//   ex    bits0-1 the command, bit2 a status poll instead,
//         bits3-7 idle time before it (x 250 ms) while events still run
//   event h bits5-7 kind, bits0-4 n; d the delay after the event before it
//         0 segment of n bytes (n = 31: 31 + the next byte), delay in ms
//         1 the same, delay in steps of 64 ms
//         2 a segment ended by CR LF, delay in ms
//         3 a babbling peer: [r] then a segment sent 1 + 16 r times, d ms apart
//         4 the socket is closed   5 the peer closes (closing)
//         6 a socket error, number 10000 + n
//         7 n odd: connected again and Connect fires; n even: a connection
//           request is accepted
//
// Memory: a peer that never sends a CR, or sends lines while nobody waits,
// must not make the link hold more than a frame's worth (two for the lines).
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "basic/checksum.h"
#include "fuzz_support.h"
#include "link/amp_link.h"
#include "link/comms.h"
#include "support/fakes.h"
#include "support/recording_panel.h"

namespace amp::fuzz {
namespace {

using amp::test::FakeClock;
using amp::test::FakeDialogs;
using amp::test::FakeEventPump;
using amp::test::FakeTcpSocket;
using amp::test::FakeTimer;
using amp::test::RecordingPanel;

// No reply of the protocol comes near this: a serial frame is refused past
// 16 KiB. A buffer this long without a CR is a peer that never ends a line.
constexpr size_t kFrame = static_cast<size_t>(AmpLink::kMaxFrame);
// What one input may make the peer send in all, to keep a run short.
constexpr size_t kMaxScheduled = 64 * 1024;

constexpr std::string_view kCommands[4] = {"?!#(", "T", "", "?!#9"};

struct Harness {
  FakeClock clock;
  FakeEventPump pump{clock};
  FakeTcpSocket sock{pump};
  FakeTimer timer;
  FakeDialogs dialogs;
  RecordingPanel panel;
  Comms comms{LinkHost{sock, timer, pump, clock, dialogs}, panel};

  // What the reply assembly should hold, kept by a rule of its own: the bytes
  // since the last arrival that held a CR, and the lines completed since the
  // last exchange began (each up to and including its CR).
  std::string modelBuffer;
  std::string modelReply;
  std::deque<std::string> inFlight;  // segments scheduled and not yet arrived
  size_t arrived = 0;                // bytes the socket announced
  size_t traced = 0;                 // bytes the frame trace saw coming in
  size_t scheduled = 0;
  bool inExchange = false;

  void CheckBuffers() {
    AMP_FUZZ_CHECK(comms.mTcpRxBuffer.find('\r') == std::string::npos);
    AMP_FUZZ_CHECK(comms.mTcpRxBuffer == modelBuffer);
    AMP_FUZZ_CHECK(comms.gTcpReply == modelReply);
    AMP_FUZZ_CHECK(traced == arrived || !comms.Link.trace);
    AMP_FUZZ_CHECK(comms.mTcpRxBuffer.size() <= kFrame);
    AMP_FUZZ_CHECK(comms.gTcpReply.size() < 2 * kFrame);
  }

  void OnData(long bytesTotal) {
    // Comms takes all the socket holds on every arrival, so each arrival is
    // exactly the next segment scheduled.
    AMP_FUZZ_CHECK(!inFlight.empty());
    const std::string bytes = std::move(inFlight.front());
    inFlight.pop_front();
    AMP_FUZZ_CHECK(bytesTotal == static_cast<long>(bytes.size()));
    arrived += bytes.size();
    // A line is kept up to a frame's length, and only while the lines held
    // are shorter than a frame; text without a CR keeps its latest frame's
    // worth.
    const auto cr = bytes.find('\r');
    if (cr == std::string::npos) {
      modelBuffer += bytes;
      if (modelBuffer.size() > kFrame)
        modelBuffer = modelBuffer.substr(modelBuffer.size() - kFrame);
    } else {
      const std::string line = modelBuffer + bytes.substr(0, cr + 1);
      if (modelReply.size() < kFrame) modelReply += line.substr(0, kFrame);
      modelBuffer.clear();
    }
    comms.sckTcp_DataArrival(bytesTotal);
    CheckBuffers();
  }

  void Install() {
    TcpSocket::Events ev;
    ev.Connect = [this] {
      const size_t sent = sock.sent.size();
      comms.sckTcp_Connect();
      // The first poll may run from here; its exchange cleared the reply.
      if (sock.sent.size() != sent) modelReply.clear();
      CheckBuffers();
    };
    ev.DataArrival = [this](long n) { OnData(n); };
    ev.Error = [this](int number, const std::string& d, long scode, const std::string& s) {
      const size_t boxes = dialogs.boxes.size();
      comms.sckTcp_Error(number, d, scode, s);
      AMP_FUZZ_CHECK(dialogs.boxes.size() == boxes + 1);
      AMP_FUZZ_CHECK(!timer.enabled && panel.caption == "Connect");
      AMP_FUZZ_CHECK(sock.state != TcpSocket::sckConnected);
    };
    ev.ConnectionRequest = [this](intptr_t id) {
      comms.sckTcp_ConnectionRequest(id);
      AMP_FUZZ_CHECK(sock.state == TcpSocket::sckConnected && sock.accepted == id);
    };
    sock.SetEvents(std::move(ev));
    // An exchange clears the reply just before it sends.
    sock.onSend = [this](const std::string&) { modelReply.clear(); };
  }

  // The peer's bytes, arriving `at` (absolute) as one piece; lost when the
  // socket is not connected by then.
  void Segment(int64_t at, std::string bytes) {
    if (scheduled + bytes.size() > kMaxScheduled) bytes.resize(kMaxScheduled - scheduled);
    if (bytes.empty()) return;
    scheduled += bytes.size();
    pump.At(at, [this, bytes = std::move(bytes)] {
      if (sock.state != TcpSocket::sckConnected) return;
      inFlight.push_back(bytes);
      sock.Deliver(bytes, 0);
    });
  }
};

// Runs the pump until `ms` of fake time have passed; the events due meanwhile
// run, as they would while the application sits idle between polls.
void Idle(Harness& h, int64_t ms) {
  const int64_t until = h.clock.now + ms;
  for (int i = 0; i < 100000 && h.clock.now < until; ++i)
    h.pump.WaitForEvents(static_cast<int>(std::min<int64_t>(until - h.clock.now, 100)));
  AMP_FUZZ_CHECK(h.clock.now >= until);
}

}  // namespace
}  // namespace amp::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace amp;
  using namespace amp::fuzz;
  ByteReader in(data, size);
  const uint8_t flags = in.Byte();
  const int nex = 1 + (in.Byte() & 7);
  std::vector<uint8_t> exchanges;
  for (int i = 0; i < nex; ++i) exchanges.push_back(in.Byte());

  Harness h;
  h.Install();
  h.comms.gUseEnet = true;
  h.comms.gFirstReadDone = true;
  h.comms.Link.SetDeviceAddress("A");
  static constexpr int kStartStates[4] = {TcpSocket::sckConnected, TcpSocket::sckConnected,
                                          TcpSocket::sckConnecting, TcpSocket::sckClosed};
  h.sock.state = kStartStates[flags & 3];
  h.sock.closeLeavesClosing = flags & 0x04;
  h.comms.gOneCharAlarm = flags & 0x08;
  if (flags & 0x10) {
    h.comms.Link.trace = [&h](char dir, std::string_view bytes) {
      if (dir == 'r') h.traced += bytes.size();
    };
  }
  h.timer.enabled = true;

  int64_t t = h.clock.now;
  while (!in.Empty()) {
    const uint8_t head = in.Byte();
    const int kind = head >> 5;
    const int n = head & 0x1F;
    const uint8_t d = in.Byte();
    switch (kind) {
      case 0:
      case 1:
      case 2: {
        t += DelayMs(kind == 1, d);
        const size_t len = n == 31 ? 31 + in.Byte() : n;
        std::string bytes = in.Bytes(len);
        if (kind == 2) bytes += "\r\n";
        h.Segment(t, std::move(bytes));
        break;
      }
      case 3: {
        const int repeats = 1 + 16 * in.Byte();
        const std::string bytes = in.Bytes(n == 31 ? 31 + in.Byte() : n);
        for (int i = 0; i < repeats && !bytes.empty(); ++i) {
          t += d;
          h.Segment(t, bytes);
        }
        break;
      }
      case 4:
      case 5: {
        t += DelayMs(true, d);
        const int state = kind == 4 ? TcpSocket::sckClosed : TcpSocket::sckClosing;
        h.pump.At(t, [&h, state] { h.sock.state = state; });
        break;
      }
      case 6:
        t += DelayMs(true, d);
        h.pump.At(t,
                  [&h, n] { h.sock.FireError(10000 + n, "Connection is reset by remote side"); });
        break;
      case 7:
        t += DelayMs(true, d);
        if (n & 1) {
          // Connect fires only for a link made while no exchange waits: the
          // host connects on the operator's word, not from inside a wait.
          h.pump.At(t, [&h] {
            if (h.inExchange) {
              h.sock.state = TcpSocket::sckConnected;
            } else {
              h.sock.FireConnect();
            }
          });
        } else {
          h.pump.At(t, [&h, n] { h.sock.FireConnectionRequest(n + 1); });
        }
        break;
    }
  }

  for (const uint8_t ex : exchanges) {
    Idle(h, int64_t{ex >> 3} * 250);
    h.CheckBuffers();

    const std::string command((ex & 0x04) ? h.comms.StatusQuery() : std::string(kCommands[ex & 3]));
    const int stateBefore = h.sock.state;
    const size_t sentBefore = h.sock.sent.size();
    const int16_t missedBefore = h.comms.session.gMissedPolls;
    const int64_t t0 = h.clock.now;
    h.panel.log.clear();
    // Comms clears the reply as the exchange begins; so does the model.
    if (!command.empty()) h.modelReply.clear();

    h.inExchange = true;
    const bool ok = (ex & 0x04) ? h.comms.UpdateStatus() : h.comms.ExchangeCommand(command);
    h.inExchange = false;
    const std::string replySeen = h.modelReply;
    if (!command.empty()) h.modelReply.clear();

    const int64_t elapsed = h.clock.now - t0;
    const std::string& rx = h.comms.Link.RxMessage;
    h.CheckBuffers();

    if (command.empty()) {
      // Nothing to send: no exchange, and lines that came in while idle stay.
      AMP_FUZZ_CHECK(ok && rx.empty() && elapsed == 0 && h.sock.sent.size() == sentBefore);
      continue;
    }
    AMP_FUZZ_CHECK(h.comms.gTcpReply.empty());
    bool exchanged = false;
    if (stateBefore == TcpSocket::sckConnected) {
      AMP_FUZZ_CHECK(elapsed <= Comms::kTcpReplyWaitMs + 1);
      const std::string frame =
          std::string(1, STX) + "A" + std::string(command) + std::string(1, ETX) + "M\r\n";
      AMP_FUZZ_CHECK(h.sock.sent.size() == sentBefore + 1 && h.sock.sent.back() == frame);
      AMP_FUZZ_CHECK(h.comms.Link.TxMessage == frame);
      // The reply is every line completed while waiting: none means the wait
      // ran out, and then only then.
      AMP_FUZZ_CHECK(rx == replySeen);
      if (rx.empty()) AMP_FUZZ_CHECK(elapsed > Comms::kTcpReplyWaitMs);
      // Each line ends in its CR unless it was cut at a frame's length.
      if (!rx.empty()) AMP_FUZZ_CHECK(rx.back() == '\r' || rx.size() >= kFrame);
      exchanged = !rx.empty() && rx[0] == ACK;
    } else {
      AMP_FUZZ_CHECK(rx.empty() && h.sock.sent.size() == sentBefore);
      if (stateBefore == TcpSocket::sckClosed || stateBefore == TcpSocket::sckClosing ||
          stateBefore == TcpSocket::sckError) {
        // The session ends: the socket is closed, or given up on after its wait.
        AMP_FUZZ_CHECK(elapsed <= Comms::kSocketCloseWaitMs + 1);
        AMP_FUZZ_CHECK(!h.timer.enabled && h.panel.caption == "Connect");
        AMP_FUZZ_CHECK(h.sock.state == TcpSocket::sckClosed || elapsed > Comms::kSocketCloseWaitMs);
      } else {
        AMP_FUZZ_CHECK(elapsed == 0);
      }
    }

    if (!(ex & 0x04)) {
      AMP_FUZZ_CHECK(ok == exchanged);
      continue;
    }
    // A status poll over TCP: the reply still ends in its CR.
    CheckPoll(h.comms, h.panel, h.timer.enabled, ok, exchanged, missedBefore);
  }
  return 0;
}
