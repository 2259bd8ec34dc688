#pragma once

#include <QIcon>
#include <QTreeWidget>

namespace zentoria {

// The file list control: one row per item, each with a key; several items can be selected. It sorts by
// the column and direction it is told, case-insensitively, and reports clicks and button presses like
// the list controls report tools are used to.
class FileListView : public QTreeWidget {
    Q_OBJECT

public:
    explicit FileListView(QWidget* parent = nullptr);

    // An item for the list: it keeps the large icon for views with large icons and shows no small one.
    static QTreeWidgetItem* createItem(const QString& key, const QString& text, const QIcon& largeIcon = {});
    static QString key(const QTreeWidgetItem* item);
    static QIcon largeIcon(const QTreeWidgetItem* item);

    // Replaces every column by one column with a key, a caption and a width in pixels.
    void setSingleColumn(const QString& key, const QString& caption, int width);
    QString columnKey(int column) const;

    // Zero-based sort column and direction (0 ascending, 1 descending). Sorting is off until switched on.
    int sortKey() const { return m_sortKey; }
    int sortOrder() const { return m_sortOrder; }
    bool isSorted() const { return m_sorted; }
    void setSort(int key, int order, bool sorted);

Q_SIGNALS:
    // A mouse click anywhere in the list; it comes after itemClicked.
    void clicked();
    // A mouse button went down; the list has already handled it.
    void mouseDown(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, const QPoint& position);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void applySort();

    int m_sortKey = 0;
    int m_sortOrder = 0;
    bool m_sorted = false;
};

} // namespace zentoria
