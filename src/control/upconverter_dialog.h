// The block upconverter dialog (frmlcBucSetup): attenuation, set point,
// offset and mode of the IF side, the programmable-upconverter bit of the
// configuration word, and the live IF readings the dialog's own timer takes
// while it is open. The main poll is stopped the whole time, and the
// dialog's timer stops when it closes, so the two never share the line.
#pragma once

#include <vector>

#include "control/panel_context.h"
#include "display/frm_lcbuc_setup.h"
#include "platform/event_pump.h"

namespace amp {

class UpconverterDialog {
 public:
  explicit UpconverterDialog(PanelContext& ctx) : p_(ctx) {}
  ~UpconverterDialog();
  UpconverterDialog(const UpconverterDialog&) = delete;
  UpconverterDialog& operator=(const UpconverterDialog&) = delete;

  ui::FrmLcBucSetup frmlcBucSetup;

  void Wire();
  // The host timer the dialog's Timer1 runs on. Without one the timer only
  // records its state (tests tick it by hand).
  void AttachTimer(Timer& timer);

  // The value on the 0.5 dB grid: tenths rounded half to even, then cut
  // down to a multiple of five tenths (toward zero).
  static double AdjustResult(double value);

  // Opens the dialog with the poll stopped and a 2-second time-out, and
  // reads the upconverter again once it has closed.
  void mnulcBucSetup_Click();
  void frmlcBucSetup_Load();
  void Close();

  void txtlcBucA_KeyPress(int& KeyAscii);
  void txtlcBucS_KeyPress(int& KeyAscii);
  void txtlcBucO_KeyPress(int& KeyAscii);
  // Leaving a field sends it only when the operator typed in it since it
  // was last sent, so passing through a field never repeats a command.
  void txtlcBucA_LostFocus();
  void txtlcBucS_LostFocus();
  void txtlcBucO_LostFocus();
  void UpDown1_UpClick() { StepAtten(0.5); }
  void UpDown1_DownClick() { StepAtten(-0.5); }
  void btnadjAtn_Click();
  void optLcbFixed_Click();
  void optlcbVar_Click();
  void optlcbClosed_Click();
  void chklcBucEn_Click();
  void Timer1_Timer();

 private:
  // The key filter of the three value fields; true for Enter, which it drops.
  bool FilterKey(int& KeyAscii, bool& dirty);
  void SetAttenuation();
  void SetSetPoint();
  void SetOffset();
  void StepAtten(double step);
  void SetlcBucMode();
  void ShowMode(int16_t mode);
  void SetFrameToAtn();
  void SetFrameToSetPoint();
  bool MaySend();
  bool Send(const std::string& command);
  // While one of the dialog's exchanges waits for its reply the operator's
  // input still arrives; an action it starts then waits for the line to be
  // free, so two exchanges never share it. True when `action` was put off.
  bool Deferred(void (UpconverterDialog::*action)());
  void Release();

  PanelContext& p_;
  Timer* timer_ = nullptr;
  int busy_ = 0;  // an exchange of the dialog is on the stack
  std::vector<void (UpconverterDialog::*)()> pending_;
  bool dirtyA_ = false, dirtyS_ = false, dirtyO_ = false;
};

}  // namespace amp
