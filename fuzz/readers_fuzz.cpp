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
// One call of a reader on the link `c`; `k` is a byte of the input for the
// readers that take an index or a choice.
#define READ(...) [](Comms& c, [[maybe_unused]] int k) { __VA_ARGS__; }

const std::vector<Reader>& Readers() {
  // In the order of the command headers.
  // clang-format off
  static const std::vector<Reader> all = {
      READ(int32_t a = 0, b = 0; ReadFaultEnable(c, a, b)),
      READ(int32_t a = 0; ReadAlarmEnable(c, a)), READ(ReadLowLineLatch(c)),
      READ(ReadExtIlokLatch(c)), READ(ReadTempFaultLevel(c, k & 1)), READ(ReadTempAlarmLevel(c)),
      READ(ReadInletDiffAlarmLevel(c)), READ(ReadLatchTempFaults(c)),
      READ(ReadTemperature(c, k & 1)), READ(ReadInletTemperature(c)), READ(ReadMaxCalTemp(c)),
      READ(ReadMinCalTemp(c)), READ(ReadFanTemperature(c)), READ(ReadDCVInput(c)),
      READ(ReadDCVRatio(c)), READ(ReadDCVLimit(c, k % 5)), READ(ReadCurrentSense(c)),
      READ(ReadCurrentSenseGain(c)), READ(ReadCurrentSenseResistor(c)),
      READ(ReadWGArcDetectorType(c)), READ(ReadUnitIDWord(c)),
      READ(ReadUnitVersion(c, "715-2251-004")), READ(ReadUnitSerialText(c)),
      READ(ReadCPLDVersion(c)), READ(ReadUnitType(c)), READ(ReadUnitCfgWord(c)),
      READ(ReadDateTime(c)), READ(ReadPN20(c)),
      READ(std::array<int16_t, 16> s{}; ReadAdcScalers(c, s)), READ(ReadDigitalPot(c, k % 8)),
      READ(ReadOverdriveTripLevel(c)), READ(ReadTempCoefficient(c)),
      READ(ReadSubBandTempCoefficients(c, k % 10)), READ(ReadUpcAvailability(c)),
      READ(ReadLEDMode(c)), READ(ReadProductID(c)), READ(ReadParamLogEnable(c)),
      READ(ReadSerialPortCfg(c, k % 3)), READ(ReadRS485Cfg(c)), READ(ReadIPAddress(c)),
      READ(ReadNetMask(c)), READ(ReadRouterAddress(c)), READ(ReadMACAddress(c)),
      READ(ReadEnetPort(c)), READ(ReadDHCPMode(c)), READ(ReadLldpFactory(c)),
      READ(ReadLldpUser(c)), READ(ReadPowerSaveMode(c)), READ(ReadPowerSaveDelay(c)),
      READ(ReadCurrentBand(c)), READ(ReadBandInfo(c, k % 6)), READ(ReadRFFrequency(c)),
      READ(ReadSubBandTable(c)), READ(ReadCurrentSubBand(c)), READ(ReadCalFactors(c)),
      READ(ReadAttenuation(c)), READ(ReadAtnCount(c)), READ(ReadAtnDac(c)), READ(ReadDLAtten(c)),
      READ(ReadLinearizer(c, k & 1)), READ(ReadSubBandLinearizer(c, k % 9)),
      READ(ReadGainBalance(c)), READ(ReadIFGainBalance(c)), READ(ReadUnitGain(c)),
      READ(ReadConstPowerLevel(c)), READ(ReadFwdRF(c)), READ(ReadRevRF(c)),
      READ(ReadRFTripLevels(c)), READ(ReadFactoryTripLevels(c)), READ(ReadRevRFOffset(c)),
      READ(ReadReturnLoss(c)), READ(ReadPowerLimit(c)), READ(ReadPowerLimitFaultLevel(c)),
      READ(ReadBandMaxPower(c, k * 7 % 300, k % 140, k % 6)),
      READ(ReadBandMinPower(c, k * 7 % 300, k % 140, k % 6)), READ(ReadMaxAttenTable(c)),
      READ(ReadMaxAtten(c)), READ(ReadAttenRange(c)), READ(ReadStatusWord(c, k % 4)),
      READ(ReadRFInhibitState(c)), READ(ReadRFPolarity(c)), READ(ReadAutoXmitRestore(c)),
      READ(ReadStartupMode(c)), READ(ReadHeaterStandby(c)), READ(ReadHeaterState(c)),
      READ(ReadHeaterHours(c)), READ(ReadXmitHours(c)), READ(ReadHelixValues(c, k & 1)),
      READ(ReadHelixCurrentRatio(c)), READ(ReadHelixCurrentTrip(c)), READ(ReadHeaterVoltage(c)),
      READ(ReadHeaterCurrent(c)), READ(ReadCathodeCurrent(c)), READ(ReadCathodeSense(c)),
      READ(ReadCathodeMode(c)), READ(ReadIdealCathodeCurrent(c)), READ(ReadAnodeVoltage(c)),
      READ(ReadCathodeScalar(c)), READ(ReadAnodeScale(c)), READ(ReadNegativeAnodeEnable(c)),
      READ(ReadNegativeAnodeStart(c)), READ(ReadTwtEolParams(c)), READ(ReadTwtEolEstimate(c)),
      READ(ReadPSVset(c, k % 10 - 1)), READ(ReadBucAtten(c)), READ(ReadBucPower(c)),
      READ(ReadBucSetPoint(c)), READ(ReadBucTemperature(c)), READ(ReadBucMaxAtten(c)),
      READ(ReadBucOffset(c)), READ(ReadBucMode(c)), READ(ReadBucIdeal(c)), READ(ReadAmcAnalogs(c)),
      READ(ReadAmcSettings(c)), READ(ReadAmcStatus(c)), READ(ReadModelCfgPN(c)),
      READ(UnitDescriptor u; DetermineUnitType(c, u); SetProjectSpecificValues(c, u))
  };
  // clang-format on
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
