#include "StatusBar.h"

#include "ui/common/ElidedLabel.h"
#include "ui/common/Twips.h"

#include <QEvent>
#include <QLabel>
#include <QTimer>

namespace zentoria {

StatusBar::StatusBar(QWidget* parent)
    : QFrame(parent)
    , m_message(new ElidedLabel(this))
    , m_messageTimer(new QTimer(this)) {
    if (parent) {
        parent->installEventFilter(this);
    }
    m_message->setObjectName(QStringLiteral("lblStatusMessage"));
    m_message->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    m_message->setContentsMargins(2, 0, 2, 0);
    m_message->setAutoFillBackground(true);
    m_message->hide();
    m_messageTimer->setSingleShot(true);
    m_messageTimer->setInterval(kMessageMs);
    connect(m_messageTimer, &QTimer::timeout, m_message, &QWidget::hide);
}

void StatusBar::showMessage(const QString& text) {
    m_message->setFullText(text);
    m_message->show();
    placePanels();
    m_messageTimer->start();
}

bool StatusBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize) {
        setGeometry(0, parentWidget()->height() - height(), parentWidget()->width(), height());
    } else if (watched == m_work && event->type() == QEvent::Show) {
        m_message->hide();
    }
    return QFrame::eventFilter(watched, event);
}

QLabel* StatusBar::addPanel(const QString& key, double widthTwips, const QString& text) {
    auto* label = new QLabel(text, this);
    label->setObjectName(key);
    label->setTextFormat(Qt::PlainText);
    label->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    label->setContentsMargins(2, 0, 2, 0);
    m_panels.append({key, label, widthTwips});
    placePanels();
    return label;
}

QLabel* StatusBar::panel(const QString& key) const {
    for (const Panel& p : m_panels) {
        if (p.key == key) {
            return p.label;
        }
    }
    return nullptr;
}

bool StatusBar::setPanelWidth(const QString& key, double widthTwips) {
    if (widthTwips < 0) {
        return false;
    }
    for (Panel& p : m_panels) {
        if (p.key == key) {
            p.width = widthTwips;
            placePanels();
            return true;
        }
    }
    return false;
}

void StatusBar::setWorkWidget(QWidget* widget) {
    m_work = widget;
    widget->setParent(this);
    widget->installEventFilter(this);
    placePanels();
}

void StatusBar::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    placePanels();
}

void StatusBar::placePanels() {
    const double dpi = logicalDpi(this);
    double left = 0;
    for (const Panel& p : m_panels) {
        const int x = twipsToPixels(left, dpi);
        p.label->setGeometry(x, 1, twipsToPixels(left + p.width, dpi) - x - 1, height() - 1);
        left += p.width;
    }
    m_message->setGeometry(rect());
    m_message->raise();
    if (m_work) {
        m_work->setGeometry(rect());
        m_work->raise();
    }
}

} // namespace zentoria
