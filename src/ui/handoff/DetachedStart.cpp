#include "DetachedStart.h"

#include <QFile>
#include <QStandardPaths>

#include <cerrno>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace zentoria {

bool startDetached(const QString& program, const QByteArrayList& arguments) {
    const QString resolved = program.contains(u'/') ? program : QStandardPaths::findExecutable(program);
    if (resolved.isEmpty()) {
        return false;
    }
    // Everything exec needs is made before the fork: the child may only call what is safe there.
    const QByteArray path = QFile::encodeName(resolved);
    QByteArrayList words{QFile::encodeName(program)};
    words << arguments;
    std::vector<char*> argv;
    for (QByteArray& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);
    // Exec closes the pipe's writing end; a failed exec writes its error number into it first.
    int started[2];
    if (::pipe2(started, O_CLOEXEC) != 0) {
        return false;
    }
    // Two forks: the editor is nobody's child here, and leaves no zombie behind when it ends.
    const pid_t child = ::fork();
    if (child == 0) {
        ::setsid();
        if (::fork() == 0) {
            ::execv(path.constData(), argv.data());
            const int error = errno;
            [[maybe_unused]] const ssize_t told = ::write(started[1], &error, sizeof error);
            ::_exit(127);
        }
        ::_exit(0);
    }
    ::close(started[1]);
    int status = 0;
    while (child > 0 && ::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    int error = 0;
    ssize_t got = 0;
    do {
        got = ::read(started[0], &error, sizeof error);
    } while (got < 0 && errno == EINTR);
    ::close(started[0]);
    return child > 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0 && got == 0;
}

} // namespace zentoria
