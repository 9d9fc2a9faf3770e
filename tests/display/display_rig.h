// A status display wired to a scripted unit and a fresh main panel, plus
// helpers to write status characters and to read back a status list.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "display/status_display.h"
#include "support/scripted_unit.h"

namespace amp::test {

struct DisplayRig {
  ScriptedUnit s;
  UnitDescriptor u;
  ui::FrmMain f;
  PanelState st;
  StatusDisplay d{s.comms, u, f, st};

  // How many times the unit was sent `command`.
  int Sent(const std::string& command) const {
    return static_cast<int>(std::count(s.sent.begin(), s.sent.end(), command));
  }
  // Where `command` was first sent, or -1.
  int IndexOf(const std::string& command) const {
    auto it = std::find(s.sent.begin(), s.sent.end(), command);
    return it == s.sent.end() ? -1 : static_cast<int>(it - s.sent.begin());
  }
};

// Status characters as the unit sends them: each word's bits above 0x40.
inline std::string Status(std::initializer_list<int> words) {
  std::string field;
  for (int w : words) field += static_cast<char>(0x40 | (w & 63));
  return field;
}

// The visible labels of the fault ("Fault") or alarm ("Alarm") arrays, by
// name and ordered by their row.
inline std::vector<std::pair<int, std::string>> ShownRows(ui::FrmMain& f, const std::string& list) {
  std::vector<std::pair<int, std::string>> rows;
  for (int w = 0; w < 4; ++w) {
    auto& labels = list == "Fault" ? f.FaultWord(w) : f.AlarmWord(w);
    for (int bit = 0; bit < 6; ++bit)
      if (labels[bit].Visible()) rows.emplace_back(labels[bit].Top(), labels[bit].Name());
  }
  std::sort(rows.begin(), rows.end());
  return rows;
}

// The names of the shown labels in row order.
inline std::vector<std::string> Shown(ui::FrmMain& f, const std::string& list) {
  std::vector<std::string> names;
  for (auto& [row, name] : ShownRows(f, list)) names.push_back(name);
  return names;
}

}  // namespace amp::test
