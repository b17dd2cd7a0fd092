#include "gui/platform/qt_settings_store.h"

#include <QSettings>

#include "core/platform/maker.h"

namespace ostrel::gui {

namespace {
QString KeyPath(const std::string& section, const std::string& key) {
    return QString::fromStdString(section) + '/' + QString::fromStdString(key);
}
}  // namespace

std::string QtSettingsStore::GetSetting(const std::string& section, const std::string& key,
                                        const std::string& defaultValue) const {
    QSettings s(QSettings::IniFormat, QSettings::UserScope, "Ostrel", maker::kProgramTitle);
    const QVariant v = s.value(KeyPath(section, key));
    return v.isValid() ? v.toString().toStdString() : defaultValue;
}

void QtSettingsStore::SaveSetting(const std::string& section, const std::string& key,
                                  const std::string& value) {
    QSettings s(QSettings::IniFormat, QSettings::UserScope, "Ostrel", maker::kProgramTitle);
    s.setValue(KeyPath(section, key), QString::fromStdString(value));
}

}  // namespace ostrel::gui
