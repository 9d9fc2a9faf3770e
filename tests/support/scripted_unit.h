// A link whose unit answers from a script: each command text gets the reply
// body (or refusal) set for it, framed as a unit frames it. Commands without
// a script get no reply. For reader tests; end-to-end tests use ampsim.
#pragma once

#include <deque>
#include <map>
#include <string>
#include <vector>

#include "basic/checksum.h"
#include "support/link_parts.h"

namespace amp::test {

class ScriptedUnit : public LinkParts {
 public:
  ScriptedUnit() {
    port.isOpen = true;
    port.onWrite = [this](const std::string& frame) { OnFrame(frame); };
  }

  // The unit answers `command` with ACK, its address, `body`, ETX and the
  // checksum. Several answers for one command are used in order; the last
  // one stays.
  void Answer(const std::string& command, const std::string& body) {
    script_[command].push_back(Frame('\x06', body));
  }
  void Refuse(const std::string& command) { script_[command].push_back(Frame('\x15', command)); }
  // The whole reply exactly as given (for broken frames).
  void Raw(const std::string& command, const std::string& frame) {
    script_[command].push_back(frame);
  }

  static std::string Frame(char first, const std::string& body, char address = 'A') {
    std::string f;
    f += first;
    f += address;
    f += body;
    f += '\x03';
    f += static_cast<char>(XorChecksum(f));
    return f;
  }

  std::vector<std::string> sent;  // command texts in the order sent

 private:
  void OnFrame(const std::string& frame) {
    if (frame.size() < 4 || (frame[0] != '\x02' && frame[0] != '{')) return;  // priming pair
    const std::string text = frame.substr(2, frame.size() - 4);
    sent.push_back(text);
    auto it = script_.find(text);
    if (it == script_.end() || it->second.empty()) return;
    const std::string reply = it->second.front();
    if (it->second.size() > 1) it->second.pop_front();
    if (!reply.empty()) port.Arrive(reply, 1);
  }
  std::map<std::string, std::deque<std::string>> script_;
};

}  // namespace amp::test
