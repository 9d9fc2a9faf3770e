// Fault and alarm lists. The unit sends each list as four status characters
// (words A to D) whose low six bits are the bits; a set bit shows its label
// in the next free row, a clear bit hides it. The labels get their texts once
// per session because a bit means different things on different units.
#include <initializer_list>
#include <string>

#include "basic/one_of.h"
#include "display/status_display.h"

namespace amp {

namespace {

using Labels = ui::ControlArray<ui::Label, 6>;

// More rows than the fault frame can show: the rest of the list is left as
// the previous poll drew it.
constexpr int kMaxFaultRows = 8;

constexpr std::initializer_list<int> kAllBits = {5, 4, 3, 2, 1, 0};

// Word `i` of a status field; a character the field does not have reads as
// no bits set.
int Word(const std::string& field, size_t i) {
  return i < field.size() ? static_cast<unsigned char>(field[i]) & 63 : 0;
}

// Builds one list from the top without gaps: the row index counts the labels
// shown so far.
class StatusList {
 public:
  void Bit(ui::Label& label, int word, int bit) {
    if (word & (1 << bit)) {
      label.SetTop(rows_++);
      label.SetVisible(true);
    } else {
      label.SetVisible(false);
    }
  }
  void Bits(Labels& labels, int word, std::initializer_list<int> bits) {
    for (int bit : bits) Bit(labels[bit], word, bit);
  }
  int Rows() const { return rows_; }

 private:
  int rows_ = 0;
};

}  // namespace

// ---------------------------------------------------------------- names

void StatusDisplay::InitFaultsAlarms() {
  for (int w = 0; w < 4; ++w) {
    for (int bit = 0; bit < 6; ++bit) {
      f_.FaultWord(w)[bit].SetForeColor(ui::QBColor(12));
      f_.AlarmWord(w)[bit].SetForeColor(ui::QBColor(12));
    }
  }
}

void StatusDisplay::InitFaultNames() {
  InitCommonFaultNames();
  if (u_.gIsTWTA) {
    InitTWTAFaultNames();
  } else {
    InitSSPAFaultNames();
  }
}

void StatusDisplay::InitCommonFaultNames() {
  f_.FaultAbit[0].SetCaption("Low Line");
  f_.FaultAbit[1].SetCaption("Fan Fault");
  f_.FaultAbit[3].SetCaption("Over Temp");
  f_.FaultBbit[0].SetCaption("Waveguide Arc");
  f_.FaultBbit[1].SetCaption("RF High");
  f_.FaultBbit[2].SetCaption("RF Low");
  f_.FaultBbit[3].SetCaption("Ext Interlock");
  f_.FaultBbit[4].SetCaption("Reflected RF");
  f_.FaultCbit[3].SetCaption("Fast VSWR");
  f_.FaultCbit[4].SetCaption("Cover Interlock");
  f_.FaultDbit[3].SetCaption("Pwr Limit");
}

void StatusDisplay::InitTWTAFaultNames() {
  f_.FaultAbit[2].SetCaption("HV Over");
  f_.FaultAbit[4].SetCaption("Helix Arc");
  f_.FaultAbit[5].SetCaption("Helix Arc Latch");
  f_.FaultBbit[5].SetCaption("HV Under");
  f_.FaultDbit[0].SetCaption("Thrm Interlock");
  f_.FaultDbit[1].SetCaption("Over Drive");
  f_.FaultDbit[4].SetCaption("Up Converter");
  InitTWTAProjectFaultNames();
}

// Word C and the spare bits of word D carry project options on tube units.
// The first rule that matches the unit names them; a bit no rule names keeps
// whatever caption it had.
void StatusDisplay::InitTWTAProjectFaultNames() {
  const int p = u_.gProjectID;
  auto& c = f_.FaultCbit;
  auto& d = f_.FaultDbit;
  auto extRef = [&] {
    c[0].SetCaption("ExtRef Lock");
    c[1].SetCaption("ExtRef Pres");
  };
  if (p == 25 || p == 27) {
    c[0].SetCaption("Missing Phase");
    c[1].SetCaption("Phase Sequence");
    c[2].SetCaption("Heater");
  } else if (u_.gIsDualTWT) {
    c[0].SetCaption("HV Over 2");
    c[1].SetCaption("Over Temp 2");
    c[2].SetCaption("Helix Arc 2");
    c[3].SetCaption("Helix Arc Latch 2");
    c[5].SetCaption("HV Under 2");
    d[2].SetCaption("Power Mismatch");
  } else if (p == 26) {
    d[2].SetCaption("Analog Input");
  } else if (p == 34) {
    c[2].SetCaption("Heater");
  } else if (p == 38 || p == 52) {
    extRef();
    c[2].SetCaption("24V Present");
    d[5].SetCaption("Return Loss");
  } else if (u_.gNewDualTWT || p == 60) {
    extRef();
    c[2].SetCaption("Heater");
    d[5].SetCaption("Return Loss");
  } else if (p == 44) {
    c[1].SetCaption("Aux Supply");
    c[2].SetCaption("Heater");
    c[5].SetCaption("Linearizer");
  } else if (p == 62) {
    c[1].SetCaption("WG Pressure");
    c[2].SetCaption("Heater");
    d[5].SetCaption("Return Loss");
  } else if (p == 63 || p == 97) {
    extRef();
    d[5].SetCaption("Return Loss");
  } else if (p == 127) {
    extRef();
    c[2].SetCaption("Heater");
  } else if (OneOf(p, {0, 37, 48, 50})) {
    extRef();
    d[5].SetCaption("Return Loss");
  }
}

void StatusDisplay::InitSSPAFaultNames() {
  const int p = u_.gProjectID;
  const bool extRefProject = OneOf(p, {55, 103, 51});
  f_.FaultAbit[2].SetCaption("DCV Input");
  f_.FaultAbit[4].SetCaption("Up Converter");
  if (u_.gFWFamilyD) {
    f_.FaultAbit[5].SetCaption("Over Current");
    f_.FaultBbit[0].SetCaption("Inhibit Fail");
  }
  f_.FaultBbit[5].SetCaption("Power Supply");
  if ((u_.gFWFamilyA || u_.gFWFamilyB || u_.gFWFamilyC) && !extRefProject)
    f_.FaultDbit[1].SetCaption("Over Drive");
  if (extRefProject) {
    f_.FaultCbit[0].SetCaption("ExtRef Lock");
    f_.FaultCbit[1].SetCaption("ExtRef Pres");
  }
}

void StatusDisplay::InitAlarmNames() {
  const int p = u_.gProjectID;
  auto& a = f_.AlarmAbit;
  a[0].SetCaption("DCV Low");
  a[1].SetCaption("");
  a[2].SetCaption(p == 38 ? "TLT Alarm" : u_.gFWFamilyD ? "Inhibit Fail" : "DCV Input");
  a[3].SetCaption("Reflected RF");
  a[4].SetCaption("RF Low");
  a[5].SetCaption("RF High");
  f_.AlarmBbit[0].SetCaption(u_.gFWFamilyD ? "Sys Power" : "Pwr Mismatch");
  f_.AlarmBbit[1].SetCaption("Fan Speed");
  f_.AlarmBbit[2].SetCaption("Low Gain");
  f_.AlarmCbit[2].SetCaption("Ext Ref Pres");
  f_.AlarmCbit[3].SetCaption("Low Drive");
  f_.AlarmCbit[4].SetCaption("Cst Pwr Susp");
  f_.AlarmCbit[5].SetCaption("High Drive");
  f_.AlarmDbit[0].SetCaption("Overdrive");
  f_.AlarmDbit[1].SetCaption("High Temp");
  f_.AlarmDbit[2].SetCaption("Chk Fins");
}

// ------------------------------------------------------------- decoding

void StatusDisplay::SetFaultStatus(const std::string& field) {
  if (u_.gIsTWTA) {
    SetTWTAFaultStatus(field);
  } else {
    SetSSPAFaultStatus(field);
  }
}

void StatusDisplay::SetAlarmStatus(const std::string& field) {
  if (u_.gIsTWTA) {
    SetTWTAlarmStatus(field);
  } else {
    SetSSAAlarmStatus(field);
  }
}

void StatusDisplay::SetTWTAFaultStatus(const std::string& field) {
  if (field.size() < 4) return;
  StatusList list;
  list.Bits(f_.FaultAbit, Word(field, 0), kAllBits);
  list.Bits(f_.FaultBbit, Word(field, 1), kAllBits);
  if (list.Rows() > kMaxFaultRows) return;
  list.Bits(f_.FaultCbit, Word(field, 2), kAllBits);
  if (list.Rows() > kMaxFaultRows) return;
  list.Bits(f_.FaultDbit, Word(field, 3), {4, 3, 2, 1, 0});
  EndFaultList(list.Rows());
}

void StatusDisplay::SetSSPAFaultStatus(const std::string& field) {
  if (field.size() <= 2) return;
  StatusList list;
  list.Bits(f_.FaultAbit, Word(field, 0), kAllBits);
  list.Bits(f_.FaultBbit, Word(field, 1), kAllBits);
  const int c = Word(field, 2);
  list.Bit(f_.FaultCbit[4], c, 4);
  if (u_.gProjectID == 55) list.Bits(f_.FaultCbit, c, {1, 0});
  list.Bits(f_.FaultDbit, Word(field, 3), {1, 3});
  EndFaultList(list.Rows());
}

void StatusDisplay::SetTWTAlarmStatus(const std::string& field) {
  if (field.empty()) return;
  StatusList list;
  const int a = Word(field, 0);
  list.Bits(f_.AlarmAbit, a, {5, 4, 3});
  if (u_.gProjectID == 38 || u_.gProjectID == 52) list.Bit(f_.AlarmAbit[2], a, 2);
  list.Bits(f_.AlarmAbit, a, {1, 0});
  if (!c_.gOneCharAlarm) {
    list.Bit(f_.AlarmBbit[1], Word(field, 1), 1);
    list.Bits(f_.AlarmCbit, Word(field, 2), {5, 4, 3, 2});
    list.Bits(f_.AlarmDbit, Word(field, 3), {2, 1, 0});
  }
  EndAlarmList(list.Rows());
}

void StatusDisplay::SetSSAAlarmStatus(const std::string& field) {
  if (field.empty()) return;
  StatusList list;
  list.Bits(f_.AlarmAbit, Word(field, 0), {5, 4, 3, 2, 0});
  if (!c_.gOneCharAlarm) {
    const int b = Word(field, 1);
    if (u_.gPwrMisMatchAlarm || u_.gFWFamilyD) list.Bit(f_.AlarmBbit[0], b, 0);
    list.Bits(f_.AlarmBbit, b, {1, 2});
    list.Bits(f_.AlarmCbit, Word(field, 2), {5, 4, 3, 2});
    list.Bits(f_.AlarmDbit, Word(field, 3), {1, 0});
  }
  EndAlarmList(list.Rows());
}

void StatusDisplay::EndFaultList(int rows) {
  if (rows == 0) {
    f_.NoFaults.SetTop(0);
    f_.NoFaults.SetVisible(true);
  } else {
    f_.NoFaults.SetVisible(false);
    UpdateRFIStatusHeld();
  }
}

void StatusDisplay::EndAlarmList(int rows) {
  if (rows == 0) f_.NoAlarms.SetTop(0);
  f_.NoAlarms.SetVisible(rows == 0);
}

void StatusDisplay::UpdateRFIStatusHeld() {
  const bool saved = s_.gInPanelUpdate;
  s_.gInPanelUpdate = true;
  UpdateRFIStatus();
  s_.gInPanelUpdate = saved;
}

// NoAlarms is left as it stands: an empty alarm list keeps saying so.
void StatusDisplay::ClearFaultStatus() {
  f_.NoFaults.SetVisible(false);
  for (int w = 0; w < 4; ++w) {
    for (int bit = 0; bit < 6; ++bit) {
      f_.FaultWord(w)[bit].SetVisible(false);
      f_.AlarmWord(w)[bit].SetVisible(false);
    }
  }
}

}  // namespace amp
