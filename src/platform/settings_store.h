// Persisted named settings, grouped by application and section.
#pragma once

#include <string>

namespace amp {

class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  virtual std::string GetSetting(const std::string& app, const std::string& section,
                                 const std::string& key, const std::string& fallback) = 0;
  virtual void SaveSetting(const std::string& app, const std::string& section,
                           const std::string& key, const std::string& value) = 0;
  // "" or why the last save did not reach the store.
  virtual std::string LastError() const { return {}; }
};

}  // namespace amp
