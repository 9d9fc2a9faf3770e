#include "datafiles/config_files.h"

#include <filesystem>

#include "control/panel_rules.h"
#include "datafiles/config_sections.h"
#include "datafiles/folders.h"
#include "link/waits.h"

namespace amp {

std::string CheckCommandLine(std::string_view line) {
  if (line.size() > kMaxCommandLine)
    return "a line of " + std::to_string(line.size()) + " characters is not a command";
  for (unsigned char ch : line) {
    // Control bytes would break the frame around the command (STX, ETX, CR)
    // and never stand in a command the units take: the file is not text.
    if (ch < 0x20 && ch != '\t') return "control character " + std::to_string(ch) + ": not text";
    if (ch == 0x7F) return "control character 127: not text";
  }
  return "";
}

CmdScript ReadCmdScript(FileIO& file) {
  CmdScript script;
  int number = 0;
  while (!file.AtEndOfFile()) {
    const std::string line = file.ReadNextLine();
    ++number;
    if (!file.LastError().empty()) break;
    if (line.empty() || line[0] == '#') continue;
    if (std::string why = CheckCommandLine(line); !why.empty()) {
      script.errorLine = number;
      script.error = why;
      script.commands.clear();
      return script;
    }
    script.commands.push_back(line);
  }
  if (!file.LastError().empty()) {
    script.errorLine = number;
    script.error = file.LastError();
    script.commands.clear();
  }
  return script;
}

bool ConfigFiles::LoadCmdFile(const std::string& name) {
  loaded_ = 0;
  if (!p_.panel.gRemoteMode) {
    ShowNotInRemoteMode(p_);
    return false;
  }
  FileIO file;
  if (!file.OpenCmdFile(name, true)) return false;
  const CmdScript script = ReadCmdScript(file);
  file.CloseFile();
  if (!script.error.empty()) {
    p_.dialogs.MsgBox(BaseFileName(name) + ", line " + std::to_string(script.errorLine) + ": " +
                          script.error + "\r\nNothing was sent to the unit.",
                      MsgButtons::OK, MsgIcon::Exclamation, "Load Cfg File");
    return false;
  }
  // The poll keeps running; it can only tick in the pause, between two
  // exchanges, never inside one.
  for (const std::string& command : script.commands) {
    p_.comms.ExchangeCommand(command, false);
    PauseMs(p_.comms.host().pump, 1);
    ++loaded_;
  }
  return !script.commands.empty();
}

std::string ConfigFiles::DialogFolder() {
  return lastDir_.empty() ? p_.values.gDataDirectory : lastDir_;
}

void ConfigFiles::mnuLoadFile_Click() {
  const auto chosen = p_.dialogs.ShowOpen("", kTextFileFilter, DialogFolder());
  if (!chosen || chosen->empty()) return;
  lastDir_ = FolderOf(*chosen);
  if (LoadCmdFile(*chosen)) Reconnect();
}

void ConfigFiles::Reconnect() {
  Comms& c = p_.comms;
  if (c.session.phase != SessionPhase::Idle) {
    // The session is ended by hand, not through Disconnect: the socket stays
    // as it is and the button's connect makes a fresh one.
    LinkPanel& panel = c.panel();
    panel.ClearForm();
    panel.DisableForm();
    p_.frm.Timer1.SetTimerEnabled(false);
    c.session.phase = SessionPhase::Idle;
    c.gFirstReadPending = false;
    c.gFirstReadDone = false;
    panel.SetConnectCaption("Connect");
    p_.frm.mnuConnect.SetEnabled(true);
    if (!c.gUseEnet) p_.frm.mnuAdvSrch.SetEnabled(true);
  }
  p_.frm.btnConnect.RaiseClick();
}

void ConfigFiles::mnuSaveAs_Click() {
  const std::string dir = DialogFolder();
  if (!dir.empty() && !EnsureFolder(dir, p_.dialogs)) return;
  const std::string stem = (std::filesystem::path(dir) / (p_.frm.txtSN.Text() + "Cfg")).string();
  const auto chosen = p_.dialogs.ShowSave(BaseFileName(UniqueTxtName(stem)), kTextFileFilter, dir);
  if (!chosen || chosen->empty()) return;
  lastDir_ = FolderOf(*chosen);
  if (SaveCmdFile(*chosen) && shell) shell->OpenDocument(*chosen);
}

bool ConfigFiles::SaveCmdFile(const std::string& name) {
  if (name.empty()) return false;
  const std::string dir = FolderOf(name);
  if (!dir.empty() && !EnsureFolder(dir, p_.dialogs)) return false;
  FileIO file;
  file.ProjectID = static_cast<int16_t>(p_.unit.gProjectID);
  file.TWTAUnit = p_.unit.gIsTWTA;
  file.FWPartNumber = p_.unit.gFWPartNumber;
  file.UnitSerialNumber = p_.unit.gUnitSerialNumber;
  file.ModelCfgPartNumber = p_.values.gModelCfgPN;
  file.UseParamLog = p_.values.gParamLogCfg;
  file.CurrentRFBand = p_.values.gCurrentRFBand;
  bool ok = file.OpenCmdFile(name, false);
  if (ok) {
    ConfigContext c{p_.comms, p_.unit, p_.frm, p_.values, p_.panel};
    WriteConfigSections(c, file);
    file.CloseFile();
    ok = file.LastError().empty();
  }
  if (!ok) {
    // A failed save leaves no file under the chosen name (and an older one
    // as it was): say so rather than let the operator trust it.
    p_.dialogs.MsgBox(name + ": " + file.LastError(), MsgButtons::OK, MsgIcon::Critical,
                      "File I/O Error");
    return false;
  }
  saved_ = name;
  return true;
}

}  // namespace amp
