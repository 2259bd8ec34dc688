#pragma once

#include <QPixmap>
#include <QWidget>

namespace zentoria {

// A plain surface that can hold other controls and shows an optional picture at its top left, over its
// background colour.
class PictureBox : public QWidget {
    Q_OBJECT

public:
    explicit PictureBox(QWidget* parent = nullptr);

    QPixmap picture() const { return m_picture; }
    void setPicture(const QPixmap& picture);
    void setBackgroundColor(const QColor& color);
    // Takes the size of its picture whenever the picture changes.
    void setAutoSize(bool on);

Q_SIGNALS:
    // Mouse buttons and moves over the box, positions in pixels from its top left. While a button is
    // held the box keeps getting the moves, also outside it.
    void mousePressed(Qt::MouseButton button, const QPointF& position);
    void mouseMoved(Qt::MouseButtons buttons, const QPointF& position);
    void mouseReleased(Qt::MouseButton button, const QPointF& position);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QPixmap m_picture;
    bool m_autoSize = false;
};

} // namespace zentoria
