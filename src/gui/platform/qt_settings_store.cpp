#include "gui/platform/qt_settings_store.h"

#include <QSettings>
#include <memory>

#include "core/platform/maker.h"

namespace ostrel::gui {

namespace {
QString KeyPath(const std::string& section, const std::string& key) {
    return QString::fromStdString(section) + '/' + QString::fromStdString(key);
}

std::unique_ptr<QSettings> Open(const std::string& path) {
    if (path.empty()) {
        return std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope, "Ostrel",
                                           maker::kProgramTitle);
    }
    return std::make_unique<QSettings>(QString::fromStdString(path), QSettings::IniFormat);
}
}  // namespace

std::string QtSettingsStore::GetSetting(const std::string& section, const std::string& key,
                                        const std::string& defaultValue) const {
    const QVariant v = Open(path_)->value(KeyPath(section, key));
    return v.isValid() ? v.toString().toStdString() : defaultValue;
}

void QtSettingsStore::SaveSetting(const std::string& section, const std::string& key,
                                  const std::string& value) {
    Open(path_)->setValue(KeyPath(section, key), QString::fromStdString(value));
}

}  // namespace ostrel::gui
