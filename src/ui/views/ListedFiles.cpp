#include "ListedFiles.h"

#include "FileListView.h"
#include "report/NodeCollection.h"

#include <QItemSelectionModel>

#include <algorithm>

namespace zentoria {

QList<const ReportEntry*> ListedFiles::selected() const {
    const FileListModel* model = m_list->listModel();
    QList<int> rows;
    for (const QModelIndex& index : m_list->selectionModel()->selectedRows()) {
        rows << index.row();
    }
    std::sort(rows.begin(), rows.end());
    QList<const ReportEntry*> files;
    files.reserve(rows.size());
    for (int row : rows) {
        if (const int position = model->position(row); nodes().isEntry(position)) {
            files << &nodes().entry(position);
        }
    }
    return files;
}

bool ListedFiles::anySelected() const {
    for (const QItemSelectionRange& range : m_list->selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            if (nodes().isEntry(m_list->listModel()->position(row))) {
                return true;
            }
        }
    }
    return false;
}

QList<const ReportEntry*> ListedFiles::ofActivatedNode() const {
    QList<const ReportEntry*> files;
    if (const int activated = activatedPosition(); activated > 0) {
        for (int position : nodes().children(activated)) {
            if (nodes().isEntry(position)) {
                files << &nodes().entry(position);
            }
        }
    }
    return files;
}

QItemSelection ListedFiles::rowsWhere(const std::function<bool(const ReportEntry&)>& test) const {
    const FileListModel* list = m_list->listModel();
    QItemSelection rows;
    for (int row = 0; row < list->rowCount(); ++row) {
        const int position = list->position(row);
        if (!nodes().isEntry(position) || !test(nodes().entry(position))) {
            continue;
        }
        if (!rows.isEmpty() && rows.last().bottom() == row - 1) {
            rows.last() = QItemSelectionRange(rows.last().topLeft(), list->index(row, 0));
        } else {
            rows.select(list->index(row, 0), list->index(row, 0));
        }
    }
    return rows;
}

int ListedFiles::activatedPosition() const {
    const QString& key = m_list->listModel()->parentKey();
    return key.isEmpty() ? 0 : nodes().positionOf(key);
}

} // namespace zentoria
