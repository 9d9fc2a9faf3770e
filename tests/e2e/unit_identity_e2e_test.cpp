// Unit identity through the real host parts: DetermineUnitType and
// SetProjectSpecificValues against each simulated unit profile, over loopback
// TCP for every profile and over a pseudo-terminal for two of them.
//
// The expectations below were worked out by hand from each profile's identity
// text, "00" fields, compile date and "YIF?" word, following the project
// lists; they are not read back from the profiles, so a profile edit or a rule
// regression both show up here.
#include <gtest/gtest.h>

#include <string>

#include "commands/rf_power_cmds.h"
#include "e2e/profile_host.h"
#include "unit/unit_type.h"

namespace amp {
namespace {

struct Expected {
  const char* profile;
  char address;
  bool twta;
  int project;
  const char* fwPart;  // "" when the unit gives no firmware identity
  const char* boot;
  const char* unitPart;
  const char* serial;
  int fwVersion;
  bool dual, cathodeScalar, is127, extRefFamily;
  bool familyA, familyB, familyC, familyD;
  bool heater, extRefPreset, pic, netburner;
  bool faultOptions;
  int32_t faultOptionWord;
  const char* atnCount;
  bool commandC;
};

// clang-format off
const Expected kUnits[] = {
  // Tube of project 127: fault options above revision 523, "C" whatever the date.
  {"twta127", 'A', true, 127, "715-0127-005", "2.1", "426-4127-020", "T40188", 540,
   false, false, true, false,  false, false, false, false,
   true, true, false, true,  true, 268435455, ".D1", true},
  // Dual tube 715-2251-004: dual-tube rules and the cathode scalar firmware.
  {"dualtwt108", 'A', true, 108, "715-2251-004", "2.1", "426-2251-004", "D50321", 602,
   true, true, false, false,  false, false, false, false,
   true, true, false, false,  true, 268435455, ".D1", true},
  // Project 102 never has fault options; compiled 2012, so "C".
  {"sspa102", 'B', false, 102, "715-0102-002", "1.2", "426-3102-004", "S10877", 205,
   false, false, false, false,  false, false, false, false,
   false, false, false, false,  false, 0, ".D9", true},
  // FBDC: family D, Netburner board; revision 114 of an SSPA is too old for options.
  {"fbdc2295", 'A', false, 139, "715-2295-001", "1.2", "426-2295-101", "F31009", 114,
   false, false, false, false,  false, false, false, true,
   false, false, false, true,  false, 0, ".D9", true},
  // Block upconverter of project 50: external reference family, PIC board,
  // so fault options although revision 231 is below 256.
  {"bucsspa", 'A', false, 50, "715-0050-007", "1.2", "426-3050-011", "B20417", 231,
   false, false, false, true,  false, false, false, false,
   false, true, true, false,  true, 65535, ".D9", true},
  // No "YT": taken for a tube of project -1; compiled 2006, so no "C".
  {"oldunit", 'A', true, -1, "", "1.0", "426-1044-003", "0977", 412,
   false, false, false, false,  false, false, false, false,
   false, false, false, false,  false, 0, ".D9", false},
  // The default unit: an SSPA above revision 255 has fault options.
  {"sspa120", 'A', false, 120, "715-0120-003", "1.2", "426-3120-001", "S12034", 310,
   false, false, false, false,  false, false, false, false,
   false, false, false, false,  true, 65535, ".D9", true},
};
// clang-format on

using Host = test::ProfileHost;

void CheckUnit(const Expected& e, bool serial) {
  SCOPED_TRACE(std::string(e.profile) + (serial ? " over serial" : " over TCP"));
  Host host(e.profile, serial);
  ASSERT_TRUE(host.Connect(serial, e.address));

  UnitDescriptor u;
  DetermineUnitType(host.comms, u);
  SetProjectSpecificValues(host.comms, u);

  EXPECT_EQ(u.gIsTWTA, e.twta);
  EXPECT_FALSE(u.gIsKPA);
  EXPECT_EQ(u.gProjectID, e.project);
  EXPECT_EQ(u.gFWPartNumber, e.fwPart);
  EXPECT_EQ(u.gFWPartNumberReported, e.fwPart);
  EXPECT_EQ(u.gBootVersion, e.boot);
  EXPECT_EQ(u.gUnitPartNumber, e.unitPart);
  EXPECT_EQ(u.txtPN, e.unitPart);
  EXPECT_EQ(u.gUnitSerialNumber, e.serial);
  EXPECT_EQ(u.gFWVersion, e.fwVersion);
  EXPECT_EQ(u.gSecondaryVersion, "");
  EXPECT_FALSE(u.gTouchScreen);

  EXPECT_EQ(u.gNewDualTWT, e.dual);
  EXPECT_EQ(u.gHasCathodeScalar, e.cathodeScalar);
  EXPECT_EQ(u.gIsProject127, e.is127);
  EXPECT_EQ(u.gExtRefFamily, e.extRefFamily);
  EXPECT_EQ(u.gFWFamilyA, e.familyA);
  EXPECT_EQ(u.gFWFamilyB, e.familyB);
  EXPECT_EQ(u.gFWFamilyC, e.familyC);
  EXPECT_EQ(u.gFWFamilyD, e.familyD);

  EXPECT_EQ(u.gHeaterFault, e.heater);
  EXPECT_EQ(u.gExtRefPresetFault, e.extRefPreset);
  EXPECT_EQ(u.gExtRefLockFault, e.extRefPreset);
  EXPECT_EQ(u.gPICProcessor, e.pic);
  EXPECT_EQ(u.gNetburnerProcessor, e.netburner);
  EXPECT_EQ(u.gFaultOptions, e.faultOptions);
  EXPECT_EQ(u.gFaultOptionWord, e.faultOptionWord);
  EXPECT_TRUE(u.gExtRefFault);
  EXPECT_FALSE(u.g3PhaseFault || u.g3PhaseFault2 || u.gWGPressureFault || u.gWGArc1Fault ||
               u.gWGArc2Fault || u.g24VPresentFault || u.gLinearizerFault);
  EXPECT_EQ(u.gAtnCountCommand, e.atnCount);
  EXPECT_EQ(u.gCommandCSupport, e.commandC);

  // The unit saw the identity questions in order, and "YIF?" only when the
  // unit has fault options; "0S" is for touch-screen units only.
  std::vector<std::string> want = {"YT", "0C", "00"};
  if (e.faultOptions) want.push_back("YIF?");
  EXPECT_EQ(host.Received(), want);
  // The long count form the host chose is the one this unit's firmware knows.
  EXPECT_TRUE(host.comms.ExchangeCommand(CmdAtnCount(u.gAtnCountCommand, 2048), false));
}

TEST(UnitIdentityEndToEnd, EveryProfileOverTcp) {
  for (const Expected& e : kUnits) CheckUnit(e, false);
}

TEST(UnitIdentityEndToEnd, SerialUnitsAtTheirAddresses) {
  // Address B, and the unit that refuses "YT".
  CheckUnit(kUnits[2], true);
  CheckUnit(kUnits[5], true);
}

}  // namespace
}  // namespace amp
