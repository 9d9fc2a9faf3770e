// Where data files live and the two file dialogs the calibration and
// configuration files share.
//
// The host gives two folders: the data directory (logs and downloads) and
// the calibration root with one sub-folder per unit. Both are made on first
// use; a folder that cannot be made is reported in a "File I/O Error" box
// with the host's reason, and the operation that needed it stops.
#pragma once

#include <string>

#include "platform/dialogs.h"

namespace amp {

// The choices every data-file dialog offers.
inline constexpr const char* kTextFileFilter = "Text Files (*.txt);;All Files (*)";

// Makes `dir` and its parents when missing. False, after the box, when it
// cannot be made.
bool EnsureFolder(const std::string& dir, Dialogs& dialogs);

// The folder `sub` under the calibration root (the root itself when `sub` is
// empty), made when missing. When it cannot be made, `lastDir` stands in if
// it is a folder; else the box and "".
std::string ResolveCalFolder(const std::string& calRoot, const std::string& sub,
                             const std::string& lastDir, Dialogs& dialogs);

// What the calibration file dialogs read and remember.
struct FileDialogPlace {
  Dialogs& dialogs;
  const std::string& calRoot;
  const std::string& txtPN;
  const std::string& txtSN;
  std::string& gLastDir;  // the folder of the last chosen file
};

// The open dialog in the unit's calibration folder; "" on cancel.
std::string GetFileNameToOpen(FileDialogPlace& place);
// The save dialog there, proposing txtSN + the kind's template (SaveNameKind)
// through UniqueTxtName; "" on cancel.
std::string GetSaveAsFileName(FileDialogPlace& place, int kind);

// The folder part of a chosen path ("" for a bare name).
std::string FolderOf(const std::string& path);

}  // namespace amp
