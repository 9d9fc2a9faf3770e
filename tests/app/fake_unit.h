// A unit on the fake serial line for the search tests: it answers the id
// query "1" only when the frame carries its address and the port is on its
// settings, as a unit on a shared line hears only frames sent at its speed
// and addressed to it. Every probe is recorded as "address settings".
#pragma once

#include <string>
#include <vector>

#include "basic/checksum.h"
#include "support/fakes.h"

namespace amp::test {

class FakeLineUnit {
  FakeCommPort& port_;

 public:
  FakeLineUnit(FakeCommPort& port, char address, std::string settings)
      : port_(port), address(address), settings(std::move(settings)) {
    port_.onWrite = [this](const std::string& frame) { OnFrame(frame); };
  }

  // The reply frame to the id query: ACK, the address as this unit spells
  // it, "1" and the two characters of the id word.
  static std::string IdReply(char address) {
    std::string f = "\x06";
    f += address;
    f += "1@A\x03";
    f += static_cast<char>(XorChecksum(f));
    return f;
  }

  char address;
  std::string settings;
  char spelledAs = 0;  // the address the unit puts in its replies; 0: as asked
  int64_t replyDelayMs = 5;
  bool silent = false;
  std::vector<std::string> probes;    // "A 9600,N,8,1" for each id query seen
  std::vector<std::string> commands;  // every command text, in order

 private:
  void OnFrame(const std::string& frame) {
    if (frame.size() < 5 || frame[0] != '\x02') return;  // the priming pair
    const char to = frame[1];
    const std::string text = frame.substr(2, frame.size() - 4);
    commands.push_back(text);
    if (text == "1") probes.push_back(std::string(1, to) + " " + port_.settings);
    if (silent || to != address || port_.settings != settings || text != "1") return;
    port_.Arrive(IdReply(spelledAs ? spelledAs : to), replyDelayMs);
  }
};

}  // namespace amp::test
