#include "ReportCommand.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    QFile out;
    QFile err;
    if (!out.open(stdout, QIODevice::WriteOnly) ||
        !err.open(stderr, QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        return zentoria::cli::kExitUnreadable;
    }
    return zentoria::cli::runReportCommand(QCoreApplication::arguments().mid(1), out, err);
}
