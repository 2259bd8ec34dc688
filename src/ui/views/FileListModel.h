#pragma once

#include <QAbstractTableModel>
#include <QIcon>

#include <optional>

namespace zentoria {

namespace follow {
class FollowStates;
}

class NodeCollection;

// The file list as an item model: the children of one tree node, each row standing for a tree
// position. Key and text are derived from the node collection when asked for, so a kind of sixteen
// thousand files is listed by copying its positions. Rows are in tree order unless sorted; a sort
// orders by the path, letter case aside, and keeps tree order among equal paths. The one column, the
// file's path, comes with the first activation.
class FileListModel : public QAbstractTableModel {
    Q_OBJECT

public:
    // The item's key, for Qt::UserRole; the column's key in the header data.
    static constexpr int KeyRole = Qt::UserRole;
    // The large icon; items have no small one (no Qt::DecorationRole).
    static constexpr int LargeIconRole = Qt::UserRole + 1;

    // The collection must outlive the model; a rebuilt collection is followed by clear().
    explicit FileListModel(const NodeCollection& nodes, QObject* parent = nullptr);

    // Removes every item; the columns stay.
    void clear();
    // Lists the nodes at these positions (ascending) as the children of the node keyed parentKey.
    void setItems(const QString& parentKey, QList<int> positions, const QIcon& largeIcon);
    // Replaces every column by one.
    void setSingleColumn(const QString& key, const QString& caption);
    // The states of the report's entries while its fixes are followed (by entry index), which the items
    // show; nullptr while nothing is followed. The states must outlive their use here.
    void setFollowStates(const follow::FollowStates* states);
    // These entries' states changed: their rows are drawn anew.
    void followedChanged(const QList<qsizetype>& entries);

    // The key of the node whose children are listed; empty when nothing is.
    const QString& parentKey() const { return m_parentKey; }
    int position(int row) const { return m_rows.at(row); }
    QString key(int row) const;
    QString text(int row) const;

    // Sorting is off until the first sort; from then on every new set of items is sorted too.
    bool isSorted() const { return m_sorted; }
    int sortColumn() const { return m_sortColumn; }
    Qt::SortOrder sortOrder() const { return m_sortOrder; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

private:
    struct Column {
        QString key;
        QString caption;
    };

    // The rows in a new order, given as the old row of each new one.
    QList<int> rowsInOrder(const QList<int>& order) const;
    // The rows' paths as listed, in row order.
    QList<QStringView> pathTexts() const;
    // The new order of a sorted list's rows (new row to old row) when its direction turns round.
    static QList<int> turnedRound(const QList<QStringView>& texts);

    const NodeCollection& m_nodes;
    const follow::FollowStates* m_states = nullptr;
    QString m_parentKey;
    QList<int> m_rows;
    QIcon m_largeIcon;
    std::optional<Column> m_column;
    bool m_sorted = false;
    int m_sortColumn = 0;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
};

} // namespace zentoria
