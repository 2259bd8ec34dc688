#include "ReportTree.h"

#include <QMouseEvent>

namespace zentoria {

ReportTree::ReportTree(QWidget* parent)
    : QTreeWidget(parent) {
    setHeaderHidden(true);
    setColumnCount(1);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setUniformRowHeights(true);
    connect(this, &QTreeWidget::itemCollapsed, this, &ReportTree::selectCollapsedAncestor);
}

void ReportTree::clearNodes() {
    clear();
    m_items.clear();
    m_nodes.clear();
}

QTreeWidgetItem* ReportTree::addNode(const QString& parentKey, const QString& key, const QString& text,
                                     const QIcon& icon) {
    const int parent = parentKey.isEmpty() ? 0 : m_nodes.positionOf(parentKey);
    if (!parentKey.isEmpty() && parent == 0) {
        return nullptr;
    }
    return addNode(parent, key, text, icon);
}

QTreeWidgetItem* ReportTree::addNode(int parent, const QString& key, const QString& text, const QIcon& icon) {
    const int position = m_nodes.add(parent, key, text);
    if (position == 0) {
        return nullptr;
    }
    QTreeWidgetItem* parentItem = item(m_nodes.parentPosition(position));
    auto* node = new QTreeWidgetItem;
    node->setText(0, text);
    if (!icon.isNull()) {
        node->setIcon(0, icon);
    }
    if (parentItem) {
        parentItem->addChild(node);
    } else {
        addTopLevelItem(node);
    }
    m_items.append(node);
    return node;
}

int ReportTree::selectedPosition() const {
    // A search per click costs less than a position stored in each of thousands of nodes.
    const QList<QTreeWidgetItem*> selected = selectedItems();
    return selected.isEmpty() ? 0 : static_cast<int>(m_items.indexOf(selected.first()) + 1);
}

void ReportTree::mousePressEvent(QMouseEvent* event) {
    // A click beside the nodes keeps the selection, as tree controls do.
    if (indexAt(event->position().toPoint()).isValid()) {
        QTreeWidget::mousePressEvent(event);
    }
}

void ReportTree::mouseReleaseEvent(QMouseEvent* event) {
    QTreeWidget::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton) {
        Q_EMIT clicked();
    }
}

void ReportTree::selectCollapsedAncestor(QTreeWidgetItem* collapsed) {
    // A hidden node cannot stay selected: the selection moves up to the node that hid it.
    for (QTreeWidgetItem* selected : selectedItems()) {
        for (QTreeWidgetItem* up = selected->parent(); up; up = up->parent()) {
            if (up == collapsed) {
                setCurrentItem(collapsed);
                return;
            }
        }
    }
}

} // namespace zentoria
