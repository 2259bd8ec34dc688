#include "FileListView.h"

#include <QHeaderView>
#include <QMouseEvent>

namespace zentoria {

namespace {

constexpr int kKeyRole = Qt::UserRole;

// Keeps its key and large icon as plain members: a list can hold tens of thousands of items, and item
// data would cost each of them further allocations. Orders the way a file manager does: letter case
// does not matter.
class FileListItem : public QTreeWidgetItem {
public:
    FileListItem(const QString& itemKey, const QIcon& itemLargeIcon)
        : QTreeWidgetItem(QTreeWidgetItem::UserType)
        , key(itemKey)
        , largeIcon(itemLargeIcon) {}

    bool operator<(const QTreeWidgetItem& other) const override {
        const int column = treeWidget() ? treeWidget()->sortColumn() : 0;
        return text(column).compare(other.text(column), Qt::CaseInsensitive) < 0;
    }

    const QString key;
    const QIcon largeIcon;
};

const FileListItem* fileItem(const QTreeWidgetItem* item) {
    return item && item->type() == QTreeWidgetItem::UserType ? static_cast<const FileListItem*>(item)
                                                             : nullptr;
}

} // namespace

FileListView::FileListView(QWidget* parent)
    : QTreeWidget(parent) {
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    header()->setSectionsClickable(true);
    header()->setSortIndicatorShown(false);
    header()->setStretchLastSection(false);
    // No column until the first activation builds one: the header shows nothing rather than Qt's "1".
    setHeaderLabels({QString()});
}

QTreeWidgetItem* FileListView::createItem(const QString& key, const QString& text, const QIcon& largeIcon) {
    auto* item = new FileListItem(key, largeIcon);
    item->setText(0, text);
    return item;
}

QString FileListView::key(const QTreeWidgetItem* item) {
    const FileListItem* file = fileItem(item);
    return file ? file->key : QString();
}

QIcon FileListView::largeIcon(const QTreeWidgetItem* item) {
    const FileListItem* file = fileItem(item);
    return file ? file->largeIcon : QIcon();
}

void FileListView::setSingleColumn(const QString& columnKey, const QString& caption, int width) {
    setColumnCount(1);
    auto* headerRow = new QTreeWidgetItem;
    headerRow->setText(0, caption);
    headerRow->setData(0, kKeyRole, columnKey);
    setHeaderItem(headerRow);
    setColumnWidth(0, width);
    setHeaderHidden(false);
    applySort();
}

QString FileListView::columnKey(int column) const {
    return headerItem()->data(column, kKeyRole).toString();
}

void FileListView::setSort(int key, int order, bool sorted) {
    m_sortKey = key;
    m_sortOrder = order;
    m_sorted = sorted;
    applySort();
}

void FileListView::applySort() {
    header()->setSortIndicatorShown(m_sorted);
    if (m_sorted && m_sortKey < columnCount()) {
        sortItems(m_sortKey, m_sortOrder == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
    }
}

void FileListView::mousePressEvent(QMouseEvent* event) {
    // The right button over empty space leaves the selection alone; only the left one clears it there.
    if (event->button() != Qt::RightButton || itemAt(event->position().toPoint())) {
        QTreeWidget::mousePressEvent(event);
    }
    Q_EMIT mouseDown(event->button(), event->modifiers(), event->position().toPoint());
}

void FileListView::mouseReleaseEvent(QMouseEvent* event) {
    QTreeWidget::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton) {
        Q_EMIT clicked();
    }
}

} // namespace zentoria
