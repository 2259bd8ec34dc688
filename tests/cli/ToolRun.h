#pragma once

#include "TestData.h"
#include "report/ReportReader.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

// What the tool did.
struct Run {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

// Runs the command in the folder (none: this one) and waits at most `seconds` for it; one that hangs is
// killed and fails the caller.
inline Run runCommand(const QStringList& command, const QString& folder, int seconds) {
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(command.first(), command.mid(1));
    Run run;
    if (!process.waitForFinished(seconds * 1000) || process.exitStatus() != QProcess::NormalExit) {
        process.kill();
        process.waitForFinished();
        return run;
    }
    run.exitCode = process.exitCode();
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    return run;
}

// Runs the tool (through `runner`, a command such as setpriv's with its options, when one is given).
inline Run runTool(const QStringList& arguments, const QString& folder = {}, int seconds = 20,
                   const QStringList& runner = {}) {
    return runCommand(runner + QStringList{ZENTORIA_REPORT_TOOL} + arguments, folder, seconds);
}

// Runs a bash script that finds the tool as "$0" and the arguments as "$1" on.
inline Run runShell(const QString& script, const QStringList& arguments, const QString& folder = {}) {
    return runCommand(QStringList{"bash", "-c", script, ZENTORIA_REPORT_TOOL} + arguments, folder, 20);
}

// Fails, showing all that was said, unless what was said holds the text.
#define QVERIFY_SAID(said, text) QVERIFY2((said).contains(text), (said).constData())

// What --json wrote.
inline QJsonObject json(const Run& run) {
    return QJsonDocument::fromJson(run.out).object();
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
