#include "unit/unit_type.h"
#include "basic/one_of.h"

#include <initializer_list>

#include "basic/dates.h"
#include "basic/numbers.h"
#include "basic/text.h"
#include "commands/fault_config_cmds.h"
#include "commands/identity_cmds.h"
#include "commands/reader_support.h"
#include "commands/rf_power_cmds.h"

namespace amp {

namespace {

// "715-####-###" with a digit at every "#".
bool IsPartNumber(std::string_view s) {
  static constexpr std::string_view kPattern = "715-####-###";
  if (s.size() != kPattern.size()) return false;
  for (size_t i = 0; i < s.size(); ++i) {
    if (kPattern[i] == '#') {
      if (s[i] < '0' || s[i] > '9') return false;
    } else if (s[i] != kPattern[i]) {
      return false;
    }
  }
  return true;
}

// A whole number from a text by the numeric-prefix rule; a value beyond 32
// bits gives 0 rather than a failure, as no project number is that large.
int32_t WholeNumber(std::string_view text) { return CLng(Val(text)).value_or(0); }

// Date from which firmware takes the "C" form of the attenuator count:
// later than 2008-11-01.
constexpr int32_t kCommandCDay = 39753;

}  // namespace

int32_t ProjectOfPartGroup(std::string_view group) {
  if (group == "2243") return 107;
  if (group == "2251") return 108;
  if (group == "2268") return 126;
  if (group == "2274") return 129;
  if (group == "2287") return 135;
  if (group == "2295") return 139;
  return WholeNumber(group);
}

int32_t ExtractPartNumber(std::string_view text, std::string& partNumber) {
  if (text.empty()) return 0;
  const long prefix = InStr(text, "715");
  if (prefix > 1) {
    const std::string candidate = Mid(text, prefix, 12);
    if (IsPartNumber(candidate)) {
      partNumber = candidate;
      return ProjectOfPartGroup(Mid(candidate, 5, 4));
    }
  }
  const long dash = InStr(text, "-");
  if (dash <= 1) return 0;
  const long p = dash + 1;
  const long next = InStr(p, text, "-");
  if (next == 0) return WholeNumber(Mid(text, p));
  // Two dashes side by side leave nothing between them: 0.
  return next > p ? WholeNumber(Mid(text, p, next - p)) : 0;
}

std::string RevLettersToDigits(std::string_view text) {
  std::string out;
  for (char ch : text) {
    if (ch == '.') {
      out += ch;
    } else if (ch >= 'A' && ch <= 'J') {
      out += static_cast<char>('0' + (ch - 'A'));
    } else if (ch >= 'a' && ch <= 'j') {
      out += static_cast<char>('0' + (ch - 'a'));
    }
  }
  return out;
}

void DetermineUnitType(Comms& c, UnitDescriptor& u) {
  u.gIsKPA = false;
  u.gIsTWTA = false;
  std::string identity = ReadUnitType(c);
  if (!identity.empty()) {
    identity = Trim(identity);
    if (Left(identity, 1) == "T") u.gIsTWTA = true;
    u.gProjectID = ExtractPartNumber(identity, u.gFWPartNumber);
    u.gFWPartNumberReported = u.gFWPartNumber;
  } else {
    // Firmware too old to answer "YT" is tube firmware.
    u.gIsTWTA = true;
    u.gProjectID = -1;
  }
  u.gBootVersion = ReadCPLDVersion(c);

  const int32_t p = u.gProjectID;
  u.gNewDualTWT = OneOf(p, {48, 70, 88, 91, 101, 105, 108});
  u.gHasCathodeScalar = OneOf(u.gFWPartNumber, {"715-2251-004", "715-2251-006", "715-2251-008"});
  if (p == 127) u.gIsProject127 = true;  // cleared only by Clear()
  u.gExtRefFamily = OneOf(p, {0, 37, 48, 50});

  // Firmware families. "715-2274-00X" is compared as the firmware reports
  // it. Family D leaves A to C alone and is cleared only by Clear().
  const std::string& pn = u.gFWPartNumber;
  if (pn == "715-2274-00X") {
    u.gFWFamilyA = true;
    u.gFWFamilyB = u.gFWFamilyC = false;
  } else if (OneOf(pn, {"715-2274-001", "715-2274-002", "715-2274-003", "715-2274-004",
                        "715-2274-005", "715-2274-006"})) {
    u.gFWFamilyB = true;
    u.gFWFamilyA = u.gFWFamilyC = false;
  } else if (pn == "715-2268-004") {
    u.gFWFamilyC = true;
    u.gFWFamilyA = u.gFWFamilyB = false;
  } else if (pn == "715-2295-001") {
    u.gFWFamilyD = true;
  } else {
    u.gFWFamilyA = u.gFWFamilyB = u.gFWFamilyC = false;
  }

  GetUnitIDVersion(c, u, u.gProjectID);
  SetUnitTouchScreenOption(c, u);
}

void GetUnitIDVersion(Comms& c, UnitDescriptor& u, int32_t projectID) {
  if (ReadUnitVersion(c, u.gFWPartNumber)) {
    const auto& f = c.gRespFields;
    if (!f[0].empty()) u.txtPN = f[0];
    if (!f[1].empty()) u.txtSN = f[1];
    if (!f[2].empty()) u.txtFrmRev = f[2];
    if (!f[3].empty()) u.txtCplDate = f[3];
    u.gUnitPartNumber = f[0];
    u.gUnitSerialNumber = f[1];
  }

  // The revision's own scale: "2.5" is 250, "250" is 250. Letters stand for
  // digits in some firmware ("A.B" is 0.1, so 10). A revision too large for
  // 16 bits leaves the previous value.
  const std::string& rev = u.txtFrmRev;
  const std::string digits = IsNumeric(rev) ? rev : RevLettersToDigits(rev);
  const double scale = InStr(rev, ".") > 0 ? 100.0 : 1.0;
  Guarded([&] { u.gFWVersion = ToInt16(Val(digits) * scale); });

  u.gSecondaryVersion = OneOf(projectID, {500, 99, 510}) ? ReadUnitSerialText(c) : std::string();
}

void SetProjectSpecificValues(Comms& c, UnitDescriptor& u) {
  SetUnitHeaterFaultOption(c, u);
  SetUnit3PhaseFaultOptions(c, u);
  SetUnitExtRefPresetFaultOption(c, u);
  SetUnitWGPressureFaultOption(c, u);
  SetUnitWGArc1FaultOption(c, u);
  SetUnitWGArc2FaultOption(c, u);
  SetUnitExtRefLockFaultOption(c, u);
  SetUnit24VPresentFaultOption(c, u);
  SetUnitPICProcessorOption(c, u);
  SetUnitNetburnerProcessorOption(c, u);
  SetUnitFaultOptions(c, u);  // after the processor: it reads gPICProcessor
  SetUnitLinearizerFaultOption(c, u);
  SetUnitExtRefFaultOption(c, u);
  SetUnitAtnCountCommand(c, u);
  SetUnitCommandCSupport(c, u);
}

void SetUnitTouchScreenOption(Comms&, UnitDescriptor& u) {
  u.gTouchScreen = OneOf(u.gProjectID, {500, 99, 510});
}

void SetUnitHeaterFaultOption(Comms&, UnitDescriptor& u) {
  u.gHeaterFault = OneOf(u.gProjectID, {25, 26, 27, 62, 58, 60, 80, 127, 114}) || u.gNewDualTWT;
}

void SetUnit3PhaseFaultOptions(Comms&, UnitDescriptor& u) {
  u.g3PhaseFault = OneOf(u.gProjectID, {25, 26, 27});
  u.g3PhaseFault2 = OneOf(u.gProjectID, {25, 26, 27, 114});
}

namespace {
bool HasExtRefFaults(const UnitDescriptor& u) {
  return OneOf(u.gProjectID, {38, 52, 127, 60, 80, 97}) || u.gNewDualTWT || u.gExtRefFamily;
}
}  // namespace

void SetUnitExtRefPresetFaultOption(Comms&, UnitDescriptor& u) {
  u.gExtRefPresetFault = HasExtRefFaults(u);
}

void SetUnitWGPressureFaultOption(Comms&, UnitDescriptor& u) {
  u.gWGPressureFault = u.gProjectID == 62;
}

void SetUnitWGArc1FaultOption(Comms&, UnitDescriptor& u) {
  u.gWGArc1Fault = OneOf(u.gProjectID, {114, 25, 26, 27});
}

void SetUnitWGArc2FaultOption(Comms&, UnitDescriptor& u) {
  u.gWGArc2Fault = OneOf(u.gProjectID, {114, 25, 26, 27});
}

void SetUnitExtRefLockFaultOption(Comms&, UnitDescriptor& u) {
  u.gExtRefLockFault = HasExtRefFaults(u);
}

void SetUnit24VPresentFaultOption(Comms&, UnitDescriptor& u) {
  u.g24VPresentFault = OneOf(u.gProjectID, {38, 52});
}

void SetUnitPICProcessorOption(Comms&, UnitDescriptor& u) {
  u.gPICProcessor = OneOf(u.gProjectID, {30, 45, 50, 93});
}

void SetUnitNetburnerProcessorOption(Comms&, UnitDescriptor& u) {
  u.gNetburnerProcessor = OneOf(u.gProjectID, {99, 127, 129, 126, 139});
}

// Fault options exist on firmware new enough to keep an option word (SSPA
// above revision 255, TWTA above 523), on every PIC controller and on
// projects 53 and 107; never on 102 and 114.
void SetUnitFaultOptions(Comms& c, UnitDescriptor& u) {
  const int32_t p = u.gProjectID;
  u.gFaultOptions = false;
  u.gFaultOptionWord = 0;
  if (OneOf(p, {102, 114})) return;
  const bool hasOptions = (!u.gIsTWTA && u.gFWVersion > 255) || (u.gIsTWTA && u.gFWVersion > 523) ||
                          u.gPICProcessor || OneOf(p, {53, 107});
  if (!hasOptions) return;
  u.gFaultOptions = true;
  // The reader lets an oversized mask through as a failure; here it only
  // leaves the word at 0, so the rest of the sequence still runs.
  int32_t word = 0;
  int32_t secondWord = 0;
  Guarded([&] { ReadFaultEnable(c, word, secondWord); });
  u.gFaultOptionWord = word;
}

void SetUnitLinearizerFaultOption(Comms&, UnitDescriptor& u) {
  u.gLinearizerFault = OneOf(u.gProjectID, {45, 44});
}

void SetUnitExtRefFaultOption(Comms&, UnitDescriptor& u) { u.gExtRefFault = true; }

void SetUnitAtnCountCommand(Comms&, UnitDescriptor& u) {
  u.gAtnCountCommand = AtnCountCommandFor(u.gProjectID, u.gNewDualTWT);
}

// Firmware compiled after 2008-11-01 takes "C" + count. A compile date that
// is no date at all counts only for a unit without a firmware identity.
void SetUnitCommandCSupport(Comms&, UnitDescriptor& u) {
  if (u.gProjectID == 127) {
    u.gCommandCSupport = true;
    return;
  }
  if (const auto day = DateDaySerial(u.txtCplDate)) {
    u.gCommandCSupport = *day > kCommandCDay;
  } else {
    u.gCommandCSupport = u.gProjectID == -1;
  }
}

void SetUnitCurrentSenseOption(Comms&, UnitDescriptor& u) { u.gCurrentSenseOption = false; }

void SetUnitRevPowerTemperatureOption(Comms&, UnitDescriptor& u) {
  u.gRevPowerTemperature = OneOf(u.gProjectID, {20, 30, 50, 93});
}

void SetPwrMisMatchAlarmOption(Comms&, UnitDescriptor& u) {
  u.gPwrMisMatchAlarm = OneOf(u.gFWPartNumber, {"715-2243-007", "715-2243-004"});
}

}  // namespace amp
