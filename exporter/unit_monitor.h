// One unit of the fleet, watched as the panel watches it: the panel's own
// link, first read, status poll and miss rules, on host parts that run on a
// fiber of the shared loop. No handler of the panel is wired, so nothing the
// poll writes into the panel model can send a command: the session only
// reads.
//
// The session's life: connect, first read, poll every 2.5 s; the third
// missed poll (or the socket dying) ends it, as on the panel, and the unit
// is reported down and tried again after 2.5 s, then 5, 10 ... up to 60 s.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "display/frm_main.h"
#include "display/panel_state.h"
#include "display/session_values.h"
#include "display/status_display.h"
#include "exporter/host.h"
#include "exporter/loop.h"
#include "exporter/serial_bus.h"
#include "fleet/fleet_file.h"
#include "link/comms.h"
#include "link/link_panel.h"
#include "model/unit_descriptor.h"
#include "unit/first_read.h"

namespace amp::exporter {

// What one poll left on the panel, in the units metrics use.
struct UnitReadings {
  bool up = false;
  std::optional<double> forwardDbm, reflectedDbm;
  std::vector<std::pair<std::string, double>> temperaturesCelsius;  // sensor, value
  // Tube units: helix per tube ("1", "2"), heater of a single tube.
  std::vector<std::pair<std::string, double>> helixVolts, helixAmperes;
  std::optional<double> heaterVolts, heaterAmperes;
  bool transmitterOn = false, rfInhibited = false, remote = false, summaryFault = false;
  std::set<std::string> faults, alarms;  // display names of the active ones
};

// What the monitor tells the rest of the exporter. All calls come on the
// loop's thread.
struct UnitObserver {
  std::function<void(const UnitReadings&)> readings;     // after every poll and session change
  std::function<void(bool ok, double sinceLastS)> poll;  // one poll done
  std::function<void(double seconds)> exchange;          // one command answered
  std::function<void(const std::string& event, const std::string& detail)> change;
};

class UnitMonitor final : public LinkPanel {
 public:
  static constexpr int64_t kFirstBackoffMs = 2500;
  static constexpr int64_t kMaxBackoffMs = 60000;
  static constexpr int kConnectWaitMs = 10000;

  // `bus` is the unit's serial line, shared with the other units on it;
  // null for a unit on TCP.
  UnitMonitor(Loop& loop, fleet::UnitEntry entry, SerialBus* bus, UnitObserver observer);
  UnitMonitor(const UnitMonitor&) = delete;
  UnitMonitor& operator=(const UnitMonitor&) = delete;

  // The unit's life, run on its fiber until `stopping` says so.
  void Run(const std::function<bool()>& stopping);

  const fleet::UnitEntry& entry() const { return entry_; }
  // The panel's state as JSON, as `ampdesk-cli status --json` prints it.
  std::string StateJson() const;
  const UnitReadings& readings() const { return readings_; }

  // ---- LinkPanel: what the poll loop asks of the panel ----
  void SetSummaryStatus(const std::string& w) override { display_.SetSummaryStatus(w); }
  void SetFaultStatus(const std::string& w) override { display_.SetFaultStatus(w); }
  void SetAlarmStatus(const std::string& w) override { display_.SetAlarmStatus(w); }
  void UpdateFwdRF() override { display_.UpdateFwdRF(); }
  void UpdateRevRF() override { display_.UpdateRevRF(); }
  void UpdateAtn() override { display_.UpdateAtn(); }
  void UpdateTemperature() override { display_.UpdateTemperature(); }
  void UpdateHelixHeater() override { display_.UpdateHelixHeater(); }
  void UpdateCathodeCurrent() override { display_.UpdateCathodeCurrent(); }
  void UpdateCurrentSense() override { display_.UpdateCurrentSense(); }
  void UpdateDCVIn() override { display_.UpdateDCVIn(); }
  void InitRFTripLevels() override { firstRead_.setup().InitRFTripLevels(); }
  // The sub-band belongs to the band controls, which a monitor has none of.
  void UpdateCurrentSubBand() override {}
  void UpdateRFFrequency() override { display_.UpdateRFFrequency(); }
  void UpdateDateTime() override { display_.UpdateDateTime(); }
  void UpdateHours() override { display_.UpdateHours(); }
  bool IsTWTA() const override { return unit_.gIsTWTA; }
  void FirstTimeRead() override { firstRead_.FirstTimeRead(); }
  void ClearForm() override { firstRead_.ClearForm(); }
  void DisableForm() override { firstRead_.DisableForm(); }
  void EnableForm() override { firstRead_.EnableForm(); }
  // The button's caption is what /units shows of the session, as on the panel.
  void SetConnectCaption(std::string_view caption) override { frm_.btnConnect.SetCaption(caption); }

 private:
  bool StartSession();
  bool StartSerialSession();
  void PollSession(const std::function<bool()>& stopping);
  void Publish();
  UnitReadings Read();
  void Report(const UnitReadings& next);

  Loop& loop_;
  fleet::UnitEntry entry_;
  UnitObserver observer_;
  // Host parts, then the panel's state in the order the application builds it.
  LoopTcpSocket sock_;
  LoopPump pump_;
  std::unique_ptr<BusPort> port_;  // on a serial line only
  LoopClock clock_;
  LoopTimer timer_;
  QuietDialogs dialogs_;
  ui::FrmMain frm_;
  Comms comms_;
  UnitDescriptor unit_;
  PanelState panel_;
  SessionValues values_;
  StatusDisplay display_;
  FirstRead firstRead_;

  UnitReadings readings_;
  bool everUp_ = false;
  int64_t lastPollMs_ = 0;
  int64_t exchangeStartMs_ = -1;
};

}  // namespace amp::exporter
