// The status display: fault and alarm lists, the summary list with the
// check boxes it keeps in step, and the analog readouts. Each update issues
// its own query through Comms and writes the panel model; a failed or empty
// answer leaves the field as it stands.
#pragma once

#include <string>

#include "display/frm_main.h"
#include "display/panel_state.h"
#include "link/comms.h"
#include "unit/unit_descriptor.h"

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
  bool GetFormatedPwr(float value, std::string& out) const;
  void DisplayStatusMsg(const std::string& text);

 private:
  Comms& c_;
  UnitDescriptor& u_;
  ui::FrmMain& f_;
  PanelState& s_;
};

}  // namespace amp
