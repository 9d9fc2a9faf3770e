// The host's real parts (QSerialPort on the simulator's pseudo-terminal,
// QTcpSocket on loopback) around one simulated unit, run from a profile or
// from options of its own. The unit must raise no box unless the test says
// which it expects.
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

struct ProfileHost {
  explicit ProfileHost(sim::Simulator::Options o) : unit(std::move(o)) {
    std::string err;
    started = unit.Start(&err);
    EXPECT_TRUE(started) << err;
    comms.Link.SetCommControl(&port);
    comms.Link.SetMsgTimeout(1.0f);
    dialogs.ExpectNoBox();
  }
  ProfileHost(const std::string& profile, bool serial) : ProfileHost(Options(profile, serial)) {}

  static sim::Simulator::Options Options(const std::string& profile, bool serial) {
    sim::Simulator::Options o;
    o.tcpPort = 0;
    o.tcp = !serial;
    o.serial = serial;
    std::string err;
    if (!profile.empty()) {
      EXPECT_TRUE(sim::LoadProfile(sim::ResolveProfile(profile), o.unit, &err))
          << profile << ": " << err;
    }
    return o;
  }

  // Points the link at the unit: the pseudo-terminal as COM1 with `settings`
  // and `address`, or a connected socket.
  bool Connect(bool serial, char address, const std::string& settings = "9600,N,8,1") {
    if (!started) return false;
    comms.Link.SetDeviceAddress(std::string(1, address));
    if (serial) {
      slots.Bind(1, unit.SerialPath());
      comms.Link.SetCommSettings(settings);
      comms.Link.SetPortNumber(1);
      return true;
    }
    comms.gUseEnet = true;
    sock.SetRemoteHost("127.0.0.1");
    sock.SetRemotePort(unit.TcpPort());
    sock.Connect();
    return PumpUntil([&] { return sock.State() == TcpSocket::sckConnected; }, 3000);
  }

  int TcpPort() const { return unit.TcpPort(); }

  sim::Simulator unit;
  bool started = false;
  ComSlots slots;
  QtCommPort port{slots};
  QtTcpSocket sock;
  QtTimer timer;
  QtEventPump pump;
  QtClock clock;
  FakeDialogs dialogs;
  RecordingPanel panel;
  Comms comms{LinkHost{sock, timer, pump, clock, dialogs}, panel};
};

}  // namespace amp::test
