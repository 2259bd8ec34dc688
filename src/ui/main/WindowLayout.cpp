// frmMain: the layout pass that places every pane of the window.
#include "StatusBar.h"
#include "frmMain.h"
#include "layout/LayoutGeometry.h"
#include "settings/Globals.h"
#include "settings/Preferences.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/PictureBox.h"
#include "ui/common/ScreenFit.h"
#include "ui/common/Twips.h"
#include "ui/panel/PanelScrollBar.h"
#include "ui/panel/WebPanel.h"
#include "ui/views/FileListView.h"
#include "ui/views/ReportTree.h"

#include <QCoreApplication>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>

#include <functional>

namespace zentoria {

namespace {

constexpr float kClassicSideFrames = 120;
constexpr float kClassicCaptionMenuAndBorders = 700;

// Qt takes negative sizes without complaint; the layout treats them as the invalid argument they are,
// so that the last safe configuration can repair them.
StepResult place(QWidget* widget, const TwipsRect& rect) {
    if (rect.Width < 0 || rect.Height < 0) {
        return StepResult::InvalidArgument;
    }
    setGeometryTwips(widget, rect.Left, rect.Top, rect.Width, rect.Height);
    return StepResult::Done;
}

} // namespace

LayoutInput frmMain::readLayoutInput() const {
    const double dpi = logicalDpi(this);
    const auto twips = [dpi](int pixels) { return static_cast<float>(pixelsToTwips(pixels, dpi)); };
    const QRect frame = frameGeometry();
    LayoutInput in;
    in.Minimized = isMinimized();
    in.WindowLeft = twips(frame.x());
    in.WindowTop = twips(frame.y());
    in.ClientWidth = twips(m_client->width());
    // The layout's arithmetic takes the window's outer size minus fixed allowances for the frame of the
    // classic desktop it was made for: 60 twips on each side, 700 for caption, menu and borders. Window
    // managers here draw anything from no frame to thick ones, so the outer size is given as the client
    // area plus exactly those allowances, and the panes fill the client area whatever the frame.
    in.WindowWidth = in.ClientWidth + kClassicSideFrames;
    in.WindowHeight = twips(m_client->height()) + kClassicCaptionMenuAndBorders;
    in.AddressBarVisible = !TBAddress->isHidden();
    in.AddressBarHeight = static_cast<float>(geometryTwips(TBAddress).Height);
    in.PathLeft = static_cast<float>(geometryTwips(WEPath).Left);
    in.TreeTop = static_cast<float>(geometryTwips(TV).Top);
    in.StatusBarHeight = static_cast<float>(geometryTwips(SB).Height);
    in.AboutTextWidth = twips(fontMetrics().horizontalAdvance(SB->panel(QStringLiteral("About"))->text()));
    in.TreeWidth = globals().InitialTVWidth;
    in.SeparatorWidth = twips(3);
    in.WebStyle = WebStyle;
    const TwipsRect panel = geometryTwips(pctWeb);
    in.PanelWidth = static_cast<float>(panel.Width);
    in.PanelHeight = static_cast<float>(panel.Height);
    // What the panes need to be read, each with its view's frame and what covers it.
    if (const int captions = TV->captionsWidth(); captions > 0) {
        in.TreeNeeds = twips(captions + TV->width() - TV->viewport()->width());
    }
    if (const int names = LV->leastReadableWidth(); names > 0) {
        in.ListNeeds = twips(names + LV->width() - LV->viewport()->width());
    }
    return in;
}

void frmMain::ReDrawForm() {
    LayoutInput in = readLayoutInput();
    if (in.Minimized) {
        return;
    }
    updateMinimumSize(in);
    const TreeWidthPlan plan = PlanTreeWidth(in, lastSafeTreeWidth, widestScreenTwips());
    globals().InitialTVWidth = plan.Kept;
    // Where the window is too narrow for all of it, the panes share the room, starting from the user's
    // width: a list that the panel gives way to may have room beside it that the plan did not count.
    in.TreeWidth = in.TreeNeeds > 0 && in.ListNeeds > 0 ? ShareTheRoom(in, plan.Kept) : plan.Placed;
    const LayoutResult out = EmptyPanelsGiveWay(PanelGivesWay(ComputeLayout(in), in.ListNeeds));
    setTopTwips(TBAddress, out.AddressBarTop);

    SB->setPanelWidth(QStringLiteral("Playing"), out.Playing);
    SB->setPanelWidth(QStringLiteral("About"), out.About);
    SB->setPanelWidth(QStringLiteral("PlayingStatus"), out.PlayingStatus);
    // Refused when negative (a very narrow window): the panel keeps its width and the pass goes on.
    SB->setPanelWidth(QStringLiteral("Blank"), out.Blank);

    // The tree width is settled by the plan; what can still fail is a height, in a window too short for
    // the panes, and no tree width cures that: the pass ends there and saves nothing.
    const std::function<StepResult()> steps[] = {
        [&] { return place(TV, out.Tree); },
        [&] {
            const TwipsRect bar = geometryTwips(TBAddress);
            return place(TBAddress,
                         {out.AddressBarLeft, float(bar.Top), out.AddressBarWidth, float(bar.Height)});
        },
        [&] {
            if (out.PathWidth < 0) {
                return StepResult::InvalidArgument;
            }
            setWidthTwips(WEPath, out.PathWidth);
            return StepResult::Done;
        },
        [&] { return place(Separator, out.Separator); },
        [&] { return place(pctBorders, out.Borders); },
        [&] { return WebStyle ? place(pctWeb, out.Panel) : StepResult::Done; },
        [&] { return place(LV, out.List); },
        [&] {
            pctWeb->setVisible(out.PanelVisible);
            // Nothing of a hidden panel stays: its scroll bar would stand over the list's text. It
            // comes back with the panel.
            vsbBack->followPanel(out.PanelVisible);
            return StepResult::Done;
        },
        [&] {
            if (out.ScrollHeight < 0) {
                return StepResult::InvalidArgument;
            }
            vsbBack->setRange(out.ScrollHeight, out.ScrollMaximum, out.ScrollLargeChange,
                              out.ScrollSmallChange);
            return StepResult::Done;
        },
        [&] {
            LV->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
            return StepResult::Done;
        },
    };
    for (const auto& step : steps) {
        if (step() != StepResult::Done) {
            return;
        }
    }

    LV->keepClearOfCover();
    // Repaints and queued input run now; a resize among them runs a nested pass of its own.
    QCoreApplication::processEvents();

    // A tree width that only stands in for this window's is no configuration to come back to.
    if (!plan.Save) {
        return;
    }
    // The placement saved is the real one, frame included, as the window manager reports it.
    const double dpi = logicalDpi(this);
    const QRect frame = frameGeometry();
    saveLastSafeConfiguration(
        globals().InitialTVWidth,
        WindowPlacement{float(pixelsToTwips(frame.x(), dpi)), float(pixelsToTwips(frame.y(), dpi)),
                        float(pixelsToTwips(frame.width(), dpi)), float(pixelsToTwips(frame.height(), dpi))});
}

void frmMain::updateMinimumSize(const LayoutInput& in) {
    // The layout reckons with fixed frame allowances around the client area (see readLayoutInput).
    const TwipsSize window = MinimumWindowSize(in);
    const double dpi = logicalDpi(this);
    QSize client(twipsToPixels(window.Width - kClassicSideFrames, dpi),
                 twipsToPixels(window.Height - kClassicCaptionMenuAndBorders, dpi));
    // Never more than the screen can show, frame and menu bar included: on a small screen at a large
    // scale the panes share what there is rather than run off the screen.
    if (const QScreen* shown = screen()) {
        const QMargins frame = frameMarginsOf(this);
        const QSize room = shown->availableGeometry().size() -
                           QSize(frame.left() + frame.right(),
                                 frame.top() + frame.bottom() + menuBar()->sizeHint().height());
        client = client.boundedTo(room.expandedTo(QSize(0, 0)));
    }
    if (m_client->minimumSize() != client) {
        m_client->setMinimumSize(client);
    }
}

} // namespace zentoria
