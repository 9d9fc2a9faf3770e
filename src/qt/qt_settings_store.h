// SettingsStore on QSettings ini files: one file per application, one group
// per section. By default the files live in the user's configuration
// directory under AmpDesk/; a given directory replaces that (tests,
// --settings-dir).
#pragma once

#include <string>

#include "platform/settings_store.h"

namespace amp {

class QtSettingsStore final : public SettingsStore {
 public:
  explicit QtSettingsStore(std::string directory = {});

  std::string GetSetting(const std::string& app, const std::string& section, const std::string& key,
                         const std::string& fallback) override;
  void SaveSetting(const std::string& app, const std::string& section, const std::string& key,
                   const std::string& value) override;

  // The ini file that holds `app`'s settings.
  std::string FilePath(const std::string& app) const;
  // "" or the reason the last save did not reach the disk.
  std::string LastError() const override { return lastError_; }

 private:
  std::string directory_;
  std::string lastError_;
};

}  // namespace amp
