#include "SeparatorDrag.h"

#include "layout/LayoutGeometry.h"
#include "settings/Globals.h"
#include "ui/common/PictureBox.h"
#include "ui/common/Twips.h"

namespace zentoria {

SeparatorDrag::SeparatorDrag(PictureBox* separator, const QWidget* client, std::function<void()> redraw)
    : QObject(separator)
    , m_separator(separator)
    , m_client(client)
    , m_redraw(std::move(redraw)) {
    connect(separator, &PictureBox::mousePressed, this, [this] { DraggingSeparator = true; });
    connect(separator, &PictureBox::mouseMoved, this,
            [this](Qt::MouseButtons, const QPointF& position) { Separator_MouseMove(position); });
    connect(separator, &PictureBox::mouseReleased, this, [this] { DraggingSeparator = false; });
}

void SeparatorDrag::Separator_MouseMove(const QPointF& position) {
    if (!DraggingSeparator) {
        return;
    }
    const double dpi = logicalDpi(m_separator);
    const TwipsRect separator = geometryTwips(m_separator);
    qint32 width = roundHalfEven(separator.Left + position.x() * kTwipsPerInch / dpi);
    if (width < 0) {
        width = 0;
    }
    const double clientWidth = pixelsToTwips(m_client->width(), dpi);
    if (clientWidth < width) {
        width = roundHalfEven(clientWidth - separator.Width);
    }
    globals().InitialTVWidth = width;
    // Moves that arrive while the layout runs its events are not part of this drag step.
    DraggingSeparator = false;
    m_redraw();
    DraggingSeparator = true;
}

} // namespace zentoria
