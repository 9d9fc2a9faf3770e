#include "qt/qt_shell.h"

#include <QDesktopServices>
#include <QString>
#include <QUrl>

namespace amp {

bool QtShell::OpenUrl(const std::string& url) {
  return QDesktopServices::openUrl(QUrl(QString::fromStdString(url)));
}

}  // namespace amp
