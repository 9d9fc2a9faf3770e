// Request frames as the unit receives them and reply frames as it sends them.
//
// Request:  start, address, command text, end, checksum byte
//           binary:    STX ... ETX, checksum = XOR of STX..ETX
//           printable: '{' ... '}', checksum = printable sum of '{'..'}'
//           over TCP the checksum position holds a fixed 'M' followed by
//           CR LF; it is not checked there.
// Reply:    binary:    ACK|NAK, address, body, ETX, XOR of ACK..ETX
//           printable: '{', address, body, '}', printable sum of '{'..'}'
//           (there is no ACK/NAK byte in printable mode, so a refusal
//           is a reply with an empty body).
#pragma once

#include <string>
#include <string_view>

namespace amp::sim {

struct RxFrame {
  std::string raw;  // every byte from the start byte through the checksum byte
  char address = 0;
  std::string text;  // the command text between address and end byte
  bool checksumOk = true;
};

// Incremental deframer. Bytes outside a frame (the host's priming CR LF,
// line noise, the CR LF after a TCP frame) are skipped; a start byte inside a
// frame restarts it, so the parser resynchronises after garbage.
class FrameParser {
 public:
  // A frame longer than this is noise: drop it and wait for the next start.
  static constexpr size_t kMaxText = 256;

  FrameParser(bool printable, bool verifyChecksum)
      : printable_(printable), verifyChecksum_(verifyChecksum) {}

  // Consumes bytes from the front of `input` up to the end of the next
  // complete frame. Returns true and fills `frame` when one completed; returns
  // false when `input` ran out first (a partial frame is kept for next time).
  bool Next(std::string_view& input, RxFrame* frame);

  void Reset();

 private:
  enum class State { Idle, Address, Text, Checksum };

  bool printable_;
  bool verifyChecksum_;
  State state_ = State::Idle;
  std::string raw_;
};

// The whole reply frame including its checksum byte. In printable framing a
// NAK drops the body, whatever it is.
std::string EncodeReply(bool printable, bool ack, char address, std::string_view body);

// "02 41 31 03 71"
std::string HexBytes(std::string_view bytes);
// "<STX>A1<ETX>q": control bytes named, other unprintable bytes as <hh>.
std::string ReadableBytes(std::string_view bytes);

}  // namespace amp::sim
