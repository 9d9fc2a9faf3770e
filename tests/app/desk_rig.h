// An AmpDesk on fake host parts with fake time, and a settings store in
// memory, for the tests of start-up, the menus and connecting.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <tuple>

#include "app/amp_desk.h"
#include "platform/settings_store.h"
#include "support/fakes.h"

namespace amp::test {

class MemorySettings : public SettingsStore {
 public:
  std::string GetSetting(const std::string& app, const std::string& section, const std::string& key,
                         const std::string& fallback) override {
    auto it = values.find({app, section, key});
    return it == values.end() ? fallback : it->second;
  }
  void SaveSetting(const std::string& app, const std::string& section, const std::string& key,
                   const std::string& value) override {
    values[{app, section, key}] = value;
  }
  // A value of the application's own section.
  std::string Get(const std::string& key) const {
    auto it = values.find({AmpDesk::kAppTitle, AmpDesk::kSettingsSection, key});
    return it == values.end() ? "<unset>" : it->second;
  }
  void Set(const std::string& key, const std::string& value) {
    values[{AmpDesk::kAppTitle, AmpDesk::kSettingsSection, key}] = value;
  }
  std::map<std::tuple<std::string, std::string, std::string>, std::string> values;
};

// The host parts outlive the desk, so a test can build a second desk on the
// same settings, as a second run of the program.
struct DeskRig {
  FakeClock clock;
  FakeEventPump pump{clock};
  FakeCommPort port{clock};
  ComSlots slots;
  FakeTcpSocket sock{pump};
  FakeTimer timer;
  FakeDialogs dialogs;
  MemorySettings settings;
  std::unique_ptr<AmpDesk> desk;

  AmpDesk& NewDesk() {
    desk.reset();
    desk = std::make_unique<AmpDesk>(
        AmpDeskHost{port, slots, sock, timer, pump, clock, dialogs, settings});
    return *desk;
  }
  AmpDesk& Load() {
    NewDesk().Form_Load();
    return *desk;
  }
  std::vector<std::string> BoxTexts() const {
    std::vector<std::string> out;
    for (const auto& b : dialogs.boxes) out.push_back(b.title + ": " + b.text);
    return out;
  }
};

}  // namespace amp::test
