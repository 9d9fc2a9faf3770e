#include "qt/ini_settings_store.h"

#include <QSettings>
#include <QStringList>

namespace amp {

std::string IniSettingsStore::GetSetting(const std::string& app, const std::string& section,
                                         const std::string& key, const std::string& fallback) {
  QSettings settings(QString::fromStdString(path_), QSettings::IniFormat);
  settings.beginGroup(QString::fromStdString(section));
  const QString name = QString::fromStdString(key);
  if (!settings.contains(name)) return fallback;
  const QVariant value = settings.value(name);
  // A hand-edited line with an unquoted comma reads back as a list.
  if (value.userType() == QMetaType::QStringList)
    return value.toStringList().join(',').toStdString();
  return value.toString().toStdString();
}

void IniSettingsStore::SaveSetting(const std::string& app, const std::string& section,
                                   const std::string& key, const std::string& value) {
  QSettings settings(QString::fromStdString(path_), QSettings::IniFormat);
  settings.beginGroup(QString::fromStdString(section));
  settings.setValue(QString::fromStdString(key), QString::fromStdString(value));
  settings.endGroup();
  settings.sync();
  lastError_ =
      settings.status() == QSettings::NoError ? std::string() : "Cannot save settings to " + path_;
}

}  // namespace amp
