// The status display: fault and alarm lists, the summary list with the
// check boxes it keeps in step, and the analog readouts. Each update issues
// its own query through Comms and writes the panel model; a failed or empty
// answer leaves the field as it stands.
#pragma once

#include <cstdint>
#include <string>

#include "display/frm_main.h"
#include "display/panel_state.h"
#include "link/comms.h"
#include "model/unit_descriptor.h"

namespace amp {

class StatusDisplay {
 public:
  StatusDisplay(Comms& comms, UnitDescriptor& unit, ui::FrmMain& frm, PanelState& state)
      : c_(comms), u_(unit), f_(frm), s_(state) {}

  // Fault and alarm decoding.
  void InitFaultsAlarms();
  void InitFaultNames();
  void InitAlarmNames();
  void ClearFaultStatus();
  void SetFaultStatus(const std::string& field);
  void SetAlarmStatus(const std::string& field);
  void SetTWTAFaultStatus(const std::string& field);
  void SetSSPAFaultStatus(const std::string& field);
  void SetTWTAlarmStatus(const std::string& field);
  void SetSSAAlarmStatus(const std::string& field);

  // Summary status.
  void SetSummaryStatus(const std::string& field);
  void SetTWTASummaryStatus(const std::string& field);
  void SetSSPASummaryStatus(const std::string& field);
  void SetAutoModeSumStatus(int s3);
  void ClearSummaryStatus();
  void UpdateRFIStatus();

  // Analog readouts and display units.
  std::string FormatPower(float dBm) const;
  void UpdateRFPower();
  void UpdateFwdRF();
  void UpdateRevRF();
  void UpdateTemperature();
  void UpdateHelixHeater();
  void UpdateCathodeCurrent();
  void UpdateCurrentSense();
  void UpdateDCVIn();
  bool UpdateHours();
  void UpdateRFFrequency();
  void UpdateAtn();
  void UpdateDateTime();  // the unit's clock ("?%") into txtDateTime
  void DisplayToWatts();
  void DisplayTodBm();
  // The value clamped to the power range (floor to top, in the units shown)
  // with "##0.0" into `out`, which is "0" until then. True when the value lay
  // within the range, false when it was clamped.
  bool GetFormatedPwr(float value, std::string& out) const;
  void DisplayStatusMsg(const std::string& text);

  // The last good cathode current (mA) and anode voltage (V); -1 until read.
  int16_t CathodeCurrent() const { return mCathodeCurrent; }
  int16_t AnodeVoltage() const { return mAnodeVoltage; }

 private:
  // Fault and alarm lists.
  void InitCommonFaultNames();
  void InitTWTAFaultNames();
  void InitTWTAProjectFaultNames();
  void InitSSPAFaultNames();
  void EndFaultList(int rows);
  void EndAlarmList(int rows);
  // RF inhibit state read as part of a status write: its Click is not an
  // operator's action, so the flag is held while chkRFI follows the unit.
  void UpdateRFIStatusHeld();

  // Summary list.
  void SetAutoHVState(int s2, int& row);
  void SetSummaryRows(const std::string& field, int row);
  void SetWaveguideConfig(int s4);

  // Power fields converted in place when the display unit changes.
  void SetPowerCaptions(const char* unit);
  void ConvertPowerFields(bool toWatts);

  Comms& c_;
  UnitDescriptor& u_;
  ui::FrmMain& f_;
  PanelState& s_;
  int16_t mCathodeCurrent = -1;
  int16_t mAnodeVoltage = -1;
};

}  // namespace amp
