// The host's real parts (QSerialPort on the simulator's pseudo-terminal,
// QTcpSocket on loopback) around one simulated unit that runs a profile.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "link/comms.h"
#include "qt/qt_comm_port.h"
#include "qt/qt_event_pump.h"
#include "qt/qt_tcp_socket.h"
#include "qt/qt_test_support.h"
#include "qt/qt_timer.h"
#include "sim/profile.h"
#include "sim/simulator.h"
#include "support/fakes.h"
#include "support/recording_panel.h"

namespace amp::test {

class ProfileHost {
 public:
  ProfileHost(const std::string& profile, bool serial) : unit_(OptionsFor(profile, serial)) {
    std::string err;
    started_ = unit_.Start(&err);
    EXPECT_TRUE(started_) << err;
    comms.Link.SetCommControl(&port_);
    comms.Link.SetMsgTimeout(1.0f);
  }

  // Points the link at the unit: the pseudo-terminal as COM1 at 9600,N,8,1
  // and `address`, or a connected socket.
  bool Connect(bool serial, char address) {
    if (!started_) return false;
    comms.Link.SetDeviceAddress(std::string(1, address));
    if (serial) {
      slots_.Bind(1, unit_.SerialPath());
      comms.Link.SetCommSettings("9600,N,8,1");
      comms.Link.SetPortNumber(1);
      return true;
    }
    comms.gUseEnet = true;
    sock_.SetRemoteHost("127.0.0.1");
    sock_.SetRemotePort(unit_.TcpPort());
    sock_.Connect();
    return PumpUntil([&] { return sock_.State() == TcpSocket::sckConnected; }, 3000);
  }

  int TcpPort() const { return unit_.TcpPort(); }
  std::vector<std::string> Received() const { return unit_.ReceivedFrames(); }

 private:
  static sim::Simulator::Options OptionsFor(const std::string& profile, bool serial) {
    sim::Simulator::Options o;
    o.tcpPort = 0;
    o.tcp = !serial;
    o.serial = serial;
    std::string err;
    EXPECT_TRUE(sim::LoadProfile(sim::ResolveProfile(profile), o.unit, &err))
        << profile << ": " << err;
    return o;
  }

  sim::Simulator unit_;
  bool started_ = false;
  ComSlots slots_;
  QtCommPort port_{slots_};
  QtTcpSocket sock_;
  QtTimer timer_;
  QtEventPump pump_;
  QtClock clock_;
  FakeDialogs dialogs_;
  RecordingPanel panel_;

 public:
  Comms comms{LinkHost{sock_, timer_, pump_, clock_, dialogs_}, panel_};
};

}  // namespace amp::test
