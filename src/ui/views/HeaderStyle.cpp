#include "HeaderStyle.h"

#include <QPainter>
#include <QStyleOption>
#include <QWidget>

namespace zentoria {

QRect HeaderStyle::subElementRect(SubElement element, const QStyleOption* option,
                                  const QWidget* widget) const {
    QRect rect = QProxyStyle::subElementRect(element, option, widget);
    if (element == SE_HeaderArrow && widget && rect.right() >= widget->width()) {
        // As far from the view's edge as the style keeps it from the section's.
        const int margin = qMax(0, option->rect.right() - rect.right());
        rect.moveRight(widget->width() - 1 - margin);
    }
    return rect;
}

void HeaderStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
    if (element != CE_Header || !header || header->sortIndicator == QStyleOptionHeader::None) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    QStyleOptionHeader plain(*header);
    plain.sortIndicator = QStyleOptionHeader::None;
    // The common style leaves the painter clipped to nothing when it was not clipped before.
    painter->save();
    QProxyStyle::drawControl(element, &plain, painter, widget);
    painter->restore();
    QStyleOptionHeader arrow(*header);
    arrow.rect = subElementRect(SE_HeaderArrow, header, widget);
    drawPrimitive(PE_IndicatorHeaderArrow, &arrow, painter, widget);
}

} // namespace zentoria
