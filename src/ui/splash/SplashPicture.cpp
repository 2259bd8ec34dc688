#include "SplashPicture.h"

#include "settings/Texts.h"
#include "shell/DrawnFileIcons.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>

namespace zentoria {

void drawSplashPicture(QPainter& painter) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    const QRectF area(0, 0, kSplashPictureWidth, kSplashPictureHeight);

    QLinearGradient ground(area.topLeft(), area.bottomLeft());
    ground.setColorAt(0, QColor(0xf7, 0xf9, 0xfc));
    ground.setColorAt(1, QColor(0xdc, 0xe5, 0xf0));
    painter.fillRect(area, ground);

    // A band across the foot in the panel's blue, with the orange of the version text above it.
    const QRectF band(0, area.height() - 46, area.width(), 46);
    QLinearGradient bandColour(band.topLeft(), band.topRight());
    bandColour.setColorAt(0, QColor(0x2b, 0x5d, 0x92));
    bandColour.setColorAt(1, QColor(0x6f, 0x9c, 0xcc));
    painter.fillRect(band, bandColour);
    painter.fillRect(QRectF(0, band.top() - 3, area.width(), 3), QColor(0xff, 0xc0, 0x80));

    // Three MP3 files stacked, as the panel shows a selection.
    const QIcon file = drawnFileIcon(DrawnFile::Mp3);
    const QRectF icon(44, 92, 104, 104);
    for (int copy = 2; copy >= 0; --copy) {
        file.paint(&painter, icon.translated(12 * copy, -10 * copy).toRect());
    }

    QFont title(QStringLiteral("DejaVu Sans"));
    title.setStyleHint(QFont::SansSerif);
    title.setPixelSize(46);
    title.setBold(true);
    painter.setFont(title);
    painter.setPen(QColor(0x1f, 0x3b, 0x5c));
    painter.drawText(QPointF(190, 160), QStringLiteral("Zentoria"));

    QFont subtitle = title;
    subtitle.setPixelSize(15);
    subtitle.setBold(false);
    // A language file's longer words get a smaller type rather than being cut at the picture's edge.
    const QString purpose[] = {uiText(txt::SplashPurpose1), uiText(txt::SplashPurpose2)};
    const qreal room = area.width() - 193 - 12;
    while (subtitle.pixelSize() > 9 &&
           std::max(QFontMetricsF(subtitle).horizontalAdvance(purpose[0]),
                    QFontMetricsF(subtitle).horizontalAdvance(purpose[1])) > room) {
        subtitle.setPixelSize(subtitle.pixelSize() - 1);
    }
    painter.setFont(subtitle);
    painter.setPen(QColor(0x4f, 0x58, 0x66));
    painter.drawText(QPointF(193, 188), purpose[0]);
    painter.drawText(QPointF(193, 208), purpose[1]);

    QFont foot = subtitle;
    foot.setPixelSize(12);
    painter.setFont(foot);
    painter.setPen(Qt::white);
    painter.drawText(band.adjusted(16, 0, -16, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     QStringLiteral("Melvadex's Zentoria"));

    painter.setPen(QColor(0x9a, 0xa7, 0xb8));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(area.adjusted(0.5, 0.5, -0.5, -0.5));
    painter.restore();
}

} // namespace zentoria
