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
// moved away. One watch per folder however many files it holds. Nothing runs while nothing changes:
// the watch is a descriptor the event loop waits on.
class FolderWatch : public QObject {
    Q_OBJECT

public:
    explicit FolderWatch(QObject* parent = nullptr);
    ~FolderWatch() override;

    // Why a folder is not watched.
    struct Added {
        qsizetype watched = 0;
        // Past the system's limit of watches (fs.inotify.max_user_watches).
        qsizetype overLimit = 0;
        // Missing, or not to be watched for another reason (no permission, a name too long).
        qsizetype refused = 0;
    };
    // Watches these folders (their local bytes), each answered by its place in the list in changed().
    Added watch(const QList<QByteArray>& folders);
    // Watches nothing any more.
    void clear();
    // Whether the folder at this place in the list given to watch() is watched.
    bool watches(qsizetype folder) const { return m_watched.value(folder, false); }

    // For tests: the system's limit as if it were this many watches.
    void setLimit(qsizetype watches) { m_limit = watches; }

Q_SIGNALS:
    // Files of watched folders were written, replaced, created, deleted or moved: by the folder's place
    // in the list given to watch() and the file's name in it.
    void changed(const QList<std::pair<qsizetype, QByteArray>>& files);
    // The folder itself went (deleted, moved away, unmounted): every file in it is to be looked at.
    void folderGone(qsizetype folder);
    // The kernel dropped events: anything may have changed.
    void overflowed();

private:
    void read();

    int m_fd = -1;
    QSocketNotifier* m_notifier = nullptr;
    QHash<int, qsizetype> m_folders; // watch descriptor to the folder's place
    QList<bool> m_watched;           // by place
    qsizetype m_limit = std::numeric_limits<qsizetype>::max();
};

} // namespace zentoria::follow
