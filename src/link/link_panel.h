// The main panel as the link layer sees it. The poll loop pushes status into
// the display and ends a session through these calls; the panel layer
// implements them. Every call has a do-nothing default so that a front end
// (or a test) fills only what it shows.
#pragma once

#include <string>
#include <string_view>

namespace amp {

class LinkPanel {
 public:
  virtual ~LinkPanel() = default;

  // Status words of one poll.
  virtual void SetSummaryStatus(const std::string& word) {}
  virtual void SetFaultStatus(const std::string& word) {}
  virtual void SetAlarmStatus(const std::string& word) {}

  // Read on every good poll.
  virtual void UpdateFwdRF() {}
  virtual void UpdateRevRF() {}

  // The fast group, every fourth good poll.
  virtual void UpdateAtn() {}
  virtual void UpdateTemperature() {}
  virtual void UpdateHelixHeater() {}
  virtual void UpdateCathodeCurrent() {}
  virtual void UpdateCurrentSense() {}
  virtual void UpdateDCVIn() {}
  virtual void InitRFTripLevels() {}
  virtual void UpdateCurrentSubBand() {}
  virtual void UpdateRFFrequency() {}

  // The slow group: the unit's clock into txtDateTime, and the hour meters.
  virtual void UpdateDateTime() {}
  virtual void UpdateHours() {}

  // The unit descriptor's one flag the poll loop forks on.
  virtual bool IsTWTA() const { return false; }

  virtual void FirstTimeRead() {}
  virtual void ClearForm() {}
  virtual void DisableForm() {}
  virtual void EnableForm() {}

  // btnConnect's caption, the picture of Comms::session.
  virtual void SetConnectCaption(std::string_view caption) {}
  // Enables a button or menu entry by its control name (btnConnect,
  // mnuConnect, mnuAdvSrch, mnuAtnCal, ...).
  virtual void SetControlEnabled(std::string_view control, bool enabled) {}
};

}  // namespace amp
