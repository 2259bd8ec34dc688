#include "CaptionLabel.h"

#include <QEvent>
#include <QPaintEvent>
#include <QPainter>

namespace zentoria {

CaptionLabel::CaptionLabel(QWidget* parent)
    : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

QString CaptionLabel::displayText(const QString& caption) {
    QString shown;
    shown.reserve(caption.size());
    for (qsizetype i = 0; i < caption.size(); ++i) {
        if (caption[i] == u'&') {
            // The access key is not underlined: without a buddy it would lead nowhere.
            if (i + 1 < caption.size()) {
                ++i;
            } else {
                break;
            }
        }
        shown += caption[i];
    }
    return shown;
}

void CaptionLabel::setCaption(const QString& caption) {
    const bool changed = caption != m_caption;
    m_caption = caption;
    setText(displayText(caption));
    updateAccessibleName();
    m_wrappedWidth = -1;
    fitToCaption();
    if (changed) {
        Q_EMIT captionChanged();
    }
}

void CaptionLabel::setAccessibleTitle(const QString& title) {
    m_accessibleTitle = title;
    updateAccessibleName();
}

void CaptionLabel::updateAccessibleName() {
    // A screen reader speaks what is shown, and what it is.
    if (m_accessibleTitle.isEmpty() || text().isEmpty()) {
        setAccessibleName(text().isEmpty() ? m_accessibleTitle : text());
    } else {
        setAccessibleName(m_accessibleTitle + QStringLiteral(": ") + text());
    }
}

void CaptionLabel::setAutoSize(bool on) {
    m_autoSize = on;
    fitToCaption();
}

void CaptionLabel::setOpaque(bool on) {
    setAutoFillBackground(on);
    if (on) {
        setBackgroundRole(QPalette::Window);
    }
}

void CaptionLabel::setOpaqueColours(QPalette::ColorRole background, QPalette::ColorRole text) {
    QPalette colours = palette();
    colours.setColor(QPalette::Window, colours.color(background));
    colours.setColor(QPalette::WindowText, colours.color(text));
    setPalette(colours);
    setOpaque(true);
}

void CaptionLabel::setSingleBorder(bool on) {
    setFrameStyle(on ? QFrame::Panel | QFrame::Sunken : QFrame::NoFrame);
}

void CaptionLabel::fitToCaption() {
    if (!m_autoSize) {
        if (wordWrap()) {
            update();
        }
        return;
    }
    if (wordWrap()) {
        wrapToWidth();
        resize(width(), wrappedHeight(m_wrapped.rows().size()));
    } else {
        resize(sizeHint());
    }
}

void CaptionLabel::wrapToWidth() {
    const int width = contentsRect().width();
    if (width != m_wrappedWidth) {
        m_wrapped.layout(text(), font(), width);
        m_wrappedWidth = width;
    }
}

int CaptionLabel::wrappedHeight(qsizetype rows) const {
    const QMargins frame = contentsMargins();
    return int(rows) * fontMetrics().lineSpacing() + frame.top() + frame.bottom();
}

int CaptionLabel::heightForWidth(int width) const {
    if (!wordWrap()) {
        return QLabel::heightForWidth(width);
    }
    const QMargins frame = contentsMargins();
    WrappedText wrapped;
    wrapped.layout(text(), font(), width - frame.left() - frame.right());
    return wrappedHeight(wrapped.rows().size());
}

QSize CaptionLabel::sizeHint() const {
    // A wrapping label's width is fixed; its height is that of its lines. QLabel would lay out all of
    // them with the rich-text engine.
    return wordWrap() ? QSize(width(), heightForWidth(width())) : QLabel::sizeHint();
}

QSize CaptionLabel::minimumSizeHint() const {
    return wordWrap() ? QSize(0, fontMetrics().lineSpacing()) : QLabel::minimumSizeHint();
}

void CaptionLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    if (wordWrap()) {
        wrapToWidth();
    }
}

void CaptionLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange && wordWrap()) {
        m_wrappedWidth = -1;
        fitToCaption();
    }
}

void CaptionLabel::paintEvent(QPaintEvent* event) {
    if (!wordWrap()) {
        QLabel::paintEvent(event);
        return;
    }
    wrapToWidth();
    QPainter painter(this);
    drawFrame(&painter);
    const QRect area = contentsRect();
    painter.setClipRect(area.intersected(event->rect()));
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole()));
    const QFontMetrics metrics = fontMetrics();
    const int line = metrics.lineSpacing();
    const qsizetype rows = m_wrapped.rows().size();
    // Only the lines the repaint covers: a panel of thousands of names shows a few dozen at a time.
    const qsizetype first = qMax(0, (event->rect().top() - area.top()) / line);
    const qsizetype last = qMin(rows - 1, qsizetype((event->rect().bottom() - area.top()) / line));
    for (qsizetype row = first; row <= last; ++row) {
        painter.drawText(QPointF(area.left(), area.top() + row * line + metrics.ascent()),
                         m_wrapped.rowText(row).toString());
    }
}

} // namespace zentoria
