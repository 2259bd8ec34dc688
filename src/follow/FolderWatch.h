#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>

#include <limits>

class QSocketNotifier;

namespace zentoria::follow {

// Folders watched by the kernel (inotify) for what a tag editor does to the files in them: a file
// written in place and closed, a file renamed over another (how most editors save), a file deleted or
// moved away. One watch per folder however many files it holds. A folder that is missing (or goes) is
// waited for: its nearest existing parent is watched until it is there again, and every path is
// watched anew when a file system is mounted or unmounted. Nothing runs while
// nothing changes: the watch is a descriptor the event loop waits on.
class FolderWatch : public QObject {
    Q_OBJECT

public:
    explicit FolderWatch(QObject* parent = nullptr);
    ~FolderWatch() override;

    // How the folders given to watch() are watched.
    struct Added {
        qsizetype watched = 0;
        // Missing: waited for until they are there.
        qsizetype missing = 0;
        // Past the system's limit of watches (fs.inotify.max_user_watches).
        qsizetype overLimit = 0;
        // Not to be watched for another reason (no permission, a name too long, named twice).
        qsizetype refused = 0;
    };
    // Watches these folders (their local bytes), each answered by its place in the list in the signals.
    Added watch(const QList<QByteArray>& folders);
    // Watches nothing any more.
    void clear();
    // Whether the folder at this place in the list given to watch() is watched or waited for: whether
    // what happens to its files is seen.
    bool follows(qsizetype folder) const { return m_state.value(folder, Refused) != Refused; }

    // For tests: the system's limit as if it were this many watches.
    void setLimit(qsizetype watches) { m_limit = watches; }

Q_SIGNALS:
    // Files of watched folders were written, replaced, created, deleted or moved: by the folder's place
    // in the list given to watch() and the file's name in it.
    void changed(const QList<std::pair<qsizetype, QByteArray>>& files);
    // The folder itself went (deleted, moved away, unmounted): every file in it is to be looked at. It
    // is waited for from then on.
    void folderGone(qsizetype folder);
    // A folder that was missing is there (again): every file in it is to be looked at.
    void folderBack(qsizetype folder);
    // The kernel dropped events: anything may have changed.
    void overflowed();

private:
    enum State : quint8 { Refused, Watched, Waiting };
    // Watches the folder at a place; false, with errno, when it cannot be.
    bool watchFolder(qsizetype place);
    // Watches the nearest parent of the missing folder that is there, until the folder is.
    void waitFor(qsizetype place);
    // A parent of waited-for folders has a new folder in it, or went itself: each looks again.
    void lookForWaiting(int parent);
    // A file system was mounted or unmounted: a folder's path may lead elsewhere now (a share mounted
    // over an empty folder, say), which no watch on the old folder tells. Each path is watched anew.
    void mountsChanged();
    void read();

    int m_fd = -1;
    QSocketNotifier* m_notifier = nullptr;
    // The mount table, which the kernel marks when it changes.
    int m_mounts = -1;
    QSocketNotifier* m_mountNotifier = nullptr;
    QList<QByteArray> m_paths;              // by place
    QList<State> m_state;                   // by place
    QHash<int, qsizetype> m_folders;        // watch descriptor to the place of the folder it watches
    QHash<int, QList<qsizetype>> m_waiting; // watch descriptor of a parent to the folders waited for
    qsizetype m_limit = std::numeric_limits<qsizetype>::max();
};

} // namespace zentoria::follow
