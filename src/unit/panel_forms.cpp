// The panel with no unit (ClearForm, DisableForm) and with one (EnableForm).
// The lists are deliberately not symmetric: entries that EnableForm leaves
// out have owners of their own that enable them when the unit has the
// feature (cmbRfBand, mnuPsVset, mnuAtnCal, mnuMaxPwrLvl, mnuGainBal), and
// mnuFltAlm, once disabled, stays so.
#include <vector>

#include "unit/first_read.h"

namespace amp {

using ui::Control;

namespace {

template <class... T>
std::vector<Control*> Controls(T&... controls) {
  return {static_cast<Control*>(&controls)...};
}

void Append(std::vector<Control*>& to, const std::vector<Control*>& more) {
  to.insert(to.end(), more.begin(), more.end());
}

}  // namespace

void FirstRead::ClearForm() {
  f_.SetCaption(ui::FrmMain::kTitle);
  c_.gFirstReadDone = false;
  // Stays set: with no unit the handlers must stay silent until the end of
  // the next first read.
  s_.gInPanelUpdate = true;
  setup_.ClearSubBands();

  for (ui::TextBox* t :
       {&f_.txtFrmRev,   &f_.txtCplDate,  &f_.txtPN,      &f_.txtSN,     &f_.txtAdr,
        &f_.txtDateTime, &f_.txtAtnDB,    &f_.txtAtnCnt,  &f_.txtLinAmp, &f_.txtLinPhase,
        &f_.txtPSHours,  &f_.txtXmtHours, &f_.txtFdBm,    &f_.txtFCnt,   &f_.txtRdBm,
        &f_.txtRCnt,     &f_.txtFhiLvl,   &f_.txtFloLvl,  &f_.txtRhiLvl, &f_.txtHelixV,
        &f_.txtHelixI,   &f_.txtHeaterV,  &f_.txtHelix2I, &f_.txtCS1,    &f_.txtCS2,
        &f_.txtCS3,      &f_.txtCS4,      &f_.txtTemp,    &f_.txtTemp2,  &f_.txtConstLvl})
    t->SetText("");
  for (ui::Label* l : {&f_.lblSBandFrq, &f_.lblRFFrqVal, &f_.lblTWTLife}) l->SetCaption("");

  for (ui::ComboBox* cmb : {&f_.cmbFhiTripType, &f_.cmbFloTripType, &f_.cmbRhiTripType,
                            &f_.cmbWgCfg, &f_.cmbWgSw1, &f_.cmbWgSw2, &f_.cmbRfBand})
    cmb->SetListIndex(-1);
  for (ui::CheckBox* chk : {&f_.chkPS, &f_.chkRFI, &f_.chkAutoMode, &f_.chkConstPwr})
    chk->SetValue(0);

  f_.mnuLEDMode.SetChecked(false);
  for (Control* hidden : Controls(f_.mnuPLog, f_.mnuCalFactor, f_.mnuLEDMode, f_.lblRFFrqVal,
                                  f_.lblRFFrq, f_.lblTWTSrvc, f_.lblTWTLife, f_.Label12,
                                  f_.txtTemp2, f_.Label14, f_.mnuLLDPCfg, f_.Label2, f_.txtAtnCnt))
    hidden->SetVisible(false);
  f_.UpDown2.SetVisible(false);  // the count field's arrows go with the field
  // The inlet temperature lives in the fields just hidden.
  s_.gInletTemp = false;
  f_.mnuTempTripLevels.SetEnabled(false);
  f_.btnGoToPwr.SetEnabled(false);
  f_.mnuAutoHVDisable.SetChecked(false);
  for (ui::MenuItem* m : {&f_.mnuUseEnet, &f_.mnuEnterIP, &f_.mnuEthPort, &f_.mnuOpenWebpage})
    m->SetVisible(true);
  f_.Label2.SetCaption("DAC");

  // What identified the last unit goes with it.
  u_.gUnitSerialNumber.clear();
  u_.gFWPartNumber.clear();
  u_.gFWPartNumberReported.clear();
  u_.gIsProject127 = false;
  u_.gFWFamilyD = false;
  u_.gHasCathodeScalar = false;
  u_.txtFrmRev.clear();
  u_.txtCplDate.clear();
  u_.txtPN.clear();
  u_.txtSN.clear();
  for (auto& name : v_.gBandNames) name.clear();
  for (auto& frequency : v_.gBandFrequencies) frequency.clear();
  v_.gCurrentRFBand.clear();
  for (auto& frequency : v_.gSubBandFreqs) frequency.clear();
  v_.gSubBandCount = 0;
  v_.gCurrentSubBand = 0;
  v_.gMaxPowerLevel = "-1";
  v_.gMaxPowerLevel2.clear();
  v_.gMaxPowerFault = "-1";

  d_.ClearSummaryStatus();
  d_.ClearFaultStatus();
  setup_.SetupHelixHeaterForNewDualTWT(0);
}

void FirstRead::DisableForm() {
  std::vector<Control*> off = Controls(f_.txtPN, f_.txtSN, f_.txtAdr, f_.txtDateTime, f_.txtAtnDB,
                                       f_.txtAtnCnt, f_.UpDown1, f_.UpDown2, f_.UpDown3, f_.UpDown4,
                                       f_.txtLinAmp, f_.txtLinPhase, f_.cmbWgCfg, f_.cmbRfBand);
  for (int i = 0; i < 8; ++i) off.push_back(&f_.mnuCalTables[i]);
  Append(off, Controls(f_.txtPSHours, f_.txtXmtHours, f_.txtConstLvl, f_.cmbWgSw1, f_.cmbWgSw2,
                       f_.chkAutoMode, f_.chkPS, f_.chkRFI, f_.chkConstPwr, f_.txtFhiLvl,
                       f_.txtFloLvl, f_.txtRhiLvl, f_.mnuPsVset, f_.cmbFhiTripType,
                       f_.cmbFloTripType, f_.cmbRhiTripType, f_.mnuAtnCal, f_.mnuLoadFile,
                       f_.mnuSaveAs, f_.mnuMfgInfo, f_.mnuISense, f_.mnuDnldFltLog));
  if (f_.mnuFaultLog.Visible()) off.push_back(&f_.mnuFaultLog);
  Append(off,
         Controls(f_.mnuRRfOffset, f_.mnuFltAlm, f_.Command7, f_.mnu2ndUmbilical, f_.mnuEnetCfg,
                  f_.mnuMaxPwrLvl, f_.mnuAmpCom, f_.mnuRfBandCfg, f_.mnuStartupCfg, f_.mnuClrHrs,
                  f_.mnuWatts, f_.btnFaultReset, f_.mnuHtrStby, f_.mnuSumFltTest, f_.mnuAutoClrBUC,
                  f_.mnuGainBal, f_.mnuModelCfgPN, f_.mnuTempTripLevels));

  for (Control* c : off) {
    c->SetEnabled(false);
    if (c == &f_.mnuAutoClrBUC) f_.mnuAutoClrBUC.SetChecked(false);
  }
  f_.mnuUseEnet.SetEnabled(true);
  for (Control* c : Controls(f_.mnuHtrStby, f_.mnuWgArcTest, f_.mnuRfiInvert, f_.mnulcBucSetup,
                             f_.mnuReturnLoss, f_.mnuAutoHVDisable, f_.mnuTrendLogs))
    c->SetVisible(false);
  // One Enter switches off resending on leaving a field, until here.
  v_.mEnterHandled = false;
}

void FirstRead::EnableForm() {
  std::vector<Control*> on =
      Controls(f_.txtPN, f_.txtSN, f_.txtAdr, f_.txtDateTime, f_.txtAtnDB, f_.txtAtnCnt, f_.UpDown1,
               f_.UpDown2, f_.UpDown3, f_.UpDown4, f_.txtLinAmp, f_.txtLinPhase, f_.cmbWgCfg,
               f_.cmbWgSw1, f_.cmbWgSw2, f_.txtPSHours, f_.txtXmtHours, f_.txtConstLvl,
               f_.chkAutoMode, f_.chkPS, f_.chkRFI, f_.chkConstPwr, f_.txtFhiLvl, f_.txtFloLvl,
               f_.txtRhiLvl, f_.cmbFhiTripType, f_.cmbFloTripType, f_.cmbRhiTripType, f_.mnuSaveAs,
               f_.mnuLoadFile, f_.mnuMfgInfo, f_.mnuISense, f_.mnuDnldFltLog);
  if (f_.mnuFaultLog.Visible()) on.push_back(&f_.mnuFaultLog);
  Append(on, Controls(f_.mnuRRfOffset, f_.mnuSumFltTest, f_.Command7, f_.mnu2ndUmbilical));
  if (f_.mnuUseEnet.Enabled() && f_.mnuUseEnet.Visible()) on.push_back(&f_.mnuEnetCfg);
  Append(on, Controls(f_.mnuRfBandCfg, f_.mnuAmpCom, f_.mnuStartupCfg, f_.mnuClrHrs, f_.mnuWatts,
                      f_.mnuAutoClrBUC, f_.mnuModelCfgPN, f_.mnuTempTripLevels));
  // Only the forward and attenuator tables: the reverse and drive tables
  // stay off.
  for (int i : {0, 1, 4, 5}) on.push_back(&f_.mnuCalTables[i]);
  on.push_back(&f_.btnFaultReset);

  for (Control* c : on) c->SetEnabled(true);
  if (v_.gHasTrendLog) f_.mnuTrendLogs.SetVisible(true);
}

}  // namespace amp
