// frmMain: the frame's handlers: resizing, the panel's scroll bar, the captions that move their
// neighbours, and Tools > WebStyle.
#include "FileListView.h"
#include "LayoutGeometry.h"
#include "StatusBar.h"
#include "frmMain.h"
#include "settings/Conversions.h"
#include "settings/Preferences.h"
#include "ui/common/Ampersands.h"
#include "ui/common/CaptionLabel.h"
#include "ui/panel/WebPanel.h"

#include <QAction>
#include <QEvent>
#include <QFocusFrame>
#include <QScrollBar>

#include <cmath>

namespace zentoria {

void frmMain::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    Form_Resize();
}

void frmMain::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    // Coming back from minimized changes no size, yet the layout skipped while minimized must run.
    if (event->type() == QEvent::WindowStateChange && !isMinimized() && isVisible()) {
        Form_Resize();
    }
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    if (watched == vsbBack && (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)) {
        if (event->type() == QEvent::FocusIn) {
            m_scrollFocus->setWidget(vsbBack);
        } else {
            m_scrollFocus->setWidget(nullptr);
            m_scrollFocus->setParent(this);
            m_scrollFocus->hide();
        }
    }
    // The status bar keeps to the bottom of the client area whatever its size, as status bars do.
    if (watched == m_client && event->type() == QEvent::Resize) {
        const TwipsRect bar = geometryTwips(SB);
        const double dpi = logicalDpi(this);
        setGeometryTwips(SB, 0, pixelsToTwips(m_client->height(), dpi) - bar.Height,
                         pixelsToTwips(m_client->width(), dpi), bar.Height);
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmMain::Form_Resize() {
    ReDrawForm();
    FitWebPanel(LV);
}

void frmMain::vsbBack_Scroll() {
    setTopTwips(pctWeb, -vsbBack->sliderPosition() * m_panelScrollUnit);
}

void frmMain::vsbBack_Change() {
    setTopTwips(pctWeb, -vsbBack->value() * m_panelScrollUnit);
    LV->setFocus();
}

void frmMain::lblAddress_Change() {
    const TwipsRect label = geometryTwips(lblAddress);
    setLeftTwips(WEPath, label.Left + label.Width + 200);
}

void frmMain::WEPath_Change() {
    if (m_pathChanging) {
        return;
    }
    m_pathChanging = true;
    // The path is data: every "&" in it is a character, not an access-key mark.
    WEPath->setCaption(doubleAmpersands(WEPath->caption()));
    m_pathChanging = false;
}

void frmMain::submnuWebStyle_Click() {
    // The menu item is checkable, so Qt has already turned its check mark round.
    WebStyle = submnuWebStyle->isChecked();
    write(settings::WebStyle, fromBoolean(WebStyle));
    ReDrawForm();
}

void frmMain::FitWebPanel(FileListView* list) {
    if (!WebStyle) {
        return;
    }
    const double bottom = pctWeb->contentBottom();
    if (bottom >= geometryTwips(pctWeb).Height) {
        setHeightTwips(pctWeb, bottom);
        vsbBack->show();
        setLeftTwips(vsbBack, geometryTwips(pctWeb).Width);
        const double d = std::fabs(geometryTwips(pctWeb).Height - geometryTwips(list).Height);
        const qint32 maximum = d <= 32767 ? roundHalfEven(d) : 32767;
        // Content taller than the scroll bar's range is scrolled in coarser steps, to its very end.
        m_panelScrollUnit = d <= 32767 ? 1 : d / maximum;
        vsbBack->setMaximum(maximum);
        // A scroll bar takes change values from 1 up; a range too small for a tenth keeps at least 1.
        if (maximum / 10.0 > 0) {
            vsbBack->setPageStep(qMax(1, roundHalfEven(maximum / 10.0)));
        }
        if (maximum / 100.0 > 0.3) {
            vsbBack->setSingleStep(qMax(1, roundHalfEven(maximum / 100.0)));
        }
    } else {
        vsbBack->hide();
        setHeightTwips(pctWeb, geometryTwips(list).Height);
    }
}

} // namespace zentoria
