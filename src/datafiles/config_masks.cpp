// Configuration file sections for the unit configuration word, the
// programmable upconverter and the fault and alarm enable masks.
#include "commands/fault_config_cmds.h"
#include "commands/identity_cmds.h"
#include "commands/reader_support.h"
#include "commands/upconverter_cmds.h"
#include "datafiles/config_writers.h"

namespace amp::cfg {

namespace {

struct UnitCfgLabel {
  int bit;
  const char* label;
  const char* set;
  const char* clear;
};
struct BitLabel {
  int bit;
  const char* label;
};

#include "datafiles/config_labels.inc"

// The label of `bit` in `table`, the `alt`-th when several share it.
const char* Label(const BitLabel* begin, const BitLabel* end, int bit, int alt = 0) {
  for (const BitLabel* l = begin; l != end; ++l)
    if (l->bit == bit && alt-- == 0) return l->label;
  return nullptr;
}
template <size_t N>
const char* Label(const BitLabel (&table)[N], int bit, int alt = 0) {
  return Label(table, table + N, bit, alt);
}

// Writes one line per labelled bit of `mask`, bits 0 to `last`; `label`
// gives the bit's label under the unit's options, or null for none.
template <class F>
void WriteMap(FileIO& f, int64_t mask, int first, int last, F label) {
  for (int bit = first; bit <= last; ++bit)
    if (const char* l = label(bit))
      f.AddToFile(std::string(l) + ((mask >> (bit - first) & 1) ? "Enabled" : "Disabled"));
}

// First alternative of `bit` whose option holds.
const char* Choose(int bit, std::initializer_list<bool> options) {
  int alt = 0;
  for (bool on : options) {
    if (on) return Label(kTwtaFaultLabels, bit, alt);
    ++alt;
  }
  return nullptr;
}

const char* TwtaFaultLabel(const ConfigContext& c, int bit) {
  const UnitDescriptor& u = c.unit;
  const bool dual = u.gIsDualTWT;
  switch (bit) {
    case 21:
      return Choose(bit, {u.gHeaterFault, dual});
    case 22:
      return Choose(bit, {u.g3PhaseFault, dual});
    case 23:
      return Choose(bit, {u.g3PhaseFault2, dual, u.gExtRefPresetFault, u.gWGPressureFault});
    case 24:
      return Choose(bit, {dual, u.gWGArc1Fault, u.gExtRefLockFault});
    case 25:
      return Choose(bit, {dual, u.gWGArc2Fault, u.g24VPresentFault});
    case 26:
    case 27:
      return dual ? Label(kTwtaFaultLabels, bit) : nullptr;
    default:
      return Label(kTwtaFaultLabels, bit);
  }
}

// Bits 0 to 7 are shared by the solid-state and high-power upconverter maps.
const char* SspaLowLabel(const ConfigContext& c, int bit) {
  const bool p129 = P(c, {129});
  if (p129 && (bit == 0 || bit == 3 || bit == 4)) return nullptr;
  if (bit == 2 && (p129 || CfgBit(c, 0))) return nullptr;
  return bit <= 6 ? Label(kTwtaFaultLabels, bit) : Label(kSspaFaultLabels, 7);
}

void WriteFaultMap(ConfigContext& c, FileIO& f) {
  const SessionValues& v = c.values;
  const UnitDescriptor& u = c.unit;
  f.AddToFile("#");
  f.AddToFile("# Fault Bit-Map");
  if (TWTA(c)) {
    WriteMap(f, v.gFaultMask, 0, 28, [&](int bit) { return TwtaFaultLabel(c, bit); });
  } else if (u.gPICProcessor) {
    WriteMap(f, v.gFaultMask, 0, 17, [&](int bit) -> const char* {
      if (bit <= 7) return SspaLowLabel(c, bit);
      if (bit == 15 && !u.gLinearizerFault) return nullptr;
      if (bit == 16 && !u.gExtRefFault) return nullptr;
      if (bit == 17 && !u.gExtRefLockFault) return nullptr;
      return Label(kHpBucFaultLabels, bit);
    });
  } else {
    const bool p129 = P(c, {129});
    WriteMap(f, v.gFaultMask, 0, 15, [&](int bit) -> const char* {
      if (bit <= 7) return SspaLowLabel(c, bit);
      if (bit == 8 && (!CfgBit(c, 1) || p129)) return nullptr;
      if (bit == 15 && p129) return nullptr;
      return Label(kSspaFaultLabels, bit);
    });
    if (v.gExtendedFaults)
      WriteMap(f, v.gFaultMaskHigh, 32, 35, [](int bit) { return Label(kSspaFaultLabels, bit); });
  }
}

}  // namespace

void SaveUnitCfg(ConfigContext& c, FileIO& f) {
  f.AddToFile("#");
  f.AddToFile("# Unit Config");
  f.AddToFile("#");
  if (c.unit.gIsProject127) {
    // These units hold a fixed word: outdoor, upconverter faults cleared.
    f.AddToFile(std::string(kUnitCfgLabels[0].label) + kUnitCfgLabels[0].clear);
    f.AddToFile("# 9  Auto Clear BUC Fault:  Yes");
    f.AddToFile(CmdUnitCfgWord(513));
    f.AddToFile("#");
    return;
  }
  const bool twta = TWTA(c), outdoor = P(c, {129, 126});
  for (const UnitCfgLabel& l : kUnitCfgLabels) {
    const std::string_view label = l.label;
    bool write = !outdoor;
    switch (l.bit) {
      case 0:
      case 9:
      case 12:
        write = true;
        break;
      case 1:
        write = !outdoor && twta == (label.find("TWTA") != label.npos);
        break;
      case 4:
        write = label.find("ILOK") != label.npos ? twta
                                                 : !twta && !outdoor && c.values.gRevPwrTempOption;
        break;
      case 5:
        write = label.find("Focus") != label.npos ? twta : !twta && c.values.gDCVMonitorOption;
        break;
    }
    if (!write) continue;
    const bool set = CfgBit(c, l.bit) && !(l.bit == 0 && outdoor);
    f.AddToFile(std::string(label) + (set ? l.set : l.clear));
  }
  f.AddToFile(CmdUnitCfgWord(c.unit.gUnitCfgFlags));
  f.AddToFile("#");
}

void SaveLowCostBucCfg(ConfigContext& c, FileIO& f) {
  const SessionValues& v = c.values;
  f.AddToFile("#BUC Installed");
  const char* mode = v.gBucMode == 2   ? "Optimized"
                     : v.gBucMode == 1 ? "Variable Atten."
                                       : "Fixed Atten.";
  f.AddToFile(std::string("#  BUC Mode: ") + mode);
  f.AddToFile(CmdBucMode(v.gBucMode));
  f.AddToFile("#  BUC Setpoint: " + Format(v.gBucSetPoint, "#0.0") + " dBm");
  f.AddToFile(CmdBucSetPoint(v.gBucSetPoint));
  f.AddToFile("#  BUC Offset: " + Format(v.gBucOffset, "#0.0") + " dBm");
  f.AddToFile(CmdBucOffset(v.gBucOffset));
  f.AddToFile("#  BUC Atten: " + Format(v.gBucAttenuation, "#0.0") + " dB");
  f.AddToFile(CmdBucAtten(v.gBucAttenuation));
  f.AddToFile("#  BUC Max Atten: " + Format(v.gBucMaxAtten, "#0.0") + " dB");
  f.AddToFile(CmdBucMaxAtten(v.gBucMaxAtten));
}

void SaveFaultEnableCfg(ConfigContext& c, FileIO& f) {
  // Read afresh, and left out when the unit does not answer: a mask of 0
  // from a failed read would disable every fault on replay.
  SessionValues& v = c.values;
  bool read = false;
  Guarded([&] { read = ReadFaultEnable(c.comms, v.gFaultMask, v.gFaultMaskHigh); });
  if (!read) return;
  f.AddToFile("#");
  f.AddToFile("#Fault Enable Status");
  WriteFaultMap(c, f);
  f.AddToFile(v.gExtendedFaults ? CmdFaultEnable(v.gFaultMask, v.gFaultMaskHigh)
                                : CmdFaultEnable(v.gFaultMask));
}

void SaveAlarmEnableCfg(ConfigContext& c, FileIO& f) {
  bool read = false;
  Guarded([&] { read = ReadAlarmEnable(c.comms, c.values.gAlarmMask); });
  if (!read) return;
  f.AddToFile("#");
  f.AddToFile("#Alarm Enable Status");
  f.AddToFile("#");
  f.AddToFile("# Alarm Bit-Map");
  const bool twta = TWTA(c);
  WriteMap(f, c.values.gAlarmMask, 0, twta ? 12 : 11, [&](int bit) {
    if (bit <= 10) return Label(kAlarmLabels, bit);
    return twta ? Label(kTwtaAlarmLabels, bit) : Label(kSspaAlarmLabels, bit);
  });
  f.AddToFile(CmdAlarmEnable(c.values.gAlarmMask));
}

}  // namespace amp::cfg
