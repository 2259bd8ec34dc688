#include "LocalFile.h"

#include "report/FileNameForm.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zentoria::scan {

int openBytesAt(int start, const QByteArray& path, int flags) {
    if (path.size() < PATH_MAX) {
        return ::openat(start, path.constData(), flags | O_CLOEXEC);
    }
    int folder = path.startsWith('/') ? ::open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC) : start;
    if (folder < 0 && folder != AT_FDCWD) {
        return -1;
    }
    const QList<QByteArray> parts = path.split('/');
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const QByteArray& part = parts.at(i);
        if (part.isEmpty() && i + 1 < parts.size()) {
            continue;
        }
        const bool last = i + 1 == parts.size();
        const int next = ::openat(folder, part.isEmpty() ? "." : part.constData(),
                                  last ? flags | O_CLOEXEC : O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        const int error = errno;
        if (folder != start) {
            ::close(folder);
        }
        errno = error;
        if (next < 0 || last) {
            return next;
        }
        folder = next;
    }
    return -1;
}

int openBytes(const QByteArray& path, int flags) {
    return openBytesAt(AT_FDCWD, path, flags);
}

int openLocal(const QString& shownPath, int flags) {
    return openBytes(fileNameBytes(shownPath), flags);
}

bool isLocalFile(const QString& shownPath) {
    if (!shownPath.startsWith(u'/')) {
        return false;
    }
    const int descriptor = openLocal(shownPath, O_PATH);
    struct stat status = {};
    const bool regular = descriptor >= 0 && ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    return regular;
}

QString systemError(int error) {
    return QString::fromLocal8Bit(std::strerror(error));
}

} // namespace zentoria::scan
