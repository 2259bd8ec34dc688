// frmMain: the report tree's notifications and the activation of tree nodes and list items.
#include "FileListView.h"
#include "ReportTree.h"
#include "frmMain.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/ImageList.h"
#include "ui/common/Twips.h"

#include <QLabel>

#include <cstdio>

namespace zentoria {

namespace {

// Positions are 16-bit: the walk over the tree's nodes cannot pass this one.
constexpr int kLastWalkPosition = 32767;

} // namespace

void frmMain::TV_Collapse() {
    CollapsePending = true;
}

void frmMain::TV_Expand(QTreeWidgetItem* node) {
    TV->setCurrentItem(node);
    ExpandPending = true;
}

void frmMain::TV_NodeClick() {
    ItemClick(TV);
}

void frmMain::TV_Click() {
    ItemClick(TV);
}

void frmMain::ItemClick(QWidget* Obj) {
    const bool fromTree = Obj == TV;
    const int selected = fromTree ? TV->selectedPosition() : 0;
    if (fromTree ? selected == 0 : LV->selectedItems().isEmpty()) {
        return;
    }
    const NodeCollection& nodes = TV->nodes();
    if (fromTree) {
        const bool collapsed = !TV->item(selected)->isExpanded();
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

    // A double click in the list leaves it as it is: emptying it would only lose the user's place.
    if (fromTree) {
        const QByteArray key = nodes.key(selected).toLatin1();
        const QIcon mp3 = ImgDirTree->icon(QStringLiteral("MP3"));
        LV->clear();
        QList<QTreeWidgetItem*> items;
        items.reserve(nodes.childCount(selected));
        const int last = qMin(nodes.count(), kLastWalkPosition);
        for (int p = 2; p <= last; ++p) {
            // Keys are unique, so the parent whose key is N's is N itself.
            if (nodes.parentPosition(p) == selected) {
                char itemKey[32];
                const int length = std::snprintf(itemKey, sizeof itemKey, "%s%d", key.constData(), p);
                items.append(FileListView::createItem(
                    QString::fromLatin1(itemKey, qMin<int>(length, sizeof itemKey - 1)),
                    nodes.text(p).trimmed(), mp3));
            }
        }
        LV->addTopLevelItems(items);
        LV->setSingleColumn(QStringLiteral("File"), QStringLiteral("MP3"),
                            twipsToPixels(6500, logicalDpi(LV)));
        lblWebFolder->setCaption(nodes.text(selected));
    }

    // Without the MP3 image (the desktop may have none) the panel icon stays as it is.
    if (const QIcon mp3 = ImgDirTree->icon(QStringLiteral("MP3")); !mp3.isNull()) {
        ImgIcon->setPixmap(mp3.pixmap(32, 32));
    }
    LoadOtherImages(true);
}

void frmMain::LoadOtherImages(bool Others) {
    // The images stacked behind the panel icon come with the file-type icons; without a panel icon
    // there is nothing to stack them behind.
    if (Others && ImgIcon->pixmap().isNull()) {
        for (QLabel* other : std::as_const(ImgOthers)) {
            other->hide();
        }
    }
}

} // namespace zentoria
