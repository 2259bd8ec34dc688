#include "SettingsStore.h"

#include "Globals.h"
#include "IniReader.h"
#include "report/TextDecoding.h"

#include <QFile>
#include <QSettings>
#include <QStandardPaths>

#include <limits>

namespace zentoria {

namespace {

const QString kMelvadex = QStringLiteral("Melvadex");
const QString kDamagedSuffix = QStringLiteral(".damaged");

// Qt writes UTF-8 text without NULs, and its parser passes over much that it cannot make sense of.
bool isDamaged(const QSettings& store, const QString& path) {
    if (store.status() == QSettings::FormatError) {
        return true;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QByteArray bytes = file.readAll();
    return bytes.contains('\0') || detectEncoding(bytes) != TextEncoding::Utf8;
}

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
    if (application == kMelvadex) {
        // Melvadex writes its file itself: a value is the plain text after '=', where Qt's own dialect
        // would split it at commas and take backslashes and quotes for escapes.
        return readIniString(settingsFilePath(application), section, key, defaultValue,
                             std::numeric_limits<int>::max());
    }
    QSettings store(settingsFilePath(application), QSettings::IniFormat);
    store.beginGroup(section);
    const QVariant value = store.value(key);
    return value.isValid() ? value.toString() : defaultValue;
}

QStringList readSettings(const QString& application, const QString& section, const QStringList& keys) {
    QSettings store(settingsFilePath(application), QSettings::IniFormat);
    store.beginGroup(section);
    QStringList values;
    for (const QString& key : keys) {
        values << store.value(key).toString();
    }
    return values;
}

bool hasSetting(const QString& application, const QString& section, const QString& key) {
    if (application == kMelvadex) {
        return !readSetting(application, section, key, {}).isEmpty();
    }
    QSettings store(settingsFilePath(application), QSettings::IniFormat);
    return store.contains(section + u'/' + key);
}

void writeSetting(const QString& application, const QString& section, const QString& key,
                  const QString& value) {
    writeSettings(application, {{section, key, value}});
}

void writeSettings(const QString& application, const QList<SettingValue>& values) {
    const QString path = settingsFilePath(application);
    QSettings store(path, QSettings::IniFormat);
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
        // Rewriting a damaged file keeps only what could be read from it: the rest stays in a copy beside
        // it, for the user who wants it back.
        if (isDamaged(store, path)) {
            QFile::remove(path + kDamagedSuffix);
            QFile::copy(path, path + kDamagedSuffix);
        }
        store.sync();
    }
}

} // namespace zentoria
