#pragma once

#include <QHash>
#include <QList>
#include <QString>

namespace zentoria {

// One node of a NodeCollection.
struct NodeRecord {
    QString key;
    QString text;
    int parent = 0; // position, 0 for a top-level node
    int children = 0;
};

// The report tree's nodes as the program addresses them: by 1-based position in the order they were
// added (whatever order the tree shows them in) and by unique key.
class NodeCollection {
public:
    void clear();
    // Adds a node under the node of parentKey (an empty key adds a top-level node). Returns its position,
    // or 0 when the key is taken or the parent does not exist.
    int add(const QString& parentKey, const QString& key, const QString& text);
    // The same under the node at a position (0 adds a top-level node).
    int add(int parent, const QString& key, const QString& text);

    int count() const { return static_cast<int>(m_nodes.size()); }
    // 1-based position of the key; 0 when there is none.
    int positionOf(const QString& key) const { return m_positions.value(key); }
    QString key(int position) const { return node(position).key; }
    QString text(int position) const { return node(position).text; }
    // The parent's key; empty for a top-level node.
    QString parentKey(int position) const;
    // The parent's position; 0 for a top-level node.
    int parentPosition(int position) const { return node(position).parent; }
    int childCount(int position) const { return node(position).children; }
    // The texts from the top-level node down to this one, joined by a backslash.
    QString fullPath(int position) const;

private:
    using Node = NodeRecord;
    const Node& node(int position) const { return m_nodes.at(position - 1); }

    QList<Node> m_nodes;
    QHash<QString, int> m_positions;
};

} // namespace zentoria

// Nodes move as plain bytes when the list grows: Qt's list moves other types one by one, which for a
// large report costs several times the making of its nodes.
Q_DECLARE_TYPEINFO(zentoria::NodeRecord, Q_RELOCATABLE_TYPE);
