#include "datafiles/folders.h"

#include <filesystem>
#include <system_error>

#include "datafiles/file_io.h"

namespace amp {

namespace fs = std::filesystem;

bool EnsureFolder(const std::string& dir, Dialogs& dialogs) {
  std::error_code ec;
  if (fs::is_directory(dir, ec)) return true;
  fs::create_directories(dir, ec);
  if (!ec && fs::is_directory(dir, ec)) return true;
  if (!ec) ec = std::make_error_code(std::errc::not_a_directory);
  dialogs.MsgBox(dir + ": " + ec.message(), MsgButtons::OK, MsgIcon::Critical, "File I/O Error");
  return false;
}

std::string ResolveCalFolder(const std::string& calRoot, const std::string& sub,
                             const std::string& lastDir, Dialogs& dialogs) {
  const std::string candidate = sub.empty() ? calRoot : (fs::path(calRoot) / sub).string();
  std::error_code ec;
  if (fs::is_directory(candidate, ec)) return candidate;
  fs::create_directories(candidate, ec);
  if (!ec) return candidate;
  if (!lastDir.empty() && fs::is_directory(lastDir, ec)) return lastDir;
  return EnsureFolder(candidate, dialogs) ? candidate : "";
}

std::string FolderOf(const std::string& path) { return fs::path(path).parent_path().string(); }

namespace {

std::string Remember(FileDialogPlace& place, const std::optional<std::string>& chosen) {
  if (!chosen || chosen->empty()) return "";
  place.gLastDir = FolderOf(*chosen);
  return *chosen;
}

std::string UnitCalFolder(FileDialogPlace& place) {
  return ResolveCalFolder(place.calRoot, UnitFolderName(place.txtPN, place.txtSN), place.gLastDir,
                          place.dialogs);
}

}  // namespace

std::string GetFileNameToOpen(FileDialogPlace& place) {
  const std::string dir = UnitCalFolder(place);
  if (dir.empty()) return "";
  return Remember(place, place.dialogs.ShowOpen("", kTextFileFilter, dir));
}

std::string GetSaveAsFileName(FileDialogPlace& place, int kind) {
  const std::string dir = UnitCalFolder(place);
  if (dir.empty()) return "";
  const std::string proposed = BaseFileName(
      UniqueTxtName((fs::path(dir) / (place.txtSN + SaveNameTemplate(kind))).string()));
  return Remember(place, place.dialogs.ShowSave(proposed, kTextFileFilter, dir));
}

}  // namespace amp
