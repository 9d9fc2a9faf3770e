// The unit search by UDP: the "Locate IP" dialog (frmLocateIP). One probe
// goes out; the units that answer within half a second are listed; a click
// on a line chooses that unit. Connecting to it is the application's part.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "control/panel_context.h"
#include "display/frm_locate_ip.h"
#include "platform/udp_socket.h"

namespace amp {

// Where the probe goes and where the answers are awaited. The defaults are
// the units' own; tests and a second copy of the program set others.
struct DiscoveryTarget {
  std::string address;  // the broadcast address by default
  int localPort;
  int remotePort;
};
DiscoveryTarget DefaultDiscoveryTarget();

class LocateIpControls {
 public:
  explicit LocateIpControls(PanelContext& p);
  LocateIpControls(const LocateIpControls&) = delete;
  LocateIpControls& operator=(const LocateIpControls&) = delete;

  ui::FrmLocateIP frmLocateIP;

  // The host's socket; without one the search finds nothing.
  UdpSocket* udpSock = nullptr;
  DiscoveryTarget target = DefaultDiscoveryTarget();

  // The unit chosen ("" none) and the TCP port to reach it on. The port is
  // 32 bits wide: a typed port above 32767 is a port, not an overflow.
  std::string gLocatedIP;
  int32_t gLocatedPort = 2000;

  struct FoundUnit {
    std::string address;
    std::string description;
  };
  static constexpr int kRecords = 101;  // indices 0 to 100
  // The search stops listening once this many units have answered.
  static constexpr int kEnough = 99;
  const std::array<FoundUnit, kRecords>& Found() const { return mFoundUnits; }
  int FoundCount() const { return mFoundCount; }

  void Wire();
  void frmLocateIP_Load();
  void btnSearch_Click();
  // Probe, listen half a second, list the answers.
  void Search();
  void lstIPAdrs_Click();
  void txtPortNum_KeyPress(int& key);
  void udpSock_DataArrival(long bytesTotal);
  void udpSock_Error(int number, const std::string& description);

 private:
  void ListResults();

  PanelContext& p_;
  std::array<FoundUnit, kRecords> mFoundUnits{};
  int mFoundCount = 0;
};

}  // namespace amp
