// Fuzzes what a unit sends back on a serial line: the input becomes the bytes
// on the wire, cut into pieces that arrive at chosen times, while the link
// receives frames directly, runs command exchanges and status polls.
//
// Input layout (every field optional; missing bytes read as 0):
//   [flags] [config] [address] [nops] [op]*nops  then chunks [h][d][bytes]...
//   flags  bit0 one-character alarm      bit1 printable frames
//          bit2 check the address        bit3 replies follow the commands
//          bit4 TWTA panel               bits5-7 port: 0-5 open, 6 closed, 7 will
//                                        not open for the first operation
//   config bits0-2 time-out (0, 1, 20, 250, 600, 1000, 2500, 5000 ms)
//          bit3 seal: every end byte in a chunk gets the checksum of the frame
//          it ends inserted after it, so that good frames are common
//          bit4 frame trace on
//   nops   1 + (nops & 7) operations
//   op     bits0-1 kind: 0 Receive, 1 ExchangeCommand, 2 UpdateStatus,
//          3 drop the input and let time pass; bits2-3 the command,
//          bit4 ShowError, bits4-7 the idle time of kind 3 (x 200 ms)
//   chunk  h bits0-5 length (63: the rest of the input), bit6 starts the
//          reply to the next command (when flags bit3), bit7 coarse delay;
//          d the delay after the chunk before it (see DelayMs)
#include <cstddef>
#include <cstdint>
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
using amp::test::FakeCommPort;
using amp::test::FakeDialogs;
using amp::test::FakeEventPump;
using amp::test::FakeTcpSocket;
using amp::test::FakeTimer;
using amp::test::RecordingPanel;

// The fake port, keeping the whole stream of the unit's bytes and how far
// into it the link has read or dropped, for the checks.
class TrackedPort : public FakeCommPort {
 public:
  explicit TrackedPort(FakeClock& clock) : FakeCommPort(clock), clock_(clock) {}

  // Bytes that arrive at the absolute time `at`; a wire keeps its order, so
  // they never overtake bytes queued before them.
  void Schedule(int64_t at, std::string_view bytes) {
    lastAt_ = std::max(at, lastAt_);
    stream_.append(bytes);
    Arrive(std::string(bytes), lastAt_ - clock_.now);
  }
  void SetInBufferCount(int n) override {
    if (n == 0) cursor_ += static_cast<size_t>(InBufferCount());
    FakeCommPort::SetInBufferCount(n);
  }
  std::string Input() override {
    std::string out = FakeCommPort::Input();
    cursor_ += out.size();
    return out;
  }

  const std::string& Stream() const { return stream_; }
  size_t Cursor() const { return cursor_; }

 private:
  FakeClock& clock_;
  std::string stream_;
  size_t cursor_ = 0;  // stream bytes read or dropped
  int64_t lastAt_ = 0;
};

struct Chunk {
  int64_t delayMs;
  std::string bytes;
};

bool IsStart(char b) { return b == STX || b == ACK || b == NAK || b == PSTART; }

uint8_t FrameChecksum(std::string_view framePrefix) {
  return (!framePrefix.empty() && framePrefix[0] == PSTART) ? PrintableChecksum(framePrefix)
                                                            : XorChecksum(framePrefix);
}

// Inserts after each end byte of a frame begun in the chunk the checksum of
// that frame. Bytes added or taken out by the fuzzer then still leave a frame
// whose checksum is right.
std::string Sealed(std::string_view chunk) {
  std::string out;
  out.reserve(chunk.size() + 8);
  size_t start = 0;
  bool open = false;
  for (const char b : chunk) {
    if (b == STX || b == ACK || b == NAK || (b == PSTART && !(open && out[start] == STX))) {
      start = out.size();
      open = true;
    }
    out += b;
    if (open && (b == ETX || b == PEND)) {
      out += static_cast<char>(FrameChecksum(std::string_view(out).substr(start)));
      open = false;
    }
  }
  return out;
}

// The receive rules over a plain byte string, without ports or time: a start
// byte (STX, ACK, NAK, or `{` outside an STX frame) begins a frame afresh,
// bytes before the first start are ignored, an end byte (ETX or `}`) inside a
// frame is followed by its checksum and that byte completes the frame, and
// a frame past kMaxFrame characters is given up.
struct Reference {
  std::string frame;
  size_t used = 0;  // bytes looked at, the last one ending the frame if it ended
  bool complete = false;
  bool huge = false;
  bool startedBeforeLast = false;  // a frame was open before the last byte
};

Reference ReferenceReceive(std::string_view bytes) {
  Reference r;
  bool awaitingSum = false;
  for (const char b : bytes) {
    r.startedBeforeLast = !r.frame.empty();
    ++r.used;
    if (awaitingSum) {
      r.frame += b;
      r.complete = true;
      return r;
    }
    const bool open = !r.frame.empty();
    if (open && (b == ETX || b == PEND)) {
      r.frame += b;
      awaitingSum = true;
    } else if (b == STX || b == ACK || b == NAK || (b == PSTART && !(open && r.frame[0] == STX))) {
      r.frame.assign(1, b);
    } else if (open) {
      r.frame += b;
    }
    if (r.frame.size() > static_cast<size_t>(AmpLink::kMaxFrame)) {
      r.huge = true;
      return r;
    }
  }
  return r;
}

struct Harness {
  FakeClock clock;
  FakeEventPump pump{clock};
  TrackedPort port{clock};
  FakeTcpSocket sock{pump};
  FakeTimer timer;
  FakeDialogs dialogs;
  RecordingPanel panel;
  Comms comms{LinkHost{sock, timer, pump, clock, dialogs}, panel};

  std::vector<Chunk> replies;  // waiting for the next command, in groups
  std::vector<size_t> groupStarts;
  size_t nextGroup = 0;
  size_t cursorAtWrite = 0;
  int64_t timeAtWrite = 0;
  int frameWrites = 0;
  bool tracing = false;
  std::string tracedOut, tracedIn;  // the last frame each way the trace saw
  int64_t timeoutMs = 0;

  // The reply group that follows a command goes on the wire from the moment
  // the command has been written.
  void ReleaseNextGroup() {
    if (nextGroup >= groupStarts.size()) return;
    const size_t end =
        nextGroup + 1 < groupStarts.size() ? groupStarts[nextGroup + 1] : replies.size();
    int64_t t = clock.now;
    for (size_t i = groupStarts[nextGroup]; i < end; ++i) {
      t += replies[i].delayMs;
      port.Schedule(t, replies[i].bytes);
    }
    ++nextGroup;
  }

  void OnWrite(const std::string& bytes) {
    if (bytes.empty() || (bytes[0] != STX && bytes[0] != PSTART)) return;  // the priming CR LF
    cursorAtWrite = port.Cursor();
    timeAtWrite = clock.now;
    ++frameWrites;
    ReleaseNextGroup();
  }

  // What one pass of the receive state machine may leave behind. `from` is
  // where in the stream it began to read and `t0` when it began to wait.
  void CheckReceived(int16_t rc, size_t from, int64_t t0) {
    const AmpLink& link = comms.Link;
    const std::string& rx = link.RxMessage;
    const size_t n = rx.size();
    AMP_FUZZ_CHECK(rc >= 0 && rc <= 9);
    AMP_FUZZ_CHECK(rc == link.ErrNumber());
    AMP_FUZZ_CHECK(rc != AmpLink::BadStartByte && rc != AmpLink::BufferOverflow &&
                   rc != AmpLink::PortError);
    AMP_FUZZ_CHECK(n <= static_cast<size_t>(AmpLink::kMaxFrame) + 1);
    AMP_FUZZ_CHECK(port.Cursor() >= from && port.Cursor() <= port.Stream().size());

    // Time: never before the time-out when it reports one, never long after.
    AMP_FUZZ_CHECK(clock.now <= t0 + timeoutMs + 1);
    if (rc == AmpLink::IncompleteResponse || rc == AmpLink::NoResponse)
      AMP_FUZZ_CHECK(clock.now > t0 + timeoutMs);

    if (n == 0) AMP_FUZZ_CHECK(rc == AmpLink::NoResponse);
    AMP_FUZZ_CHECK(port.Cursor() - from >= n);

    // Every byte read went through the rules above, and the receive stopped
    // exactly where they say a frame ends (or at the time-out).
    const Reference ref =
        ReferenceReceive(std::string_view(port.Stream()).substr(from, port.Cursor() - from));
    AMP_FUZZ_CHECK(ref.used == port.Cursor() - from);
    AMP_FUZZ_CHECK(rx == ref.frame);
    if (rc == AmpLink::HugeResponse) {
      AMP_FUZZ_CHECK(ref.huge);
    } else if (rc == AmpLink::IncompleteResponse || rc == AmpLink::NoResponse) {
      AMP_FUZZ_CHECK(!ref.huge && !ref.complete);
      // "No Response" when nothing had started by the time-out; the pass after
      // it may still read one start byte.
      if (rc == AmpLink::IncompleteResponse) AMP_FUZZ_CHECK(!ref.frame.empty());
      if (rc == AmpLink::NoResponse) AMP_FUZZ_CHECK(!ref.startedBeforeLast);
    } else {
      AMP_FUZZ_CHECK(ref.complete);
    }

    if (rc == AmpLink::NoResponse) {
      // Nothing had started a frame by the time-out. The one pass that still
      // looks at a byte after it may start one: the error stays "No
      // Response" and RxMessage keeps that start byte.
      AMP_FUZZ_CHECK(n <= 1);
      const size_t lastBefore = port.Cursor() - n;
      for (size_t i = from; i < lastBefore; ++i) AMP_FUZZ_CHECK(!IsStart(port.Stream()[i]));
      if (n == 0) return;
    }
    // The frame is the last bytes read, in the order they came.
    AMP_FUZZ_CHECK(port.Stream().compare(port.Cursor() - n, n, rx) == 0);
    AMP_FUZZ_CHECK(IsStart(rx[0]));
    if (tracing) AMP_FUZZ_CHECK(tracedIn == rx);

    const bool complete = rc == AmpLink::NoError || rc == AmpLink::BadAddress ||
                          rc == AmpLink::ChecksumError || rc == AmpLink::NotAcknowledged;
    // Inside the frame no byte restarts it and no byte ends it early; `{` is
    // plain text in an STX frame. A complete frame ends in end byte, checksum.
    const size_t body = complete ? n - 2 : n;
    if (complete) {
      AMP_FUZZ_CHECK(n >= 3);
      AMP_FUZZ_CHECK(rx[n - 2] == ETX || rx[n - 2] == PEND);
    }
    for (size_t i = 1; i < body; ++i) {
      const char b = rx[i];
      AMP_FUZZ_CHECK(b != STX && b != ACK && b != NAK);
      AMP_FUZZ_CHECK(b != PSTART || rx[0] == STX);
      if (complete || i + 1 < n) AMP_FUZZ_CHECK(b != ETX && b != PEND);
    }

    const bool sumOk = complete && static_cast<uint8_t>(rx[n - 1]) ==
                                       FrameChecksum(std::string_view(rx).substr(0, n - 1));
    switch (rc) {
      case AmpLink::NoError:
        AMP_FUZZ_CHECK(sumOk);
        AMP_FUZZ_CHECK(rx[0] != NAK);
        if (link.CheckAddress()) AMP_FUZZ_CHECK(rx[1] == link.DeviceAddress()[0]);
        break;
      case AmpLink::BadAddress:
        AMP_FUZZ_CHECK(sumOk && rx[0] != NAK && link.CheckAddress());
        AMP_FUZZ_CHECK(rx[1] != link.DeviceAddress()[0]);
        break;
      case AmpLink::ChecksumError:
        AMP_FUZZ_CHECK(!sumOk);
        break;
      case AmpLink::NotAcknowledged:
        AMP_FUZZ_CHECK(sumOk && rx[0] == NAK);
        break;
      case AmpLink::HugeResponse:
        AMP_FUZZ_CHECK(n == static_cast<size_t>(AmpLink::kMaxFrame) + 1);
        break;
      case AmpLink::IncompleteResponse:
      case AmpLink::NoResponse:
        break;
      default:
        AMP_FUZZ_CHECK(false && "unexpected error number");
    }
  }

  void CheckFrameSent(std::string_view command) {
    const std::string& tx = comms.Link.TxMessage;
    if (tracing) AMP_FUZZ_CHECK(tracedOut == tx);
    AMP_FUZZ_CHECK(!port.writes.empty() && port.writes.back() == tx);
    AMP_FUZZ_CHECK(tx.size() == command.size() + 4);
    const bool printable = comms.Link.Printable();
    AMP_FUZZ_CHECK(tx[0] == (printable ? PSTART : STX));
    AMP_FUZZ_CHECK(tx[1] == comms.Link.DeviceAddress()[0]);
    AMP_FUZZ_CHECK(tx.compare(2, command.size(), command) == 0);
    AMP_FUZZ_CHECK(tx[tx.size() - 2] == (printable ? PEND : ETX));
    const std::string_view head = std::string_view(tx).substr(0, tx.size() - 1);
    AMP_FUZZ_CHECK(static_cast<uint8_t>(tx.back()) ==
                   (printable ? PrintableChecksum(head) : XorChecksum(head)));
  }

  // One serial exchange; returns whether the port could be used at all.
  bool Exchange(std::string_view command, bool showError) {
    const int before = frameWrites;
    const size_t boxes = dialogs.boxes.size();
    const bool ok = comms.ExchangeCommand(command, showError);
    if (command.empty()) {
      AMP_FUZZ_CHECK(ok && comms.Link.RxMessage.empty() && frameWrites == before);
      return true;
    }
    if (!port.isOpen) {
      // A port that will not open: nothing goes out, the caller sees success
      // with an empty reply and the link keeps the port error.
      AMP_FUZZ_CHECK(ok && comms.Link.RxMessage.empty() && frameWrites == before);
      AMP_FUZZ_CHECK(comms.Link.ErrNumber() == AmpLink::PortError);
      return false;
    }
    AMP_FUZZ_CHECK(frameWrites == before + 1);
    CheckFrameSent(command);
    CheckReceived(comms.Link.ErrNumber(), cursorAtWrite, timeAtWrite);
    AMP_FUZZ_CHECK(ok == (comms.Link.ErrNumber() == AmpLink::NoError));
    AMP_FUZZ_CHECK(dialogs.boxes.size() == boxes + ((showError && !ok) ? 1 : 0));
    return true;
  }

  void Poll() {
    const int16_t missedBefore = comms.session.gMissedPolls;
    const int writes = frameWrites;
    panel.log.clear();
    const bool ok = comms.UpdateStatus();
    AMP_FUZZ_CHECK(frameWrites == writes + (port.isOpen ? 1 : 0));
    if (port.isOpen) {
      CheckFrameSent(comms.StatusQuery());
      CheckReceived(comms.Link.ErrNumber(), cursorAtWrite, timeAtWrite);
    }

    const bool exchanged = comms.Link.ErrNumber() == AmpLink::NoError || !port.isOpen;
    CheckPoll(comms, panel, timer.enabled, ok, exchanged, missedBefore);
  }
};

constexpr int64_t kTimeouts[8] = {0, 1, 20, 250, 600, 1000, 2500, 5000};
constexpr std::string_view kCommands[4] = {"?!#(", "?!#9", "", "A12.5"};

}  // namespace
}  // namespace amp::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace amp;
  using namespace amp::fuzz;
  ByteReader in(data, size);
  const uint8_t flags = in.Byte();
  const uint8_t config = in.Byte();
  const uint8_t address = in.Byte();
  const int nops = 1 + (in.Byte() & 7);
  std::vector<uint8_t> ops;
  for (int i = 0; i < nops; ++i) ops.push_back(in.Byte());

  Harness h;
  h.comms.gOneCharAlarm = flags & 0x01;
  h.comms.Link.SetPrintable(flags & 0x02);
  h.comms.Link.SetCheckAddress(flags & 0x04);
  const bool repliesFollowCommands = flags & 0x08;
  h.panel.twta = flags & 0x10;
  const int portState = flags >> 5;
  h.port.isOpen = portState < 6;
  if (portState == 7) h.port.openError = "Device or resource busy";
  h.comms.Link.SetCommControl(&h.port);
  h.comms.Link.SetDeviceAddress(std::string(1, static_cast<char>(address)));
  h.timeoutMs = kTimeouts[config & 7];
  h.comms.Link.SetMsgTimeout(static_cast<float>(h.timeoutMs) / 1000.0f);
  h.timer.enabled = true;
  h.port.onWrite = [&h](const std::string& bytes) { h.OnWrite(bytes); };
  if (config & 0x10) {
    h.tracing = true;
    h.comms.Link.trace = [&h](char dir, std::string_view bytes) {
      AMP_FUZZ_CHECK(dir == 't' || dir == 'r');
      AMP_FUZZ_CHECK(!bytes.empty());
      (dir == 't' ? h.tracedOut : h.tracedIn) = std::string(bytes);
    };
  }

  // The chunks: group 0 is on the wire from the start (line noise, a late
  // reply); with replies following commands each later group answers one.
  while (!in.Empty()) {
    const uint8_t head = in.Byte();
    const int64_t delay = DelayMs(head & 0x80, in.Byte());
    const size_t len = head & 0x3F;
    std::string bytes = len == 0x3F ? in.Rest() : in.Bytes(len);
    if (config & 0x08) bytes = Sealed(bytes);
    const bool startsReply = repliesFollowCommands && (head & 0x40) && !h.replies.empty();
    if (h.replies.empty() || startsReply) h.groupStarts.push_back(h.replies.size());
    h.replies.push_back({delay, std::move(bytes)});
  }
  h.ReleaseNextGroup();

  for (size_t i = 0; i < ops.size(); ++i) {
    const uint8_t op = ops[i];
    switch (op & 3) {
      case 0: {
        const size_t from = h.port.Cursor();
        const int64_t t0 = h.clock.now + (h.port.isOpen ? 0 : 50);  // opening sleeps first
        const int writes = h.frameWrites;
        const int16_t rc = h.comms.Link.Receive();
        AMP_FUZZ_CHECK(h.frameWrites == writes);
        if (!h.port.isOpen) {
          AMP_FUZZ_CHECK(rc == 0 && h.comms.Link.ErrNumber() == AmpLink::PortError);
        } else {
          h.CheckReceived(rc, from, t0);
        }
        break;
      }
      case 1:
        h.Exchange(kCommands[(op >> 2) & 3], op & 0x10);
        break;
      case 2:
        h.Poll();
        break;
      case 3:
        h.comms.Link.Clear();
        h.clock.now += int64_t{op >> 4} * 200;
        break;
    }
    h.port.openError.clear();  // a busy port frees up after the first try
  }
  return 0;
}
