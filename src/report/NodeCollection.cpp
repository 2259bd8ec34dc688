#include "NodeCollection.h"

#include <QStringList>

#include <algorithm>

namespace zentoria {

namespace {

constexpr QLatin1StringView kEntryKeyPrefix("ID3v1");

// The ordinal an entry key names: "ID3v1" and a positive number as an ordinal is written (no sign, no
// leading zero, within 16 bits). 0 for any other key.
int entryOrdinal(QStringView key) {
    if (!key.startsWith(kEntryKeyPrefix)) {
        return 0;
    }
    const QStringView digits = key.sliced(kEntryKeyPrefix.size());
    if (digits.isEmpty() || digits.size() > 5 || digits.front() == u'0') {
        return 0;
    }
    int ordinal = 0;
    for (QChar digit : digits) {
        if (digit < u'0' || digit > u'9') {
            return 0;
        }
        ordinal = ordinal * 10 + (digit.unicode() - u'0');
    }
    return ordinal <= 32767 ? ordinal : 0;
}

} // namespace

void NodeCollection::clear() {
    m_folders.clear();
    m_topLevel.clear();
    m_entries.clear();
    std::fill(std::begin(m_kindFolders), std::end(m_kindFolders), 0);
}

bool NodeCollection::acceptsFolder(int parent, const QString& key) const {
    // Entries follow the folders; a folder after them would move every entry's position.
    return m_entries.isEmpty() && parent >= 0 && parent <= folderCount() && entryOrdinal(key) == 0 &&
           positionOf(key) == 0;
}

int NodeCollection::add(int parent, const QString& key, const QString& text) {
    if (!acceptsFolder(parent, key)) {
        return 0;
    }
    const int position = folderCount() + 1;
    m_folders.append({key, text, parent, childCount(parent), {}});
    (parent ? m_folders[parent - 1].children : m_topLevel).append(position);
    for (ProblemKind kind : {ProblemKind::ID3v0, ProblemKind::ID3v1, ProblemKind::ID3v2}) {
        if (key == kindCode(kind)) {
            m_kindFolders[kindNumber(kind)] = position;
        }
    }
    return position;
}

int NodeCollection::add(const QString& parentKey, const QString& key, const QString& text) {
    const int parent = parentKey.isEmpty() ? 0 : positionOf(parentKey);
    if (!parentKey.isEmpty() && (parent == 0 || isEntry(parent))) {
        return 0;
    }
    return add(parent, key, text);
}

bool NodeCollection::acceptsEntry(const ReportEntry& entry) const {
    const qint16 previous = m_entries.isEmpty() ? 0 : m_entries.constLast().Ordinal;
    return kindPosition(entry.Kind) != 0 && entry.Ordinal > previous;
}

int NodeCollection::addEntry(ReportEntry entry) {
    if (!acceptsEntry(entry)) {
        return 0;
    }
    const int parent = kindPosition(entry.Kind);
    m_entries.append(std::move(entry));
    const int position = count();
    m_folders[parent - 1].children.append(position);
    return position;
}

void NodeCollection::reserveEntries(qsizetype count) {
    m_entries.reserve(count);
}

int NodeCollection::positionOf(QStringView key) const {
    if (const int ordinal = entryOrdinal(key)) {
        const auto found = std::lower_bound(m_entries.cbegin(), m_entries.cend(), ordinal,
                                            [](const ReportEntry& e, int o) { return e.Ordinal < o; });
        return found != m_entries.cend() && found->Ordinal == ordinal
                   ? folderCount() + static_cast<int>(found - m_entries.cbegin()) + 1
                   : 0;
    }
    for (int p = 1; p <= folderCount(); ++p) {
        if (m_folders.at(p - 1).key == key) {
            return p;
        }
    }
    return 0;
}

QString NodeCollection::key(int position) const {
    return isEntry(position) ? kEntryKeyPrefix + QString::number(entry(position).Ordinal)
                             : m_folders.at(position - 1).key;
}

const QString& NodeCollection::text(int position) const {
    return isEntry(position) ? entry(position).Path : m_folders.at(position - 1).text;
}

int NodeCollection::parentPosition(int position) const {
    return isEntry(position) ? kindPosition(entry(position).Kind) : m_folders.at(position - 1).parent;
}

QString NodeCollection::parentKey(int position) const {
    const int parent = parentPosition(position);
    return parent ? key(parent) : QString();
}

int NodeCollection::childCount(int position) const {
    return static_cast<int>(children(position).size());
}

const QList<int>& NodeCollection::children(int position) const {
    static const QList<int> none;
    if (position == 0) {
        return m_topLevel;
    }
    return isEntry(position) ? none : m_folders.at(position - 1).children;
}

int NodeCollection::row(int position) const {
    if (!isEntry(position)) {
        return m_folders.at(position - 1).row;
    }
    const QList<int>& siblings = children(parentPosition(position));
    return static_cast<int>(std::lower_bound(siblings.cbegin(), siblings.cend(), position) -
                            siblings.cbegin());
}

QString NodeCollection::fullPath(int position) const {
    QStringList texts;
    for (int p = position; p != 0; p = parentPosition(p)) {
        texts.prepend(text(p));
    }
    return texts.join(u'\\');
}

} // namespace zentoria
