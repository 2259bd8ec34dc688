#pragma once

#include "report/ReportEntry.h"

#include <QList>
#include <QString>

namespace zentoria {

// The report tree's nodes, held once: by 1-based position in the order they were added and by unique
// key. Two sorts of node: a few folders (the root and the problem kinds), stored as given, and the
// report's entries, stored as the reader made them. Everything else about an entry is derived: its key
// is "ID3v1" followed by its ordinal, its parent is the folder keyed by its kind code, its position
// follows the folders in the order the entries were added.
class NodeCollection {
public:
    void clear();

    // Adds a folder under the node at a position (0: top level). Folders come before every entry, and a
    // folder key cannot take the shape of an entry key. Returns the new position, or 0 when refused.
    int add(int parent, const QString& key, const QString& text);
    // The same under the node of parentKey (empty: top level).
    int add(const QString& parentKey, const QString& key, const QString& text);
    // Adds a report entry under the folder keyed by its kind code. Ordinals must be positive and rise
    // from one entry to the next, as a report numbers its records; that keeps entry keys unique and
    // findable by a binary search. Returns the new position, or 0 when refused.
    int addEntry(ReportEntry entry);
    void reserveEntries(qsizetype count);

    int count() const { return folderCount() + entryCount(); }
    int folderCount() const { return static_cast<int>(m_folders.size()); }
    int entryCount() const { return static_cast<int>(m_entries.size()); }
    bool isEntry(int position) const { return position > folderCount(); }
    // The entry behind an entry node's position.
    const ReportEntry& entry(int position) const { return m_entries.at(entryIndex(position)); }
    // An entry's place among the entries, from its position, and back.
    qsizetype entryIndex(int position) const { return position - folderCount() - 1; }
    int entryPosition(qsizetype index) const { return folderCount() + 1 + int(index); }
    // Every entry, in the order they were added.
    const QList<ReportEntry>& entries() const { return m_entries; }

    // 1-based position of the key; 0 when there is none.
    int positionOf(QStringView key) const;
    QString key(int position) const;
    const QString& text(int position) const;
    // The parent's position; 0 for a top-level node.
    int parentPosition(int position) const;
    // The parent's key; empty for a top-level node.
    QString parentKey(int position) const;
    int childCount(int position) const;
    // The folder keyed by the kind's code; 0 while there is none.
    int kindPosition(ProblemKind kind) const { return m_kindFolders[kindNumber(kind)]; }
    // Whether add would take the folder.
    bool acceptsFolder(int parent, const QString& key) const;
    // Whether addEntry would take the entry.
    bool acceptsEntry(const ReportEntry& entry) const;
    // The positions of a node's children, in the order they were added (ascending); position 0 stands
    // for the top level.
    const QList<int>& children(int position) const;
    // 0-based place of a node among its parent's children (among the top-level nodes for those).
    int row(int position) const;
    // The texts from the top-level node down to this one, joined by a backslash.
    QString fullPath(int position) const;

private:
    struct Folder {
        QString key;
        QString text;
        int parent = 0;
        int row = 0;
        QList<int> children;
    };

    QList<Folder> m_folders;
    QList<int> m_topLevel;
    QList<ReportEntry> m_entries;
    // Positions of the folders keyed "ID3v0", "ID3v1", "ID3v2"; 0 while there is none.
    int m_kindFolders[3] = {0, 0, 0};
};

} // namespace zentoria
