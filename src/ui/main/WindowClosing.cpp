// frmMain: closing the main window, which ends the program.
#include "frmMain.h"
#include "settings/Globals.h"
#include "settings/Preferences.h"
#include "shell/ListScrollHook.h"
#include "ui/common/Twips.h"
#include "ui/views/FileListView.h"

#include <QCloseEvent>
#include <QCoreApplication>

namespace zentoria {

void frmMain::closeEvent(QCloseEvent* event) {
    // The hook goes first, while the list it watches still exists.
    UnhookWindow(LV);

    // The outer rectangle as the window system reports it. A maximized window keeps its size and place
    // from before it was maximized, and the fact that it was. A window ended before it was ever shown
    // (during the splash) has no placement of the user's to keep.
    if (isVisible()) {
        const bool maximized = isMaximized();
        const QRect outer = maximized ? normalGeometry().marginsAdded(frameMarginsOf(this)) : frameGeometry();
        const double dpi = logicalDpi(this);
        saveClosingState(globals().InitialTVWidth,
                         WindowPlacement{float(pixelsToTwips(outer.x(), dpi)),
                                         float(pixelsToTwips(outer.y(), dpi)),
                                         float(pixelsToTwips(outer.width(), dpi)),
                                         float(pixelsToTwips(outer.height(), dpi))},
                         maximized);
    }

    // The other windows (the help, a splash still up) close with it.
    for (QObject* child : children()) {
        if (auto* window = qobject_cast<QWidget*>(child);
            window && window->isWindow() && window->isVisible()) {
            window->close();
        }
    }
    QMainWindow::closeEvent(event);
    // The program ends here, whatever other windows the toolkit still counts.
    QCoreApplication::quit();
}

} // namespace zentoria
