#pragma once

#include <QByteArray>
#include <QStringList>

namespace zentoria::cli {

struct CommandOutput {
    int exitCode = 0;
    QByteArray standardOutput;
    QByteArray standardError;
};

// Runs "zentoria-report" with the arguments after the program name.
CommandOutput runReportCommand(const QStringList& arguments);

} // namespace zentoria::cli
