// One session with a unit from the terminal: the host parts, the link, and
// a panel that keeps the last status words for printing.
#pragma once

#include <memory>
#include <string>

#include "cli/console_dialogs.h"
#include "link/comms.h"
#include "link/frame_trace.h"
#include "platform/com_slots.h"
#include "qt/qt_comm_port.h"
#include "qt/qt_event_pump.h"
#include "qt/qt_tcp_socket.h"
#include "qt/qt_timer.h"

namespace amp::cli {

// What the terminal shows of the panel at this stage: the status words of
// the last good poll and the state of the connect button.
class StatusPanel : public LinkPanel {
 public:
  void SetSummaryStatus(const std::string& w) override { summary = w; }
  void SetFaultStatus(const std::string& w) override { fault = w; }
  void SetAlarmStatus(const std::string& w) override { alarm = w; }
  void SetConnectCaption(std::string_view c) override { caption = c; }
  void ClearForm() override { summary = fault = alarm = ""; }
  void FirstTimeRead() override;

  Comms* comms = nullptr;
  std::string summary, fault, alarm;
  std::string caption = "Connect";
};

struct Target {
  std::string tcpHost;  // TCP when not empty
  int tcpPort = 2000;
  std::string device;   // serial device path, or COM1..COM10
  std::string settings = "9600,N,8,1";
  std::string address = "A";
};

class CliSession {
 public:
  explicit CliSession(ConsoleDialogs& dialogs);

  bool OpenTrace(const std::string& path, std::string* error);
  // Connects and runs the first read; false (with the box shown) when no
  // unit answers.
  bool Connect(const Target& target);
  bool Connected() const { return panel_.caption == "Disconnect"; }
  void Disconnect();

  Comms& comms() { return comms_; }
  StatusPanel& panel() { return panel_; }
  QtTimer& timer() { return timer_; }
  QtEventPump& pump() { return pump_; }

 private:
  bool ConnectTcp(const Target& target);
  bool ConnectSerial(const Target& target);
  int ReadUnitIDWord();

  ConsoleDialogs& dialogs_;
  ComSlots slots_;
  QtCommPort port_{slots_};
  QtTcpSocket sock_;
  QtTimer timer_;
  QtEventPump pump_;
  QtClock clock_;
  StatusPanel panel_;
  Comms comms_;
  FrameTrace trace_{clock_};
};

}  // namespace amp::cli
