// The panel's numbers. Each update asks the unit for one reading and writes
// one field; a reading that fails or comes back empty leaves the field with
// the last good value. Power crosses the wire in dBm and is shown in dBm or
// Watts as the operator chose.
#include <string>

#include "basic/numbers.h"
#include "basic/text.h"
#include "commands/fault_config_cmds.h"
#include "commands/identity_cmds.h"
#include "commands/rf_band_cmds.h"
#include "commands/rf_power_cmds.h"
#include "commands/transmitter_cmds.h"
#include "display/status_display.h"

namespace amp {

namespace {

// Temperatures at or below this are the reader's "no reading".
constexpr int kNoTemperature = -125;
// The hour meters count to 999999.
constexpr int32_t kHoursLimit = 1000000;

std::string OneDecimal(const std::string& text) { return Format(Val(text), "#0.0"); }

}  // namespace

// ------------------------------------------------------------- RF power

std::string StatusDisplay::FormatPower(float dBm) const {
  const double value = s_.gDisplayWatts ? WattsFromdBm(dBm) : dBm;
  return Format(value, value < 1000 ? "##0.0" : "###0");
}

void StatusDisplay::UpdateRFPower() {
  UpdateFwdRF();
  UpdateRevRF();
}

// "<" is the unit's way of saying the power is below what it can measure.
void StatusDisplay::UpdateFwdRF() {
  const std::string text = ReadFwdRF(c_);
  if (text.empty()) return;
  const size_t lt = text.find('<');
  if (lt != std::string::npos) {
    const float value = static_cast<float>(Val(text.substr(lt + 1)));
    f_.txtFdBm.SetText("< " + FormatPower(value));
  } else {
    f_.txtFdBm.SetText(FormatPower(static_cast<float>(Val(text))));
  }
}

// Below the detector's range the reflected reading shows the floor of the
// power range rather than the number the unit sent: a text starting with
// "<" reads as 0, which is below any positive floor.
void StatusDisplay::UpdateRevRF() {
  const std::string text = ReadRevRF(c_);
  if (text.empty()) return;
  const size_t lt = text.find('<');
  if (lt == std::string::npos) {
    f_.txtRdBm.SetText(FormatPower(static_cast<float>(Val(text))));
    return;
  }
  const float value = static_cast<float>(Val(text.substr(lt + 1)));
  const bool belowFloor = Val(text) < s_.gPowerFloor;
  f_.txtRdBm.SetText("< " + FormatPower(belowFloor ? s_.gPowerFloor : value));
}

// ---------------------------------------------------------- other readings

void StatusDisplay::UpdateTemperature() {
  const int16_t t = ReadTemperature(c_, u_.gIsDualTWT || s_.gInletTemp);
  if (t <= kNoTemperature) return;
  f_.txtTemp.SetText(std::to_string(t));
  const std::string second = Trim(c_.gRespFields[1]);
  if (second.empty()) return;
  if (s_.gInletTemp) {
    f_.txtTemp2.SetText(second);
  } else {
    f_.txtTemp.SetText(f_.txtTemp.Text() + ", " + second);
  }
}

// Two tubes report both helix pairs in one reply; a single tube has its
// heater voltage and current read separately into the last two fields.
void StatusDisplay::UpdateHelixHeater() {
  const bool dual = u_.gIsDualTWT;
  if (!ReadHelixValues(c_, dual)) return;
  f_.txtHelixV.SetText(OneDecimal(c_.gRespFields[0]));
  f_.txtHelixI.SetText(OneDecimal(c_.gRespFields[1]));
  if (dual) {
    f_.txtHeaterV.SetText(OneDecimal(c_.gRespFields[2]));
    f_.txtHelix2I.SetText(OneDecimal(c_.gRespFields[3]));
  } else {
    f_.txtHeaterV.SetText(Format(ReadHeaterVoltage(c_), "#0.0"));
    f_.txtHelix2I.SetText(Format(ReadHeaterCurrent(c_), "#0.0"));
  }
}

void StatusDisplay::UpdateCathodeCurrent() {
  if (!s_.gCathodeDisplay) return;
  const int16_t mA = ReadCathodeCurrent(c_);
  if (mA > -1) {
    mCathodeCurrent = mA;
    f_.txtCathI.SetText(Format(mA, "##0"));
  }
  const int16_t volts = ReadAnodeVoltage(c_);
  if (volts > -1) {
    mAnodeVoltage = volts;
    f_.txtAnodeV.SetText(Format(volts, "###0"));
  }
}

// Only the older solid-state supplies have the four current sense inputs.
void StatusDisplay::UpdateCurrentSense() {
  const int p = u_.gProjectID;
  if (p == 102 || p == 107 || u_.gIsTWTA || u_.gFWVersion >= 200) return;
  if (p == 30 || p == 50 || p == 93) return;
  if (!ReadCurrentSense(c_)) return;
  f_.txtCS1.SetText(c_.gRespFields[0]);
  f_.txtCS2.SetText(c_.gRespFields[1]);
  f_.txtCS3.SetText(c_.gRespFields[2]);
  f_.txtCS4.SetText(c_.gRespFields[3]);
}

// The DC input shares the second current sense field.
void StatusDisplay::UpdateDCVIn() {
  const int p = u_.gProjectID;
  if (p == 102) return;
  if (!((p == 20 && u_.gFWVersion > 256) || u_.gPICProcessor)) return;
  if (ReadDCVInput(c_)) f_.txtCS2.SetText(c_.gRespFields[0]);
}

// True when both meters were read and shown.
bool StatusDisplay::UpdateHours() {
  bool shown = true;
  const int32_t supply = ReadHeaterHours(c_);
  if (supply >= 0 && supply < kHoursLimit) {
    f_.txtPSHours.SetText(std::to_string(supply));
  } else {
    shown = false;
  }
  const int32_t transmit = ReadXmitHours(c_);
  if (transmit >= 0 && transmit < kHoursLimit) {
    f_.txtXmtHours.SetText(std::to_string(transmit));
  } else {
    shown = false;
  }
  return shown;
}

void StatusDisplay::UpdateRFFrequency() {
  const std::string mhz = ReadRFFrequency(c_);
  const bool known = !mhz.empty();
  if (known) f_.lblRFFrqVal.SetCaption(mhz + " MHz");
  f_.lblRFFrq.SetVisible(known);
  f_.lblRFFrqVal.SetVisible(known);
}

// Family D units are asked for the attenuator count too; the count field has
// its own owner and is not written here.
void StatusDisplay::UpdateAtn() {
  const std::string dB = ReadAttenuation(c_);
  if (!dB.empty()) f_.txtAtnDB.SetText(OneDecimal(dB));
  if (u_.gFWFamilyD) ReadAtnCount(c_);
}

void StatusDisplay::UpdateDateTime() {
  const std::string now = ReadDateTime(c_);
  if (!now.empty()) f_.txtDateTime.SetText(now);
}

// ---------------------------------------------------------- display units

void StatusDisplay::SetPowerCaptions(const char* unit) {
  for (ui::Label* l : {&f_.Label64, &f_.Label5, &f_.Label8, &f_.Label67, &f_.Label69, &f_.Label71})
    l->SetCaption(unit);
}

// A field that reads 0 or less (an empty one, a "<" reading, 0 dBm) keeps
// its text until its next update writes it in the new unit.
void StatusDisplay::ConvertPowerFields(bool toWatts) {
  for (ui::TextBox* t :
       {&f_.txtConstLvl, &f_.txtFdBm, &f_.txtRdBm, &f_.txtFhiLvl, &f_.txtFloLvl, &f_.txtRhiLvl}) {
    if (t->Text().empty()) continue;
    const double value = Val(t->Text());
    if (!(value > 0)) continue;
    const double dBm = toWatts ? value : dBmFromWatts(value);
    t->SetText(FormatPower(static_cast<float>(dBm)));
  }
}

void StatusDisplay::DisplayToWatts() {
  SetPowerCaptions("Watts");
  s_.gDisplayWatts = true;
  ConvertPowerFields(true);
}

void StatusDisplay::DisplayTodBm() {
  SetPowerCaptions("dBm");
  s_.gDisplayWatts = false;
  ConvertPowerFields(false);
}

bool StatusDisplay::GetFormatedPwr(float value, std::string& out) const {
  out = "0";
  double floor = s_.gPowerFloor;
  double top = s_.gFwdRFMax;
  if (s_.gDisplayWatts) {
    floor = WattsFromdBm(floor);
    top = WattsFromdBm(top);
  }
  double shown = value;
  if (value < floor) {
    shown = floor;
  } else if (value > top) {
    shown = top;
  }
  out = Format(shown, "##0.0");
  return shown == value;
}

void StatusDisplay::DisplayStatusMsg(const std::string& text) {
  f_.sbStatusBar.SetPanelText(0, text);
}

}  // namespace amp
