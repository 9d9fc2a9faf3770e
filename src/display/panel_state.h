// State of the panel that the status display and the handlers share.
#pragma once

namespace amp {

struct PanelState {
  // While true, writing to a control sends nothing: every handler returns
  // early. True with no unit and during the first read and status writes.
  bool gInPanelUpdate = true;
  bool gDisplayWatts = false;    // power fields in Watts; the unit reports dBm
  float gFwdRFMax = 50.0f;       // top of the power range, dBm (from the band)
  float gPowerFloor = 0.1f;      // bottom of the power range, dBm (from the band)
  float gRRFFloor = 27.0f;       // reverse RF display floor, a persisted setting
  bool gCathodeDisplay = false;  // the cathode frame is in use
  bool gInletTemp = false;       // the second temperature field shows "Inlet"
  bool gRemoteMode = false;      // the unit reports remote control
};

}  // namespace amp
