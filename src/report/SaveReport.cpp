// Writing a report to the file a user names: whole or not at all, and never replacing what is no file.
#include "ReportWriter.h"

#include <QFile>
#include <QRandomGenerator>

#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zentoria {

namespace {

// Every byte, or false with errno set.
bool writeAll(int descriptor, QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), std::size_t(bytes.size()));
        if (written == 0) {
            errno = EIO;
        }
        if (written <= 0 && errno != EINTR) {
            return false;
        }
        bytes = bytes.sliced(std::max<ssize_t>(written, 0));
    }
    return true;
}

bool closeChecked(int descriptor, bool written) {
    const int error = errno;
    const bool closed = ::close(descriptor) == 0;
    if (!written) {
        errno = error;
    }
    return written && closed;
}

// Where a name leads: its symbolic links followed, so that a link stays a link and its target gets the
// report; a link that leads nowhere leads to the file it names. `descriptor` says the way passes
// through one the program holds open (/dev/stdout, /dev/fd/1), which must be written into as it is.
struct Destination {
    QByteArray path;
    bool descriptor = false;
};

std::optional<Destination> destinationOf(QByteArray name) {
    for (int links = 0; links < 40; ++links) {
        if (name.startsWith("/proc/") || name.startsWith("/dev/fd/")) {
            // One of ours that is not open for writing (a standard output closed, and held by a
            // placeholder) would reopen for writing what is behind it.
            bool number = false;
            const int held = name.sliced(name.lastIndexOf('/') + 1).toInt(&number);
            const bool ours = name.startsWith("/dev/fd/") || name.startsWith("/proc/self/fd/");
            if (number && ours && (::fcntl(held, F_GETFL) & O_ACCMODE) == O_RDONLY) {
                errno = EBADF;
                return std::nullopt;
            }
            return Destination{name, true};
        }
        char target[PATH_MAX];
        const ssize_t length = ::readlink(name.constData(), target, sizeof target);
        if (length < 0) {
            return Destination{name, false};
        }
        QByteArray next(target, length);
        if (!next.startsWith('/')) {
            const qsizetype slash = name.lastIndexOf('/');
            next.prepend(slash < 0 ? QByteArray() : name.first(slash + 1));
        }
        name = next;
    }
    errno = ELOOP;
    return std::nullopt;
}

// A device, a named pipe or a descriptor: written into, from where it stands.
bool writeInto(const QByteArray& path, QByteArrayView bytes) {
    const int descriptor = ::open(path.constData(), O_WRONLY | O_APPEND | O_NOCTTY | O_CLOEXEC);
    return descriptor >= 0 && closeChecked(descriptor, writeAll(descriptor, bytes));
}

// A regular file, or none yet: a new file beside it, renamed over it once it is whole, with the old
// file's permissions (a new one's are the umask's, as for any file the user makes).
bool replaceFile(const QByteArray& path, QByteArrayView bytes, const struct stat* old) {
    const qsizetype slash = path.lastIndexOf('/');
    const QByteArray folder = slash < 0 ? QByteArray() : path.first(slash + 1);
    const QByteArray name = path.sliced(slash + 1);
    QByteArray temporary;
    int descriptor = -1;
    for (int attempt = 0; descriptor < 0 && attempt < 100; ++attempt) {
        temporary =
            folder + '.' + name + '.' + QByteArray::number(QRandomGenerator::global()->generate(), 36);
        descriptor = ::open(temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor < 0 && errno != EEXIST) {
            return false;
        }
    }
    if (descriptor < 0) {
        return false;
    }
    bool written = writeAll(descriptor, bytes) && (!old || ::fchmod(descriptor, old->st_mode & 07777) == 0) &&
                   ::fsync(descriptor) == 0;
    written = closeChecked(descriptor, written) && ::rename(temporary.constData(), path.constData()) == 0;
    if (!written) {
        const int error = errno;
        ::unlink(temporary.constData());
        errno = error;
    }
    return written;
}

} // namespace

bool saveReport(const QString& fileName, const QByteArray& bytes, QString* error) {
    const std::optional<Destination> to = destinationOf(QFile::encodeName(fileName));
    struct stat status = {};
    const bool exists = to && ::stat(to->path.constData(), &status) == 0;
    bool saved = false;
    if (!to) {
        saved = false;
    } else if (exists && S_ISDIR(status.st_mode)) {
        errno = EISDIR;
    } else if (exists && S_ISREG(status.st_mode) && ::access(to->path.constData(), W_OK) != 0) {
        // A file the user may not write is not replaced either, though its folder would allow it.
    } else if (to->descriptor || (exists && !S_ISREG(status.st_mode))) {
        saved = writeInto(to->path, bytes);
    } else {
        saved = replaceFile(to->path, bytes, exists ? &status : nullptr);
    }
    if (!saved && error) {
        *error = QString::fromLocal8Bit(std::strerror(errno));
    }
    return saved;
}

} // namespace zentoria
