#include "CaptionLabel.h"

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
    fitToCaption();
    if (changed) {
        Q_EMIT captionChanged();
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

void CaptionLabel::setSingleBorder(bool on) {
    setFrameStyle(on ? QFrame::Panel | QFrame::Sunken : QFrame::NoFrame);
}

void CaptionLabel::fitToCaption() {
    if (!m_autoSize) {
        return;
    }
    if (wordWrap()) {
        resize(width(), qMax(heightForWidth(width()), fontMetrics().height()));
    } else {
        resize(sizeHint());
    }
}

} // namespace zentoria
