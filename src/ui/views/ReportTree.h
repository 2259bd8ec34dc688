#pragma once

#include "ReportTreeModel.h"

#include <QTreeView>

namespace zentoria {

// The report tree control: a view over the report's tree model. Like the tree controls report tools
// are used to, it tells about every click inside it (after the node-click of the same click), a click
// beside the nodes or with the right button keeps the selection, and collapsing a node that holds the
// selection selects that node. Its one column is as wide as the widest text in view, so long paths
// scroll sideways; a path cut off shows whole as a tooltip.
class ReportTree : public QTreeView {
    Q_OBJECT

public:
    explicit ReportTree(QWidget* parent = nullptr);

    void setReportModel(ReportTreeModel* model);
    ReportTreeModel* reportModel() const { return m_model; }
    const NodeCollection& nodes() const { return m_model->nodes(); }
    // The index of the node at a position; invalid when there is none.
    QModelIndex indexOf(int position) const { return m_model->indexOf(position); }
    // The position of the selected node; 0 when no node is selected.
    int selectedPosition() const;
    // The width in pixels the report's node and its kinds need to show their captions whole.
    int captionsWidth() const;

Q_SIGNALS:
    // A left click anywhere in the tree, nodes and expand buttons included; it comes after clicked().
    void clickedAnywhere();
    // A key moved the selection to another node without expanding or collapsing one.
    void selectionMovedByKey();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;

private:
    // Fits the column to the view and the texts in view; growOnly keeps any larger width it has.
    void fitColumn(bool growOnly);
    void selectCollapsedAncestor(const QModelIndex& collapsed);

    ReportTreeModel* m_model = nullptr;
    // Set when a node expands or collapses, so that a key press can tell it did.
    bool m_expandedOrCollapsed = false;
    bool m_fittingColumn = false;
};

} // namespace zentoria
