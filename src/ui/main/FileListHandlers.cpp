// frmMain: the file list's notifications.
#include "FileListView.h"
#include "frmMain.h"
#include "ui/panel/WebPanel.h"

#include <QItemSelectionModel>

namespace zentoria {

void frmMain::LV_ColumnClick(int column) {
    // Every header click switches sorting on; a click on the sorted column turns the direction round.
    if (LV->sortKey() == column) {
        LV->setSort(column, 1 - LV->sortOrder());
    } else {
        LV->setSort(column, LV->sortOrder());
    }
}

void frmMain::LV_ItemClick() {
    pctWeb->ResetWebItems(true);
    // Enabling the timer again does not put the refresh off: clicks within its interval give one.
    pctWeb->scheduleRefresh();
}

void frmMain::LV_MouseDown(Qt::MouseButton button, const QPoint& position) {
    if (button != Qt::RightButton) {
        return;
    }
    const QModelIndex found = LV->indexAt(position);
    if (!found.isValid()) {
        return;
    }
    // Every item unselected, then the found one made the selected (and current) item.
    LV->selectionModel()->setCurrentIndex(found,
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

} // namespace zentoria
