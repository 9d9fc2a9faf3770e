#include "qt/data_places.h"

#include <QStandardPaths>
#include <filesystem>

namespace amp {

std::string DefaultDataDirectory() {
  const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  if (base.isEmpty()) return {};
  return (std::filesystem::path(base.toStdString()) / "AmpDesk").string();
}

}  // namespace amp
