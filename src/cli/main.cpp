#include "CommandArguments.h"
#include "ReportCommand.h"

#include <QCoreApplication>
#include <QFile>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

int main(int argc, char* argv[]) {
    // A reader that went away is a failed write with a message and its own exit status, not a silent
    // death halfway through a report.
    std::signal(SIGPIPE, SIG_IGN);
    // A closed standard output keeps its number taken, open for reading only: the first file the tool
    // opens would get it otherwise, and a report meant for the output would go into that file; a write
    // now fails, and is told as a closed output.
    if (::fcntl(STDOUT_FILENO, F_GETFD) == -1 && errno == EBADF) {
        const int placeholder = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        if (placeholder >= 0 && placeholder != STDOUT_FILENO) {
            ::dup2(placeholder, STDOUT_FILENO);
            ::close(placeholder);
        }
    }
    QCoreApplication app(argc, argv);
    QFile out;
    QFile err;
    if (!out.open(stdout, QIODevice::WriteOnly) ||
        !err.open(stderr, QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        return zentoria::cli::kExitUnreadable;
    }
    // Not QCoreApplication::arguments(): it turns bytes that are no UTF-8 into U+FFFD, and a folder's
    // name into no name.
    const QStringList arguments = zentoria::cli::argumentsFromBytes(argc - 1, argv + 1);
    const int status = zentoria::cli::runReportCommand(arguments, out, err);
    if (!out.flush()) {
        zentoria::cli::tellOutputFailed(out, err);
        return zentoria::cli::kExitUnreadable;
    }
    return status;
}
