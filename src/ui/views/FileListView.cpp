#include "FileListView.h"

#include "ui/common/FullTextDelegate.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMouseEvent>

namespace zentoria {

FileListView::FileListView(const NodeCollection& nodes, QWidget* parent)
    : QTreeView(parent)
    , m_model(new FileListModel(nodes, this)) {
    setModel(m_model);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setItemDelegate(new FullTextDelegate(this));
    header()->setSectionsClickable(true);
    header()->setSortIndicatorShown(false);
    header()->setStretchLastSection(false);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { m_selectionChanged = true; });
    connect(header(), &QHeaderView::sectionClicked, this, &FileListView::LV_ColumnClick);
}

void FileListView::LV_ColumnClick(int column) {
    // Every header click switches sorting on; a click on the sorted column turns the direction round.
    setSort(column, sortKey() == column ? 1 - sortOrder() : sortOrder());
}

void FileListView::setSingleColumn(const QString& key, const QString& caption, int width) {
    m_model->setSingleColumn(key, caption);
    setColumnWidth(0, width);
    setHeaderHidden(false);
    showSortIndicator();
}

QString FileListView::columnKey(int column) const {
    return m_model->headerData(column, Qt::Horizontal, FileListModel::KeyRole).toString();
}

void FileListView::setSort(int key, int order) {
    m_model->sort(key, order == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
    showSortIndicator();
}

void FileListView::selectRows(const QItemSelection& rows) {
    const QModelIndex first = rows.first().topLeft();
    selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(first);
    Q_EMIT selectionChangedByProgram();
}

void FileListView::showSortIndicator() {
    header()->setSortIndicatorShown(isSorted());
    if (isSorted()) {
        header()->setSortIndicator(sortKey(), m_model->sortOrder());
    }
}

void FileListView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::RightButton) {
        QTreeView::mousePressEvent(event);
        return;
    }
    // The right button over an item makes it the only selected (and the current) item; over empty
    // space it leaves the selection alone.
    if (const QModelIndex found = indexAt(event->position().toPoint()); found.isValid()) {
        selectionModel()->setCurrentIndex(found,
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
}

void FileListView::keyPressEvent(QKeyEvent* event) {
    m_selectionChanged = false;
    QTreeView::keyPressEvent(event);
    if (m_selectionChanged) {
        Q_EMIT selectionChangedByKey();
    }
}

void FileListView::mouseReleaseEvent(QMouseEvent* event) {
    QTreeView::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton) {
        Q_EMIT clickedAnywhere();
    }
}

} // namespace zentoria
