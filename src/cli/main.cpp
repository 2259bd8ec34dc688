#include "ReportCommand.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    const zentoria::cli::CommandOutput output =
        zentoria::cli::runReportCommand(QCoreApplication::arguments().mid(1));
    std::fwrite(output.standardOutput.constData(), 1, static_cast<size_t>(output.standardOutput.size()),
                stdout);
    std::fwrite(output.standardError.constData(), 1, static_cast<size_t>(output.standardError.size()),
                stderr);
    return output.exitCode;
}
