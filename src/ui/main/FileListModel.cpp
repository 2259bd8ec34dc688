#include "FileListModel.h"

#include "CaseInsensitiveOrder.h"
#include "NodeCollection.h"

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
    m_subItems.clear();
    if (m_sorted && m_sortColumn < columnCount()) {
        m_rows = rowsInOrder(sortedCaseInsensitive(columnTexts(m_sortColumn), m_rows, m_sortOrder));
    }
    endResetModel();
}

void FileListModel::setSingleColumn(const QString& key, const QString& caption) {
    if (m_columns.size() > 1) {
        removeColumns(1, int(m_columns.size()) - 1);
    }
    if (m_columns.isEmpty()) {
        beginInsertColumns({}, 0, 0);
        m_columns.append({key, caption});
        endInsertColumns();
        return;
    }
    m_columns.first() = {key, caption};
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, 0);
}

QString FileListModel::key(int row) const {
    return m_parentKey + QString::number(m_rows.at(row));
}

QString FileListModel::text(int row) const {
    return m_nodes.text(m_rows.at(row)).trimmed();
}

QString FileListModel::subItem(int row, int column) const {
    return m_subItems.value(m_rows.at(row)).value(column - 1);
}

int FileListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int FileListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant FileListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    if (index.column() > 0) {
        return role == Qt::DisplayRole ? QVariant(subItem(index.row(), index.column())) : QVariant();
    }
    switch (role) {
    case Qt::DisplayRole:
        return text(index.row());
    case KeyRole:
        return key(index.row());
    case LargeIconRole:
        return m_largeIcon;
    default:
        return {};
    }
}

bool FileListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    // The path comes from the report; only the further columns take values.
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || index.column() == 0 ||
        (role != Qt::EditRole && role != Qt::DisplayRole)) {
        return false;
    }
    QStringList& values = m_subItems[m_rows.at(index.row())];
    if (values.size() < index.column()) {
        values.resize(index.column());
    }
    values[index.column() - 1] = value.toString();
    Q_EMIT dataChanged(index, index, {Qt::DisplayRole});
    return true;
}

QVariant FileListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= m_columns.size()) {
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    if (role == Qt::DisplayRole) {
        return m_columns.at(section).caption;
    }
    return role == KeyRole ? QVariant(m_columns.at(section).key) : QVariant();
}

bool FileListModel::setHeaderData(int section, Qt::Orientation orientation, const QVariant& value, int role) {
    if (orientation != Qt::Horizontal || section < 0 || section >= m_columns.size()) {
        return false;
    }
    if (role == Qt::DisplayRole || role == Qt::EditRole) {
        m_columns[section].caption = value.toString();
    } else if (role == KeyRole) {
        m_columns[section].key = value.toString();
    } else {
        return false;
    }
    Q_EMIT headerDataChanged(orientation, section, section);
    return true;
}

bool FileListModel::insertColumns(int column, int count, const QModelIndex& parent) {
    // A column before the path's would move the path out of the first column.
    if (parent.isValid() || count < 1 || column < 0 || column > m_columns.size() ||
        (column == 0 && !m_columns.isEmpty())) {
        return false;
    }
    beginInsertColumns({}, column, column + count - 1);
    m_columns.insert(column, count, Column{});
    for (QStringList& values : m_subItems) {
        if (column >= 1 && values.size() >= column - 1) {
            values.insert(column - 1, count, QString());
        }
    }
    endInsertColumns();
    return true;
}

bool FileListModel::removeColumns(int column, int count, const QModelIndex& parent) {
    // The path's column stays; setSingleColumn renames it.
    if (parent.isValid() || count < 1 || column < 1 || column + count > m_columns.size()) {
        return false;
    }
    beginRemoveColumns({}, column, column + count - 1);
    m_columns.remove(column, count);
    for (QStringList& values : m_subItems) {
        values.remove(column - 1, qMax<qsizetype>(0, qMin<qsizetype>(count, values.size() - (column - 1))));
    }
    endRemoveColumns();
    return true;
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
    const QList<QStringView> texts = columnTexts(column);
    const QList<int> newOrder = onlyTurned ? turnedRound(texts) : sortedCaseInsensitive(texts, m_rows, order);
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

QList<QStringView> FileListModel::columnTexts(int column) const {
    QList<QStringView> texts;
    texts.reserve(m_rows.size());
    for (int position : m_rows) {
        if (column == 0) {
            texts.append(QStringView(m_nodes.text(position)).trimmed());
        } else {
            const auto values = m_subItems.constFind(position);
            texts.append(values != m_subItems.cend() && column <= values->size()
                             ? QStringView(values->at(column - 1))
                             : QStringView());
        }
    }
    return texts;
}

QList<int> FileListModel::turnedRound(const QList<QStringView>& texts) {
    // The rows in reverse, except that equal texts keep tree order, so each run of them is turned back.
    // Linear, where a new sort is not.
    QList<int> rows(texts.size());
    std::iota(rows.rbegin(), rows.rend(), 0);
    for (qsizetype first = 0; first < rows.size();) {
        qsizetype last = first + 1;
        while (last < rows.size() && compareCaseInsensitive(texts[rows[first]], texts[rows[last]]) == 0) {
            ++last;
        }
        std::reverse(rows.begin() + first, rows.begin() + last);
        first = last;
    }
    return rows;
}

} // namespace zentoria
