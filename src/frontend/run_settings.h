// The settings a front end's panel runs on. A unit named on the command line
// is for that run only: its connection settings are laid over the stored
// ones, so the panel connects to it as it would to a stored target, and none
// of the connection keys is written back, neither the target nor what the
// session changed on its way (a search's line settings, the unit's own IP
// address read at the first read). The operator's stored connection stays
// as it was; the rest of the settings are stored as usual.
#pragma once

#include <map>
#include <string>

#include "platform/settings_store.h"

namespace amp::frontend {

// The unit named for one run.
struct RunTarget {
  std::string tcpHost;  // a TCP session when not empty
  int tcpPort = 2000;
  int serialSlot = 0;        // else a serial one on this COM slot (1..10)
  std::string lineSettings;  // "": the stored ones
  char address = 0;          // poll this single address; 0: search
  bool Named() const { return !tcpHost.empty() || serialSlot > 0; }
};

class RunSettings final : public SettingsStore {
 public:
  explicit RunSettings(SettingsStore& stored) : stored_(stored) {}

  // Lays `target` over the stored settings; before the panel loads them.
  void LayTarget(const RunTarget& target);

  std::string GetSetting(const std::string& app, const std::string& section, const std::string& key,
                         const std::string& fallback) override;
  void SaveSetting(const std::string& app, const std::string& section, const std::string& key,
                   const std::string& value) override;
  std::string LastError() const override { return saveError_; }

  // "" or why a save since the start did not reach the store: the front end
  // tells the operator instead of losing the settings silently.
  const std::string& SaveError() const { return saveError_; }

 private:
  bool targetNamed_ = false;
  std::map<std::string, std::string> overrides_;
  SettingsStore& stored_;
  std::string saveError_;
};

}  // namespace amp::frontend
