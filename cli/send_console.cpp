#include "cli/send_console.h"

namespace amp::cli {

namespace {

constexpr char kSTX = 2, kETX = 3, kACK = 6, kNAK = 21;
constexpr size_t kLineWidth = 100;

std::string Named(char c) {
  switch (c) {
    case kSTX:
      return "[STX]";
    case kETX:
      return "[ETX]";
    case kACK:
      return "[ACK]";
    case kNAK:
      return "[NAK]";
    default:
      return {};
  }
}

}  // namespace

std::string ReadableReply(std::string_view frame) {
  if (frame.size() < 2) return {};
  const size_t etx = frame.find(kETX, 1);
  if (etx == std::string_view::npos) return {};
  return Named(frame[0]) + std::string(frame.substr(1, etx - 1)) + Named(kETX);
}

std::vector<std::string> ConsoleLines(const std::string& readable) {
  if (readable.empty()) return {};
  if (readable.size() <= kLineWidth) return {readable};
  return {readable.substr(0, kLineWidth), readable.substr(kLineWidth)};
}

SendResult SendCommand(Comms& comms, const std::string& text) {
  SendResult r;
  if (text.empty()) return r;  // an empty text does nothing
  r.sent = true;
  r.ok = comms.ExchangeCommand(text, false);
  r.frame = comms.Link.RxMessage;
  r.readable = ReadableReply(r.frame);
  // A failed exchange lists nothing in the console.
  if (r.ok) r.lines = ConsoleLines(r.readable);
  return r;
}

std::vector<std::string> FormatSendLines(const std::string& text, const SendResult& r) {
  const std::string head = text + " -> ";
  if (!r.sent) return {"(empty command: nothing sent)"};
  if (!r.ok) {
    return {head + "FAILED" + (r.readable.empty() ? " (no reply)" : " " + r.readable)};
  }
  if (r.lines.empty()) return {head + "(no readable reply)"};
  std::vector<std::string> out{head + r.lines[0]};
  for (size_t i = 1; i < r.lines.size(); ++i)
    out.push_back(std::string(head.size(), ' ') + r.lines[i]);
  return out;
}

}  // namespace amp::cli
