// Determination of the unit type: the firmware identity ("YT"), the unit
// identity ("00"), the boot and secondary versions, and the option flags that
// follow from the project number. Fills the UnitDescriptor in two steps of
// the first read: DetermineUnitType early, SetProjectSpecificValues once the
// reads it rests on have run.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "link/comms.h"
#include "model/unit_descriptor.h"

namespace amp {

// Project number of a firmware identity text. When "715" stands past the
// first character and the 12 characters from there read "715-####-###",
// they go to `partNumber` and the project comes from the second group (a few
// groups map to their own numbers, see ProjectOfPartGroup). Otherwise the
// number between the first and the second "-" (or after the first one, to
// the end), 0 when there is no "-" or it comes first; `partNumber` is left.
int32_t ExtractPartNumber(std::string_view text, std::string& partNumber);

// Project number of the second group of a part number: 2243 107, 2251 108,
// 2268 126, 2274 129, 2287 135, 2295 139; any other group its own value.
int32_t ProjectOfPartGroup(std::string_view group);

// Revision letters to digits: "." is kept, A-J and a-j become 0-9, every
// other character (digits too) is dropped. "A.B1" -> "0.1".
std::string RevLettersToDigits(std::string_view text);

void DetermineUnitType(Comms& c, UnitDescriptor& u);
void GetUnitIDVersion(Comms& c, UnitDescriptor& u, int32_t projectID);
void SetProjectSpecificValues(Comms& c, UnitDescriptor& u);

// The rules, one flag (or two) each. SetProjectSpecificValues runs them from
// SetUnitHeaterFaultOption on, in the order listed here.
void SetUnitTouchScreenOption(Comms& c, UnitDescriptor& u);
void SetUnitHeaterFaultOption(Comms& c, UnitDescriptor& u);
void SetUnit3PhaseFaultOptions(Comms& c, UnitDescriptor& u);
void SetUnitExtRefPresetFaultOption(Comms& c, UnitDescriptor& u);
void SetUnitWGPressureFaultOption(Comms& c, UnitDescriptor& u);
void SetUnitWGArc1FaultOption(Comms& c, UnitDescriptor& u);
void SetUnitWGArc2FaultOption(Comms& c, UnitDescriptor& u);
void SetUnitExtRefLockFaultOption(Comms& c, UnitDescriptor& u);
void SetUnit24VPresentFaultOption(Comms& c, UnitDescriptor& u);
void SetUnitPICProcessorOption(Comms& c, UnitDescriptor& u);
void SetUnitNetburnerProcessorOption(Comms& c, UnitDescriptor& u);
void SetUnitFaultOptions(Comms& c, UnitDescriptor& u);  // reads "YIF?"
void SetUnitLinearizerFaultOption(Comms& c, UnitDescriptor& u);
void SetUnitExtRefFaultOption(Comms& c, UnitDescriptor& u);
void SetUnitAtnCountCommand(Comms& c, UnitDescriptor& u);
void SetUnitCommandCSupport(Comms& c, UnitDescriptor& u);

// Rules that the panel offers but the connection sequence never runs.
void SetUnitCurrentSenseOption(Comms& c, UnitDescriptor& u);
void SetUnitRevPowerTemperatureOption(Comms& c, UnitDescriptor& u);
void SetPwrMisMatchAlarmOption(Comms& c, UnitDescriptor& u);

}  // namespace amp
