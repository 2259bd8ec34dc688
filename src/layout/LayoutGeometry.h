#pragma once

#include "TwipsRect.h"

#include <QtGlobal>

#include <functional>

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
    // What the tree needs to show its kinds' captions whole, and the list to show a file's whole name
    // (with its frame and what covers it); 0 where nothing is shown. Only ShareTheRoom reads them.
    float TreeNeeds = 0;
    float ListNeeds = 0;
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

// The tree width of a first run and of a repair with nothing better to go on, as the settings have it.
inline constexpr qint32 kDefaultTreeWidth = 3000;
// The least list a window must leave beside the tree: an inch each way shows the header, a few rows
// and the start of their paths, and leaves the separator something to be dragged back from.
inline constexpr float kMinimumListWidth = 1440;
inline constexpr float kMinimumListHeight = 1440;

// What a pass does with the tree width.
struct TreeWidthPlan {
    // The tree width kept as the user's (InitialTVWidth after the pass).
    qint32 Kept = 0;
    // The width the panes are placed with in this pass.
    qint32 Placed = 0;
    // False when Placed only stands in for a width this window cannot show: then nothing is saved.
    bool Save = true;
};

// Plans the tree width of a pass. A width no screen could show (negative, or wider than the widest
// screen) is nobody's choice and is replaced for good by the last safe width, or the default when that
// one is no better. A width that leaves the right pane no room gives way to the last safe width when
// that one fits. When neither fits, the panes are placed with the widest tree that leaves a usable
// list, and the user's width is kept for when the window grows again. lastSafeWidth is asked only when
// it is needed.
TreeWidthPlan PlanTreeWidth(const LayoutInput& in, const std::function<qint32()>& lastSafeWidth,
                            double widestScreen);

// The least outer window size (in the layout's terms) at which the default tree, the separator, a
// usable list and the status bar's "About" text all show, in web style, which needs more room than
// the classic view.
struct TwipsSize {
    double Width = 0;
    double Height = 0;

    friend bool operator==(const TwipsSize&, const TwipsSize&) = default;
};
TwipsSize MinimumWindowSize(const LayoutInput& in);

// Rounds to the nearest integer, halves to the even one.
qint32 roundHalfEven(double value);

// The layout of the main window: the tree on the left, the separator, the right pane with the list and
// the web-style panel, the address bar above them, the status-bar panel widths and the panel's scroll
// range.
LayoutResult ComputeLayout(const LayoutInput& in);

// The narrowest list beside the panel in which a file's name can be read: two inches.
inline constexpr float kReadableListWidth = 2880;

// The window's layout as shown: where the right pane is too narrow for the panel and a readable list
// (a small screen, a large scale, a wide tree), the panel gives way, hidden while it does not fit, and
// the list takes the pane as in the classic view. Wherever both fit it is the layout above, unchanged.
// A list that needs more than two inches to show a file's name (listNeeds) is readable only that wide.
LayoutResult PanelGivesWay(LayoutResult out, float listNeeds = 0);

// Where the window is too narrow for the status bar's panels, the two that carry no text ("Playing",
// then "PlayingStatus") give up width first, so that "About" shows whole; elsewhere unchanged.
LayoutResult EmptyPanelsGiveWay(LayoutResult out);

// The tree width a pass places where the window is too narrow for the tree's captions, the panel and a
// readable list all at once: the tree gives the list room down to what its captions need; where that is
// not enough, the panel gives way (PanelGivesWay); where even then both lack room, the tree and the list
// share it in proportion to what they need. Where the list has its need, the width is kept as it is.
// Without needs (nothing shown) the width is returned unchanged.
qint32 ShareTheRoom(const LayoutInput& in, qint32 width);

} // namespace zentoria
