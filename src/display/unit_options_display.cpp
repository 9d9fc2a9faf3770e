// Options a unit may or may not have: temperature compensation, DC input,
// unit gain, float supply, current sense, block upconverter, down-link
// attenuator, trend logs; and the data directory the downloads go to.
#include <filesystem>
#include <string>
#include <system_error>

#include "basic/numbers.h"
#include "basic/text.h"
#include "commands/fault_config_cmds.h"
#include "commands/identity_cmds.h"
#include "commands/rf_power_cmds.h"
#include "commands/upconverter_cmds.h"
#include "display/panel_setup.h"

namespace amp {

namespace {

// Copies a reader's fields up to the first empty one; the rest stay empty.
void CopyUntilEmpty(const std::array<std::string, 11>& from, std::array<std::string, 11>& to) {
  to.fill(std::string());
  for (size_t i = 0; i < from.size() && !from[i].empty(); ++i) to[i] = from[i];
}

// A coefficient longer than this is the attenuation-to-temperature table.
constexpr long kPlainCoefficientLength = 10;

// The first record of the long-term trend log; a unit without trend logs
// refuses it.
constexpr std::string_view kTrendLogProbe = "4TL0";

}  // namespace

void PanelSetup::InitTempComp() {
  const std::string coefficient = ReadTempCoefficient(c_);
  v_.gTempCoefficient = coefficient.empty() ? "0.075" : coefficient;
  v_.gTempCoefAttnRatio = Len(v_.gTempCoefficient) > kPlainCoefficientLength;

  v_.gBandTempCoef = false;
  for (auto& t : v_.gSubBandTempCoefs) t.clear();
  if (v_.gSubBandCount < 1) return;
  v_.gBandTempCoef = ReadSubBandTempCoefficients(c_, v_.gSubBandCount);
  if (!v_.gBandTempCoef) return;
  for (int n = 1; n <= v_.gSubBandCount && n <= 8; ++n)
    v_.gSubBandTempCoefs[n] = c_.gRespFields[n - 1];
}

bool PanelSetup::HasDCVInputOption() const {
  // The same units whose DC input the poll shows.
  if (u_.gProjectID == 102) return false;
  return (u_.gProjectID == 20 && u_.gFWVersion > 256) || u_.gPICProcessor;
}

void PanelSetup::InitDCVInParameters() {
  v_.gHasDCVInput = HasDCVInputOption();
  if (!v_.gHasDCVInput) return;
  for (int k = 1; k <= 4; ++k)
    if (ReadDCVLimit(c_, k)) v_.gDCVLimits[k - 1] = c_.gRespFields[0];
  if (ReadDCVRatio(c_)) v_.gDCVRatio = c_.gRespFields[0];
  if (ReadDCVInput(c_)) v_.gDCVInput = c_.gRespFields[0];
}

void PanelSetup::UpdateUnitGain() {
  v_.gHasUnitGain = ReadUnitGain(c_);
  if (!v_.gHasUnitGain) return;
  v_.gUnitGainOn = c_.gRespFields[0] == "1";
  v_.gUnitGain = c_.gRespFields[1];
}

void PanelSetup::UpdateAMCParameters() {
  if (!v_.gHasFloatSupply) return;
  if (ReadAmcAnalogs(c_)) CopyUntilEmpty(c_.gRespFields, v_.gAmcAnalogs);
  if (ReadAmcSettings(c_)) CopyUntilEmpty(c_.gRespFields, v_.gAmcSettings);
}

void PanelSetup::InitCurrentSenseParams() {
  const std::string gain = ReadCurrentSenseGain(c_);
  v_.gHasCurrentSense = !gain.empty();
  if (!v_.gHasCurrentSense) return;
  v_.gCurrentSenseGain = IsNumeric(gain) ? gain : "0";
  v_.gCurrentSenseResistor = ReadCurrentSenseResistor(c_);
}

void PanelSetup::InitLCBuc() {
  v_.gBucAttenuation = ReadBucAtten(c_);
  if (v_.gBucAttenuation < 0) {
    f_.mnulcBucSetup.SetVisible(false);
    return;
  }
  f_.mnulcBucSetup.SetVisible(true);
  v_.gBucMaxAtten = ReadBucMaxAtten(c_);
  v_.gBucMode = ReadBucMode(c_);
  v_.gBucSetPoint = ReadBucSetPoint(c_);
  v_.gBucOffset = ReadBucOffset(c_);
  v_.gBucIdeal = ReadBucIdeal(c_);
}

void PanelSetup::InitDLAtten() {
  // Only the block downconverter has the down-link attenuator on "?/".
  if (!v_.gIsFBDCUnit) return;
  const std::string text = Trim(ReadDLAtten(c_));
  if (!text.empty()) f_.txtAtnCnt.SetText(text);
}

void PanelSetup::InitTrendLogOption() {
  v_.gHasTrendLog = c_.ExchangeCommand(kTrendLogProbe, false);
}

void PanelSetup::InitDataDirectory() {
  if (v_.gDataDirectory.empty()) return;
  std::error_code ec;
  const std::filesystem::path dir(v_.gDataDirectory);
  if (std::filesystem::is_directory(dir, ec)) return;
  std::filesystem::create_directories(dir, ec);
  if (ec) {
    c_.host().dialogs.MsgBox(v_.gDataDirectory + ": " + ec.message(), MsgButtons::OK,
                             MsgIcon::Critical, "File I/O Error");
  }
}

}  // namespace amp
