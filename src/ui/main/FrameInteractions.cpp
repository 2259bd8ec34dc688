// frmMain: the frame's handlers: resizing, the panel's scroll bar, the captions that move their
// neighbours, and Tools > WebStyle.
#include "StatusBar.h"
#include "frmMain.h"
#include "layout/LayoutGeometry.h"
#include "settings/Conversions.h"
#include "settings/Preferences.h"
#include "ui/common/Ampersands.h"
#include "ui/common/CaptionLabel.h"
#include "ui/panel/PanelScrollBar.h"
#include "ui/panel/WebPanel.h"
#include "ui/views/FileListView.h"

#include <QAction>
#include <QEvent>

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

void frmMain::Form_Resize() {
    ReDrawForm();
    FitWebPanel();
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
    // The layout pass alone: the panel takes the pass's rectangle, its scroll bar shows as it was.
    ReDrawForm();
}

void frmMain::FitWebPanel() {
    // A panel that gives way to the list (on a small screen) has no scroll bar either.
    if (WebStyle && !pctWeb->isHidden()) {
        vsbBack->fitPanel(pctWeb->contentBottom(), geometryTwips(LV).Height);
    }
    LV->keepClearOfCover();
}

} // namespace zentoria
