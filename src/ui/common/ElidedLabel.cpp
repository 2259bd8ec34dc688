#include "ElidedLabel.h"

namespace zentoria {

ElidedLabel::ElidedLabel(QWidget* parent)
    : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::setFullText(const QString& text) {
    m_full = text;
    setToolTip(text);
    setAccessibleName(text);
    fit();
}

QSize ElidedLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    fit();
}

void ElidedLabel::fit() {
    setText(fontMetrics().elidedText(m_full, Qt::ElideRight, contentsRect().width()));
}

} // namespace zentoria
