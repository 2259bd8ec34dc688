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

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap m_picture;
    bool m_autoSize = false;
};

} // namespace zentoria
