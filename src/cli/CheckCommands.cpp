// "zentoria-report scan" and "recheck": the collection checked here, with TagLib.
#include "ReportCommand.h"
#include "Version.h"
#include "report/ReportReader.h"
#include "scan/Recheck.h"
#include "scan/ReportWriter.h"
#include "scan/Scanner.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <unistd.h>

namespace zentoria::cli {

namespace {

// Progress goes to standard error only when a person watches it there: in a log it would be noise.
bool isTerminal(QIODevice& err) {
    const auto* file = qobject_cast<QFile*>(&err);
    return file && file->handle() >= 0 && ::isatty(file->handle()) == 1;
}

scan::Scanner::Progress progressOn(QIODevice& err, const char* verb) {
    if (!isTerminal(err)) {
        return {};
    }
    return [&err, verb](const scan::ScanCounts& counts) {
        err.write(QStringLiteral("\r%1 %2 of %3 files: ID3v1 missing %4, ID3v2 missing %5, no tags %6 ")
                      .arg(QLatin1StringView(verb))
                      .arg(counts.probed)
                      .arg(counts.found)
                      .arg(counts.perKind[1])
                      .arg(counts.perKind[2])
                      .arg(counts.perKind[0])
                      .toUtf8());
    };
}

void endProgress(QIODevice& err) {
    if (isTerminal(err)) {
        err.write("\n");
    }
}

void name(QIODevice& err, const QString& path, const QString& why) {
    err.write("zentoria-report: " + path.toUtf8() + ": " + why.toUtf8() + '\n');
}

scan::ReportOrigin origin(const QString& command, const QStringList& folders) {
    return {QStringLiteral("zentoria-report ") + command, QStringLiteral(ZENTORIA_VERSION), folders};
}

QJsonArray pathArray(const QStringList& paths) {
    QJsonArray array;
    for (const QString& path : paths) {
        array.append(path);
    }
    return array;
}

} // namespace

int runScan(const ScanRequest& request, QIODevice& out, QIODevice& err) {
    PathMappings mapping;
    QStringList checked;
    for (qsizetype i = 0; i < request.folders.size(); ++i) {
        const QString& folder = request.folders.at(i);
        if (!QFileInfo(folder).isDir()) {
            name(err, folder,
                 QFileInfo::exists(folder) ? QStringLiteral("not a folder")
                                           : QStringLiteral("no such folder"));
            return kExitUnreadable;
        }
        if (!QFileInfo(folder).isReadable()) {
            name(err, folder, QStringLiteral("the folder cannot be read"));
            return kExitUnreadable;
        }
        const QString local = QDir::cleanPath(QDir(folder).absolutePath());
        checked << local;
        if (!request.windowsFolders.isEmpty()) {
            const std::optional<PathMapping> one =
                PathMapping::parse(request.windowsFolders.at(i) + u'=' + local);
            if (!one || one->isEmpty()) {
                err.write("zentoria-report: '" + request.windowsFolders.at(i).toUtf8() +
                          "' is no Windows folder\nTry 'zentoria-report --help'.\n");
                return kExitUnreadable;
            }
            mapping.list << *one;
            checked.last() = one->windowsFolder;
        }
    }
    scan::Scanner scanner(request.jobs > 0 ? request.jobs : scan::Scanner::kDefaultJobs);
    const scan::ScanResult result = scanner.scanFolders(request.folders, progressOn(err, "checked"));
    endProgress(err);
    for (const scan::Failure& failure : result.failures) {
        name(err, failure.path, failure.why);
    }
    qsizetype leftOut = 0;
    const QList<ReportEntry> entries = scan::reportEntries(
        result.problems, [&mapping](const QString& path) { return mapping.windowsPath(path); }, &leftOut);
    scan::ReportOrigin made = origin(QStringLiteral("scan"), checked);
    made.leftOut = leftOut;
    out.write(scan::reportBytes(made, entries));
    if (leftOut > 0) {
        err.write(
            QStringLiteral("zentoria-report: %1 problem files found, but a report holds %2: the last %3 "
                           "in list order are not in it; check fewer folders at a time\n")
                .arg(entries.size() + leftOut)
                .arg(entries.size())
                .arg(leftOut)
                .toUtf8());
    }
    return entries.isEmpty() ? kExitRead : kExitDamaged;
}

int runRecheck(const QString& reportName, const PathMappings& mapping, bool json, int jobs, QIODevice& out,
               QIODevice& err) {
    ReportReadResult report;
    if (!readWholeReport(reportName, report, err)) {
        return kExitUnreadable;
    }
    scan::Scanner scanner(jobs > 0 ? jobs : scan::Scanner::kDefaultJobs);
    const scan::RecheckResult result = scan::recheckEntries(
        report.Entries, [&mapping](const QString& path) { return mapping.map(path); }, scanner,
        progressOn(err, "checked again"));
    endProgress(err);
    for (const scan::Failure& failure : result.notFound) {
        name(err, failure.path,
             QStringLiteral("not found here (%1: %2)").arg(mapping.map(failure.path), failure.why));
    }
    if (json) {
        QStringList notFound;
        for (const scan::Failure& failure : result.notFound) {
            notFound << failure.path;
        }
        const QJsonObject summary{{QStringLiteral("fixed"), pathArray(result.fixed)},
                                  {QStringLiteral("still"), pathArray(result.still)},
                                  {QStringLiteral("changed"), pathArray(result.changed)},
                                  {QStringLiteral("notFound"), pathArray(notFound)}};
        out.write(QJsonDocument(summary).toJson(QJsonDocument::Compact) + '\n');
    } else {
        // The files still broken are some of the report's, so they fit one report.
        out.write(scan::reportBytes(origin(QStringLiteral("recheck"), {reportName}), result.now));
    }
    if (isTerminal(err)) {
        err.write(QStringLiteral("%1 fixed, %2 still, %3 not found, %4 changed kind\n")
                      .arg(result.fixed.size())
                      .arg(result.still.size())
                      .arg(result.notFound.size())
                      .arg(result.changed.size())
                      .toUtf8());
    }
    return result.now.isEmpty() ? kExitRead : kExitDamaged;
}

} // namespace zentoria::cli
