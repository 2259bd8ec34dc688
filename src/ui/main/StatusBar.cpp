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
    // Over the empty panels it takes the room of (placePanels), their frames do not show through.
    label->setAutoFillBackground(true);
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

void StatusBar::setPanelText(const QString& key, const QString& text) {
    if (QLabel* label = panel(key)) {
        // What a panel says anew is newer than a passing line over it.
        if (!text.isEmpty() && text != label->text()) {
            m_message->hide();
        }
        label->setText(text);
        label->setToolTip(text);
        placePanels();
    }
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
    QList<int> starts;
    for (const Panel& p : m_panels) {
        const int x = twipsToPixels(left, dpi);
        starts << x;
        p.label->setGeometry(x, 1, twipsToPixels(left + p.width, dpi) - x - 1, height() - 1);
        left += p.width;
    }
    // A text longer than its panel takes the room of the empty panels on its left, as far as it needs:
    // they have nothing to show, and a cut line tells less.
    for (qsizetype i = 1; i < m_panels.size(); ++i) {
        QLabel* label = m_panels.at(i).label;
        const int needs = label->sizeHint().width();
        int x = label->x();
        for (qsizetype j = i - 1; j >= 0 && label->geometry().right() - x + 1 < needs; --j) {
            if (!m_panels.at(j).label->text().isEmpty()) {
                break;
            }
            x = starts.at(j);
        }
        x = std::max(x, label->geometry().right() + 1 - needs);
        if (x < label->x()) {
            label->setGeometry(x, 1, label->geometry().right() - x + 1, height() - 1);
            label->raise();
        }
    }
    m_message->setGeometry(rect());
    m_message->raise();
    if (m_work) {
        m_work->setGeometry(rect());
        m_work->raise();
    }
}

} // namespace zentoria
