#include "FolderWatch.h"

#include <QSocketNotifier>

#include <cerrno>
#include <fcntl.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace zentoria::follow {

namespace {

// In place: closed after writing. Saved by rename: moved in. Deleted, or moved away. Created covers
// an editor that writes a new file under the old name after deleting it.
constexpr quint32 kFileEvents = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_CREATE;
constexpr quint32 kFolderEvents = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT;
// A followed folder, added to what it may be watched for already, as the parent of one waited for.
constexpr quint32 kFollowedEvents = kFileEvents | kFolderEvents | IN_ONLYDIR | IN_EXCL_UNLINK | IN_MASK_ADD;
// A parent waited on: a folder made or moved into it, or the parent itself going. Added to what the
// same folder may be watched for already, as a followed folder.
constexpr quint32 kParentEvents = IN_CREATE | IN_MOVED_TO | kFolderEvents | IN_ONLYDIR | IN_MASK_ADD;

QByteArray parentOf(const QByteArray& path) {
    const qsizetype slash = path.lastIndexOf('/');
    return slash <= 0 ? QByteArray("/") : path.left(slash);
}

} // namespace

FolderWatch::FolderWatch(QObject* parent)
    : QObject(parent) {}

FolderWatch::~FolderWatch() {
    clear();
}

FolderWatch::Added FolderWatch::watch(const QList<QByteArray>& folders) {
    Added added;
    m_paths = folders;
    m_state = QList<State>(folders.size(), Refused);
    if (m_fd < 0) {
        m_fd = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
        if (m_fd < 0) {
            // No instance left (fs.inotify.max_user_instances): nothing can be watched.
            (errno == EMFILE ? added.overLimit : added.refused) = folders.size();
            return added;
        }
        m_notifier = new QSocketNotifier(m_fd, QSocketNotifier::Read, this);
        connect(m_notifier, &QSocketNotifier::activated, this, &FolderWatch::read);
        // Polling the mount table wakes only when it changed; without it, mounts go unseen.
        m_mounts = ::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC);
        if (m_mounts >= 0) {
            m_mountNotifier = new QSocketNotifier(m_mounts, QSocketNotifier::Exception, this);
            connect(m_mountNotifier, &QSocketNotifier::activated, this, &FolderWatch::mountsChanged);
        }
    }
    for (qsizetype i = 0; i < folders.size(); ++i) {
        if (watchFolder(i)) {
            ++added.watched;
        } else if (errno == ENOENT || errno == ENOTDIR) {
            waitFor(i);
            ++(m_state.at(i) == Waiting ? added.missing : added.refused);
        } else {
            ++(errno == ENOSPC ? added.overLimit : added.refused);
        }
    }
    return added;
}

bool FolderWatch::watchFolder(qsizetype place) {
    if (m_folders.size() >= m_limit) {
        errno = ENOSPC;
        return false;
    }
    const int wd = ::inotify_add_watch(m_fd, m_paths.at(place).constData(), kFollowedEvents);
    if (wd < 0) {
        return false;
    }
    // A folder named twice (by two paths to it) is one watch, which tells the first name only.
    if (const auto other = m_folders.constFind(wd); other != m_folders.cend() && *other != place) {
        errno = EEXIST;
        return false;
    }
    m_folders.insert(wd, place);
    m_state[place] = Watched;
    return true;
}

void FolderWatch::waitFor(qsizetype place) {
    m_state[place] = Refused;
    for (QByteArray parent = parentOf(m_paths.at(place));; parent = parentOf(parent)) {
        if (m_folders.size() + m_waiting.size() >= m_limit) {
            return;
        }
        const int wd = ::inotify_add_watch(m_fd, parent.constData(), kParentEvents);
        if (wd >= 0) {
            if (QList<qsizetype>& waiting = m_waiting[wd]; !waiting.contains(place)) {
                waiting.append(place);
            }
            m_state[place] = Waiting;
            break;
        }
        if ((errno != ENOENT && errno != ENOTDIR) || parent == "/") {
            return;
        }
    }
    // It may have come between the first try and the parent's watch.
    if (watchFolder(place)) {
        Q_EMIT folderBack(place);
    }
}

void FolderWatch::lookForWaiting(int parent) {
    const QList<qsizetype> places = m_waiting.take(parent);
    for (qsizetype place : places) {
        if (m_state.at(place) != Waiting) {
            continue;
        }
        if (watchFolder(place)) {
            Q_EMIT folderBack(place);
        } else {
            // A folder on the way to it came: wait on that one.
            waitFor(place);
        }
    }
}

void FolderWatch::mountsChanged() {
    QHash<qsizetype, int> watchOf;
    for (auto it = m_folders.cbegin(); it != m_folders.cend(); ++it) {
        watchOf.insert(it.value(), it.key());
    }
    for (qsizetype place = 0; place < m_paths.size(); ++place) {
        if (m_state.at(place) == Waiting) {
            // Its parent's watch may be on a folder the mount covers now: waited for anew.
            if (watchFolder(place)) {
                Q_EMIT folderBack(place);
            } else {
                waitFor(place);
            }
            continue;
        }
        const auto old = watchOf.constFind(place);
        if (m_state.at(place) != Watched || old == watchOf.cend()) {
            continue;
        }
        const int wd = ::inotify_add_watch(m_fd, m_paths.at(place).constData(), kFollowedEvents);
        if (wd == *old) {
            continue; // the same folder as before
        }
        // Another folder by that path, or none: the old watch tells nothing of it any more.
        m_folders.remove(*old);
        ::inotify_rm_watch(m_fd, *old);
        if (wd >= 0 && !m_folders.contains(wd)) {
            m_folders.insert(wd, place);
            Q_EMIT folderBack(place);
        } else {
            Q_EMIT folderGone(place);
            waitFor(place);
        }
    }
}

void FolderWatch::clear() {
    // Closing the descriptor drops every watch at once, 32,766 of them included.
    delete m_notifier;
    m_notifier = nullptr;
    delete m_mountNotifier;
    m_mountNotifier = nullptr;
    if (m_mounts >= 0) {
        ::close(m_mounts);
        m_mounts = -1;
    }
    if (m_fd >= 0) {
        ::close(m_fd);
        m_fd = -1;
    }
    m_folders.clear();
    m_waiting.clear();
    m_paths.clear();
    m_state.clear();
}

void FolderWatch::read() {
    alignas(inotify_event) char buffer[64 * 1024];
    QList<std::pair<qsizetype, QByteArray>> files;
    QList<int> parents;
    for (;;) {
        const ssize_t got = ::read(m_fd, buffer, sizeof buffer);
        if (got <= 0) {
            break;
        }
        for (ssize_t at = 0; at < got;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
            at += ssize_t(sizeof(inotify_event) + event->len);
            if (event->mask & IN_Q_OVERFLOW) {
                Q_EMIT overflowed();
                continue;
            }
            const bool folderWent = event->mask & (kFolderEvents | IN_IGNORED);
            if (m_waiting.contains(event->wd) &&
                (folderWent || (event->mask & IN_ISDIR && event->mask & (IN_CREATE | IN_MOVED_TO)))) {
                parents.append(event->wd);
            }
            const auto folder = m_folders.constFind(event->wd);
            if (folder == m_folders.cend()) {
                continue;
            }
            if (folderWent) {
                const qsizetype place = *folder;
                m_folders.erase(folder);
                Q_EMIT folderGone(place);
                waitFor(place);
                continue;
            }
            if (event->len > 0 && !(event->mask & IN_ISDIR)) {
                files.append({*folder, QByteArray(event->name)});
            }
        }
    }
    if (!files.isEmpty()) {
        Q_EMIT changed(files);
    }
    for (int parent : parents) {
        lookForWaiting(parent);
    }
}

} // namespace zentoria::follow
