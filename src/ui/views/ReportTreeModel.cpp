#include "ReportTreeModel.h"

#include "FollowedLook.h"
#include "settings/Texts.h"

#include <QLocale>
#include <QSet>

namespace zentoria {

ReportTreeModel::ReportTreeModel(QObject* parent)
    : QAbstractItemModel(parent) {}

void ReportTreeModel::clear() {
    beginResetModel();
    m_nodes.clear();
    m_announced.clear();
    endResetModel();
}

int ReportTreeModel::addNode(int parent, const QString& key, const QString& text) {
    if (!m_nodes.acceptsFolder(parent, key)) {
        return 0;
    }
    const int row = m_nodes.childCount(parent);
    beginInsertRows(indexOf(parent), row, row);
    const int position = m_nodes.add(parent, key, text);
    m_announced.append(0);
    if (parent) {
        ++m_announced[parent - 1];
    }
    endInsertRows();
    return position;
}

int ReportTreeModel::addNode(const QString& parentKey, const QString& key, const QString& text) {
    const int parent = parentKey.isEmpty() ? 0 : m_nodes.positionOf(parentKey);
    if (!parentKey.isEmpty() && parent == 0) {
        return 0;
    }
    return addNode(parent, key, text);
}

int ReportTreeModel::addEntry(ReportEntry entry) {
    if (m_batching) {
        return m_nodes.addEntry(std::move(entry));
    }
    if (!m_nodes.acceptsEntry(entry)) {
        return 0;
    }
    const int parent = m_nodes.kindPosition(entry.Kind);
    const int row = m_nodes.childCount(parent);
    beginInsertRows(indexOf(parent), row, row);
    const int position = m_nodes.addEntry(std::move(entry));
    ++m_announced[parent - 1];
    endInsertRows();
    return position;
}

ReportTreeModel::EntryBatch::EntryBatch(ReportTreeModel& model, qsizetype expectedEntries)
    : m_model(model) {
    Q_ASSERT(!m_model.m_batching);
    m_model.m_batching = true;
    m_model.m_nodes.reserveEntries(m_model.m_nodes.entryCount() + expectedEntries);
}

ReportTreeModel::EntryBatch::~EntryBatch() {
    m_model.m_batching = false;
    m_model.announcePendingEntries();
}

void ReportTreeModel::announcePendingEntries() {
    for (int folder = 1; folder <= m_nodes.folderCount(); ++folder) {
        const int announced = m_announced.at(folder - 1);
        const int total = m_nodes.childCount(folder);
        if (total > announced) {
            beginInsertRows(indexOf(folder), announced, total - 1);
            m_announced[folder - 1] = total;
            endInsertRows();
        }
    }
}

int ReportTreeModel::announcedChildren(int position) const {
    if (position == 0) {
        return m_nodes.childCount(0);
    }
    return m_nodes.isEntry(position) ? 0 : m_announced.at(position - 1);
}

QModelIndex ReportTreeModel::indexOf(int position) const {
    if (position < 1 || position > m_nodes.count()) {
        return {};
    }
    const int row = m_nodes.row(position);
    if (row >= announcedChildren(m_nodes.parentPosition(position))) {
        return {};
    }
    return createIndex(row, 0, quintptr(position));
}

QModelIndex ReportTreeModel::index(int row, int column, const QModelIndex& parent) const {
    const int parentPosition = positionOf(parent);
    if (column != 0 || row < 0 || row >= announcedChildren(parentPosition)) {
        return {};
    }
    return createIndex(row, 0, quintptr(m_nodes.children(parentPosition).at(row)));
}

QModelIndex ReportTreeModel::parent(const QModelIndex& child) const {
    const int parentPosition = child.isValid() ? m_nodes.parentPosition(positionOf(child)) : 0;
    return parentPosition ? createIndex(m_nodes.row(parentPosition), 0, quintptr(parentPosition))
                          : QModelIndex();
}

int ReportTreeModel::rowCount(const QModelIndex& parent) const {
    return parent.column() > 0 ? 0 : announcedChildren(positionOf(parent));
}

int ReportTreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

bool ReportTreeModel::hasChildren(const QModelIndex& parent) const {
    return rowCount(parent) > 0;
}

QVariant ReportTreeModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && section == 0 && role == Qt::DisplayRole) {
        return uiText(txt::ProblemKinds);
    }
    return QAbstractItemModel::headerData(section, orientation, role);
}

QVariant ReportTreeModel::data(const QModelIndex& index, int role) const {
    const int position = positionOf(index);
    if (position == 0) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return m_nodes.text(position);
    case Qt::DecorationRole:
        return m_nodes.isEntry(position) ? QVariant() : QVariant(m_folderIcon);
    case KeyRole:
        return m_nodes.key(position);
    case Qt::ToolTipRole:
        if (!m_nodes.isEntry(position)) {
            return toolTip(position);
        }
        break;
    default:
        break;
    }
    const follow::Seen* seen = seenAt(m_states, m_nodes, position);
    return seen ? followedData(*seen, role, m_nodes.text(position)) : QVariant();
}

void ReportTreeModel::setFollowStates(const follow::FollowStates* states) {
    m_states = states;
    // Every entry and kind at once: a range a kind.
    for (ProblemKind kind : {ProblemKind::ID3v1, ProblemKind::ID3v2, ProblemKind::ID3v0}) {
        const QModelIndex shown = indexOf(m_nodes.kindPosition(kind));
        if (!shown.isValid()) {
            continue;
        }
        Q_EMIT dataChanged(shown, shown, {Qt::ToolTipRole});
        if (const int children = announcedChildren(m_nodes.kindPosition(kind)); children > 0) {
            Q_EMIT dataChanged(index(0, 0, shown), index(children - 1, 0, shown));
        }
    }
}

void ReportTreeModel::followedChanged(const QList<qsizetype>& entries) {
    QSet<int> kinds;
    for (qsizetype entry : entries) {
        if (entry >= m_nodes.entryCount()) {
            continue;
        }
        const int position = m_nodes.entryPosition(entry);
        kinds.insert(m_nodes.parentPosition(position));
        // Only entries the views were told of have an index.
        if (const QModelIndex shown = indexOf(position); shown.isValid()) {
            Q_EMIT dataChanged(shown, shown);
        }
    }
    for (int kind : kinds) {
        if (const QModelIndex shown = indexOf(kind); shown.isValid()) {
            Q_EMIT dataChanged(shown, shown, {Qt::ToolTipRole});
        }
    }
}

QString ReportTreeModel::toolTip(int position) const {
    // Entries have the delegate's tooltip, their whole path where the column cuts it.
    if (m_nodes.isEntry(position)) {
        return {};
    }
    const auto files = [](int count) {
        return count == 1 ? uiText(txt::OneFile) : uiText(txt::Files).arg(QLocale().toString(count));
    };
    if (m_nodes.parentPosition(position) != 0) {
        if (!m_states) {
            return files(m_nodes.childCount(position));
        }
        // How many of the kind's files were fixed since the report was opened, said once one of them
        // was seen to change.
        qsizetype fixed = 0;
        bool seen = false;
        for (int child : m_nodes.children(position)) {
            const follow::Seen* childSeen = seenAt(m_states, m_nodes, child);
            const follow::FileState state = childSeen ? childSeen->state : follow::FileState::AsListed;
            fixed += state == follow::FileState::Fixed ? 1 : 0;
            seen = seen || state != follow::FileState::AsListed;
        }
        const QString count = files(m_nodes.childCount(position));
        return seen ? count + u'\n' + fixedAmong(fixed, m_nodes.childCount(position)) : count;
    }
    QString tip = files(m_nodes.entryCount());
    if (!m_creationDate.isEmpty()) {
        tip = uiText(txt::CreatedOn).arg(tip, m_creationDate);
    }
    return tip;
}

Qt::ItemFlags ReportTreeModel::flags(const QModelIndex& index) const {
    const int position = positionOf(index);
    if (position == 0) {
        return Qt::NoItemFlags;
    }
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return m_nodes.isEntry(position) ? flags | Qt::ItemNeverHasChildren : flags;
}

} // namespace zentoria
