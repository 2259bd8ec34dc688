#pragma once

#include <QtGlobal>

namespace zentoria {

// The main window's outer placement in twips; a new one is the default placement, which the settings
// table gives for whatever is missing.
struct WindowPlacement {
    float Left = 45;
    float Top = 465;
    float Width = 12000;
    float Height = 7350;

    friend bool operator==(const WindowPlacement&, const WindowPlacement&) = default;
};

// The placement kept in "Preferences", with the defaults for whatever is missing or unreadable.
WindowPlacement readPlacement();
// What closing the window keeps for the next start, in one write: the tree width, then Width,
// Height, Top, Left, and whether the window was maximized.
void saveClosingState(qint32 treeWidth, const WindowPlacement& window, bool maximized);

// What a completed layout pass saves: the tree width to "Preferences", then the window's Width,
// Height, Top, Left and the tree width to "Last Safe Configuration".
void saveLastSafeConfiguration(qint32 treeWidth, const WindowPlacement& window);
// The tree width of the last safe configuration (3000 when there is none).
qint32 lastSafeTreeWidth();
// Copies the window's Width, Height, Top and Left from "Last Safe Configuration" to "Preferences".
void restorePlacementFromLastSafe();

} // namespace zentoria
