#pragma once

#include "ui/document/ReportDocument.h"

#include <QDateTime>
#include <QObject>
#include <QPointer>

#include <functional>

class QAction;

namespace zentoria {

class FileListModel;

namespace follow {
class FixFollower;
}

// Tools > Follow Fixes: while a report is open, its files on this computer are followed as the user
// mends them (follow::FixFollower), and the list, the tree, the panel and the status bar show what was
// seen: fixed, still lacking, lacking something else, gone. Every report shown (opened, reloaded,
// checked again) is followed afresh. The report file is never changed; Save Report As writes what is
// still to do. Off, nothing is watched.
class FixFollowing : public QObject {
    Q_OBJECT

public:
    struct Window {
        ReportDocument* document = nullptr;
        FileListModel* list = nullptr;
        // Shows the count in the status bar; an empty text takes it away.
        std::function<void(const QString& text)> status;
        // A passing line in the status bar.
        std::function<void(const QString& text)> note;
    };

    FixFollowing(Window window, QObject* parent);
    ~FixFollowing() override;

    QAction* followAction() const { return submnuFollowFixes; }
    const follow::FixFollower& follower() const { return *m_follower; }
    // For tests: the system's limit of watches as if it were this many folders.
    void setWatchLimit(qsizetype folders);

private:
    void submnuFollowFixes_Click(bool on);
    // Follows nothing, and the views show nothing of what was seen.
    void forget();
    // Follows the document's files afresh, or nothing when following is off.
    void restart();
    void changed(const QList<qsizetype>& entries);
    void showCount();
    // What is still to do, as a re-check would write it: the files not seen fixed, each with the kind
    // it was last seen to lack; those gone or unreadable keep their earlier kind and count as not found.
    ReportDocument::Rewrite stillToDo() const;

    Window m_window;
    QPointer<ReportDocument> m_document;
    QPointer<FileListModel> m_list;
    follow::FixFollower* m_follower;
    // When the report shown was first followed.
    QDateTime m_since;
    // The stored mappings it was followed through.
    QString m_mappings;
    // Set while the report shown was not followed yet.
    bool m_afresh = true;
    QAction* submnuFollowFixes;
};

} // namespace zentoria
