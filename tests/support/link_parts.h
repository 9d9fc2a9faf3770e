// The host parts of one link, all fake, wired as the unit tests use them:
// serial port, no address check, a 2 s reply timeout, address "A".
#pragma once

#include <string>

#include "basic/checksum.h"
#include "link/comms.h"
#include "support/fakes.h"
#include "support/recording_panel.h"

namespace amp::test {

struct LinkParts {
  FakeClock clock;
  FakeEventPump pump{clock};
  FakeCommPort port{clock};
  FakeTcpSocket sock{pump};
  FakeTimer timer;
  FakeDialogs dialogs;
  RecordingPanel panel;
  Comms comms{LinkHost{sock, timer, pump, clock, dialogs}, panel};

  LinkParts() {
    comms.Link.SetCommControl(&port);
    comms.Link.SetCheckAddress(false);
    comms.Link.SetMsgTimeout(2.0f);
    comms.Link.SetDeviceAddress("A");
  }
};

// `frame` with its checksum byte appended.
inline std::string Reply(std::string frame) {
  frame += static_cast<char>(XorChecksum(frame));
  return frame;
}

}  // namespace amp::test
