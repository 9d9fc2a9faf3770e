// Saving a unit's configuration as a file of commands, and replaying such a
// file into the connected unit.
//
// The replay is a plain script: every line that is neither empty nor starts
// with "#" goes to the unit exactly as it stands, 20 ms apart, replies
// ignored; then the panel reconnects, so it shows what the unit now holds.
// The whole file is read and checked before the first command goes out: a
// file that is not text (NUL or other control bytes, a line far longer than
// any command) or that cannot be read to its end sends nothing at all, so a
// unit on the air is never left half-configured by a broken file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "control/panel_context.h"
#include "datafiles/file_io.h"
#include "platform/shell.h"

namespace amp {

// Longer than any command the units take; a longer line is not one.
inline constexpr size_t kMaxCommandLine = 1024;

// Why `line` cannot go to a unit as a command, or "" when it can.
std::string CheckCommandLine(std::string_view line);

// The commands of an open configuration file, in order, or where and why
// reading stopped.
struct CmdScript {
  std::vector<std::string> commands;
  int errorLine = 0;  // 1-based; 0 when the whole file was read
  std::string error;
};
CmdScript ReadCmdScript(FileIO& file);

class ConfigFiles {
 public:
  // `lastDir` is the folder the file dialogs start in, kept across runs.
  ConfigFiles(PanelContext& p, std::string& lastDir) : p_(p), lastDir_(lastDir) {}

  // Where a saved file is shown to the operator; none: not shown.
  Shell* shell = nullptr;

  // Load Cfg File...: the open dialog, the replay and the reconnect.
  void mnuLoadFile_Click();
  // True when at least one command was sent.
  bool LoadCmdFile(const std::string& name);

  // Save Unit Cfg...: the save dialog, the file, then the file is opened.
  void mnuSaveAs_Click();
  // True when the file stands complete under `name`.
  bool SaveCmdFile(const std::string& name);
  // Commands the last LoadCmdFile sent.
  size_t LoadedCommands() const { return loaded_; }
  // The last file SaveCmdFile completed.
  const std::string& SavedFile() const { return saved_; }

 private:
  std::string DialogFolder();
  void Reconnect();

  PanelContext& p_;
  std::string& lastDir_;
  std::string saved_;
  size_t loaded_ = 0;
};

}  // namespace amp
