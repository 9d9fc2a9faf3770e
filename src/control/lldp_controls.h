// LLDP of a block downconverter: the "Link Layer Discovery Protocol" dialog
// (frmLLDPConfig) and its menu entry. OK checks both groups before anything
// is sent; a refused field turns red and the dialog stays open.
#pragma once

#include "control/panel_context.h"
#include "display/frm_lldp_config.h"

namespace amp {

class LldpControls {
 public:
  explicit LldpControls(PanelContext& p);
  LldpControls(const LldpControls&) = delete;
  LldpControls& operator=(const LldpControls&) = delete;

  ui::FrmLLDPConfig frmLLDPConfig;

  // What "Set Defaults" writes into the host name field.
  static constexpr const char* kDefaultHostname = "AmpDesk-FBDC";
  static constexpr ui::Color kRefused = 0xFF0000;
  static constexpr ui::Color kWindow = 0xFFFFFF;

  void Wire();
  void mnuLLDPCfg_Click();
  void frmLLDPConfig_Load();
  void LoadUserParams();
  void LoadFactoryParams();
  void SetUserDefaults();
  void SetFactoryDefaults();
  // Each marks every field it refuses red and puts the window colour back on
  // the good ones.
  bool ValidUserParams();
  bool ValidFactoryParams();
  bool UserParamsChanged();
  bool FactoryParmsChanged();
  void SetUserParams();
  void SetFactoryParams();
  void btnOK_Click();

 private:
  PanelContext& p_;
};

}  // namespace amp
