// The unit descriptor: what kind of unit is connected and which options it
// has. One panel serves every build of amplifier, so a unit is a project
// number taken from its firmware part number plus flags set by lists of
// project numbers (unit/unit_type.cpp). Every other layer consults these fields.
#pragma once

#include <cstdint>
#include <string>

namespace amp {

struct UnitDescriptor {
  // ---- Identity, set by DetermineUnitType and GetUnitIDVersion ----
  int32_t gProjectID = -1;    // -1 when the unit gave no firmware identity
  bool gIsTWTA = false;       // tube amplifier; false is solid state
  bool gIsKPA = false;        // never set: the KPA branches stay dormant
  bool gIsDualTWT = false;    // dual-tube bit of the configuration word (TWTA only)
  std::string gFWPartNumber;  // "715-####-###", or as before when the identity has none
  std::string gFWPartNumberReported;
  std::string gBootVersion;  // reply to "0C", for configuration file headers
  int16_t gFWVersion = 0;    // firmware revision x 100 when written with a point
  std::string gUnitPartNumber;
  std::string gUnitSerialNumber;
  std::string gSecondaryVersion;  // reply to "0S", touch-screen projects only
  bool gNewDualTWT = false;
  bool gHasCathodeScalar = false;
  bool gIsProject127 = false;  // sticky until Clear()
  bool gExtRefFamily = false;
  bool gFWFamilyA = false;
  bool gFWFamilyB = false;
  bool gFWFamilyC = false;
  bool gFWFamilyD = false;  // sticky until Clear()
  bool gTouchScreen = false;

  // Rules exist for these three, but connecting never runs them.
  bool gCurrentSenseOption = false;
  bool gRevPowerTemperature = false;
  bool gPwrMisMatchAlarm = false;

  // ---- Options, set by SetProjectSpecificValues ----
  bool gHeaterFault = false;
  bool g3PhaseFault = false;
  bool g3PhaseFault2 = false;
  bool gExtRefPresetFault = false;
  bool gExtRefLockFault = false;
  bool gWGPressureFault = false;
  bool gWGArc1Fault = false;
  bool gWGArc2Fault = false;
  bool g24VPresentFault = false;
  bool gFaultOptions = false;
  bool gLinearizerFault = false;
  bool gExtRefFault = false;
  int32_t gFaultOptionWord = 0;  // "YIF?" mask when gFaultOptions, else 0
  bool gPICProcessor = false;
  bool gNetburnerProcessor = false;
  std::string gAtnCountCommand = ".D9";  // prefix of the older attenuator count command
  bool gCommandCSupport = false;         // the unit takes "C" + count

  // Configuration word from "YM?"; negative while unread.
  int16_t gUnitCfgFlags = -1;

  // ---- Identity texts the panel shows (txtPN, txtSN, txtFrmRev, txtCplDate) ----
  // A failed "00" read leaves them as they were; the firmware revision and
  // the compile date rules read them back from here.
  std::string txtPN;
  std::string txtSN;
  std::string txtFrmRev;
  std::string txtCplDate;

  // Back to the state with no unit connected.
  void Clear() { *this = UnitDescriptor{}; }
};

}  // namespace amp
