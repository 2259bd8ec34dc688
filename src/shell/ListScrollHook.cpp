#include "ListScrollHook.h"

#include <QAbstractScrollArea>
#include <QKeyEvent>
#include <QPointer>
#include <QScrollBar>
#include <QWheelEvent>

namespace zentoria {

namespace {

// The one hook: an event filter that sees the list's events before the list does.
class ListWindowProc : public QObject {
public:
    ListWindowProc(QAbstractScrollArea* list, std::function<void()> beforeScroll)
        : m_list(list)
        , m_beforeScroll(std::move(beforeScroll)) {
        list->installEventFilter(this);
        list->viewport()->installEventFilter(this);
        list->verticalScrollBar()->installEventFilter(this);
    }

    ~ListWindowProc() override {
        if (m_list) {
            m_list->removeEventFilter(this);
            m_list->viewport()->removeEventFilter(this);
            m_list->verticalScrollBar()->removeEventFilter(this);
        }
    }

    const QAbstractScrollArea* list() const { return m_list; }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (scrollsVertically(watched, event)) {
            m_beforeScroll();
        }
        // Every event goes on to the list unchanged.
        return false;
    }

private:
    bool scrollsVertically(QObject* watched, QEvent* event) const {
        switch (event->type()) {
        case QEvent::Wheel:
            return static_cast<QWheelEvent*>(event)->angleDelta().y() != 0 &&
                   (watched == m_list->viewport() || watched == m_list->verticalScrollBar());
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            // Arrows, track and thumb alike.
            return watched == m_list->verticalScrollBar();
        case QEvent::KeyPress:
            if (watched == m_list) {
                switch (static_cast<QKeyEvent*>(event)->key()) {
                case Qt::Key_Up:
                case Qt::Key_Down:
                case Qt::Key_PageUp:
                case Qt::Key_PageDown:
                case Qt::Key_Home:
                case Qt::Key_End:
                    return true;
                default:
                    return false;
                }
            }
            return false;
        default:
            return false;
        }
    }

    QPointer<QAbstractScrollArea> m_list;
    std::function<void()> m_beforeScroll;
};

// The hook's single slot.
std::unique_ptr<ListWindowProc>& OldWindowProc() {
    static std::unique_ptr<ListWindowProc> slot;
    return slot;
}

} // namespace

void RestorePanelOrder(QWidget* list, QWidget* panel, QWidget* scrollBar) {
    list->raise();
    panel->raise();
    scrollBar->raise();
}

void HookWindow(QAbstractScrollArea* list, std::function<void()> beforeScroll) {
    OldWindowProc() = std::make_unique<ListWindowProc>(list, std::move(beforeScroll));
}

void UnhookWindow(QAbstractScrollArea* list) {
    if (OldWindowProc() && OldWindowProc()->list() == list) {
        OldWindowProc().reset();
    }
}

bool isHooked(const QAbstractScrollArea* list) {
    return OldWindowProc() && OldWindowProc()->list() == list;
}

} // namespace zentoria
