#include "DialogFit.h"

#include "ScreenFit.h"
#include "Twips.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QPointer>
#include <QScreen>
#include <QTimer>

namespace zentoria {

namespace {

void fitShown(QWidget* window);

// Watches every widget's showing; a dialog's Show arrives here before it maps and before the dialog
// centres itself on its parent, so the size it centres is the fitted one.
class DialogFitter : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool showing = event->type() == QEvent::Show;
        if ((showing || event->type() == QEvent::Resize) && watched->isWidgetType()) {
            auto* widget = static_cast<QWidget*>(watched);
            if (!widget->isWindow() || !qobject_cast<QDialog*>(widget)) {
                return false;
            }
            if (showing) {
                fitBeforeShowing(widget);
            } else if (widget->isVisible()) {
                // A shown dialog that grows (a message box showing its details) is fitted again.
                QTimer::singleShot(0, widget, [widget] { fitShown(widget); });
            }
        }
        return false;
    }
};

// The frame a window of this program gets from the window manager, as far as it is known before the
// window has one of its own: the one it had when shown before, its parent's, or another shown window's.
QMargins expectedFrame(const QWidget* window) {
    QWidgetList known{const_cast<QWidget*>(window)};
    if (const QWidget* parent = window->parentWidget()) {
        known << parent->window();
    }
    known << QApplication::topLevelWidgets();
    for (const QWidget* other : std::as_const(known)) {
        if (const QMargins frame = frameMarginsOf(other);
            !frame.isNull() && (other == window || other->isVisible())) {
            return frame;
        }
    }
    return {};
}

// A shown window that sized itself as it showed (a message box fixes its size to its text) gives up
// that size where the screen is smaller, then the whole of it is moved onto the screen.
void fitShown(QWidget* window) {
    if (const QScreen* screen = window->screen()) {
        const QSize room =
            screen->availableGeometry().size().shrunkBy(expectedFrame(window)).expandedTo(QSize(1, 1));
        if (window->size().boundedTo(room) != window->size()) {
            window->setMinimumSize(window->minimumSize().boundedTo(room));
            window->resize(window->size().boundedTo(room));
        }
    }
    fitToScreen(window);
}

} // namespace

void fitDialogsToTheirScreens() {
    static QPointer<DialogFitter> installed;
    if (!installed && qApp) {
        installed = new DialogFitter(qApp);
        qApp->installEventFilter(installed);
    }
}

void fitBeforeShowing(QWidget* dialog) {
    const QWidget* parent = dialog->parentWidget();
    const QScreen* screen = parent ? parent->window()->screen() : dialog->screen();
    if (!screen) {
        return;
    }
    const QMargins frame = expectedFrame(dialog);
    const QRect area = screen->availableGeometry();
    const QSize room = area.size().shrunkBy(frame).expandedTo(QSize(1, 1));
    // A minimum of its own overrides the one its layout would impose; the contents then share the room.
    const QSize least = dialog->minimumSize().expandedTo(dialog->minimumSizeHint());
    if (least.boundedTo(room) != least) {
        dialog->setMinimumSize(least.boundedTo(room));
    }
    dialog->resize(dialog->size().boundedTo(room));
    // Unplaced, the dialog centres itself on its parent inside the screen; placed, it is kept inside.
    if (dialog->testAttribute(Qt::WA_Moved)) {
        dialog->move(fitToArea(dialog->geometry().marginsAdded(frame), area).topLeft());
    }
    // The window manager may frame it otherwise: once mapped and framed, the real frame is fitted too.
    for (const int ms : {0, 300}) {
        QTimer::singleShot(ms, dialog, [dialog] { fitShown(dialog); });
    }
}

} // namespace zentoria
