#include "FileListModel.h"

#include "FollowedLook.h"
#include "report/ListOrder.h"
#include "report/NodeCollection.h"

#include <QSet>

#include <algorithm>
#include <numeric>

namespace zentoria {

FileListModel::FileListModel(const NodeCollection& nodes, QObject* parent)
    : QAbstractTableModel(parent)
    , m_nodes(nodes) {}

void FileListModel::clear() {
    beginResetModel();
    m_rows.clear();
    m_parentKey.clear();
    endResetModel();
}

void FileListModel::setItems(const QString& parentKey, QList<int> positions, const QIcon& largeIcon) {
    beginResetModel();
    m_parentKey = parentKey;
    m_rows = std::move(positions);
    m_largeIcon = largeIcon;
    if (m_sorted && m_sortColumn < columnCount()) {
        m_rows = rowsInOrder(ListOrder().sorted(pathTexts(), m_rows, m_sortOrder));
    }
    endResetModel();
}

void FileListModel::setSingleColumn(const QString& key, const QString& caption) {
    if (!m_column) {
        beginInsertColumns({}, 0, 0);
        m_column = Column{key, caption};
        endInsertColumns();
        return;
    }
    m_column = Column{key, caption};
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, 0);
}

QString FileListModel::key(int row) const {
    return m_parentKey + QString::number(m_rows.at(row));
}

QString FileListModel::text(int row) const {
    return m_nodes.text(m_rows.at(row)).trimmed();
}

int FileListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int FileListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() || !m_column ? 0 : 1;
}

QVariant FileListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return text(index.row());
    case KeyRole:
        return key(index.row());
    case LargeIconRole:
        return m_largeIcon;
    default:
        break;
    }
    const follow::Seen* seen = seenAt(m_states, m_nodes, m_rows.at(index.row()));
    return seen ? followedData(*seen, role, text(index.row())) : QVariant();
}

void FileListModel::setFollowStates(const follow::FollowStates* states) {
    m_states = states;
    if (!m_rows.isEmpty() && columnCount() > 0) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
}

void FileListModel::followedChanged(const QList<qsizetype>& entries) {
    if (m_rows.isEmpty() || entries.isEmpty() || columnCount() == 0) {
        return;
    }
    // One pass over the rows, whatever the number of entries that changed.
    const QSet<qsizetype> changed(entries.cbegin(), entries.cend());
    for (int row = 0; row < rowCount(); ++row) {
        if (changed.contains(m_nodes.entryIndex(m_rows.at(row)))) {
            Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
        }
    }
}

QVariant FileListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section != 0 || !m_column) {
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    if (role == Qt::DisplayRole) {
        return m_column->caption;
    }
    return role == KeyRole ? QVariant(m_column->key) : QVariant();
}

Qt::ItemFlags FileListModel::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren
                           : Qt::NoItemFlags;
}

void FileListModel::sort(int column, Qt::SortOrder order) {
    const bool onlyTurned = m_sorted && column == m_sortColumn && order != m_sortOrder;
    m_sorted = true;
    m_sortColumn = column;
    m_sortOrder = order;
    // A column the list does not have holds only empty, equal texts: tree order stays.
    if (column < 0 || column >= columnCount()) {
        return;
    }

    Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    // Tree order is the order of the positions, so they break ties between equal texts.
    const QList<QStringView> texts = pathTexts();
    const QList<int> newOrder = onlyTurned ? turnedRound(texts) : ListOrder().sorted(texts, m_rows, order);
    QList<int> newRowOf(m_rows.size());
    for (int row = 0; row < newOrder.size(); ++row) {
        newRowOf[newOrder.at(row)] = row;
    }
    m_rows = rowsInOrder(newOrder);
    // Selected and current items go where their rows went.
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex& index : before) {
        after.append(this->index(newRowOf.at(index.row()), index.column()));
    }
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

QList<int> FileListModel::rowsInOrder(const QList<int>& order) const {
    QList<int> rows(order.size());
    std::transform(order.cbegin(), order.cend(), rows.begin(), [this](int row) { return m_rows.at(row); });
    return rows;
}

QList<QStringView> FileListModel::pathTexts() const {
    QList<QStringView> texts;
    texts.reserve(m_rows.size());
    for (int position : m_rows) {
        texts.append(QStringView(m_nodes.text(position)).trimmed());
    }
    return texts;
}

QList<int> FileListModel::turnedRound(const QList<QStringView>& texts) {
    // The rows in reverse, except that equal texts keep tree order, so each run of them is turned back.
    // Linear, where a new sort is not.
    const ListOrder listOrder;
    QList<int> rows(texts.size());
    std::iota(rows.rbegin(), rows.rend(), 0);
    for (qsizetype first = 0; first < rows.size();) {
        qsizetype last = first + 1;
        while (last < rows.size() && listOrder.compare(texts[rows[first]], texts[rows[last]]) == 0) {
            ++last;
        }
        std::reverse(rows.begin() + first, rows.begin() + last);
        first = last;
    }
    return rows;
}

} // namespace zentoria
