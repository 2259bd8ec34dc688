#include "Preferences.h"

#include "Conversions.h"
#include "IniReader.h"
#include "SettingsStore.h"

#include <limits>

namespace zentoria {

namespace settings {
namespace {
const QString kPreferences = QStringLiteral("Preferences");
const QString kSafe = QStringLiteral("Last Safe Configuration");
} // namespace

const Setting Language{QStringLiteral("Melvadex"), kPreferences, QStringLiteral("Language"), {}};
const Setting InitialTVWidth{{}, kPreferences, QStringLiteral("Initial TV Width"), QStringLiteral("3000")};
const Setting WebStyle{{}, kPreferences, QStringLiteral("WebStyle"), QStringLiteral("1")};
const Setting Left{{}, kPreferences, QStringLiteral("Left"), QStringLiteral("45")};
const Setting Top{{}, kPreferences, QStringLiteral("Top"), QStringLiteral("465")};
const Setting Width{{}, kPreferences, QStringLiteral("Width"), QStringLiteral("12000")};
const Setting Height{{}, kPreferences, QStringLiteral("Height"), QStringLiteral("7350")};
const Setting Maximized{{}, kPreferences, QStringLiteral("Maximized"), QStringLiteral("0")};
const Setting SafeWidth{{}, kSafe, QStringLiteral("Width"), QStringLiteral("12000")};
const Setting SafeHeight{{}, kSafe, QStringLiteral("Height"), QStringLiteral("7350")};
const Setting SafeTop{{}, kSafe, QStringLiteral("Top"), QStringLiteral("465")};
const Setting SafeLeft{{}, kSafe, QStringLiteral("Left"), QStringLiteral("45")};
const Setting SafeInitialTVWidth{{}, kSafe, QStringLiteral("Initial TV Width"), QStringLiteral("3000")};
const Setting PathMap{{}, kPreferences, QStringLiteral("PathMap"), {}};
const Setting TagEditor{{}, kPreferences, QStringLiteral("TagEditor"), {}};
const Setting LastCheckedFolder{{}, kPreferences, QStringLiteral("LastCheckedFolder"), {}};
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

WindowPlacement readPlacement() {
    return {readSingle(settings::Left), readSingle(settings::Top), readSingle(settings::Width),
            readSingle(settings::Height)};
}

void writePlacement(const WindowPlacement& placement) {
    write(settings::Width, fromSingle(placement.Width));
    write(settings::Height, fromSingle(placement.Height));
    write(settings::Top, fromSingle(placement.Top));
    write(settings::Left, fromSingle(placement.Left));
}

namespace {

SettingValue value(const Setting& setting, const QString& text) {
    return {setting.section, setting.key, text};
}

} // namespace

void saveClosingState(qint32 treeWidth, const WindowPlacement& window, bool maximized) {
    writeSettings(thisProgram(), {value(settings::InitialTVWidth, fromInt32(treeWidth)),
                                  value(settings::Width, fromSingle(window.Width)),
                                  value(settings::Height, fromSingle(window.Height)),
                                  value(settings::Top, fromSingle(window.Top)),
                                  value(settings::Left, fromSingle(window.Left)),
                                  value(settings::Maximized, fromBoolean(maximized))});
}

void saveLastSafeConfiguration(qint32 treeWidth, const WindowPlacement& window) {
    writeSettings(thisProgram(), {value(settings::InitialTVWidth, fromInt32(treeWidth)),
                                  value(settings::SafeWidth, fromSingle(window.Width)),
                                  value(settings::SafeHeight, fromSingle(window.Height)),
                                  value(settings::SafeTop, fromSingle(window.Top)),
                                  value(settings::SafeLeft, fromSingle(window.Left)),
                                  value(settings::SafeInitialTVWidth, fromInt32(treeWidth))});
}

qint32 lastSafeTreeWidth() {
    return readInt32(settings::SafeInitialTVWidth);
}

void restorePlacementFromLastSafe() {
    write(settings::Width, read(settings::SafeWidth));
    write(settings::Height, read(settings::SafeHeight));
    write(settings::Top, read(settings::SafeTop));
    write(settings::Left, read(settings::SafeLeft));
}

StepResult runRepairing(const std::function<StepResult()>& step, const std::function<bool()>& repair) {
    StepResult result = step();
    if (result == StepResult::InvalidArgument && repair()) {
        result = step();
    }
    return result;
}

} // namespace zentoria
