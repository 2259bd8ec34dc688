#include "PictureBox.h"

#include <QMouseEvent>
#include <QPainter>

namespace zentoria {

PictureBox::PictureBox(QWidget* parent)
    : QWidget(parent) {}

void PictureBox::setPicture(const QPixmap& picture) {
    m_picture = picture;
    if (m_autoSize && !m_picture.isNull()) {
        resize(m_picture.deviceIndependentSize().toSize());
    }
    update();
}

void PictureBox::setBackgroundColor(const QColor& color) {
    QPalette pal = palette();
    pal.setColor(QPalette::Window, color);
    setPalette(pal);
    setAutoFillBackground(true);
}

void PictureBox::setAutoSize(bool on) {
    m_autoSize = on;
    setPicture(m_picture);
}

void PictureBox::paintEvent(QPaintEvent*) {
    if (!m_picture.isNull()) {
        QPainter(this).drawPixmap(0, 0, m_picture);
    }
}

void PictureBox::mousePressEvent(QMouseEvent* event) {
    Q_EMIT mousePressed(event->button(), event->position());
}

void PictureBox::mouseMoveEvent(QMouseEvent* event) {
    Q_EMIT mouseMoved(event->buttons(), event->position());
}

void PictureBox::mouseReleaseEvent(QMouseEvent* event) {
    Q_EMIT mouseReleased(event->button(), event->position());
}

} // namespace zentoria
