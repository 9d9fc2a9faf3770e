#include "qt/qt_settings_store.h"

#include <QDir>
#include <QSettings>
#include <QStringList>
#include <memory>

namespace amp {
namespace {

constexpr const char* kOrganization = "AmpDesk";

std::unique_ptr<QSettings> Open(const std::string& directory, const std::string& app) {
  if (directory.empty())
    return std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope, kOrganization,
                                       QString::fromStdString(app));
  const QString file =
      QDir(QString::fromStdString(directory)).filePath(QString::fromStdString(app) + ".ini");
  return std::make_unique<QSettings>(file, QSettings::IniFormat);
}

}  // namespace

QtSettingsStore::QtSettingsStore(std::string directory) : directory_(std::move(directory)) {}

std::string QtSettingsStore::FilePath(const std::string& app) const {
  return Open(directory_, app)->fileName().toStdString();
}

std::string QtSettingsStore::GetSetting(const std::string& app, const std::string& section,
                                        const std::string& key, const std::string& fallback) {
  auto settings = Open(directory_, app);
  settings->beginGroup(QString::fromStdString(section));
  const QString name = QString::fromStdString(key);
  if (!settings->contains(name)) return fallback;
  const QVariant value = settings->value(name);
  // A hand-edited line with an unquoted comma reads back as a list.
  if (value.userType() == QMetaType::QStringList)
    return value.toStringList().join(',').toStdString();
  return value.toString().toStdString();
}

void QtSettingsStore::SaveSetting(const std::string& app, const std::string& section,
                                  const std::string& key, const std::string& value) {
  auto settings = Open(directory_, app);
  settings->beginGroup(QString::fromStdString(section));
  settings->setValue(QString::fromStdString(key), QString::fromStdString(value));
  settings->endGroup();
  settings->sync();
  if (settings->status() == QSettings::NoError) {
    lastError_.clear();
  } else {
    lastError_ = "Cannot save settings to " + settings->fileName().toStdString();
  }
}

}  // namespace amp
