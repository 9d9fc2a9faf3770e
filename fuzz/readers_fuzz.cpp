// Every reader of the command set, and the unit-type rules built on them,
// fed with replies made from the fuzzer's bytes. Each exchange takes the next
// piece of the input as its reply: framed with a good checksum (so the
// reader's own parse is reached) or raw. Readers must never read outside a
// reply, loop, or crash; a conversion failure is allowed to reach the caller
// of an unguarded reader, and nothing else may escape.
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "commands/fault_config_cmds.h"
#include "commands/identity_cmds.h"
#include "commands/port_network_cmds.h"
#include "commands/reader_support.h"
#include "commands/rf_band_cmds.h"
#include "commands/rf_power_cmds.h"
#include "commands/transmitter_cmds.h"
#include "commands/upconverter_cmds.h"
#include "fuzz_support.h"
#include "support/scripted_unit.h"
#include "unit/unit_type.h"

namespace amp::fuzz {
namespace {

using Reader = std::function<void(Comms&, int)>;

const std::vector<Reader>& Readers() {
  static const std::vector<Reader> all = {
      [](Comms& c, int) {
        int32_t a = 0, b = 0;
        ReadFaultEnable(c, a, b);
      },
      [](Comms& c, int) {
        int32_t a = 0;
        ReadAlarmEnable(c, a);
      },
      [](Comms& c, int) { ReadLowLineLatch(c); },
      [](Comms& c, int) { ReadExtIlokLatch(c); },
      [](Comms& c, int k) { ReadTempFaultLevel(c, k & 1); },
      [](Comms& c, int) { ReadTempAlarmLevel(c); },
      [](Comms& c, int) { ReadInletDiffAlarmLevel(c); },
      [](Comms& c, int) { ReadLatchTempFaults(c); },
      [](Comms& c, int k) { ReadTemperature(c, k & 1); },
      [](Comms& c, int) { ReadInletTemperature(c); },
      [](Comms& c, int) { ReadMaxCalTemp(c); },
      [](Comms& c, int) { ReadMinCalTemp(c); },
      [](Comms& c, int) { ReadFanTemperature(c); },
      [](Comms& c, int) { ReadDCVInput(c); },
      [](Comms& c, int) { ReadDCVRatio(c); },
      [](Comms& c, int k) { ReadDCVLimit(c, k % 5); },
      [](Comms& c, int) { ReadCurrentSense(c); },
      [](Comms& c, int) { ReadCurrentSenseGain(c); },
      [](Comms& c, int) { ReadCurrentSenseResistor(c); },
      [](Comms& c, int) { ReadWGArcDetectorType(c); },
      [](Comms& c, int) { ReadUnitIDWord(c); },
      [](Comms& c, int) { ReadUnitVersion(c, "715-2251-004"); },
      [](Comms& c, int) { ReadUnitSerialText(c); },
      [](Comms& c, int) { ReadCPLDVersion(c); },
      [](Comms& c, int) { ReadUnitType(c); },
      [](Comms& c, int) { ReadUnitCfgWord(c); },
      [](Comms& c, int) { ReadDateTime(c); },
      [](Comms& c, int) { ReadPN20(c); },
      [](Comms& c, int) {
        std::array<int16_t, 16> s{};
        ReadAdcScalers(c, s);
      },
      [](Comms& c, int k) { ReadDigitalPot(c, k % 8); },
      [](Comms& c, int) { ReadOverdriveTripLevel(c); },
      [](Comms& c, int) { ReadTempCoefficient(c); },
      [](Comms& c, int k) { ReadSubBandTempCoefficients(c, k % 10); },
      [](Comms& c, int) { ReadUpcAvailability(c); },
      [](Comms& c, int) { ReadLEDMode(c); },
      [](Comms& c, int) { ReadProductID(c); },
      [](Comms& c, int) { ReadParamLogEnable(c); },
      [](Comms& c, int k) { ReadSerialPortCfg(c, k % 3); },
      [](Comms& c, int) { ReadRS485Cfg(c); },
      [](Comms& c, int) { ReadIPAddress(c); },
      [](Comms& c, int) { ReadNetMask(c); },
      [](Comms& c, int) { ReadRouterAddress(c); },
      [](Comms& c, int) { ReadMACAddress(c); },
      [](Comms& c, int) { ReadEnetPort(c); },
      [](Comms& c, int) { ReadDHCPMode(c); },
      [](Comms& c, int) { ReadLldpFactory(c); },
      [](Comms& c, int) { ReadLldpUser(c); },
      [](Comms& c, int) { ReadPowerSaveMode(c); },
      [](Comms& c, int) { ReadPowerSaveDelay(c); },
      [](Comms& c, int) { ReadCurrentBand(c); },
      [](Comms& c, int k) { ReadBandInfo(c, k % 6); },
      [](Comms& c, int) { ReadRFFrequency(c); },
      [](Comms& c, int) { ReadSubBandTable(c); },
      [](Comms& c, int) { ReadCurrentSubBand(c); },
      [](Comms& c, int) { ReadCalFactors(c); },
      [](Comms& c, int) { ReadAttenuation(c); },
      [](Comms& c, int) { ReadAtnCount(c); },
      [](Comms& c, int) { ReadAtnDac(c); },
      [](Comms& c, int) { ReadDLAtten(c); },
      [](Comms& c, int k) { ReadLinearizer(c, k & 1); },
      [](Comms& c, int k) { ReadSubBandLinearizer(c, k % 9); },
      [](Comms& c, int) { ReadGainBalance(c); },
      [](Comms& c, int) { ReadIFGainBalance(c); },
      [](Comms& c, int) { ReadUnitGain(c); },
      [](Comms& c, int) { ReadConstPowerLevel(c); },
      [](Comms& c, int) { ReadFwdRF(c); },
      [](Comms& c, int) { ReadRevRF(c); },
      [](Comms& c, int) { ReadRFTripLevels(c); },
      [](Comms& c, int) { ReadFactoryTripLevels(c); },
      [](Comms& c, int) { ReadRevRFOffset(c); },
      [](Comms& c, int) { ReadReturnLoss(c); },
      [](Comms& c, int) { ReadPowerLimit(c); },
      [](Comms& c, int) { ReadPowerLimitFaultLevel(c); },
      [](Comms& c, int k) { ReadBandMaxPower(c, k * 7 % 300, k % 140, k % 6); },
      [](Comms& c, int k) { ReadBandMinPower(c, k * 7 % 300, k % 140, k % 6); },
      [](Comms& c, int) { ReadMaxAttenTable(c); },
      [](Comms& c, int) { ReadMaxAtten(c); },
      [](Comms& c, int) { ReadAttenRange(c); },
      [](Comms& c, int k) { ReadStatusWord(c, k % 4); },
      [](Comms& c, int) { ReadRFInhibitState(c); },
      [](Comms& c, int) { ReadRFPolarity(c); },
      [](Comms& c, int) { ReadAutoXmitRestore(c); },
      [](Comms& c, int) { ReadStartupMode(c); },
      [](Comms& c, int) { ReadHeaterStandby(c); },
      [](Comms& c, int) { ReadHeaterState(c); },
      [](Comms& c, int) { ReadHeaterHours(c); },
      [](Comms& c, int) { ReadXmitHours(c); },
      [](Comms& c, int k) { ReadHelixValues(c, k & 1); },
      [](Comms& c, int) { ReadHelixCurrentRatio(c); },
      [](Comms& c, int) { ReadHelixCurrentTrip(c); },
      [](Comms& c, int) { ReadHeaterVoltage(c); },
      [](Comms& c, int) { ReadHeaterCurrent(c); },
      [](Comms& c, int) { ReadCathodeCurrent(c); },
      [](Comms& c, int) { ReadCathodeSense(c); },
      [](Comms& c, int) { ReadCathodeMode(c); },
      [](Comms& c, int) { ReadIdealCathodeCurrent(c); },
      [](Comms& c, int) { ReadAnodeVoltage(c); },
      [](Comms& c, int) { ReadCathodeScalar(c); },
      [](Comms& c, int) { ReadAnodeScale(c); },
      [](Comms& c, int) { ReadNegativeAnodeEnable(c); },
      [](Comms& c, int) { ReadNegativeAnodeStart(c); },
      [](Comms& c, int) { ReadTwtEolParams(c); },
      [](Comms& c, int) { ReadTwtEolEstimate(c); },
      [](Comms& c, int k) { ReadPSVset(c, k % 10 - 1); },
      [](Comms& c, int) { ReadBucAtten(c); },
      [](Comms& c, int) { ReadBucPower(c); },
      [](Comms& c, int) { ReadBucSetPoint(c); },
      [](Comms& c, int) { ReadBucTemperature(c); },
      [](Comms& c, int) { ReadBucMaxAtten(c); },
      [](Comms& c, int) { ReadBucOffset(c); },
      [](Comms& c, int) { ReadBucMode(c); },
      [](Comms& c, int) { ReadBucIdeal(c); },
      [](Comms& c, int) { ReadAmcAnalogs(c); },
      [](Comms& c, int) { ReadAmcSettings(c); },
      [](Comms& c, int) { ReadAmcStatus(c); },
      [](Comms& c, int) { ReadModelCfgPN(c); },
      [](Comms& c, int) {
        UnitDescriptor u;
        DetermineUnitType(c, u);
        SetProjectSpecificValues(c, u);
      },
  };
  return all;
}

}  // namespace
}  // namespace amp::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace amp;
  fuzz::ByteReader in(data, size);
  test::ScriptedUnit unit;
  // Every command the readers send is answered with the next piece of input.
  unit.port.onWrite = [&](const std::string& frame) {
    if (frame.size() < 4 || in.Empty()) return;
    const uint8_t how = in.Byte();
    std::string body = in.Bytes(how & 0x3F);
    if (how & 0x80) {
      unit.port.Arrive(body, 1);  // raw: whatever the line carried
    } else {
      unit.port.Arrive(test::ScriptedUnit::Frame((how & 0x40) ? '\x15' : '\x06', body), 1);
    }
  };
  const auto& readers = fuzz::Readers();
  const size_t first = in.Byte() % readers.size();
  for (size_t n = 0; n < 6 && !in.Empty(); ++n) {
    const int arg = in.Byte();
    try {
      readers[(first + n * 37) % readers.size()](unit.comms, arg);
    } catch (const ConversionFailure&) {
      // An unguarded reader hands its conversion failure to the caller.
    }
    for (const auto& f : unit.comms.gRespFields) AMP_FUZZ_CHECK(f.size() <= 16386);
  }
  return 0;
}
