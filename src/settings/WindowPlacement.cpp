#include "WindowPlacement.h"

#include "Conversions.h"
#include "SettingsStore.h"
#include "SettingsTable.h"

#include <array>

namespace zentoria {

WindowPlacement readPlacement() {
    return {readSingle(settings::Left), readSingle(settings::Top), readSingle(settings::Width),
            readSingle(settings::Height)};
}

namespace {

SettingValue value(const Setting& setting, const QString& text) {
    return {setting.section, setting.key, text};
}

// The tree width, then the window's Width, Height, Top and Left under the given settings, then the last.
QList<SettingValue> placementValues(qint32 treeWidth, const WindowPlacement& window,
                                    const std::array<const Setting*, 4>& widthHeightTopLeft,
                                    SettingValue last) {
    const auto& [width, height, top, left] = widthHeightTopLeft;
    return {value(settings::InitialTVWidth, fromInt32(treeWidth)),
            value(*width, fromSingle(window.Width)),
            value(*height, fromSingle(window.Height)),
            value(*top, fromSingle(window.Top)),
            value(*left, fromSingle(window.Left)),
            std::move(last)};
}

} // namespace

void saveClosingState(qint32 treeWidth, const WindowPlacement& window, bool maximized) {
    writeSettings(thisProgram(),
                  placementValues(treeWidth, window,
                                  {&settings::Width, &settings::Height, &settings::Top, &settings::Left},
                                  value(settings::Maximized, fromBoolean(maximized))));
}

void saveLastSafeConfiguration(qint32 treeWidth, const WindowPlacement& window) {
    writeSettings(thisProgram(), placementValues(treeWidth, window,
                                                 {&settings::SafeWidth, &settings::SafeHeight,
                                                  &settings::SafeTop, &settings::SafeLeft},
                                                 value(settings::SafeInitialTVWidth, fromInt32(treeWidth))));
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

} // namespace zentoria
