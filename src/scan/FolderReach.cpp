#include "FolderReach.h"

#include "LocalFile.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace zentoria::scan {

FolderReach reachOf(const QString& folder) {
    const int fd = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) {
        const int error = errno;
        return {error == ENOENT ? FolderReach::Missing : FolderReach::CannotOpen, error};
    }
    DIR* dir = ::fdopendir(fd);
    if (!dir) {
        const int error = errno;
        ::close(fd);
        return {FolderReach::CannotOpen, error};
    }
    bool empty = true;
    errno = 0;
    while (const dirent* entry = ::readdir(dir)) {
        if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0) {
            empty = false;
            break;
        }
    }
    const int error = errno;
    ::closedir(dir);
    if (empty && error != 0) {
        return {FolderReach::CannotOpen, error};
    }
    return {empty ? FolderReach::Empty : FolderReach::Reachable};
}

QString describe(const FolderReach& reach) {
    switch (reach.state) {
    case FolderReach::Reachable:
        break;
    case FolderReach::Missing:
        return QStringLiteral("is missing");
    case FolderReach::Empty:
        return QStringLiteral("is empty (a share not mounted?)");
    case FolderReach::CannotOpen:
        return QStringLiteral("cannot be opened: ") + systemError(reach.error);
    }
    return {};
}

} // namespace zentoria::scan
