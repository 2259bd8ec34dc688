#include "SettingsStore.h"

#include "Globals.h"

#include <QSettings>
#include <QStandardPaths>

namespace zentoria {

namespace {

const QString kMelvadex = QStringLiteral("Melvadex");

} // namespace

QString settingsFilePath(const QString& application) {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    if (application == kMelvadex) {
        return folder + QStringLiteral("/Melvadex/Melvadex.conf");
    }
    return folder + u'/' + application + QStringLiteral(".conf");
}

QString thisProgram() {
    return executableName();
}

QString readSetting(const QString& application, const QString& section, const QString& key,
                    const QString& defaultValue) {
    QSettings store(settingsFilePath(application), QSettings::IniFormat);
    store.beginGroup(section);
    const QVariant value = store.value(key);
    return value.isValid() ? value.toString() : defaultValue;
}

void writeSetting(const QString& application, const QString& section, const QString& key,
                  const QString& value) {
    writeSettings(application, {{section, key, value}});
}

void writeSettings(const QString& application, const QList<SettingValue>& values) {
    QSettings store(settingsFilePath(application), QSettings::IniFormat);
    // QSettings writes through a QSaveFile and never falls back to writing in place.
    store.setAtomicSyncRequired(true);
    bool changed = false;
    for (const SettingValue& setting : values) {
        const QString key = setting.section + u'/' + setting.key;
        const QVariant stored = store.value(key);
        if (!stored.isValid() || stored.toString() != setting.value) {
            store.setValue(key, setting.value);
            changed = true;
        }
    }
    if (changed) {
        store.sync();
    }
}

} // namespace zentoria
