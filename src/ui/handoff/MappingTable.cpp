#include "MappingTable.h"

#include <QKeyEvent>

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

bool MappingTable::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    const bool editing = QTableWidget::edit(index, trigger, event);
    // Tab in a cell's editor reaches its delegate before the table: watch for it there.
    if (QWidget* editor = editing ? indexWidget(index) : nullptr) {
        editor->installEventFilter(this);
    }
    return editing;
}

bool MappingTable::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool next = key == Qt::Key_Tab;
        if ((next || key == Qt::Key_Backtab) && atEdge(next)) {
            // What was typed is kept, the editor closed, and the keyboard moves on past the table.
            if (auto* editor = qobject_cast<QWidget*>(watched)) {
                commitData(editor);
            }
            QAbstractItemView::closePersistentEditor(currentIndex());
            QAbstractScrollArea::focusNextPrevChild(next);
            return true;
        }
    }
    return QTableWidget::eventFilter(watched, event);
}

} // namespace zentoria
