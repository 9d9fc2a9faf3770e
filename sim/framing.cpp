#include "sim/framing.h"

#include <cstdio>

#include "basic/checksum.h"
#include "basic/text.h"

namespace amp::sim {

void FrameParser::Reset() {
  state_ = State::Idle;
  raw_.clear();
}

bool FrameParser::Next(std::string_view& input, RxFrame* frame) {
  const char start = printable_ ? PSTART : STX;
  const char end = printable_ ? PEND : ETX;
  while (!input.empty()) {
    char c = input.front();
    input.remove_prefix(1);
    if (state_ == State::Checksum) {
      raw_ += c;
      frame->raw = raw_;
      frame->address = raw_[1];
      frame->text = raw_.substr(2, raw_.size() - 4);
      std::string_view covered(raw_.data(), raw_.size() - 1);
      uint8_t want = printable_ ? PrintableChecksum(covered) : XorChecksum(covered);
      frame->checksumOk = !verifyChecksum_ || static_cast<uint8_t>(c) == want;
      Reset();
      return true;
    }
    if (c == start) {
      raw_.assign(1, c);
      state_ = State::Address;
      continue;
    }
    switch (state_) {
      case State::Idle:
        break;
      case State::Address:
        if (c == end) {
          Reset();  // no address: not a frame
        } else {
          raw_ += c;
          state_ = State::Text;
        }
        break;
      case State::Text:
        raw_ += c;
        if (c == end) {
          state_ = State::Checksum;
        } else if (raw_.size() > kMaxText + 2) {
          Reset();
        }
        break;
      case State::Checksum:
        break;  // handled above
    }
  }
  return false;
}

std::string EncodeReply(bool printable, bool ack, char address, std::string_view body) {
  std::string out;
  out += printable ? PSTART : (ack ? ACK : NAK);
  out += address;
  // Printable framing has no ACK/NAK byte: a refusal is a reply without a body.
  if (ack || !printable) out += body;
  out += printable ? PEND : ETX;
  out += static_cast<char>(printable ? PrintableChecksum(out) : XorChecksum(out));
  return out;
}

std::string HexBytes(std::string_view bytes) { return Hex(bytes); }

std::string ReadableBytes(std::string_view bytes) { return Readable(bytes, /*upperHex=*/true); }

}  // namespace amp::sim
