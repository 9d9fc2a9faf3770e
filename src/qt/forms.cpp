#include "qt/forms.h"

#include <QWidget>

#include "ui_frm_about.h"
#include "ui_frm_amp_com.h"
#include "ui_frm_cmd_line.h"
#include "ui_frm_com.h"
#include "ui_frm_enet_cfg.h"
#include "ui_frm_gain_bal.h"
#include "ui_frm_lcbuc_setup.h"
#include "ui_frm_lldp_config.h"
#include "ui_frm_locate_ip.h"
#include "ui_frm_power_save.h"
#include "ui_frm_pwr_limit.h"
#include "ui_frm_set_sub_band.h"
#include "ui_frm_startup.h"
#include "ui_frm_temp_limits.h"

namespace amp {
namespace {

// A widget tree of one .ui class. The Ui object only holds pointers into
// the tree and can go once setupUi has built it.
template <typename UiClass>
QtDialogs::FormFactory WindowOf() {
  return [](QWidget* parent) {
    auto w = std::make_unique<QWidget>(parent);
    UiClass ui;
    ui.setupUi(w.get());
    return w;
  };
}

}  // namespace

void RegisterDialogWindows(QtDialogs& dialogs) {
  dialogs.RegisterForm("frmAbout", WindowOf<Ui::frmAbout>());
  dialogs.RegisterForm("frmCom", WindowOf<Ui::frmCom>());
  dialogs.RegisterForm("frmSetSubBand", WindowOf<Ui::frmSetSubBand>());
  dialogs.RegisterForm("frmEnetCfg", WindowOf<Ui::frmEnetCfg>());
  dialogs.RegisterForm("frmLocateIP", WindowOf<Ui::frmLocateIP>());
  dialogs.RegisterForm("frmLLDPConfig", WindowOf<Ui::frmLLDPConfig>());
  dialogs.RegisterForm("frmAmpCom", WindowOf<Ui::frmAmpCom>());
  dialogs.RegisterForm("frmlcBucSetup", WindowOf<Ui::frmlcBucSetup>());
  dialogs.RegisterForm("frmPwrLimit", WindowOf<Ui::frmPwrLimit>());
  dialogs.RegisterForm("frmTempLimits", WindowOf<Ui::frmTempLimits>());
  dialogs.RegisterForm("FrmPowerSave", WindowOf<Ui::FrmPowerSave>());
  dialogs.RegisterForm("frmGainBal", WindowOf<Ui::frmGainBal>());
  dialogs.RegisterForm("frmStartup", WindowOf<Ui::frmStartup>());
  dialogs.RegisterForm("frmCmdLine", WindowOf<Ui::frmCmdLine>());
}

}  // namespace amp
