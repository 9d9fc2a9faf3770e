// Configuration file sections for the RF bands and sub-bands, temperature
// compensation, the waveguide switches, attenuation, gain and linearizer.
#include <array>

#include "basic/text.h"
#include "commands/identity_cmds.h"
#include "commands/rf_band_cmds.h"
#include "commands/rf_power_cmds.h"
#include "datafiles/config_writers.h"

namespace amp::cfg {

namespace {

std::string SelectedItem(const ui::ComboBox& box) {
  return box.ListIndex() >= 0 ? box.List(box.ListIndex()) : std::string();
}

std::string CoefficientUnit(const ConfigContext& c) {
  return c.values.gTempCoefAttnRatio ? " (Attn:Temp)" : " dB/Deg C";
}

}  // namespace

void SaveBandInfo(ConfigContext& c, FileIO& f) {
  // The table is read afresh: the panel keeps only the bands it offers.
  std::array<std::string, 5> names, freqs;
  const int last = CfgBit(c, 2) ? 4 : 1;
  for (int n = 1; n <= last; ++n) {
    names[n] = ReadBandInfo(c.comms, n);
    if (names[n] == kBandNotSupported) names[n].clear();
    freqs[n] = names[n].empty() ? "" : c.comms.gRespFields[0];
  }
  auto label = [&](int n) {
    std::string s = "#RF Band " + std::to_string(n) + ": " + names[n];
    if (!freqs[n].empty()) s += ", " + freqs[n] + " GHz";
    return s;
  };
  if (!names[1].empty()) {
    f.AddToFile(label(1));
    f.AddToFile(CmdBandInfo(1, names[1], freqs[1]));
  } else {
    f.AddToFile("#RF Band 1: Disabled");
    f.AddToFile("#RF Band 1: ");
  }
  if (last > 1) {
    f.AddToFile("### Multi-Band Configuration");
    ReadMaxAttenTable(c.comms);
    const auto maxAtten = c.comms.gRespFields;
    for (int n = 2; n <= 4; ++n) {
      if (names[n].empty()) {
        f.AddToFile("#RF Band " + std::to_string(n) + ": Disabled");
        f.AddToFile(CmdBandAbsent(n));
        continue;
      }
      f.AddToFile(label(n));
      if (!maxAtten[n - 1].empty()) {
        f.AddToFile("#Max RF Atten: " + maxAtten[n - 1] + " db");
        f.AddToFile(CmdBandMaxAtten(n, maxAtten[n - 1]));
      }
      f.AddToFile(CmdBandInfo(n, names[n], freqs[n]));
    }
  }
  if (!c.values.gHasCurrentSense) {
    const std::string band = SelectedItem(c.frm.cmbRfBand);
    f.AddToFile("#Current RF Band: " + band);
    f.AddToFile(CmdCurrentBand(band));
  }
}

void SaveSubBandInfo(ConfigContext& c, FileIO& f) {
  SessionValues& v = c.values;
  if (v.gSubBandCount == 0) {
    f.AddToFile("#No Sub-Bands");
    return;
  }
  f.AddToFile("#Sub-Band Configuration");
  f.AddToFile("#");
  const bool older = !c.unit.gFWFamilyA && !c.unit.gFWFamilyB;
  for (int i = 1; i <= v.gSubBandCount && i <= 8; ++i) {
    const std::string n = std::to_string(i);
    const std::string& freq = v.gSubBandFreqs[i];
    if (freq.empty()) {
      f.AddToFile("#  Sub-Band " + n + ": 0.00 GHz");
      f.AddToFile(CmdSubBandFrequency(i, kClearedSubBandFrequency));
      continue;
    }
    f.AddToFile(std::string("#  Sub-Band ").append(n).append(": ").append(freq).append(" GHz"));
    f.AddToFile(CmdSubBandFrequency(i, freq));
    const bool read = ReadSubBandLinearizer(c.comms, i);
    const auto r = c.comms.gRespFields;
    if (read && !r[0].empty()) {
      f.AddToFile("#  Linearizer Settings for Sub-Band " + n);
      f.AddToFile("#    Lin Amp: " + r[0]);
      f.AddToFile(CmdSubBandLinAmplitude(r[0], i));
      f.AddToFile("#    Lin Phase: " + r[1]);
      f.AddToFile(CmdSubBandLinPhase(r[1], i));
      if (v.gLinSlopeOption) {
        f.AddToFile("#    Lin Slope: " + r[2]);
        f.AddToFile(CmdSubBandSlope(r[2], i));
      }
      if (!r[5].empty() && Val(r[5]) != 0) {
        f.AddToFile("#    Lin Tilt: " + r[5]);
        f.AddToFile(CmdSubBandSupply(r[5], i));
      }
    }
    if (older) {
      f.AddToFile("#    Gain Balance value: " + r[4]);
      f.AddToFile(CmdSubBandGainBalance(Trim(r[4]), i));
      if (v.gBandTempCoef) {
        f.AddToFile("#    Temperature Coefficient: " + v.gSubBandTempCoefs[i] + CoefficientUnit(c));
        f.AddToFile(CmdSubBandTempCoefficient(v.gSubBandTempCoefs[i], i));
      }
    }
  }
  const std::string status = std::to_string(v.gGainBalanceState > 0 ? v.gGainBalanceState : 0);
  f.AddToFile("#Gain Balance Status: " + std::string(status == "0" ? "Disabled" : "Enabled"));
  f.AddToFile("PG" + status);
  f.AddToFile("#Current SubBand: " + std::to_string(v.gCurrentSubBand));
  f.AddToFile(CmdSelectSubBand(v.gCurrentSubBand));
}

void SaveTempCompParams(ConfigContext& c, FileIO& f) {
  const SessionValues& v = c.values;
  // The ambient reference and the tube's own coefficient have no reader:
  // their lines are left out, as for a unit that does not report them.
  const bool ownCoefficient =
      c.unit.gFWFamilyA || c.unit.gFWFamilyB || v.gSubBandCount == 0 || !v.gBandTempCoef;
  if (ownCoefficient && !v.gTempCoefficient.empty()) {
    f.AddToFile("#Temperature Coefficient: " + v.gTempCoefficient + CoefficientUnit(c));
    f.AddToFile(CmdTempCoefficient(v.gTempCoefficient));
  }
  // A coefficient of zero is how a unit without compensation reports it.
  const bool compensated = Val(v.gTempCoefficient) != 0;
  f.AddToFile("#Gain Temperature Compensation: " + Enabled(compensated));
  f.AddToFile(std::string(compensated ? kCmdGainTempCompOn : kCmdGainTempCompOff));
  if (!v.gHasAttenRange) return;
  if (!v.gMaxCalTemp.empty()) {
    f.AddToFile("#Max Cal Temperature: " + v.gMaxCalTemp + " C");
    f.AddToFile(".P332 " + v.gMaxCalTemp);
  }
  if (!v.gMinCalTemp.empty()) {
    f.AddToFile("#Min Cal Temperature: " + v.gMinCalTemp + " C");
    f.AddToFile(".P333 " + v.gMinCalTemp);
  }
  if (!P(c, {127, 126, 129, 135})) {
    f.AddToFile("#Attenuator Range: " + Format(v.gAttenRange, "#0.0") + " dB");
    f.AddToFile(CmdAttenRange(v.gAttenRange));
  }
}

void SaveWaveguideCfg(ConfigContext& c, FileIO& f) {
  const std::string item = SelectedItem(c.frm.cmbWgCfg);
  f.AddToFile("#Waveguide Configuration: " + Mid(item, 5));
  f.AddToFile(CmdWaveguideConfig(item));
}

void SaveRedundantModeCfg(ConfigContext& c, FileIO& f) {
  const bool automatic = c.frm.chkAutoMode.Value() == 1;
  f.AddToFile(std::string("#Waveguide Automatic mode: ") + (automatic ? "Enabled" : "Disabled"));
  f.AddToFile(std::string(automatic ? kCmdRedundancyAuto : kCmdRedundancyManual));
}

void SaveAttenuation(ConfigContext& c, FileIO& f) {
  // As shown: an empty field gives a bare "K".
  f.AddToFile("#Attenuation: " + c.frm.txtAtnDB.Text() + " dB");
  f.AddToFile(CmdAtndB(c.frm.txtAtnDB.Text()));
  if (TS(c)) return;
  f.AddToFile("#Max Attenuation: " + Format(c.values.gMaxAttendB, "#0.0") + " dB");
  f.AddToFile(CmdMaxAtten(c.values.gMaxAttendB));
}

void SaveGainBalance(ConfigContext& c, FileIO& f) {
  if (c.values.gSubBandCount == 0) {
    f.AddToFile("#Gain Balance Status: " + Enabled(c.values.gGainBalanceOn));
    f.AddToFile("#Gain Balance value: " + c.values.gGainBalance);
  }
  if (ReadIFGainBalance(c.comms))
    f.AddToFile("#IF Gain Balance value: " + c.comms.gRespFields[0] + " dB");
}

void SaveUnitGain(ConfigContext& c, FileIO& f) {
  const SessionValues& v = c.values;
  f.AddToFile("#Unit Gain Mode: " + Enabled(v.gUnitGainOn));
  f.AddToFile("#" + CmdUnitGain(v.gUnitGainOn ? "1" : "0"));
  f.AddToFile("#Unit Gain: " + v.gUnitGain + " dB");
  f.AddToFile("#" + CmdUnitGain(v.gUnitGain));
}

void SaveLinearizerParams(ConfigContext& c, FileIO& f) {
  const bool slope = c.values.gLinSlopeOption;
  if (!ReadLinearizer(c.comms, slope)) return;
  const auto r = c.comms.gRespFields;
  f.AddToFile("#Linearizer Amp: " + r[0]);
  f.AddToFile(CmdLinAmplitude(r[0]));
  f.AddToFile("#Linearizer Phase: " + r[1]);
  f.AddToFile(CmdLinPhase(r[1]));
  if (!slope) return;
  f.AddToFile("#Linearizer Slope: " + r[2]);
  f.AddToFile(CmdAtnSlopeText(r[2]));
}

}  // namespace amp::cfg
