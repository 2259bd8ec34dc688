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

// Watches every widget's showing; a dialog's Show arrives here before it maps and before the dialog
// centres itself on its parent, so the size it centres is the fitted one.
class DialogFitter : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show && watched->isWidgetType()) {
            auto* widget = static_cast<QWidget*>(watched);
            if (widget->isWindow() && qobject_cast<QDialog*>(widget)) {
                fitDialogBeforeShowing(widget);
            }
        }
        return false;
    }
};

// The frame a window of this program gets from the window manager, as far as it is known before the
// dialog has one of its own: its parent's, or the one it had when shown before.
QMargins expectedFrame(const QWidget* dialog) {
    if (const QMargins own = frameMarginsOf(dialog); !own.isNull()) {
        return own;
    }
    const QWidget* parent = dialog->parentWidget();
    return parent ? frameMarginsOf(parent->window()) : QMargins();
}

} // namespace

void fitDialogsToTheirScreens() {
    static QPointer<DialogFitter> installed;
    if (!installed && qApp) {
        installed = new DialogFitter(qApp);
        qApp->installEventFilter(installed);
    }
}

void fitDialogBeforeShowing(QWidget* dialog) {
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
    // The window manager may frame it otherwise: once mapped, the real frame is fitted too.
    QTimer::singleShot(0, dialog, [dialog] { fitToScreen(dialog); });
}

} // namespace zentoria
