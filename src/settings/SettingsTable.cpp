#include "SettingsTable.h"

#include "Conversions.h"
#include "IniReader.h"
#include "SettingsStore.h"
#include "WindowPlacement.h"

#include <limits>

namespace zentoria {

namespace settings {
namespace {
const QString kPreferences = QStringLiteral("Preferences");
const QString kSafe = QStringLiteral("Last Safe Configuration");
const WindowPlacement kDefault;
} // namespace

const Setting Language{QStringLiteral("Melvadex"), kPreferences, QStringLiteral("Language"), {}};
const Setting InitialTVWidth{{}, kPreferences, QStringLiteral("Initial TV Width"), QStringLiteral("3000")};
const Setting WebStyle{{}, kPreferences, QStringLiteral("WebStyle"), QStringLiteral("1")};
const Setting Left{{}, kPreferences, QStringLiteral("Left"), fromSingle(kDefault.Left)};
const Setting Top{{}, kPreferences, QStringLiteral("Top"), fromSingle(kDefault.Top)};
const Setting Width{{}, kPreferences, QStringLiteral("Width"), fromSingle(kDefault.Width)};
const Setting Height{{}, kPreferences, QStringLiteral("Height"), fromSingle(kDefault.Height)};
const Setting Maximized{{}, kPreferences, QStringLiteral("Maximized"), QStringLiteral("0")};
const Setting SafeWidth{{}, kSafe, QStringLiteral("Width"), fromSingle(kDefault.Width)};
const Setting SafeHeight{{}, kSafe, QStringLiteral("Height"), fromSingle(kDefault.Height)};
const Setting SafeTop{{}, kSafe, QStringLiteral("Top"), fromSingle(kDefault.Top)};
const Setting SafeLeft{{}, kSafe, QStringLiteral("Left"), fromSingle(kDefault.Left)};
const Setting SafeInitialTVWidth{{}, kSafe, QStringLiteral("Initial TV Width"), QStringLiteral("3000")};
const Setting PathMap{{}, kPreferences, QStringLiteral("PathMap"), {}};
const Setting TagEditor{{}, kPreferences, QStringLiteral("TagEditor"), {}};
const Setting LastCheckedFolder{{}, kPreferences, QStringLiteral("LastCheckedFolder"), {}};
const Setting FollowFixes{{}, kPreferences, QStringLiteral("FollowFixes"), QStringLiteral("1")};
} // namespace settings

namespace {

QString applicationOf(const Setting& setting) {
    return setting.application.isEmpty() ? thisProgram() : setting.application;
}

} // namespace

QString read(const Setting& setting) {
    return readSetting(applicationOf(setting), setting.section, setting.key, setting.defaultValue);
}

QString readPathText(const Setting& setting) {
    const QString parsed = read(setting);
    const QString raw = readIniString(settingsFilePath(applicationOf(setting)), setting.section, setting.key,
                                      setting.defaultValue, std::numeric_limits<int>::max());
    // What this program wrote has its backslashes doubled and its quotes escaped (no Windows folder
    // holds a quote); a single backslash was typed by hand.
    return raw.contains(QStringLiteral("\\\\")) || raw.contains(QStringLiteral("\\\"")) ? parsed : raw;
}

bool isStored(const Setting& setting) {
    return hasSetting(applicationOf(setting), setting.section, setting.key);
}

void write(const Setting& setting, const QString& value) {
    writeSetting(applicationOf(setting), setting.section, setting.key, value);
}

qint32 readInt32(const Setting& setting) {
    return toInt32(read(setting)).value_or(toInt32(setting.defaultValue).value_or(0));
}

bool readBoolean(const Setting& setting) {
    return toBoolean(read(setting)).value_or(toBoolean(setting.defaultValue).value_or(false));
}

float readSingle(const Setting& setting) {
    return toSingle(read(setting)).value_or(toSingle(setting.defaultValue).value_or(0.0f));
}

} // namespace zentoria
