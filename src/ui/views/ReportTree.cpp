#include "ReportTree.h"

#include "ui/common/FocusLook.h"
#include "ui/common/FullTextDelegate.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QScopedValueRollback>

namespace zentoria {

ReportTree::ReportTree(QWidget* parent)
    : QTreeView(parent) {
    setHeaderHidden(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setUniformRowHeights(true);
    header()->setStretchLastSection(false);
    // The column is measured on the rows in view only: a kind of sixteen thousand paths would
    // otherwise cost a text layout for each of a thousand rows at every expansion.
    header()->setResizeContentsPrecision(0);
    setItemDelegate(new FullTextDelegate(this));
    showFocusClearly(this);
    connect(this, &QTreeView::collapsed, this, &ReportTree::selectCollapsedAncestor);
    connect(this, &QTreeView::expanded, this, [this] { m_expandedOrCollapsed = true; });
    connect(this, &QTreeView::collapsed, this, [this] { m_expandedOrCollapsed = true; });
}

void ReportTree::setReportModel(ReportTreeModel* model) {
    m_model = model;
    setModel(model);
    // A report's root shows its kinds from the start. Building the tree is no user action: the expand
    // handlers must not see the root open.
    connect(model, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex& parent, int first) {
        if (parent.isValid() && !parent.parent().isValid() && first == 0) {
            const QSignalBlocker quiet(this);
            expand(parent);
        }
    });
}

int ReportTree::selectedPosition() const {
    const QModelIndexList selected =
        selectionModel() ? selectionModel()->selectedIndexes() : QModelIndexList();
    return selected.isEmpty() ? 0 : ReportTreeModel::positionOf(selected.first());
}

int ReportTree::captionsWidth() const {
    if (!model()) {
        return 0;
    }
    int widest = 0;
    for (int row = 0; row < model()->rowCount(); ++row) {
        const QModelIndex report = model()->index(row, 0);
        widest = qMax(widest, indentation() + sizeHintForIndex(report).width());
        for (int kind = 0; kind < model()->rowCount(report); ++kind) {
            widest =
                qMax(widest, 2 * indentation() + sizeHintForIndex(model()->index(kind, 0, report)).width());
        }
    }
    return widest;
}

void ReportTree::mousePressEvent(QMouseEvent* event) {
    // The right button shows no menu here and moves nothing; a click beside the nodes keeps the
    // selection, as tree controls do.
    if (event->button() == Qt::RightButton || !indexAt(event->position().toPoint()).isValid()) {
        event->accept();
        return;
    }
    QTreeView::mousePressEvent(event);
}

void ReportTree::mouseReleaseEvent(QMouseEvent* event) {
    QTreeView::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton) {
        Q_EMIT clickedAnywhere();
    }
}

void ReportTree::keyPressEvent(QKeyEvent* event) {
    const int before = selectedPosition();
    m_expandedOrCollapsed = false;
    QTreeView::keyPressEvent(event);
    // A key that expanded or collapsed a node has told so already; one that only moved on tells now.
    const int after = selectedPosition();
    if (after != 0 && after != before && !m_expandedOrCollapsed) {
        Q_EMIT selectionMovedByKey();
    }
}

void ReportTree::updateGeometries() {
    QTreeView::updateGeometries();
    fitColumn(false);
}

void ReportTree::scrollContentsBy(int dx, int dy) {
    QTreeView::scrollContentsBy(dx, dy);
    // Longer paths coming into view widen the column; it does not narrow under the user's scrolling.
    if (dy != 0) {
        fitColumn(true);
    }
    // A sideways scroll paints the rows anew: moving the drawn pixels left fragments of elided and
    // tooltip-drawn text behind.
    if (dx != 0) {
        viewport()->update();
    }
}

void ReportTree::fitColumn(bool growOnly) {
    if (m_fittingColumn || !model()) {
        return;
    }
    // At least the view's width, so that a click anywhere on a row is on its node; wider when the
    // texts in view are, so that they scroll sideways rather than being cut.
    const QScopedValueRollback fitting(m_fittingColumn, true);
    int width = qMax(viewport()->width(), sizeHintForColumn(0));
    if (growOnly) {
        width = qMax(width, header()->sectionSize(0));
    }
    if (header()->sectionSize(0) != width) {
        header()->resizeSection(0, width);
    }
}

void ReportTree::selectCollapsedAncestor(const QModelIndex& collapsed) {
    // A hidden node cannot stay selected: the selection moves up to the node that hid it.
    const QModelIndex selected = indexOf(selectedPosition());
    for (QModelIndex up = selected.parent(); up.isValid(); up = up.parent()) {
        if (up == collapsed) {
            setCurrentIndex(collapsed);
            return;
        }
    }
}

} // namespace zentoria
