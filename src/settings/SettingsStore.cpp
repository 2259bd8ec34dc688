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
    QSettings store(settingsFilePath(application), QSettings::IniFormat);
    // QSettings writes through a QSaveFile and never falls back to writing in place.
    store.setAtomicSyncRequired(true);
    store.beginGroup(section);
    store.setValue(key, value);
    store.endGroup();
    store.sync();
}

} // namespace zentoria
