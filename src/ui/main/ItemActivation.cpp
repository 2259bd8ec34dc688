// frmMain: the report tree's notifications and the activation of tree nodes and list items.
#include "FileListView.h"
#include "ReportTree.h"
#include "frmMain.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/ImageList.h"
#include "ui/common/PictureBox.h"
#include "ui/common/Twips.h"

#include <QLabel>

#include <algorithm>

namespace zentoria {

namespace {

// Positions are 16-bit: the walk over the tree's nodes cannot pass this one.
constexpr int kLastWalkPosition = 32767;

} // namespace

void frmMain::TV_Collapse() {
    CollapsePending = true;
}

void frmMain::TV_Expand(const QModelIndex& node) {
    TV->setCurrentIndex(node);
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

    // A double click in the list leaves it as it is: emptying it would only lose the user's place.
    if (fromTree) {
        // The children in tree order are the nodes a walk over the positions from 2 up finds under
        // N; that walk counts in 16 bits, so it cannot reach past position 32767.
        const QList<int>& children = nodes.children(selected);
        const auto reached = std::upper_bound(children.cbegin(), children.cend(), kLastWalkPosition);
        LV->listModel()->setItems(nodes.key(selected), QList<int>(children.cbegin(), reached),
                                  ImgDirTree->icon(QStringLiteral("MP3")));
        LV->setSingleColumn(QStringLiteral("File"), QStringLiteral("MP3"),
                            twipsToPixels(6500, logicalDpi(LV)));
        lblWebFolder->setCaption(nodes.text(selected));
        updateTitleAndAddress();
    }

    // Without the MP3 image (the desktop may have none) the panel icon stays as it is.
    if (const QIcon mp3 = ImgDirTree->icon(QStringLiteral("MP3")); !mp3.isNull()) {
        ImgIcon->setPixmap(mp3.pixmap(32, 32));
    }
    LoadOtherImages(true);
}

void frmMain::LoadOtherImages(bool Others) {
    if (ImgOthers.size() < 2) {
        auto* other = new QLabel(pctWeb);
        other->setObjectName(QStringLiteral("ImgOthers"));
        other->setProperty("index", 1);
        setGeometryTwips(other, geometryTwips(ImgOthers.first()));
        ImgOthers.append(other);
    }
    const QPixmap picture = ImgIcon->pixmap();
    if (picture.isNull()) {
        for (QLabel* other : std::as_const(ImgOthers)) {
            other->hide();
        }
        return;
    }
    ImgIcon->raise();
    const TwipsRect icon = geometryTwips(ImgIcon);
    for (int i = 0; i < 2; ++i) {
        QLabel* other = ImgOthers[i];
        other->setPixmap(picture);
        setGeometryTwips(other, icon.Left + 100 * (i + 1), icon.Top - 50 * (i + 1), icon.Width, icon.Height);
        other->lower();
        other->setVisible(Others);
    }
}

} // namespace zentoria
