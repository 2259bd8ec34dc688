#include "DrawnFileIcons.h"

#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

namespace zentoria {

namespace {

const QColor kOutline(0x4f, 0x58, 0x66);
const QColor kPage(0xfb, 0xfc, 0xfd);
const QColor kFold(0xd9, 0xde, 0xe6);
const QColor kNoteMp3(0x1f, 0x6f, 0xb2);
const QColor kNotePlaylist(0xd9, 0x6a, 0x14);
const QColor kListLine(0x8c, 0x95, 0xa4);

// A note with two heads joined by a beam, in a box of the given size.
void drawNote(QPainter& painter, const QRectF& box, const QColor& colour, qreal stroke) {
    const qreal head = box.width() * 0.42;
    const QRectF left(box.left(), box.bottom() - head * 0.8, head, head * 0.8);
    const QRectF right(box.right() - head, box.bottom() - head * 0.8 - box.height() * 0.12, head, head * 0.8);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(left);
    painter.drawEllipse(right);
    const qreal beam = qMax(stroke * 1.6, box.height() * 0.16);
    QPainterPath path;
    path.moveTo(left.right() - stroke, left.center().y());
    path.lineTo(left.right() - stroke, box.top() + box.height() * 0.12);
    path.lineTo(right.right() - stroke, box.top());
    path.lineTo(right.right() - stroke, right.center().y());
    painter.setPen(QPen(colour, stroke * 1.2, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(path);
    QPainterPath top;
    top.moveTo(left.right() - stroke, box.top() + box.height() * 0.12);
    top.lineTo(right.right() - stroke, box.top());
    painter.setPen(QPen(colour, beam, Qt::SolidLine, Qt::FlatCap));
    painter.drawPath(top);
}

void drawFile(QPainter& painter, const QRectF& area, DrawnFile file, bool disabled) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (disabled) {
        painter.setOpacity(0.45);
    }
    const qreal s = qMin(area.width(), area.height());
    const QPointF origin = area.center() - QPointF(s / 2, s / 2);
    // Pixel-sharp edges: the outline runs along pixel centres at small sizes.
    const qreal stroke = qMax(1.0, s / 24);
    const auto snap = [stroke](qreal v) { return std::floor(v) + stroke / 2; };
    const qreal left = snap(origin.x() + s * 0.16);
    const qreal right = snap(origin.x() + s * 0.84) - stroke;
    const qreal top = snap(origin.y() + s * 0.04);
    const qreal bottom = snap(origin.y() + s * 0.96) - stroke;
    const qreal fold = std::round(s * 0.24);

    QPainterPath page;
    page.moveTo(left, top);
    page.lineTo(right - fold, top);
    page.lineTo(right, top + fold);
    page.lineTo(right, bottom);
    page.lineTo(left, bottom);
    page.closeSubpath();
    painter.setPen(QPen(kOutline, stroke, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(kPage);
    painter.drawPath(page);

    QPainterPath corner;
    corner.moveTo(right - fold, top);
    corner.lineTo(right - fold, top + fold);
    corner.lineTo(right, top + fold);
    corner.closeSubpath();
    painter.setBrush(kFold);
    painter.drawPath(corner);

    const qreal inner = right - left;
    if (file == DrawnFile::Playlist) {
        // Three lines of a list above a smaller note.
        painter.setPen(QPen(kListLine, stroke, Qt::SolidLine, Qt::FlatCap));
        for (int line = 0; line < 3; ++line) {
            const qreal y = std::round(top + fold + s * 0.04 + line * s * 0.11) + stroke / 2;
            const qreal end = line == 0 ? right - fold * 0.2 : right - inner * 0.16;
            painter.drawLine(QPointF(left + inner * 0.16, y), QPointF(end, y));
        }
        const QRectF noteBox(left + inner * 0.36, bottom - s * 0.36, inner * 0.5, s * 0.3);
        drawNote(painter, noteBox, kNotePlaylist, stroke);
    } else {
        const QRectF noteBox(left + inner * 0.18, top + fold + s * 0.02, inner * 0.64,
                             bottom - top - fold - s * 0.1);
        drawNote(painter, noteBox, kNoteMp3, stroke);
    }
    painter.restore();
}

class DrawnIconEngine : public QIconEngine {
public:
    explicit DrawnIconEngine(DrawnFile file)
        : m_file(file) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        drawFile(*painter, rect, m_file, mode == QIcon::Disabled);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return scaledPixmap(size, mode, state, 1.0);
    }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal scale) override {
        QImage image(size * scale, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        {
            QPainter painter(&image);
            drawFile(painter, QRectF(QPointF(0, 0), QSizeF(size * scale)), m_file, mode == QIcon::Disabled);
        }
        QPixmap pixmap = QPixmap::fromImage(image);
        pixmap.setDevicePixelRatio(scale);
        return pixmap;
    }

    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
        return {QSize(16, 16), QSize(24, 24), QSize(32, 32), QSize(48, 48), QSize(64, 64), QSize(128, 128)};
    }

    QIconEngine* clone() const override { return new DrawnIconEngine(m_file); }
    QString key() const override { return QStringLiteral("zentoria-drawn-file"); }

private:
    DrawnFile m_file;
};

} // namespace

QIcon drawnFileIcon(DrawnFile file) {
    return QIcon(new DrawnIconEngine(file));
}

} // namespace zentoria
