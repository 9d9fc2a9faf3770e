// The unit's own Ethernet settings: the "Ethernet Configuration" dialog
// (frmEnetCfg) and its menu entry. The octet fields keep what was typed in
// the octet arrays as soon as the focus leaves them; OK sends what changed,
// in the unit's order, and has the unit store it.
#pragma once

#include <array>
#include <string>

#include "control/panel_context.h"
#include "display/frm_enet_cfg.h"

namespace amp {

class EnetCfgControls {
 public:
  explicit EnetCfgControls(PanelContext& p);
  EnetCfgControls(const EnetCfgControls&) = delete;
  EnetCfgControls& operator=(const EnetCfgControls&) = delete;

  ui::FrmEnetCfg frmEnetCfg;

  // Set by SendData when anything was touched: the settings are read again.
  bool gEnetChanged = false;
  // A value went to the unit in this or an earlier use of the dialog; from
  // then on every OK has the unit store its settings again.
  bool gEnetSent = false;
  // Nothing fills or sends these; the dialog's two fields go nowhere.
  std::string gEnetHostName;
  std::string gEnetDomainName;

  void Wire();
  void mnuEnetCfg_Click();
  void frmEnetCfg_Load();
  void cmdOK_Click();
  void SendData();
  // Looks only at the address's second octet, whatever the field: a value
  // over 255 there keeps the focus in any octet field being left.
  bool IsRangeError(double value);

 private:
  // The fields with a changed flag and the text saved at the first key.
  enum FieldId { kOctets = 12, kPort = 12, kHost, kDomain, kFields };
  ui::TextBox& Field(int id);
  void Field_Change(int id);
  void Octet_KeyPress(int id, int& key);
  void Octet_LostFocus(int id);
  void Port_KeyPress(int& key);
  void Name_KeyPress(int id, int& key);
  void Mode_Click();
  // Esc: the text of the first key back, the field untouched.
  void Restore(int id);
  void NoteFirstKey(int id);
  bool AnyChanged(int first, int count) const;

  PanelContext& p_;
  std::array<bool, kFields> changed_{};
  std::array<std::string, kFields> mSavedValues;
  bool modeChanged_ = false;
  bool mEditing = false;
};

}  // namespace amp
