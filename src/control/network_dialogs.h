// The dialogs about the unit's network and ports, as one group the
// application owns: Ethernet settings, the unit search by UDP, LLDP and the
// unit's serial ports.
#pragma once

#include <array>

#include "control/amp_com_controls.h"
#include "control/enet_cfg_controls.h"
#include "control/lldp_controls.h"
#include "control/locate_ip_controls.h"

namespace amp {

struct NetworkDialogs {
  explicit NetworkDialogs(PanelContext& p) : enetCfg(p), locateIp(p), lldp(p), ampCom(p) {}

  void Wire() {
    enetCfg.Wire();
    locateIp.Wire();
    lldp.Wire();
    ampCom.Wire();
  }
  std::array<ui::Form*, 4> Forms() {
    return {&enetCfg.frmEnetCfg, &locateIp.frmLocateIP, &lldp.frmLLDPConfig, &ampCom.frmAmpCom};
  }

  EnetCfgControls enetCfg;
  LocateIpControls locateIp;
  LldpControls lldp;
  AmpComControls ampCom;
};

}  // namespace amp
