#include "FolderWatch.h"

#include <QSocketNotifier>

#include <cerrno>
#include <sys/inotify.h>
#include <unistd.h>

namespace zentoria::follow {

namespace {

// In place: closed after writing. Saved by rename: moved in. Deleted, or moved away. Created covers
// an editor that writes a new file under the old name after deleting it.
constexpr quint32 kFileEvents = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_CREATE;
constexpr quint32 kFolderEvents = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT;

} // namespace

FolderWatch::FolderWatch(QObject* parent)
    : QObject(parent) {}

FolderWatch::~FolderWatch() {
    clear();
}

FolderWatch::Added FolderWatch::watch(const QList<QByteArray>& folders) {
    Added added;
    if (m_fd < 0) {
        m_fd = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
        if (m_fd < 0) {
            // No instance left (fs.inotify.max_user_instances): nothing can be watched.
            (errno == EMFILE ? added.overLimit : added.refused) = folders.size();
            return added;
        }
        m_notifier = new QSocketNotifier(m_fd, QSocketNotifier::Read, this);
        connect(m_notifier, &QSocketNotifier::activated, this, &FolderWatch::read);
    }
    m_watched = QList<bool>(folders.size(), false);
    for (qsizetype i = 0; i < folders.size(); ++i) {
        if (m_folders.size() >= m_limit) {
            ++added.overLimit;
            continue;
        }
        const int wd = ::inotify_add_watch(m_fd, folders.at(i).constData(),
                                           kFileEvents | kFolderEvents | IN_ONLYDIR | IN_EXCL_UNLINK);
        if (wd < 0) {
            ++(errno == ENOSPC ? added.overLimit : added.refused);
            continue;
        }
        // A folder named twice (by two paths to it) is one watch, which tells the first name only.
        if (m_folders.contains(wd)) {
            ++added.refused;
            continue;
        }
        m_folders.insert(wd, i);
        m_watched[i] = true;
        ++added.watched;
    }
    return added;
}

void FolderWatch::clear() {
    // Closing the descriptor drops every watch at once, 32,766 of them included.
    delete m_notifier;
    m_notifier = nullptr;
    if (m_fd >= 0) {
        ::close(m_fd);
        m_fd = -1;
    }
    m_folders.clear();
    m_watched.clear();
}

void FolderWatch::read() {
    alignas(inotify_event) char buffer[64 * 1024];
    QList<std::pair<qsizetype, QByteArray>> files;
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
            const auto folder = m_folders.constFind(event->wd);
            if (folder == m_folders.cend()) {
                continue;
            }
            if (event->mask & (kFolderEvents | IN_IGNORED)) {
                const qsizetype place = *folder;
                m_folders.erase(folder);
                m_watched[place] = false;
                Q_EMIT folderGone(place);
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
}

} // namespace zentoria::follow
