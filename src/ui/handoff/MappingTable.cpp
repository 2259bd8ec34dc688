#include "MappingTable.h"

namespace zentoria {

MappingTable::MappingTable(int rows, int columns, QWidget* parent)
    : QTableWidget(rows, columns, parent) {}

bool MappingTable::atEdge(bool next) const {
    const QModelIndex current = currentIndex();
    if (!current.isValid()) {
        return true;
    }
    return next ? current.row() == rowCount() - 1 && current.column() == columnCount() - 1
                : current.row() == 0 && current.column() == 0;
}

bool MappingTable::focusNextPrevChild(bool next) {
    // The view's own Tab handling moves the current cell, round to the first one after the last.
    return atEdge(next) ? QAbstractScrollArea::focusNextPrevChild(next)
                        : QTableWidget::focusNextPrevChild(next);
}

void MappingTable::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    // Tab in the last cell's editor: what was typed is kept (the delegate commits it first), and the
    // keyboard moves on past the table.
    const bool leave = (hint == QAbstractItemDelegate::EditNextItem && atEdge(true)) ||
                       (hint == QAbstractItemDelegate::EditPreviousItem && atEdge(false));
    QTableWidget::closeEditor(editor, leave ? QAbstractItemDelegate::NoHint : hint);
    if (leave) {
        QAbstractScrollArea::focusNextPrevChild(hint == QAbstractItemDelegate::EditNextItem);
    }
}

} // namespace zentoria
