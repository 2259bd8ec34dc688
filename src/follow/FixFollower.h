#pragma once

#include "FolderWatch.h"
#include "FollowStates.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class QThreadPool;
class QTimer;

namespace zentoria::follow {

// A listed file as it is followed: where it is on this computer (its path in the shown form, see
// FileNameForm; empty when it is not here, a Windows path no mapping leads to) and what the report
// says it lacks.
struct FollowedFile {
    QString local;
    ProblemKind listed = ProblemKind::ID3v0;
};

// Follows a report's files while the user mends them: their folders are watched (FolderWatch), and a
// file that changed is looked at again with the check's own probe, off the thread that follows, once
// it has been left alone for a moment (an editor writes a file in several steps). Its state is kept by
// the entry's index; changed() names the entries whose state changed. Nothing is polled: with no file
// changing, no thread of the follower runs.
class FixFollower : public QObject {
    Q_OBJECT

public:
    // How long a file must be left alone before it is looked at.
    static constexpr int kSettleMs = 300;

    explicit FixFollower(QObject* parent = nullptr);
    ~FixFollower() override;

    // Follows these files afresh, every one as listed; the index in the list is the entry's.
    void follow(const QList<FollowedFile>& files);
    // Follows the same entries again after a stop, or found elsewhere (another folder mapping): what
    // was seen stays, and each file seen before is looked at again, since it may have changed
    // meanwhile. Other entries than before are followed afresh.
    void resume(const QList<FollowedFile>& files);
    // Follows nothing; the states stay as they are.
    void stop();
    bool isFollowing() const { return m_following; }

    const FollowStates& states() const { return m_states; }
    // The files that are on this computer and in a folder that is watched, or waited for while it is
    // missing.
    qsizetype followedFiles() const { return m_followedFiles; }
    qsizetype followedFolders() const { return m_added.watched + m_added.missing; }
    // Folders missing when followed, waited for until they are there.
    qsizetype foldersMissing() const { return m_added.missing; }
    // Folders not followed because the system's limit of watches was reached.
    qsizetype foldersOverLimit() const { return m_added.overLimit; }
    // Folders not followed because they cannot be watched (no permission, say).
    qsizetype foldersRefused() const { return m_added.refused; }

    // For tests: the system's limit as if it were this many folders.
    void setWatchLimit(qsizetype folders) { m_watch.setLimit(folders); }
    // How a file is looked at; the check's probe unless a test says otherwise.
    using Probe = std::function<scan::TagProbe(const QString& local)>;
    void setProbe(Probe probe) { m_probe = std::move(probe); }

Q_SIGNALS:
    // These entries' states changed (each once, in ascending order).
    void changed(const QList<qsizetype>& entries);

private:
    struct Folder {
        QByteArray path;
        // Its files' entries, all looked at when the folder itself goes.
        QList<qsizetype> entries;
    };

    // Watches the folders of these files, whose states are kept as they are.
    void watchFolders(const QList<FollowedFile>& files);
    void filesChanged(const QList<std::pair<qsizetype, QByteArray>>& files);
    // Every file of the folder is looked at: it went, or is there again.
    void lookAtFolder(qsizetype folder);
    void everythingChanged();
    // The entry is looked at once it has been left alone for kSettleMs.
    void settleThenLook(qsizetype entry);
    void lookAtSettled();
    void looked(int generation, const QList<std::pair<qsizetype, Seen>>& seen, const QList<quint32>& asked);

    FolderWatch m_watch;
    FolderWatch::Added m_added;
    QList<FollowedFile> m_files;
    QList<Folder> m_folders;
    // Entries by their folder's place and the file's name in it (a file the report names twice has two).
    // One table for all: a table per folder costs kilobytes, and a report's files are often alone in theirs.
    QMultiHash<std::pair<qsizetype, QByteArray>, qsizetype> m_entries;
    FollowStates m_states;
    qsizetype m_followedFiles = 0;
    bool m_following = false;
    // Starts again with each follow(): what was looked at for an earlier report is not taken.
    int m_generation = 0;
    // Entries waiting to settle, with the time of their last change (on m_clock).
    QHash<qsizetype, qint64> m_settling;
    // How often each entry was asked to be looked at: only the answer to the latest ask counts, so an
    // earlier look that ends late does not undo a later one.
    QList<quint32> m_asks;
    QElapsedTimer m_clock;
    QTimer* m_settle;
    std::unique_ptr<QThreadPool> m_pool;
    Probe m_probe;
};

} // namespace zentoria::follow
