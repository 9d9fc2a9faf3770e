#include "cli/panel_text.h"

#include <algorithm>
#include <vector>

namespace amp::cli {

namespace {

std::string Join(const std::vector<std::string>& parts, const char* sep) {
  std::string out;
  for (const auto& p : parts) {
    if (p.empty()) continue;
    if (!out.empty()) out += sep;
    out += p;
  }
  return out;
}

// "Name value" when the field is shown and has text.
std::string Field(const char* name, const ui::TextBox& t, const std::string& unit = "") {
  if (!t.Visible() || t.Text().empty()) return {};
  return (*name ? std::string(name) + " " : std::string()) + t.Text() +
         (unit.empty() ? "" : " " + unit);
}

// The captions of the shown labels of a status list, top row first.
template <typename... Arrays>
std::vector<std::string> ShownRows(const Arrays&... arrays) {
  std::vector<const ui::Label*> rows;
  auto add = [&rows](const auto& array) {
    for (int i = 0; i < array.size(); ++i)
      if (array[i].Visible() && !array[i].Caption().empty()) rows.push_back(&array[i]);
  };
  (add(arrays), ...);
  std::stable_sort(rows.begin(), rows.end(),
                   [](const ui::Label* a, const ui::Label* b) { return a->Top() < b->Top(); });
  std::vector<std::string> out;
  out.reserve(rows.size());
  for (const ui::Label* l : rows) out.push_back(l->Caption());
  return out;
}

std::string Faults(const ui::FrmMain& f) {
  const auto rows = ShownRows(f.FaultAbit, f.FaultBbit, f.FaultCbit, f.FaultDbit);
  if (!rows.empty()) return Join(rows, ", ");
  return f.NoFaults.Visible() ? f.NoFaults.Caption() : "";
}

std::string Alarms(const ui::FrmMain& f) {
  const auto rows = ShownRows(f.AlarmAbit, f.AlarmBbit, f.AlarmCbit, f.AlarmDbit);
  if (!rows.empty()) return Join(rows, ", ");
  return f.NoAlarms.Visible() ? f.NoAlarms.Caption() : "";
}

std::string Summary(const ui::FrmMain& f) {
  std::vector<std::string> parts;
  for (const ui::Label* l : {&f.Label31, &f.Label32, &f.Label33, &f.Label34, &f.Label35, &f.Label36,
                             &f.Label13, &f.lblSBUCWarmup, &f.lbllcBucDrive})
    if (l->Visible()) parts.push_back(l->Caption());
  return Join(parts, ", ");
}

std::string Power(const ui::FrmMain& f) {
  return Join(
      {Field("Fwd", f.txtFdBm, f.Label64.Caption()), Field("Rev", f.txtRdBm, f.Label5.Caption())},
      "  ");
}

}  // namespace

std::string PanelText(const ui::FrmMain& f, bool connected) {
  std::string out;
  auto line = [&out](const char* heading, const std::string& text) {
    if (text.empty()) return;
    std::string h = heading;
    h.resize(std::max<size_t>(h.size() + 1, 12), ' ');
    out += h + text + "\n";
  };
  line("Session", connected ? "connected" : "not connected");
  line("Unit", Join({f.lblUnitTempType.Visible() ? f.lblUnitTempType.Caption() : "",
                     Field("PN", f.txtPN), Field("SN", f.txtSN), Field("Firmware", f.txtFrmRev),
                     Field("Compiled", f.txtCplDate), Field("Address", f.txtAdr)},
                    "  "));
  line("Clock", Join({f.txtDateTime.Text(), Field("PS hours", f.txtPSHours),
                      Field("Xmit hours", f.txtXmtHours)},
                     "  "));
  line("Status", Summary(f));
  line("Faults", Faults(f));
  line("Alarms", Alarms(f));
  line("Transmit", Join({f.chkPS.Caption() + (f.chkPS.Value() == 1 ? " [x]" : " [ ]"),
                         f.chkRFI.Caption() + (f.chkRFI.Value() == 1 ? " [x]" : " [ ]")},
                        "  "));
  line("RF power", Power(f));
  line("Trips", Join({Field("Fwd high", f.txtFhiLvl, f.Label8.Caption()),
                      Field("Fwd low", f.txtFloLvl, f.Label67.Caption()),
                      Field("Rev high", f.txtRhiLvl, f.Label69.Caption())},
                     "  "));
  line("Attenuation", Join({Field("dB", f.txtAtnDB), Field("count", f.txtAtnCnt)}, "  "));
  line("Temperature", Join({Field("", f.txtTemp, f.Label14.Caption())}, ""));
  line("Frequency", f.lblRFFrqVal.Visible() ? f.lblRFFrqVal.Caption() : "");
  line("Message", f.sbStatusBar.PanelText(0));
  return out;
}

std::string PanelLine(const ui::FrmMain& f) {
  return Join({Summary(f), "faults: " + Faults(f), "alarms: " + Alarms(f), Power(f)}, " | ");
}

}  // namespace amp::cli
