#include "ReportCommand.h"

#include <QCoreApplication>
#include <QFile>

#include <csignal>
#include <cstdio>

int main(int argc, char* argv[]) {
    // A reader that went away is a failed write with a message and its own exit status, not a silent
    // death halfway through a report.
    std::signal(SIGPIPE, SIG_IGN);
    QCoreApplication app(argc, argv);
    QFile out;
    QFile err;
    if (!out.open(stdout, QIODevice::WriteOnly) ||
        !err.open(stderr, QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        return zentoria::cli::kExitUnreadable;
    }
    const int status = zentoria::cli::runReportCommand(QCoreApplication::arguments().mid(1), out, err);
    if (!out.flush()) {
        err.write("zentoria-report: writing standard output failed: " + out.errorString().toUtf8() + '\n');
        return zentoria::cli::kExitUnreadable;
    }
    return status;
}
