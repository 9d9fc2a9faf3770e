// SettingsStore on one named ini file, for --settings-file: tests and demos
// keep their settings apart from the operator's. Sections are the file's
// groups; the file holds the settings of one application.
#pragma once

#include <string>

#include "platform/settings_store.h"

namespace amp {

class IniSettingsStore final : public SettingsStore {
 public:
  explicit IniSettingsStore(std::string path) : path_(std::move(path)) {}

  std::string GetSetting(const std::string& app, const std::string& section, const std::string& key,
                         const std::string& fallback) override;
  void SaveSetting(const std::string& app, const std::string& section, const std::string& key,
                   const std::string& value) override;

  const std::string& Path() const { return path_; }
  // "" or the reason the last save did not reach the disk.
  std::string LastError() const override { return lastError_; }

 private:
  std::string path_;
  std::string lastError_;
};

}  // namespace amp
