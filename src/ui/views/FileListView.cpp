#include "FileListView.h"

#include "HeaderStyle.h"
#include "ui/common/FocusLook.h"
#include "ui/common/FullTextDelegate.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>

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
    // A path cut by its column keeps its end, the file's name: "C:\\Music\\…\\00000 - Track.mp3".
    setTextElideMode(Qt::ElideMiddle);
    showFocusClearly(this);
    header()->setSectionsClickable(true);
    auto* headerStyle = new HeaderStyle;
    headerStyle->setParent(header());
    header()->setStyle(headerStyle);
    header()->setSortIndicatorShown(false);
    header()->setStretchLastSection(false);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { m_selectionChanged = true; });
    connect(header(), &QHeaderView::sectionClicked, this, &FileListView::LV_ColumnClick);
    // The scroll area places its sideways bar again on its own (when the bar shows, or the list
    // resizes): each time it is kept clear of what covers the rows.
    horizontalScrollBar()->parentWidget()->installEventFilter(this);
    // Other rows may need other room.
    const auto remeasure = [this] { m_readable = -1; };
    connect(m_model, &QAbstractItemModel::modelReset, this, remeasure);
    connect(m_model, &QAbstractItemModel::rowsInserted, this, remeasure);
    connect(m_model, &QAbstractItemModel::rowsRemoved, this, remeasure);
    connect(m_model, &QAbstractItemModel::dataChanged, this, remeasure);
}

void FileListView::LV_ColumnClick(int column) {
    // Every header click switches sorting on; a click on the sorted column turns the direction round.
    setSort(column, sortKey() == column ? 1 - sortOrder() : sortOrder());
}

void FileListView::setSingleColumn(const QString& key, const QString& caption, int width) {
    m_model->setSingleColumn(key, caption);
    m_columnWidth = width;
    fitColumn(viewport()->width());
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

void FileListView::keepClearOfCover() {
    // The siblings stacked above the list (later among the parent's children) that overlap it, left to
    // right; those that reach the list's left edge, or the strip already covered, widen the strip.
    QList<QRect> above;
    if (const QWidget* parent = parentWidget()) {
        const QObjectList& siblings = parent->children();
        for (qsizetype i = siblings.indexOf(this) + 1; i < siblings.size(); ++i) {
            const auto* sibling = qobject_cast<const QWidget*>(siblings.at(i));
            if (sibling && sibling->isVisible() && sibling->geometry().intersects(geometry())) {
                above << sibling->geometry();
            }
        }
    }
    std::sort(above.begin(), above.end(), [](const QRect& a, const QRect& b) { return a.left() < b.left(); });
    int covered = 0;
    for (const QRect& rect : std::as_const(above)) {
        if (rect.left() - x() <= covered) {
            covered = qMax(covered, rect.right() + 1 - x());
        }
    }
    if (covered != m_covered) {
        m_covered = covered;
        updateGeometries();
    }
}

void FileListView::updateGeometries() {
    // The margins set below resize the rows' area, which asks for geometries again: that one waits.
    if (m_placing) {
        return;
    }
    m_placing = true;
    QTreeView::updateGeometries();
    // The view keeps the header above the rows; the covered part is left of both.
    const int headerHeight = isHeaderHidden() ? 0 : header()->sizeHint().height();
    setViewportMargins(m_covered, headerHeight, 0, 0);
    const QRect rows = viewport()->geometry();
    header()->setGeometry(rows.left(), rows.top() - headerHeight, rows.width(), headerHeight);
    // The file names get the room there is: the one column fills the rows' area when that is wider.
    fitColumn(rows.width());
    // The rows' area is narrower by the covered part: the end of a long path stays within reach.
    horizontalScrollBar()->setRange(0, qMax(0, header()->length() - rows.width()));
    horizontalScrollBar()->setPageStep(rows.width());
    clearSidewaysBar();
    m_placing = false;
}

int FileListView::leastReadableWidth() {
    return m_columnWidth > 0 && header()->count() == 1 && m_model->rowCount() > 0
               ? qMin(m_columnWidth, readableWidth())
               : 0;
}

int FileListView::readableWidth() {
    if (m_readable >= 0) {
        return m_readable;
    }
    // Only the row whose shortest form is widest needs the delegate's measure; the others are compared
    // by the width of their file's name alone.
    const QFontMetrics metrics = fontMetrics();
    int widest = -1;
    int widestRow = -1;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const QString text = m_model->text(row);
        const qsizetype cut = std::max(text.lastIndexOf(u'\\'), text.lastIndexOf(u'/'));
        const int width = metrics.horizontalAdvance(cut > 0 ? text.mid(cut) : text);
        if (width > widest) {
            widest = width;
            widestRow = row;
        }
    }
    m_readable = 0;
    if (widestRow >= 0) {
        QStyleOptionViewItem option;
        initViewItemOption(&option);
        const QModelIndex index = m_model->index(widestRow, 0);
        // Any width does: what the item's icon and margins take of it is the same.
        option.rect = QRect(0, 0, 1000, metrics.height());
        const auto* delegate = static_cast<const FullTextDelegate*>(itemDelegate());
        m_readable = delegate->readableWidth(option, index, m_model->text(widestRow));
    }
    return m_readable;
}

void FileListView::clearSidewaysBar() {
    // The sideways scroll bar starts where the rows do: under the panel its left arrow is out of reach.
    QWidget* box = horizontalScrollBar()->parentWidget();
    const int left = viewport()->x();
    // When the panel gives way it starts at the list's edge again.
    if (box->x() != left) {
        box->setGeometry(box->geometry().adjusted(left - box->x(), 0, 0, 0));
    }
}

bool FileListView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == horizontalScrollBar()->parentWidget() &&
        (event->type() == QEvent::Move || event->type() == QEvent::Resize)) {
        clearSidewaysBar();
    }
    return QTreeView::eventFilter(watched, event);
}

void FileListView::fitColumn(int rowsWidth) {
    if (m_columnWidth > 0 && header()->count() == 1) {
        // Rows that all keep their file's whole name in less room need no sideways scrolling.
        setColumnWidth(0, qMax(qMin(m_columnWidth, readableWidth()), rowsWidth));
    }
}

void FileListView::scrollContentsBy(int dx, int dy) {
    QTreeView::scrollContentsBy(dx, dy);
    // A sideways scroll paints the rows anew: moving the drawn pixels leaves fragments of the
    // middle-elided names behind.
    if (dx != 0) {
        viewport()->update();
    }
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
    // Coming into a list with nothing selected, the first Down or Up selects the file that has the
    // focus (the first one) rather than moving past it.
    const bool arrow = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    if (arrow && event->modifiers() == Qt::NoModifier && !selectionModel()->hasSelection() &&
        currentIndex().isValid()) {
        selectionModel()->select(currentIndex(),
                                 QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    } else {
        QTreeView::keyPressEvent(event);
    }
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
