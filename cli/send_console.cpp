#include "cli/send_console.h"

namespace amp::cli {

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
