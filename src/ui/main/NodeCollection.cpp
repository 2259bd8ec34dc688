#include "NodeCollection.h"

#include <QStringList>

namespace zentoria {

void NodeCollection::clear() {
    m_nodes.clear();
    m_positions.clear();
}

int NodeCollection::add(const QString& parentKey, const QString& key, const QString& text) {
    const int parent = parentKey.isEmpty() ? 0 : positionOf(parentKey);
    if (!parentKey.isEmpty() && parent == 0) {
        return 0;
    }
    return add(parent, key, text);
}

int NodeCollection::add(int parent, const QString& key, const QString& text) {
    if (parent < 0 || parent > count()) {
        return 0;
    }
    // One lookup both checks the key and claims it.
    const qsizetype before = m_positions.size();
    int& slot = m_positions[key];
    if (m_positions.size() == before) {
        return 0;
    }
    m_nodes.append({key, text, parent, 0});
    if (parent) {
        ++m_nodes[parent - 1].children;
    }
    slot = count();
    return slot;
}

QString NodeCollection::parentKey(int position) const {
    const int parent = node(position).parent;
    return parent ? node(parent).key : QString();
}

QString NodeCollection::fullPath(int position) const {
    QStringList texts;
    for (int p = position; p != 0; p = node(p).parent) {
        texts.prepend(node(p).text);
    }
    return texts.join(u'\\');
}

} // namespace zentoria
