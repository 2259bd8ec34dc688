#pragma once

#include "FileListModel.h"

#include <QItemSelection>
#include <QTreeView>

namespace zentoria {

// The file list control: a view with a header over a FileListModel; several items can be selected.
// It sorts by the column and direction it is told, and behaves as the list controls report tools are
// used to: a header click sorts by that column (turning the direction round on the sorted one), the
// right button makes the item under it the only selected one, and every click is told. A path cut off
// by the column shows whole as a tooltip.
class FileListView : public QTreeView {
    Q_OBJECT

public:
    explicit FileListView(const NodeCollection& nodes, QWidget* parent = nullptr);

    FileListModel* listModel() const { return m_model; }

    // Replaces every column by one column with a key, a caption and a least width in pixels (wider
    // when the list is), and shows the header.
    void setSingleColumn(const QString& key, const QString& caption, int width);
    QString columnKey(int column) const;

    // Zero-based sort column and direction (0 ascending, 1 descending). Sorting is off until set.
    int sortKey() const { return m_model->sortColumn(); }
    int sortOrder() const { return m_model->sortOrder() == Qt::AscendingOrder ? 0 : 1; }
    bool isSorted() const { return m_model->isSorted(); }
    void setSort(int key, int order);
    // Starts the header and the rows right of the siblings stacked over the list's left edge (the
    // panel and its scroll bar), so that they cover no text. Call it when those siblings move.
    void keepClearOfCover();
    // The least width in pixels of the rows' area in which every file's name shows whole, up to the
    // column's design width; 0 for an empty list.
    int leastReadableWidth();
    // Selects exactly these rows (not none), makes the first current and scrolls it into view.
    void selectRows(const QItemSelection& rows);

Q_SIGNALS:
    // A left click anywhere in the list; it comes after clicked().
    void clickedAnywhere();
    // A key changed which items are selected (arrows, Shift+arrows, Ctrl+A, Space).
    void selectionChangedByKey();
    // The program selected rows for the user (Select All, Select Matching, a reload).
    void selectionChangedByProgram();

protected:
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    // A click on a column header sorts by it.
    void LV_ColumnClick(int column);
    void showSortIndicator();
    // The one column at its design width, or as wide as the rows' area when that is wider; narrower
    // than its design width where every row keeps its file's whole name in less.
    void fitColumn(int rowsWidth);
    void clearSidewaysBar();
    // The least width of the rows' area in which every row shows its file's whole name.
    int readableWidth();
    bool eventFilter(QObject* watched, QEvent* event) override;

    FileListModel* m_model;
    // The one column's design width: it is never narrower, and fills a wider list.
    int m_columnWidth = 0;
    // Pixels at the left the siblings over the list cover.
    int m_covered = 0;
    // readableWidth() as last measured; -1 after the rows changed.
    int m_readable = -1;
    bool m_placing = false;
    // Set by the selection model while a key press is handled.
    bool m_selectionChanged = false;
};

} // namespace zentoria
