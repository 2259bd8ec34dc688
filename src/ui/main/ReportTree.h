#pragma once

#include "NodeCollection.h"

#include <QTreeWidget>

namespace zentoria {

// The report tree control: a tree widget that keeps its nodes in a NodeCollection, so that nodes are
// found by key and by the position they were added at. Like the tree controls report tools are used to,
// it tells about every click inside it (after the node-click of the same click), a click beside the
// nodes keeps the selection, and collapsing a node that holds the selection selects that node.
class ReportTree : public QTreeWidget {
    Q_OBJECT

public:
    explicit ReportTree(QWidget* parent = nullptr);

    const NodeCollection& nodes() const { return m_nodes; }
    // Removes every node.
    void clearNodes();
    // Adds a node under the node of parentKey (empty: top level); nullptr when the collection refuses it.
    QTreeWidgetItem* addNode(const QString& parentKey, const QString& key, const QString& text,
                             const QIcon& icon = {});
    // The same under the node at a position (0: top level), for callers that add many nodes to one parent.
    QTreeWidgetItem* addNode(int parent, const QString& key, const QString& text, const QIcon& icon = {});
    // The node at a position; nullptr outside 1 to the node count.
    QTreeWidgetItem* item(int position) const { return m_items.value(position - 1); }
    // The position of the selected node; 0 when no node is selected.
    int selectedPosition() const;

Q_SIGNALS:
    // A mouse click anywhere in the tree, nodes and expand buttons included; it comes after itemClicked.
    void clicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void selectCollapsedAncestor(QTreeWidgetItem* collapsed);

    NodeCollection m_nodes;
    QList<QTreeWidgetItem*> m_items; // by position - 1
};

} // namespace zentoria
