#pragma once

#include "report/ReportEntry.h"

#include <QItemSelection>
#include <QList>

#include <functional>

namespace zentoria {

class FileListView;
class NodeCollection;

// The files of the open report as the list shows them, for what acts on them beyond the window's own
// handlers: the selected files, every file of the activated node, and the activated node itself.
class ListedFiles {
public:
    ListedFiles(const NodeCollection* nodes, FileListView* list)
        : m_nodes(nodes)
        , m_list(list) {}

    const NodeCollection& nodes() const { return *m_nodes; }
    FileListView* list() const { return m_list; }

    // The selected files (kind nodes left out), in the list's order.
    QList<const ReportEntry*> selected() const;
    // Whether any file is selected; the first selected file answers, not all sixteen thousand.
    bool anySelected() const;
    // Every file under the activated node, also those the list cannot reach.
    QList<const ReportEntry*> ofActivatedNode() const;
    // The tree position of the node whose children the list shows; 0 when none is.
    int activatedPosition() const;
    // The list's rows whose files pass the test, neighbours joined into one range so that a selection
    // of thousands stays a few ranges.
    QItemSelection rowsWhere(const std::function<bool(const ReportEntry&)>& test) const;

private:
    const NodeCollection* m_nodes;
    FileListView* m_list;
};

} // namespace zentoria
