#include "RegularFile.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zentoria {

namespace {

QString notAFile(mode_t mode) {
    QString what;
    if (S_ISDIR(mode)) {
        what = QStringLiteral("a folder");
    } else if (S_ISFIFO(mode)) {
        what = QStringLiteral("a named pipe");
    } else if (S_ISCHR(mode)) {
        what = QStringLiteral("a character device");
    } else if (S_ISBLK(mode)) {
        what = QStringLiteral("a block device");
    } else if (S_ISSOCK(mode)) {
        what = QStringLiteral("a socket");
    } else {
        return QStringLiteral("it is not a regular file");
    }
    return QStringLiteral("it is %1, not a file").arg(what);
}

} // namespace

bool openRegularFile(QFile& file, QString& why) {
    const QByteArray name = QFile::encodeName(file.fileName());
    struct stat info {};
    if (::stat(name.constData(), &info) != 0) {
        why = qt_error_string(errno);
        return false;
    }
    if (!S_ISREG(info.st_mode)) {
        why = notAFile(info.st_mode);
        return false;
    }
    // The name may lead elsewhere by now: open without waiting and look again at what was opened.
    const int fd = ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (fd < 0) {
        why = qt_error_string(errno);
        return false;
    }
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        why = S_ISREG(info.st_mode) ? qt_error_string(errno) : notAFile(info.st_mode);
        ::close(fd);
        return false;
    }
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    if (!file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        why = file.errorString();
        ::close(fd);
        return false;
    }
    return true;
}

QString reportPathFromText(const QString& text) {
    if (QFileInfo::exists(text)) {
        return text;
    }
    if (text.size() >= 2 && text.startsWith(u'"') && text.endsWith(u'"')) {
        const QString inner = text.mid(1, text.size() - 2);
        if (QFileInfo::exists(inner)) {
            return inner;
        }
    }
    return QString(text).remove(u'"');
}

} // namespace zentoria
