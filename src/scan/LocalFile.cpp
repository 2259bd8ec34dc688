#include "LocalFile.h"

#include "report/FileNameForm.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zentoria::scan {

int openBytes(const QByteArray& path, int flags) {
    if (path.size() < PATH_MAX) {
        return ::open(path.constData(), flags | O_CLOEXEC);
    }
    int folder = path.startsWith('/') ? ::open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC) : AT_FDCWD;
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
        if (folder != AT_FDCWD) {
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
