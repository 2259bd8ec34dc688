#include "LayoutGeometry.h"

#include <cmath>
#include <optional>

namespace zentoria {

qint32 roundHalfEven(double value) {
    // nearbyint rounds in the current mode, which is to nearest with ties to even.
    return static_cast<qint32>(std::nearbyint(value));
}

LayoutResult ComputeLayout(const LayoutInput& in) {
    LayoutResult out;
    const float tw = static_cast<float>(in.TreeWidth);
    const float s = in.SeparatorWidth;

    // With the bar shown its top edge hides 60 twips above the client area; hidden, it is out of view.
    out.A = in.AddressBarVisible ? in.AddressBarHeight - 60 : 0;
    out.H = in.WindowHeight - out.A - in.TreeTop - in.StatusBarHeight - 240;

    out.AddressBarLeft = 30;
    out.AddressBarTop = out.A - in.AddressBarHeight;
    out.AddressBarWidth = in.ClientWidth - 150;
    out.PathWidth = out.AddressBarWidth - in.PathLeft - 60;

    out.Tree = {0, out.A + 100, tw, out.H};
    out.Separator = {tw, out.A, s, out.H};
    // The outer width is used here: the 120 twips cover the window's side frames.
    out.Borders = {tw + s, out.A + 100, in.WindowWidth - (tw + s) - 120, out.H - 420};
    out.PanelVisible = in.WebStyle;
    if (in.WebStyle) {
        out.Panel = {0, 0, in.PanelWidth, out.H + 120};
        // The panel covers the list's left 40 twips; the list ends 30 short of the pane's right edge.
        out.List = {in.PanelWidth - 40, -45, out.Borders.Width - (in.PanelWidth - 40) - 30,
                    out.Borders.Height};
    } else {
        // The list's own top and left border go under the pane's edges.
        out.List = {-45, -45, out.Borders.Width + 45, out.Borders.Height};
    }

    out.Playing = 5000;
    out.About = in.AboutTextWidth + 300;
    out.PlayingStatus = 1500;
    out.Blank = in.ClientWidth - out.Playing - out.About - out.PlayingStatus - 200;

    out.ScrollHeight = out.List.Height - 75;
    const float panelHeight = in.WebStyle ? out.H + 120 : in.PanelHeight;
    const float d = std::fabs(panelHeight - out.List.Height);
    out.ScrollMaximum = d <= 32767 ? roundHalfEven(d) : 32767;
    if (out.ScrollMaximum > 0) {
        out.ScrollLargeChange = qMax(1, roundHalfEven(out.ScrollMaximum / 10.0));
        out.ScrollSmallChange = qMax(1, roundHalfEven(out.ScrollMaximum / 100.0));
    }
    return out;
}

LayoutResult PanelGivesWay(LayoutResult out, float listNeeds) {
    if (out.PanelVisible && out.List.Width < qMax(kReadableListWidth, listNeeds)) {
        out.PanelVisible = false;
        out.List = {-45, -45, out.Borders.Width + 45, out.Borders.Height};
    }
    return out;
}

LayoutResult EmptyPanelsGiveWay(LayoutResult out) {
    for (float* empty : {&out.Playing, &out.PlayingStatus}) {
        const float given = qBound(0.0f, -out.Blank, *empty);
        *empty -= given;
        out.Blank += given;
    }
    return out;
}

qint32 ShareTheRoom(const LayoutInput& in, qint32 width) {
    if (in.TreeNeeds <= 0 || in.ListNeeds <= 0) {
        return width;
    }
    LayoutInput at = in;
    const auto listWidth = [&at](qint32 tree, bool panelMayGo) {
        at.TreeWidth = tree;
        const LayoutResult out = ComputeLayout(at);
        return panelMayGo ? PanelGivesWay(out, at.ListNeeds).List.Width : out.List.Width;
    };
    const double spare = qMax(0.0, double(width) - in.TreeNeeds);
    // First the tree's spare room, with the panel in its place; then the panel's room as well.
    for (const bool panelMayGo : {false, true}) {
        // Beside the panel the list is kept only from two inches up.
        const double need =
            in.WebStyle && !panelMayGo ? qMax(in.ListNeeds, kReadableListWidth) : in.ListNeeds;
        const double lack = need - listWidth(width, panelMayGo);
        if (lack <= 0) {
            return width;
        }
        if (lack <= spare) {
            return width - static_cast<qint32>(std::ceil(lack));
        }
    }
    const double room = width + double(listWidth(width, true));
    return qBound(0, static_cast<qint32>(std::floor(room * in.TreeNeeds / (in.TreeNeeds + in.ListNeeds))),
                  width);
}

namespace {

// Whether the panes' controls take the layout of this tree width: none of them gets a negative width.
bool leavesRoom(LayoutInput in, qint32 width) {
    in.TreeWidth = width;
    const LayoutResult out = ComputeLayout(in);
    return out.Tree.Width >= 0 && out.Borders.Width >= 0 && out.List.Width >= 0;
}

// The widest tree, at most width, that leaves the list its least width; the list narrows as the tree
// widens, twip for twip.
qint32 widestFittingTree(LayoutInput in, qint32 width) {
    in.TreeWidth = 0;
    const double room = ComputeLayout(in).List.Width - kMinimumListWidth;
    return qBound(0, static_cast<qint32>(std::floor(room)), qMax(width, 0));
}

} // namespace

TreeWidthPlan PlanTreeWidth(const LayoutInput& in, const std::function<qint32()>& lastSafeWidth,
                            double widestScreen) {
    const auto plausible = [widestScreen](qint32 width) { return width >= 0 && width <= widestScreen; };
    qint32 width = in.TreeWidth;
    std::optional<qint32> safe;
    if (!plausible(width)) {
        safe = lastSafeWidth();
        width = plausible(*safe) ? *safe : kDefaultTreeWidth;
    }
    if (leavesRoom(in, width)) {
        return {width, width, true};
    }
    if (!safe) {
        safe = lastSafeWidth();
    }
    if (*safe != width && plausible(*safe) && leavesRoom(in, *safe)) {
        return {*safe, *safe, true};
    }
    return {width, widestFittingTree(in, width), false};
}

TwipsSize MinimumWindowSize(const LayoutInput& in) {
    LayoutInput narrowest = in;
    narrowest.TreeWidth = kDefaultTreeWidth;
    narrowest.WebStyle = true;
    // The list and the status bar shrink twip for twip with the window: grow it by what they lack.
    narrowest.WindowWidth = 0;
    narrowest.ClientWidth = in.ClientWidth - in.WindowWidth;
    const LayoutResult zero = ComputeLayout(narrowest);
    const double forList = kMinimumListWidth - zero.List.Width;
    const double forStatusBar = -zero.Blank;
    // Heights as from the second pass on, when the tree stands at its steady top.
    narrowest.TreeTop = zero.A + 100;
    narrowest.WindowHeight = 0;
    const double forListHeight = kMinimumListHeight - ComputeLayout(narrowest).List.Height;
    return {std::ceil(qMax(forList, forStatusBar)), std::ceil(forListHeight)};
}

} // namespace zentoria
