// The host's parts the panel runs on under Qt, shared by the desktop program
// and the command line: the serial slots and port, the socket, the event
// pump, the clock, the frame trace, and the application object built on
// them. Each front end brings its own poll timer, dialogs and settings.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "app/amp_desk.h"
#include "link/frame_trace.h"
#include "platform/com_slots.h"
#include "qt/qt_comm_port.h"
#include "qt/qt_event_pump.h"
#include "qt/qt_tcp_socket.h"
#include "qt/qt_timer.h"
#include "qt/qt_udp_socket.h"

namespace amp {

struct DeskHost {
  explicit DeskHost(ComSlots comSlots) : slots(std::move(comSlots)) {}
  DeskHost(const DeskHost&) = delete;
  DeskHost& operator=(const DeskHost&) = delete;

  // Builds the application object on these parts; the timer, dialogs and
  // settings must outlive it.
  void MakeDesk(Timer& timer, Dialogs& dialogs, SettingsStore& settings);
  // Logs every frame both ways to `path` ("-" for stderr). False with the
  // reason in `error` when the file cannot be opened.
  bool OpenTrace(const std::string& path, std::string* error);

  ComSlots slots;
  QtCommPort port{slots};
  QtTcpSocket sock;
  QtUdpSocket udp;
  QtEventPump pump;
  QtClock clock;
  FrameTrace trace{clock};
  // The dialogs' own timer (the upconverter's live readings).
  QtTimer dialogTimer;
  // Last, so that it goes before the parts it runs on.
  std::unique_ptr<AmpDesk> desk;
};

}  // namespace amp
