#include "qt/forms.h"

#include <QWidget>

#include "ui_frm_about.h"
#include "ui_frm_amp_com.h"
#include "ui_frm_com.h"
#include "ui_frm_enet_cfg.h"
#include "ui_frm_lldp_config.h"
#include "ui_frm_locate_ip.h"
#include "ui_frm_set_sub_band.h"

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
}

}  // namespace amp
