#pragma once

#include "ui/common/Twips.h"

#include <QtGlobal>

namespace zentoria {

// Everything the main window's layout reads, in twips.
struct LayoutInput {
    bool Minimized = false;
    // Outer size and position of the window, frame included.
    float WindowWidth = 0;
    float WindowHeight = 0;
    float WindowLeft = 0;
    float WindowTop = 0;
    float ClientWidth = 0;
    bool AddressBarVisible = true;
    float AddressBarHeight = 0;
    // Left of the path box inside the address bar.
    float PathLeft = 0;
    // Top of the tree before this pass moves it.
    float TreeTop = 0;
    float StatusBarHeight = 0;
    // Width of the "About" panel's text in the window's font.
    float AboutTextWidth = 0;
    qint32 TreeWidth = 0;
    float SeparatorWidth = 0;
    bool WebStyle = true;
    float PanelWidth = 0;
    float PanelHeight = 0;
};

// Where every pane goes.
struct LayoutResult {
    // The address bar's offset and the height of the panes.
    float A = 0;
    float H = 0;

    float AddressBarLeft = 0;
    float AddressBarTop = 0;
    float AddressBarWidth = 0;
    float PathWidth = 0;
    TwipsRect Tree;
    TwipsRect Separator;
    TwipsRect Borders;
    TwipsRect List;
    // Placed only in web style; shown exactly then.
    TwipsRect Panel;
    bool PanelVisible = false;

    // Status-bar panel widths.
    float Playing = 0;
    float About = 0;
    float PlayingStatus = 0;
    // Negative in a window too narrow for the other three: the status bar then refuses it.
    float Blank = 0;

    float ScrollHeight = 0;
    qint32 ScrollMaximum = 0;
    // Set only when the maximum is above 0; never below 1, the least a scroll bar takes.
    qint32 ScrollLargeChange = 0;
    qint32 ScrollSmallChange = 0;
};

// Rounds to the nearest integer, halves to the even one.
qint32 roundHalfEven(double value);

// The layout of the main window: the tree on the left, the separator, the right pane with the list and
// the web-style panel, the address bar above them, the status-bar panel widths and the panel's scroll
// range.
LayoutResult ComputeLayout(const LayoutInput& in);

} // namespace zentoria
