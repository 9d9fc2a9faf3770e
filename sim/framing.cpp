#include "sim/framing.h"

#include <cstdio>

#include "basic/checksum.h"

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

std::string HexBytes(std::string_view bytes) {
  std::string out;
  char buf[4];
  for (unsigned char c : bytes) {
    if (!out.empty()) out += ' ';
    std::snprintf(buf, sizeof buf, "%02X", c);
    out += buf;
  }
  return out;
}

std::string ReadableBytes(std::string_view bytes) {
  std::string out;
  char buf[8];
  for (unsigned char c : bytes) {
    switch (c) {
      case 0x02: out += "<STX>"; break;
      case 0x03: out += "<ETX>"; break;
      case 0x06: out += "<ACK>"; break;
      case 0x15: out += "<NAK>"; break;
      case 0x0D: out += "<CR>"; break;
      case 0x0A: out += "<LF>"; break;
      default:
        if (c >= 0x20 && c <= 0x7E) {
          out += static_cast<char>(c);
        } else {
          std::snprintf(buf, sizeof buf, "<%02X>", c);
          out += buf;
        }
    }
  }
  return out;
}

}  // namespace amp::sim
