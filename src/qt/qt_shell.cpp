#include "qt/qt_shell.h"

#include <QDesktopServices>
#include <QString>
#include <QUrl>

namespace amp {

bool QtShell::OpenUrl(const std::string& url) {
  return QDesktopServices::openUrl(QUrl(QString::fromStdString(url)));
}

bool QtShell::OpenDocument(const std::string& path) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
}

}  // namespace amp
