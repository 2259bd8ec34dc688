#pragma once

#include <QRect>

class QScreen;
class QWidget;

namespace zentoria {

// The main window's outer rectangle, in pixels, for the placement kept in "Preferences", fitted to the
// available area of the screen it names. A placement the window system cannot take (a negative size)
// or one entirely off every screen (a monitor unplugged since) is rejected: "Last Safe Configuration"
// is copied into "Preferences" and read again, once; rejected again, the window takes the defaults.
QRect savedPlacementOnScreen();

// The screen the saved placement opens the main window on (the primary one for a placement it rejects).
QScreen* screenOfSavedPlacement();

// Moves a hidden main window to the saved placement and shows it there, maximized when it was closed
// maximized.
void showAtSavedPlacement(QWidget* window);

} // namespace zentoria
