#include "qt/qt_shell.h"

#include <QDesktopServices>
#include <QString>
#include <QUrl>

namespace amp {

void QtShell::OpenDocument(const std::string& path) {
  QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
}

bool QtShell::OpenUrl(const std::string& url) {
  return QDesktopServices::openUrl(QUrl(QString::fromStdString(url)));
}

}  // namespace amp
