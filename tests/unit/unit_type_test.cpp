// Unit type determination and the option flags, against scripted units.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "model/unit_descriptor.h"
#include "unit/unit_type.h"
#include "unit_rig.h"

namespace amp {
namespace {

using test::ScriptedUnit;
using test::VersionBody;

TEST(UnitType, FirmwareFamilyDStaysUntilCleared) {
  ScriptedUnit s;
  s.Answer("YT", "YTS 715-2295-001");
  s.Answer("YT", "YTS 715-2243-004");
  UnitDescriptor u;
  u.gFWFamilyA = true;  // as a previous unit left it
  DetermineUnitType(s.comms, u);
  EXPECT_EQ(u.gProjectID, 139);
  EXPECT_TRUE(u.gFWFamilyD);
  EXPECT_TRUE(u.gFWFamilyA);  // family D leaves A to C as they stand
  DetermineUnitType(s.comms, u);
  EXPECT_EQ(u.gProjectID, 107);
  EXPECT_TRUE(u.gFWFamilyD);
  EXPECT_FALSE(u.gFWFamilyA);
  u.Clear();
  EXPECT_FALSE(u.gFWFamilyD);
}

TEST(UnitType, UnitWithoutFirmwareIdentity) {
  ScriptedUnit s;
  s.Refuse("YT");
  s.Answer("00", VersionBody("1234-567", "OLD1", "1.5", "NOT SET"));
  s.Answer("0C", "0C1.07");
  UnitDescriptor u;
  u.gFWPartNumber = "715-2274-00X";  // left from before: nothing replaces it
  u.gIsProject127 = true;
  DetermineUnitType(s.comms, u);
  EXPECT_TRUE(u.gIsTWTA);  // old tube firmware does not know "YT"
  EXPECT_EQ(u.gProjectID, -1);
  EXPECT_EQ(u.gFWPartNumber, "715-2274-00X");
  EXPECT_TRUE(u.gFWFamilyA);
  EXPECT_TRUE(u.gIsProject127);  // not cleared by a different project
  EXPECT_EQ(u.gFWVersion, 150);
  EXPECT_EQ(u.gBootVersion, "1.07");  // kept for configuration file headers
}

TEST(UnitType, PartNumberTable) {
  std::string pn = "unchanged";
  const struct {
    const char* text;
    int32_t project;
  } rows[] = {{"T 715-2243-001", 107},  {"T 715-2251-004", 108}, {"S 715-2268-004", 126},
              {"S 715-2274-003", 129},  {"S 715-2287-002", 135}, {"S 715-2295-001", 139},
              {"T 715-2300-001", 2300}, {"T 715-0127-005", 127}};
  for (const auto& row : rows) {
    EXPECT_EQ(ExtractPartNumber(row.text, pn), row.project) << row.text;
    EXPECT_EQ(pn, std::string(row.text).substr(2)) << row.text;
  }

  // Without a full part number past the first character, the number between
  // the first two dashes, and the part number is left alone.
  pn = "unchanged";
  EXPECT_EQ(ExtractPartNumber("715-2251-004", pn), 2251);  // prefix at the very start
  EXPECT_EQ(ExtractPartNumber("T 715-22A1-004", pn), 22);  // not the pattern: numeric prefix
  EXPECT_EQ(ExtractPartNumber("TWTA-42", pn), 42);         // no second dash: to the end
  EXPECT_EQ(ExtractPartNumber("TWTA-42-7\x03", pn), 42);
  EXPECT_EQ(ExtractPartNumber("T 715-2251", pn), 2251);  // too short for the pattern
  EXPECT_EQ(ExtractPartNumber("TWTA--7", pn), 0);        // nothing between the dashes
  EXPECT_EQ(ExtractPartNumber("-42-7", pn), 0);          // dash first
  EXPECT_EQ(ExtractPartNumber("SSPA 715", pn), 0);       // no dash at all
  EXPECT_EQ(ExtractPartNumber("", pn), 0);
  EXPECT_EQ(ExtractPartNumber("T-99999999999", pn), 0);  // beyond any project number
  EXPECT_EQ(pn, "unchanged");
}

TEST(UnitType, FirmwareRevisionScale) {
  EXPECT_EQ(RevLettersToDigits("A.B1"), "0.1");
  EXPECT_EQ(RevLettersToDigits("abJ"), "019");
  EXPECT_EQ(RevLettersToDigits("K.Z2"), ".");
  EXPECT_EQ(RevLettersToDigits(""), "");

  // Each revision text from "00" against the 16-bit revision it gives.
  const struct {
    const char* rev;
    int16_t version;
  } rows[] = {{"2.5", 250}, {"250", 250}, {"2.05", 205}, {"A.B", 10}, {"CD", 23}, {"V2", 0}};
  for (const auto& row : rows) {
    ScriptedUnit s;
    s.Answer("00", VersionBody("2251-004", "S", row.rev, "x"));
    UnitDescriptor u;
    GetUnitIDVersion(s.comms, u, 108);
    EXPECT_EQ(u.gFWVersion, row.version) << row.rev;
  }

  // A refused "00" keeps the texts and takes the revision from what stands;
  // a revision beyond 16 bits keeps the previous number.
  ScriptedUnit refused;
  refused.Refuse("00");
  UnitDescriptor u;
  u.txtFrmRev = "3.1";
  u.txtPN = "426-1111-222";
  u.gUnitPartNumber = "426-1111-222";
  GetUnitIDVersion(refused.comms, u, 108);
  EXPECT_EQ(u.gFWVersion, 310);
  EXPECT_EQ(u.txtPN, "426-1111-222");
  EXPECT_EQ(u.gUnitPartNumber, "426-1111-222");
  u.txtFrmRev = "400.5";
  GetUnitIDVersion(refused.comms, u, 108);
  EXPECT_EQ(u.gFWVersion, 310);

  // Empty fields keep their texts, but the part and serial numbers follow
  // the reply even when empty. "0/" right after the echo's first "0" leaves
  // the firmware field empty.
  ScriptedUnit partial;
  partial.Answer("00", "0//2.0/");
  GetUnitIDVersion(partial.comms, u, 108);
  EXPECT_EQ(u.txtPN, "426-1111-222");
  EXPECT_EQ(u.gUnitPartNumber, "");
  EXPECT_EQ(u.gUnitSerialNumber, "");
  EXPECT_EQ(u.gFWVersion, 200);

  // Touch-screen projects report a secondary version.
  ScriptedUnit touch;
  touch.Answer("00", VersionBody("2251-004", "S", "1.0", "x"));
  touch.Answer("0S", "0SV2.1");
  UnitDescriptor t;
  GetUnitIDVersion(touch.comms, t, 99);
  EXPECT_EQ(t.gSecondaryVersion, "SV2.1");
}

TEST(UnitType, FirmwareFamilies) {
  const struct {
    const char* identity;
    bool a, b, c;
  } rows[] = {{"S 715-2274-001", false, true, false},
              {"S 715-2274-006", false, true, false},
              {"S 715-2274-007", false, false, false},
              {"S 715-2268-004", false, false, true},
              {"T 715-2251-004", false, false, false}};
  for (const auto& row : rows) {
    ScriptedUnit s;
    s.Answer("YT", std::string("YT") + row.identity);
    UnitDescriptor u;
    u.gFWFamilyA = u.gFWFamilyB = u.gFWFamilyC = true;
    DetermineUnitType(s.comms, u);
    EXPECT_EQ(u.gFWFamilyA, row.a) << row.identity;
    EXPECT_EQ(u.gFWFamilyB, row.b) << row.identity;
    EXPECT_EQ(u.gFWFamilyC, row.c) << row.identity;
    EXPECT_FALSE(u.gFWFamilyD) << row.identity;
  }

  // Family A is the part number "715-2274-00X" as it stands.
  ScriptedUnit s;
  s.Answer("YT", "YTSSPA-1");
  UnitDescriptor u;
  u.gFWPartNumber = "715-2274-00X";
  u.gFWFamilyB = true;
  DetermineUnitType(s.comms, u);
  EXPECT_TRUE(u.gFWFamilyA);
  EXPECT_FALSE(u.gFWFamilyB);

  // Firmware 715-2268-004 reports its unit part number with "418-".
  ScriptedUnit c;
  c.Answer("YT", "YTS 715-2268-004");
  c.Answer("00", VersionBody("2268-004", "S", "1.0", "x"));
  UnitDescriptor cu;
  DetermineUnitType(c.comms, cu);
  EXPECT_EQ(cu.gUnitPartNumber, "418-2268-004");
}

// Runs the project rules for a bare project number.
UnitDescriptor OptionsFor(int32_t project, bool isTWTA = false, int16_t fw = 0,
                          const char* yif = nullptr) {
  ScriptedUnit s;
  if (yif) s.Answer("YIF?", yif);
  UnitDescriptor u;
  u.gProjectID = project;
  u.gIsTWTA = isTWTA;
  u.gFWVersion = fw;
  u.gExtRefFamily = project == 0 || project == 37 || project == 48 || project == 50;
  SetProjectSpecificValues(s.comms, u);
  return u;
}

TEST(UnitType, OptionFlagsByProject) {
  UnitDescriptor u = OptionsFor(25);
  EXPECT_TRUE(u.gHeaterFault && u.g3PhaseFault && u.g3PhaseFault2);
  EXPECT_TRUE(u.gWGArc1Fault && u.gWGArc2Fault);
  EXPECT_FALSE(u.gWGPressureFault || u.g24VPresentFault || u.gExtRefPresetFault);

  u = OptionsFor(114, false, 999);
  EXPECT_TRUE(u.gHeaterFault && u.g3PhaseFault2 && u.gWGArc1Fault);
  EXPECT_FALSE(u.g3PhaseFault);
  EXPECT_FALSE(u.gFaultOptions);  // never for 114, whatever the revision
  EXPECT_EQ(u.gAtnCountCommand, ".D1");

  u = OptionsFor(62);
  EXPECT_TRUE(u.gWGPressureFault && u.gHeaterFault);

  u = OptionsFor(38);
  EXPECT_TRUE(u.g24VPresentFault && u.gExtRefPresetFault && u.gExtRefLockFault);
  EXPECT_EQ(u.gAtnCountCommand, ".D1");

  u = OptionsFor(0);  // the external reference family
  EXPECT_TRUE(u.gExtRefPresetFault && u.gExtRefLockFault);
  EXPECT_FALSE(u.gHeaterFault);

  u = OptionsFor(44);
  EXPECT_TRUE(u.gLinearizerFault);
  EXPECT_FALSE(u.gPICProcessor);

  u = OptionsFor(139);
  EXPECT_TRUE(u.gNetburnerProcessor);
  EXPECT_FALSE(u.gHeaterFault || u.gExtRefPresetFault || u.gPICProcessor);
  EXPECT_TRUE(u.gExtRefFault);  // every unit
  EXPECT_EQ(u.gAtnCountCommand, ".D9");

  // Touch screen: projects 500, 99, 510.
  ScriptedUnit t;
  UnitDescriptor ts;
  ts.gProjectID = 510;
  SetUnitTouchScreenOption(t.comms, ts);
  EXPECT_TRUE(ts.gTouchScreen);
  ts.gProjectID = 511;
  SetUnitTouchScreenOption(t.comms, ts);
  EXPECT_FALSE(ts.gTouchScreen);
}

TEST(UnitType, FaultOptionWord) {
  // A PIC controller has fault options even on old firmware: the processor
  // rule must have run before the fault option rule.
  UnitDescriptor u = OptionsFor(50, false, 100, "YIF4097");
  EXPECT_TRUE(u.gPICProcessor);
  EXPECT_TRUE(u.gFaultOptions);
  EXPECT_EQ(u.gFaultOptionWord, 4097);

  // Revision limits: an SSPA above 255, a TWTA above 523.
  EXPECT_FALSE(OptionsFor(20, false, 255, "YIF1").gFaultOptions);
  EXPECT_TRUE(OptionsFor(20, false, 256, "YIF1").gFaultOptions);
  EXPECT_FALSE(OptionsFor(20, true, 523, "YIF1").gFaultOptions);
  EXPECT_TRUE(OptionsFor(20, true, 524, "YIF1").gFaultOptions);
  EXPECT_TRUE(OptionsFor(53, false, 0, "YIF1").gFaultOptions);
  EXPECT_TRUE(OptionsFor(107, false, 0, "YIF1").gFaultOptions);

  // A refused or unreadable mask keeps the option with a word of 0, and the
  // rules after it still run.
  u = OptionsFor(107, false, 0, nullptr);
  EXPECT_TRUE(u.gFaultOptions);
  EXPECT_EQ(u.gFaultOptionWord, 0);
  u = OptionsFor(107, false, 0, "YIF99999999999");
  EXPECT_TRUE(u.gFaultOptions);
  EXPECT_EQ(u.gFaultOptionWord, 0);
  EXPECT_EQ(u.gAtnCountCommand, ".D1");
  EXPECT_TRUE(u.gExtRefFault);
}

TEST(UnitType, CommandCFromCompileDate) {
  ScriptedUnit s;
  const auto support = [&](int32_t project, const char* date) {
    UnitDescriptor u;
    u.gProjectID = project;
    u.txtCplDate = date;
    SetUnitCommandCSupport(s.comms, u);
    return u.gCommandCSupport;
  };
  EXPECT_FALSE(support(0, "Oct 31 2008"));
  EXPECT_FALSE(support(0, "Nov 01 2008"));  // on the day: not later
  EXPECT_FALSE(support(0, "Nov  1 2008 23:59:59"));
  EXPECT_TRUE(support(0, "Nov 02 2008"));
  EXPECT_TRUE(support(0, "2008-11-02"));
  EXPECT_FALSE(support(0, "11/01/2008"));
  // Not a date: only a unit without firmware identity takes "C".
  EXPECT_FALSE(support(0, "NOT SET"));
  EXPECT_FALSE(support(0, ""));
  EXPECT_TRUE(support(-1, "NOT SET"));
  EXPECT_FALSE(support(-1, "Oct 31 2008"));
  // Project 127 always.
  EXPECT_TRUE(support(127, "Oct 31 2008"));
  EXPECT_TRUE(support(127, "NOT SET"));
}

TEST(UnitType, ClearGoesBackToNoUnit) {
  UnitDescriptor u = OptionsFor(127, true, 600, "YIF3");
  u.gIsProject127 = true;
  u.gFWPartNumberReported = "715-0127-005";
  u.gUnitSerialNumber = "SN";
  u.txtCplDate = "Nov 01 2008";
  u.Clear();
  const UnitDescriptor fresh;
  EXPECT_FALSE(u.gIsProject127 || u.gFaultOptions);
  EXPECT_EQ(u.gFWPartNumberReported + u.gUnitSerialNumber + u.txtCplDate, "");
  EXPECT_EQ(u.gProjectID, fresh.gProjectID);
  EXPECT_EQ(u.gUnitCfgFlags, -1);  // the configuration word is unread
  EXPECT_EQ(u.gAtnCountCommand, fresh.gAtnCountCommand);
}

}  // namespace
}  // namespace amp
