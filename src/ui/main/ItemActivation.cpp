// frmMain: the activation of tree nodes and list items.
#include "frmMain.h"
#include "ui/common/ImageList.h"
#include "ui/panel/WebPanel.h"
#include "ui/views/FileListView.h"
#include "ui/views/ReportTree.h"

namespace zentoria {

void frmMain::ItemClick(QWidget* Obj) {
    const bool fromTree = Obj == TV;
    const int selected = fromTree ? TV->selectedPosition() : 0;
    if (fromTree ? selected == 0 : !LV->selectionModel()->hasSelection()) {
        return;
    }
    const NodeCollection& nodes = TV->nodes();
    if (fromTree) {
        const bool collapsed = !TV->isExpanded(TV->indexOf(selected));
        if (CollapsePending && nodes.childCount(selected) > 0 && collapsed) {
            CollapsePending = false;
            return;
        }
        CollapsePending = false;
        // The click of the mouse action that expanded a node only selected it.
        if (ExpandPending) {
            ExpandPending = false;
            return;
        }
        if (!nodes.fullPath(selected).contains(u'\\')) {
            return;
        }
    }

    const QIcon reportIcon = ImgDirTree->icon(QStringLiteral("MP3"));
    // A double click in the list leaves it as it is: emptying it would only lose the user's place.
    if (fromTree) {
        // Every child, in tree order: a count in 16 bits would stop short of the last files of the
        // largest reports, which the tooltip's count and Export include.
        LV->listModel()->setItems(nodes.key(selected), nodes.children(selected), reportIcon);
        LV->setSingleColumn(QStringLiteral("File"), QStringLiteral("MP3"),
                            twipsToPixels(6500, logicalDpi(LV)));
        pctWeb->setTitle(nodes.text(selected));
    }
    pctWeb->showIcon(reportIcon);
}

} // namespace zentoria
