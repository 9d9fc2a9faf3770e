#include "frontend/run_settings.h"

#include <algorithm>

#include "app/settings_keys.h"

namespace amp::frontend {

namespace {

bool IsPanels(const std::string& app, const std::string& section) {
  return app == setting_key::kAppTitle && section == setting_key::kSection;
}

bool IsTargetKey(const std::string& key) {
  const auto& keys = setting_key::kTargetKeys;
  return std::find(keys.begin(), keys.end(), key) != keys.end();
}

}  // namespace

void RunSettings::LayTarget(const RunTarget& target) {
  namespace k = setting_key;
  overrides_.clear();
  targetNamed_ = target.Named();
  if (!targetNamed_) return;
  if (!target.tcpHost.empty()) {
    overrides_[k::kUseEnet] = "True";
    overrides_[k::kUseIP] = target.tcpHost;
    overrides_[k::kEthPort] = std::to_string(target.tcpPort);
    return;
  }
  overrides_[k::kUseEnet] = "False";
  overrides_[k::kCurrentPort] = std::to_string(target.serialSlot);
  if (!target.lineSettings.empty()) overrides_[k::kComSettings] = target.lineSettings;
  if (target.address != 0) {
    // One address: the connect polls it instead of searching.
    overrides_[k::kPollAddress] = std::to_string(static_cast<unsigned char>(target.address));
    overrides_[k::kPollStatus] = "1";
  } else {
    overrides_[k::kPollStatus] = "0";
  }
}

std::string RunSettings::GetSetting(const std::string& app, const std::string& section,
                                    const std::string& key, const std::string& fallback) {
  if (IsPanels(app, section))
    if (auto it = overrides_.find(key); it != overrides_.end()) return it->second;
  return stored_.GetSetting(app, section, key, fallback);
}

void RunSettings::SaveSetting(const std::string& app, const std::string& section,
                              const std::string& key, const std::string& value) {
  if (targetNamed_ && IsPanels(app, section) && IsTargetKey(key)) return;
  stored_.SaveSetting(app, section, key, value);
  if (saveError_.empty()) saveError_ = stored_.LastError();
}

}  // namespace amp::frontend
