#pragma once

class QWidget;

namespace zentoria {

// Every dialog the program shows, its own and Qt's (file choosers, message boxes), fits the screen it
// opens on: before it shows it is made no larger than that screen's free area, frame included, and a
// dialog whose contents want more gives them less rather than hanging its buttons off the screen. Once
// shown, with its real frame known, it is moved inside that area. Installing it twice installs it once.
void fitDialogsToTheirScreens();

// Fits one dialog, or any top-level window, about to be shown to the screen of the window it belongs
// to, and again once the window manager has framed it.
void fitBeforeShowing(QWidget* window);

} // namespace zentoria
