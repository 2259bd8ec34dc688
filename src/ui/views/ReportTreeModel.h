#pragma once

#include "report/NodeCollection.h"

#include <QAbstractItemModel>
#include <QIcon>

namespace zentoria {

namespace follow {
class FollowStates;
}

// The report tree as an item model over the node collection, which is the one store of the nodes.
// An index's internal id is its node's position.
class ReportTreeModel : public QAbstractItemModel {
    Q_OBJECT

public:
    // The node's key, for Qt::UserRole.
    static constexpr int KeyRole = Qt::UserRole;

    explicit ReportTreeModel(QObject* parent = nullptr);

    const NodeCollection& nodes() const { return m_nodes; }

    // Removes every node.
    void clear();
    // Adds a folder node (the root, a kind); 0 when the collection refuses it.
    int addNode(int parent, const QString& key, const QString& text);
    int addNode(const QString& parentKey, const QString& key, const QString& text);
    // Adds a report entry under its kind; 0 when the collection refuses it. Views learn of it at once,
    // or when the batch ends while an EntryBatch is open.
    int addEntry(ReportEntry entry);

    // While one lives, added entries are announced to views in one insertion per kind when it ends
    // instead of one per entry: a report adds tens of thousands of them in a row.
    class EntryBatch {
    public:
        explicit EntryBatch(ReportTreeModel& model, qsizetype expectedEntries = 0);
        ~EntryBatch();
        EntryBatch(const EntryBatch&) = delete;
        EntryBatch& operator=(const EntryBatch&) = delete;

    private:
        ReportTreeModel& m_model;
    };

    // What the report's closing line gives as its date of creation, for the root's tooltip.
    void setCreationDate(const QString& date) { m_creationDate = date; }

    // The states of the entries while the report's fixes are followed, which the entries show and the
    // kinds' tooltips count; nullptr while nothing is followed. They must outlive their use here.
    void setFollowStates(const follow::FollowStates* states);
    // These entries' states changed: they and their kinds are drawn anew.
    void followedChanged(const QList<qsizetype>& entries);

    // The image of folder nodes (closed normally, open while selected); entries have none.
    void setFolderIcon(const QIcon& icon) { m_folderIcon = icon; }

    // The index of the node at a position; invalid outside 1 to the node count.
    QModelIndex indexOf(int position) const;
    // The position of an index's node; 0 for an invalid index.
    static int positionOf(const QModelIndex& index) { return index.isValid() ? int(index.internalId()) : 0; }

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    // The one column's title, for a screen reader: the header itself is not shown.
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    // A kind's file count ("16,383 files"), the root's total and date of creation.
    QString toolTip(int position) const;
    // The children of a folder that views have been told about; the rest are still in a batch.
    int announcedChildren(int position) const;
    void announcePendingEntries();

    NodeCollection m_nodes;
    const follow::FollowStates* m_states = nullptr;
    // By folder position - 1.
    QList<int> m_announced;
    bool m_batching = false;
    QIcon m_folderIcon;
    QString m_creationDate;
};

} // namespace zentoria
