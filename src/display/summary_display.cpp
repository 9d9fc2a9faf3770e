// The summary list at the left of the panel, and the check boxes and lists
// that follow the unit's state. Writing a check box or a list raises its
// Click, so every write here happens with gInPanelUpdate held: the panel
// must show the unit's state, never send it back.
#include <string>

#include "commands/transmitter_cmds.h"
#include "display/status_display.h"

namespace amp {

namespace {

// S1: transmitter and control mode.
constexpr int kTransmitterOn = 16;
constexpr int kStandby = 8;
constexpr int kRemote = 4;
constexpr int kConstPower = 2;
constexpr int kRfInhibited = 1;
// S2: faults and the tube's automatic high voltage.
constexpr int kSummaryFault = 32;
constexpr int kHeaterStandby = 16;
constexpr int kAutoHVOn = 1;
// S3: upconverter and waveguide switches.
constexpr int kBucWarmup = 32;
constexpr int kSwitch2B = 16;
constexpr int kSwitch2A = 8;
constexpr int kAutoMode = 4;
constexpr int kSwitch1B = 2;
constexpr int kSwitch1A = 1;
// S4: IF drive and the waveguide configuration.
constexpr int kIfDriveHigh = 32;
constexpr int kWgCfgMask = 7;
// Configuration 6 stands at index 5: the list has no entry for 5.
constexpr int kWgCfgStandaloneLoad = 6;

int Word(const std::string& field, size_t i) {
  return i < field.size() ? static_cast<unsigned char>(field[i]) & 63 : 0;
}

ui::Color Green() { return ui::QBColor(2); }
ui::Color Red() { return ui::QBColor(12); }
constexpr ui::Color kOrange = ui::RGB(255, 102, 0);

// The label takes the next row of the list, in its colour.
void Place(ui::Label& label, int& row, ui::Color color) {
  label.SetTop(row++);
  label.SetForeColor(color);
  label.SetVisible(true);
}

void PlaceIf(bool set, ui::Label& label, int& row, ui::Color color) {
  if (set) {
    Place(label, row, color);
  } else {
    label.SetVisible(false);
  }
}

}  // namespace

void StatusDisplay::SetSummaryStatus(const std::string& field) {
  if (field.size() != 4) return;
  const bool saved = s_.gInPanelUpdate;
  s_.gInPanelUpdate = true;
  if (u_.gIsTWTA) {
    SetTWTASummaryStatus(field);
  } else {
    SetSSPASummaryStatus(field);
  }
  SetWaveguideConfig(Word(field, 3));
  s_.gInPanelUpdate = saved;
}

void StatusDisplay::SetWaveguideConfig(int s4) {
  int w = s4 & kWgCfgMask;
  if (w == kWgCfgStandaloneLoad) w = 5;
  // A configuration the list has no row for is refused by the list and
  // leaves the selection as it was.
  if (f_.cmbWgCfg.ListIndex() != w) f_.cmbWgCfg.SetListIndex(w);
}

void StatusDisplay::SetTWTASummaryStatus(const std::string& field) {
  const int s1 = Word(field, 0);
  const int s2 = Word(field, 1);
  int row = 0;
  f_.Label31.SetTop(row++);
  if (!(s1 & (kTransmitterOn | kStandby))) {
    f_.Label31.SetCaption("FTD");
    SetAutoHVState(s2, row);
  } else if (s1 & kTransmitterOn) {
    // Label32 keeps what the last poll showed; the rows below reuse its row.
    f_.Label31.SetCaption("HV On");
    f_.chkPS.SetValue(1);
  } else {
    f_.Label31.SetCaption("Standby");
    SetAutoHVState(s2, row);
  }
  SetSummaryRows(field, row);
}

// A tube whose high voltage will come on by itself counts as switched on.
void StatusDisplay::SetAutoHVState(int s2, int& row) {
  if (s2 & kAutoHVOn) {
    f_.Label32.SetCaption("Auto HV On");
    Place(f_.Label32, row, Green());
    f_.chkPS.SetValue(1);
  } else {
    f_.Label32.SetVisible(false);
    f_.chkPS.SetValue(0);
  }
}

void StatusDisplay::SetSSPASummaryStatus(const std::string& field) {
  const int s1 = Word(field, 0);
  int row = 0;
  f_.Label31.SetTop(row++);
  if (s1 & kTransmitterOn) {
    f_.Label31.SetCaption("Vdd On");
    f_.chkPS.SetValue(1);
  } else if (s1 & kStandby) {
    f_.Label31.SetCaption("Standby");
    f_.chkPS.SetValue(0);
  } else {
    // Warming up is neither on nor off: the check box stays as it was.
    f_.Label31.SetCaption("Warmup");
  }
  SetSummaryRows(field, row);
}

void StatusDisplay::SetSummaryRows(const std::string& field, int row) {
  const int s1 = Word(field, 0);
  const int s2 = Word(field, 1);
  const int s3 = Word(field, 2);
  const int s4 = Word(field, 3);

  f_.Label31.SetVisible(true);
  f_.Label31.SetForeColor(Green());

  s_.gRemoteMode = (s1 & kRemote) != 0;
  f_.Label33.SetCaption(s_.gRemoteMode ? "Remote" : "Local");
  Place(f_.Label33, row, Green());

  f_.chkConstPwr.SetValue((s1 & kConstPower) ? 1 : 0);
  PlaceIf(s1 & kConstPower, f_.Label34, row, Green());
  PlaceIf(s1 & kRfInhibited, f_.Label35, row, Green());
  PlaceIf(s2 & kSummaryFault, f_.Label36, row, Red());
  PlaceIf(s2 & kHeaterStandby, f_.Label13, row, Green());
  SetAutoModeSumStatus(s3);
  PlaceIf(s3 & kBucWarmup, f_.lblSBUCWarmup, row, Green());
  PlaceIf(s4 & kIfDriveHigh, f_.lbllcBucDrive, row, kOrange);
}

// A switch position bit that is clear leaves the list alone; with both bits
// of a switch set, position A (index 0) is written last and stands.
void StatusDisplay::SetAutoModeSumStatus(int s3) {
  if (s3 & kSwitch2B) f_.cmbWgSw2.SetListIndex(1);
  if (s3 & kSwitch2A) f_.cmbWgSw2.SetListIndex(0);
  f_.chkAutoMode.SetValue((s3 & kAutoMode) ? 1 : 0);
  if (s3 & kSwitch1B) f_.cmbWgSw1.SetListIndex(1);
  if (s3 & kSwitch1A) f_.cmbWgSw1.SetListIndex(0);
}

void StatusDisplay::ClearSummaryStatus() {
  for (ui::Label* l : {&f_.Label31, &f_.Label32, &f_.Label33, &f_.Label34, &f_.Label35, &f_.Label36,
                       &f_.Label13, &f_.lblSBUCWarmup, &f_.lbllcBucDrive})
    l->SetVisible(false);
}

// Units without the inhibit read (and units not yet identified) are skipped.
// The value is written without touching gInPanelUpdate: a caller that is
// not an operator's action holds the flag itself.
void StatusDisplay::UpdateRFIStatus() {
  const int p = u_.gProjectID;
  if (p < 0) return;
  for (int skip : {500, 99, 510, 25, 26, 27})
    if (p == skip) return;
  f_.chkRFI.SetValue(ReadRFInhibitState(c_) == 0 ? 0 : 1);
}

}  // namespace amp
