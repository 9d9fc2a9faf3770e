// Every reader the host uses against what each simulated unit really sends:
// where a profile's unit acknowledges the reader's command, the reader must
// locate a value in the reply. Position and length rules that drift from
// the unit's reply layout show here first, whichever profile they break.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "command_rig.h"
#include "commands/fault_config_cmds.h"
#include "commands/identity_cmds.h"
#include "commands/port_network_cmds.h"
#include "commands/rf_band_cmds.h"
#include "commands/rf_power_cmds.h"
#include "commands/transmitter_cmds.h"
#include "commands/upconverter_cmds.h"
#include "sim/commands.h"
#include "sim/framing.h"
#include "sim/profile.h"
#include "support/link_parts.h"

namespace amp {
namespace {

using namespace test;

// The simulated unit's command language in-process, over the fake link.
class SimUnit : public LinkParts {
 public:
  explicit SimUnit(const std::string& profile) {
    std::string err;
    EXPECT_TRUE(sim::LoadProfile(sim::ResolveProfile(profile), state_, &err)) << profile << err;
    port.isOpen = true;
    port.onWrite = [this](const std::string& frame) {
      if (frame.size() < 4 || frame[0] != '\x02') return;  // priming pair
      const sim::Reply r = table_.Dispatch(state_, frame.substr(2, frame.size() - 4));
      acked = acked || r.ack;
      port.Arrive(sim::EncodeReply(false, r.ack, 'A', r.body), 1);
    };
  }
  bool acked = false;  // any command of the current read acknowledged

 private:
  sim::UnitState state_;
  sim::CommandTable table_ = sim::StandardCommands();
};

struct Row {
  const char* name;
  Reader read;
  std::string notRead;  // the reader's answer when it found no value
};

const std::vector<Row>& Rows() {
  static const std::vector<Row> rows{
      {"FaultEnable", R([](Comms& c) {
         int32_t a, b;
         return ReadFaultEnable(c, a, b);
       }),
       "false"},
      {"AlarmEnable", R([](Comms& c) {
         int32_t a;
         return ReadAlarmEnable(c, a);
       }),
       "false"},
      {"LowLineLatch", R(ReadLowLineLatch), "-1"},
      {"ExtIlokLatch", R(ReadExtIlokLatch), "-1"},
      {"TempFaultLevel", R([](Comms& c) { return ReadTempFaultLevel(c, false); }), ""},
      {"TempAlarmLevel", R(ReadTempAlarmLevel), ""},
      {"InletDiffAlarmLevel", R(ReadInletDiffAlarmLevel), ""},
      {"LatchTempFaults", R(ReadLatchTempFaults), "-1"},
      {"Temperature", R([](Comms& c) { return ReadTemperature(c); }), "-125"},
      {"InletTemperature", R(ReadInletTemperature), "-50"},
      {"MaxCalTemp", R(ReadMaxCalTemp), ""},
      {"MinCalTemp", R(ReadMinCalTemp), ""},
      {"DCVInput", R(ReadDCVInput), "false"},
      {"DCVRatio", R(ReadDCVRatio), "false"},
      {"DCVLimit", R([](Comms& c) { return ReadDCVLimit(c, 1); }), "false"},
      {"CurrentSense", R(ReadCurrentSense), "false"},
      {"CurrentSenseGain", R(ReadCurrentSenseGain), ""},
      {"UnitIDWord", R(ReadUnitIDWord), "-1"},
      {"UnitVersion", R([](Comms& c) { return ReadUnitVersion(c, ""); }), "false"},
      {"UnitSerialText", R(ReadUnitSerialText), ""},
      {"CPLDVersion", R(ReadCPLDVersion), ""},
      {"UnitType", R(ReadUnitType), ""},
      {"UnitCfgWord", R(ReadUnitCfgWord), "-1"},
      {"DateTime", R(ReadDateTime), ""},
      {"PN20", R(ReadPN20), ""},
      {"TempCoefficient", R(ReadTempCoefficient), ""},
      {"UpcAvailability", R(ReadUpcAvailability), "-1"},
      {"LEDMode", R(ReadLEDMode), "-1"},
      {"ProductID", R([](Comms& c) { return ReadProductID(c).partNumber; }), ""},
      {"ParamLogEnable", R(ReadParamLogEnable), "-1"},
      {"SerialPortCfg", R([](Comms& c) { return ReadSerialPortCfg(c, 1); }), "false"},
      {"RS485Cfg", R(ReadRS485Cfg), "false"},
      {"IPAddress", R(ReadIPAddress), ""},
      {"NetMask", R(ReadNetMask), ""},
      {"RouterAddress", R(ReadRouterAddress), ""},
      {"MACAddress", R(ReadMACAddress), ""},
      {"EnetPort", R(ReadEnetPort), "0"},
      {"LldpFactory", R(ReadLldpFactory), ""},
      {"LldpUser", R(ReadLldpUser), ""},
      {"PowerSaveMode", R(ReadPowerSaveMode), "-1"},
      {"PowerSaveDelay", R(ReadPowerSaveDelay), "-1"},
      {"CurrentBand", R(ReadCurrentBand), ""},
      {"BandInfo", R([](Comms& c) { return ReadBandInfo(c, 1); }), ""},
      {"RFFrequency", R(ReadRFFrequency), ""},
      {"SubBandTable", R(ReadSubBandTable), "false"},
      {"CurrentSubBand", R(ReadCurrentSubBand), "-1"},
      {"CalFactors", R(ReadCalFactors), ""},
      {"Attenuation", R(ReadAttenuation), ""},
      {"AtnCount", R(ReadAtnCount), "-1"},
      {"DLAtten", R(ReadDLAtten), ""},
      {"GainBalance", R(ReadGainBalance), "-1"},
      {"UnitGain", R(ReadUnitGain), "false"},
      {"ConstPowerLevel", R(ReadConstPowerLevel), ""},
      {"FwdRF", R(ReadFwdRF), ""},
      {"RevRF", R(ReadRevRF), ""},
      {"RFTripLevels", R(ReadRFTripLevels), "false"},
      {"FactoryTripLevels", R(ReadFactoryTripLevels), "-1"},
      {"RevRFOffset", R(ReadRevRFOffset), ""},
      {"ReturnLoss", R(ReadReturnLoss), "-1"},
      {"PowerLimit", R([](Comms& c) { return ReadPowerLimit(c).ok; }), "false"},
      {"PowerLimitFault", R([](Comms& c) { return ReadPowerLimitFaultLevel(c).ok; }), "false"},
      {"BandMaxPower", R([](Comms& c) { return ReadBandMaxPower(c, 200, 0, 1); }), ""},
      {"BandMinPower", R([](Comms& c) { return ReadBandMinPower(c, 200, 0, 1); }), ""},
      {"MaxAtten", R(ReadMaxAtten), "-1"},
      {"AttenRange", R(ReadAttenRange), ""},
      {"StatusWord", R([](Comms& c) { return ReadStatusWord(c, 1); }), ""},
      {"RFPolarity", R(ReadRFPolarity), "-1"},
      {"AutoXmitRestore", R(ReadAutoXmitRestore), "-1"},
      {"StartupMode", R(ReadStartupMode), "-1"},
      {"HeaterStandby", R(ReadHeaterStandby), "-1"},
      {"HeaterState", R(ReadHeaterState), "-1"},
      {"HeaterHours", R(ReadHeaterHours), "-1"},
      {"XmitHours", R(ReadXmitHours), "-1"},
      {"HelixValues", R([](Comms& c) { return ReadHelixValues(c, false); }), "false"},
      {"HelixCurrentRatio", R(ReadHelixCurrentRatio), "-1"},
      {"HelixCurrentTrip", R(ReadHelixCurrentTrip), ""},
      {"HeaterVoltage", R(ReadHeaterVoltage), "0"},
      {"HeaterCurrent", R(ReadHeaterCurrent), "0"},
      {"CathodeCurrent", R(ReadCathodeCurrent), "-1"},
      {"CathodeSense", R(ReadCathodeSense), "-1"},
      {"IdealCathodeCurrent", R(ReadIdealCathodeCurrent), "-1"},
      {"AnodeVoltage", R(ReadAnodeVoltage), "-1"},
      {"TwtEolParams", R(ReadTwtEolParams), "false"},
      {"TwtEolEstimate", R(ReadTwtEolEstimate), ""},
      {"PSVset", R([](Comms& c) { return ReadPSVset(c).status; }), "-1"},
      {"BucAtten", R(ReadBucAtten), "-1"},
      {"BucSetPoint", R(ReadBucSetPoint), "-60"},
      {"BucMode", R(ReadBucMode), "-1"},
      {"AmcAnalogs", R(ReadAmcAnalogs), "false"},
      {"AmcSettings", R(ReadAmcSettings), "false"},
      {"AmcStatus", R(ReadAmcStatus), "-1"},
      {"ModelCfgPN", R(ReadModelCfgPN), ""},
  };
  return rows;
}

TEST(ProfileReaders, EveryAnsweredReadFindsItsValue) {
  const std::vector<std::string> profiles = sim::ProfileNames();
  ASSERT_GE(profiles.size(), 5u);
  std::map<std::string, int> answeredBy;
  for (const std::string& profile : profiles) {
    for (const Row& row : Rows()) {
      SimUnit unit(profile);
      const std::string got = row.read(unit.comms);
      if (!unit.acked) continue;
      ++answeredBy[row.name];
      EXPECT_NE(got, row.notRead) << row.name << " on " << profile;
    }
  }
  // A row no profile answers would check nothing.
  for (const Row& row : Rows()) EXPECT_GT(answeredBy[row.name], 0) << row.name;
}

}  // namespace
}  // namespace amp
