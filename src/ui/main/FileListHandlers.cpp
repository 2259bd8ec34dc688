// frmMain: the file list's notifications.
#include "FileListView.h"
#include "frmMain.h"

#include <QTimer>

namespace zentoria {

void frmMain::LV_ColumnClick(int column) {
    // Every header click switches sorting on; a click on the sorted column turns the direction round.
    if (LV->sortKey() == column) {
        LV->setSort(column, 1 - LV->sortOrder(), true);
    } else {
        LV->setSort(column, LV->sortOrder(), true);
    }
}

void frmMain::LV_ItemClick() {
    ResetWebItems(true);
    ShowSelectedItems->start();
}

void frmMain::LV_Click() {
    LV_ItemClick();
}

void frmMain::LV_MouseDown(Qt::MouseButton button, const QPoint& position) {
    if (button != Qt::RightButton) {
        return;
    }
    QTreeWidgetItem* found = LV->itemAt(position);
    if (!found) {
        return;
    }
    for (int i = 0; i < LV->topLevelItemCount(); ++i) {
        LV->topLevelItem(i)->setSelected(false);
    }
    LV->setCurrentItem(found);
    found->setSelected(true);
}

void frmMain::LV_DblClick() {
    ItemClick(LV);
}

void frmMain::ResetWebItems(bool Visible) {
    // The panel's item fields arrive with the details panel; until then there is nothing to reset.
    Q_UNUSED(Visible);
}

} // namespace zentoria
