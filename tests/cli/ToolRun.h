#pragma once

#include "TestData.h"
#include "report/ReportReader.h"

#include <QProcess>

// What the tool did.
struct Run {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

// Runs the tool (through `runner`, a command such as setpriv's with its options, when one is given) and
// waits at most `seconds` for it; a tool that hangs is killed and fails the caller.
inline Run runTool(const QStringList& arguments, const QString& folder, int seconds,
                   const QStringList& runner = {}) {
    QProcess tool;
    tool.setWorkingDirectory(folder);
    const QStringList command = runner + QStringList{ZENTORIA_REPORT_TOOL} + arguments;
    tool.start(command.first(), command.mid(1));
    Run run;
    if (!tool.waitForFinished(seconds * 1000) || tool.exitStatus() != QProcess::NormalExit) {
        tool.kill();
        tool.waitForFinished();
        return run;
    }
    run.exitCode = tool.exitCode();
    run.out = tool.readAllStandardOutput();
    run.err = tool.readAllStandardError();
    return run;
}

// A report's entries as "CODE PATH", or "not loaded".
inline QStringList entries(const QByteArray& report) {
    zentoria::MemoryLineSource source(report);
    const zentoria::ReportReadResult read = zentoria::ReadReport(source);
    QStringList listed;
    for (const zentoria::ReportEntry& entry : read.Entries) {
        listed << zentoria::kindCode(entry.Kind) + u' ' + entry.Path;
    }
    return read.Outcome == zentoria::Outcome::Loaded ? listed : QStringList{"not loaded"};
}
