#pragma once

#include <QTableWidget>

namespace zentoria {

// Preferences' table of folder mappings. Tab moves from cell to cell as in any table, but from its last
// cell (Shift+Tab from its first) it leaves the table rather than wrapping round, so that a keyboard
// user reaches the buttons beside it.
class MappingTable : public QTableWidget {
    Q_OBJECT

public:
    MappingTable(int rows, int columns, QWidget* parent);
    using QTableWidget::edit;

protected:
    bool focusNextPrevChild(bool next) override;
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Whether moving on that way from the current cell would wrap round the table.
    bool atEdge(bool next) const;
};

} // namespace zentoria
