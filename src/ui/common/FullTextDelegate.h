#pragma once

#include <QStyledItemDelegate>

namespace zentoria {

// Draws items as usual; an item whose text the view shows only in part (cut by its column or by the
// view's edge) shows its whole text as a tooltip. Other items show their tooltip data, if any.
class FullTextDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};

// A tooltip text that shows as the plain text it is: Qt shows anything that looks like markup as
// markup, and a file name is data.
QString plainToolTip(const QString& text);

} // namespace zentoria
