#include "SavedPlacement.h"

#include "settings/Preferences.h"
#include "ui/common/ScreenFit.h"
#include "ui/common/Twips.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace zentoria {

namespace {

bool onSomeScreen(const QRect& outer) {
    for (const QScreen* screen : QGuiApplication::screens()) {
        if (screen->geometry().intersects(outer)) {
            return true;
        }
    }
    return false;
}

} // namespace

QRect savedPlacementOnScreen() {
    QRect outer;
    const auto apply = [&outer](const WindowPlacement& placement) {
        if (placement.Width < 0 || placement.Height < 0) {
            return StepResult::InvalidArgument;
        }
        const double dpi = logicalDpi();
        if (!onSomeScreen(
                twipsRectToPixels(placement.Left, placement.Top, placement.Width, placement.Height, dpi))) {
            return StepResult::InvalidArgument;
        }
        outer = twipsRectOnScreen(placement.Left, placement.Top, placement.Width, placement.Height);
        return StepResult::Done;
    };
    const StepResult result = runRepairing([&] { return apply(readPlacement()); },
                                           [] {
                                               restorePlacementFromLastSafe();
                                               return true;
                                           });
    if (result != StepResult::Done) {
        const WindowPlacement defaults;
        outer = twipsRectOnScreen(defaults.Left, defaults.Top, defaults.Width, defaults.Height);
    }
    return outer;
}

QScreen* screenOfSavedPlacement() {
    const WindowPlacement placement = readPlacement();
    const QRect outer =
        twipsRectToPixels(placement.Left, placement.Top, placement.Width, placement.Height, logicalDpi());
    return placement.Width >= 0 && placement.Height >= 0 && onSomeScreen(outer)
               ? screenFor(outer)
               : QGuiApplication::primaryScreen();
}

void showAtSavedPlacement(QWidget* window) {
    // The stored size is the outer one, frame included; the frame is known once the window is shown.
    showFitted(window, savedPlacementOnScreen());
    if (readBoolean(settings::Maximized)) {
        window->showMaximized();
    }
}

} // namespace zentoria
