// A LinkPanel that records what the link layer asked of the panel.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "link/link_panel.h"

namespace amp::test {

class RecordingPanel : public LinkPanel {
 public:
  void SetSummaryStatus(const std::string& w) override { Log("summary:" + w); }
  void SetFaultStatus(const std::string& w) override { Log("fault:" + w); }
  void SetAlarmStatus(const std::string& w) override { Log("alarm:" + w); }
  void UpdateFwdRF() override { Log("UpdateFwdRF"); }
  void UpdateRevRF() override { Log("UpdateRevRF"); }
  void UpdateAtn() override { Log("UpdateAtn"); }
  void UpdateTemperature() override { Log("UpdateTemperature"); }
  void UpdateHelixHeater() override { Log("UpdateHelixHeater"); }
  void UpdateCathodeCurrent() override { Log("UpdateCathodeCurrent"); }
  void UpdateCurrentSense() override { Log("UpdateCurrentSense"); }
  void UpdateDCVIn() override { Log("UpdateDCVIn"); }
  void InitRFTripLevels() override { Log("InitRFTripLevels"); }
  void UpdateCurrentSubBand() override { Log("UpdateCurrentSubBand"); }
  void UpdateRFFrequency() override { Log("UpdateRFFrequency"); }
  void UpdateDateTime() override { Log("UpdateDateTime"); }
  void UpdateHours() override { Log("UpdateHours"); }
  bool IsTWTA() const override { return twta; }
  void FirstTimeRead() override {
    Log("FirstTimeRead");
    if (onFirstTimeRead) onFirstTimeRead();
  }
  void ClearForm() override { Log("ClearForm"); }
  void DisableForm() override { Log("DisableForm"); }
  void EnableForm() override { Log("EnableForm"); }
  void SetConnectCaption(std::string_view c) override {
    caption = c;
    Log("caption:" + caption);
  }
  void SetControlEnabled(std::string_view name, bool on) override {
    Log(std::string(on ? "enable:" : "disable:") + std::string(name));
  }

  bool Saw(const std::string& entry) const {
    for (auto& e : log)
      if (e == entry) return true;
    return false;
  }
  int Count(const std::string& entry) const {
    int n = 0;
    for (auto& e : log) n += (e == entry);
    return n;
  }

  bool twta = false;
  std::string caption = "Connect";
  std::vector<std::string> log;
  std::function<void()> onFirstTimeRead;

 private:
  void Log(std::string e) { log.push_back(std::move(e)); }
};

}  // namespace amp::test
