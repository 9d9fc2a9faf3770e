// The attenuation group (txtAtnDB with UpDown1, the count field txtAtnCnt
// with UpDown2, shown as "FBDC" on the block downconverter) and the
// linearizer group (txtLinAmp with UpDown3, txtLinPhase with UpDown4): what
// each key, Enter, leaving a field and each arrow sends.
#pragma once

#include <cstdint>

#include "control/constant_power_controls.h"
#include "control/panel_context.h"

namespace amp {

class AttenuationControls {
 public:
  // UpDown1 steps the constant power level while chkConstPwr is checked; it
  // does so through a ConstantPowerControls of its own over the same panel
  // (that class keeps no state beyond the context).
  explicit AttenuationControls(PanelContext& p) : p_(p), constPwr_(p) {}

  // Installs the handlers on the four fields and the four up-downs.
  void Wire();

  // Sends "K" + txtAtnDB exactly as typed; a negative value (only reachable
  // by pasting) puts the unit's attenuation back in the field instead.
  void SetAtndB();
  // Sets the attenuator count in txtAtnCnt when it lies between gMinAtnCount
  // and 4095; otherwise, or when the unit refuses, the field snaps back to
  // the unit's count. True when the count was set.
  bool SetAtnCount();
  // "C" + count on units that take the short form, else gAtnCountCommand +
  // the count with its sign position (".D9 1024"). True when acknowledged.
  bool SetAttenCount(int16_t count);

  void txtAtnDB_KeyPress(int& KeyAscii);
  void txtAtnDB_LostFocus();
  void UpDown1_UpClick();
  void UpDown1_DownClick();

  void txtAtnCnt_KeyPress(int& KeyAscii);
  void txtAtnCnt_LostFocus();
  void UpDown2_UpClick();
  void UpDown2_DownClick();

  void txtLinAmp_KeyPress(int& KeyAscii);
  void txtLinAmp_LostFocus();
  void txtLinPhase_KeyPress(int& KeyAscii);
  void txtLinPhase_LostFocus();
  void UpDown3_UpClick();
  void UpDown3_DownClick();
  void UpDown4_UpClick();
  void UpDown4_DownClick();

 private:
  void StepAtten(float step);
  void StepCount(float step);
  enum class Lin { Amplitude, Phase };
  void LinKeyPress(Lin which, int& KeyAscii);
  void LinLostFocus(Lin which);
  void StepLin(Lin which, int step);
  bool SendLin(Lin which, bool showRangeBox);

  PanelContext& p_;
  ConstantPowerControls constPwr_;
};

}  // namespace amp
