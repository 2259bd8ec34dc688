#include "LayoutGeometry.h"

#include <cmath>

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

} // namespace zentoria
