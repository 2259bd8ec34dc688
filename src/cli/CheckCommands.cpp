// "zentoria-report scan" and "recheck": the collection checked here, with TagLib.
#include "ReportCommand.h"
#include "Version.h"
#include "report/ReportReader.h"
#include "scan/Recheck.h"
#include "scan/ScanReport.h"
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
        // Until the walk is over the total is only what was found so far.
        err.write(QStringLiteral("\r%1 %2 of %3 files%7: ID3v1 missing %4, ID3v2 missing %5, no tags %6 ")
                      .arg(QLatin1StringView(verb))
                      .arg(counts.probed)
                      .arg(counts.found)
                      .arg(counts.perKind.of(ProblemKind::ID3v1))
                      .arg(counts.perKind.of(ProblemKind::ID3v2))
                      .arg(counts.perKind.of(ProblemKind::ID3v0))
                      .arg(counts.allFound ? QString() : QStringLiteral(" found so far"))
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

ReportOrigin origin(const QString& command, const QStringList& folders) {
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

bool deliver(const QByteArray& bytes, const QString& outputFile, QIODevice& out, QIODevice& err) {
    if (!outputFile.isEmpty()) {
        if (QString error; !saveReport(outputFile, bytes, &error)) {
            name(err, outputFile,
                 QStringLiteral("cannot be written: ") + error + QStringLiteral("; left as it was"));
            return false;
        }
        return true;
    }
    auto* file = qobject_cast<QFileDevice*>(&out);
    if (out.write(bytes) != bytes.size() || (file && !file->flush())) {
        err.write("zentoria-report: writing standard output failed: " + out.errorString().toUtf8() + '\n');
        return false;
    }
    return true;
}

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
        const QString local = QDir::cleanPath(QDir(folder).absolutePath());
        checked << local;
        if (!request.windowsFolders.isEmpty()) {
            const QString& windows = request.windowsFolders.at(i);
            const std::optional<PathMapping> one = PathMapping::parse(windows + u'=' + local);
            // The folder starts every path the report names: what would garble a path garbles them all.
            if (!one || one->isEmpty() || !fitsReport(windows)) {
                err.write("zentoria-report: '" + windows.toUtf8() +
                          "' is no Windows folder a report can name\nTry 'zentoria-report --help'.\n");
                return kExitUnreadable;
            }
            mapping.list << *one;
            checked.last() = one->windowsFolder;
        }
    }
    scan::Scanner scanner(request.jobs > 0 ? request.jobs : scan::Scanner::kDefaultJobs);
    const scan::ScanResult result = scanner.scanFolders(request.folders, progressOn(err, "checked"));
    endProgress(err);
    const scan::ScanReport made = scan::reportOf(
        result, [&mapping](const QString& path) { return mapping.reversibleWindowsPath(path); },
        origin(QStringLiteral("scan"), checked));
    const QList<ReportEntry>& entries = made.entries;
    const QList<scan::Failure>& failures = made.failures;
    const qsizetype leftOut = made.origin.leftOut;
    for (const scan::Failure& failure : failures) {
        name(err, failure.path, describe(failure));
    }
    if (!deliver(reportBytes(made.origin, entries), request.output, out, err)) {
        return kExitUnreadable;
    }
    if (leftOut > 0) {
        err.write(
            QStringLiteral("zentoria-report: %1 problem files found, but a report holds %2: the last %3 "
                           "in list order are not in it; check fewer folders at a time\n")
                .arg(entries.size() + leftOut)
                .arg(entries.size())
                .arg(leftOut)
                .toUtf8());
    }
    if (!failures.isEmpty()) {
        err.write(QStringLiteral("zentoria-report: %1 files or folders could not be checked\n")
                      .arg(failures.size())
                      .toUtf8());
        return kExitUnreadable;
    }
    return entries.isEmpty() ? kExitRead : kExitDamaged;
}

int runRecheck(const RecheckRequest& request, QIODevice& out, QIODevice& err) {
    ReportReadResult report;
    if (const std::optional<int> failed = readWholeReport(request.report, report, err)) {
        return *failed;
    }
    const PathMappings& mapping = request.mapping;
    scan::Scanner scanner(request.jobs > 0 ? request.jobs : scan::Scanner::kDefaultJobs);
    const scan::RecheckResult result = scan::recheckEntries(
        report.Entries, [&mapping](const QString& path) { return mapping.map(path); }, scanner,
        progressOn(err, "checked again"));
    endProgress(err);
    for (const scan::Failure& failure : result.notFound) {
        name(err, failure.path,
             QStringLiteral("not found here (%1: %2)").arg(mapping.map(failure.path), describe(failure)));
    }
    QByteArray made;
    if (request.json) {
        QStringList notFound;
        for (const scan::Failure& failure : result.notFound) {
            notFound << failure.path;
        }
        const QJsonObject summary{{QStringLiteral("fixed"), pathArray(result.fixed)},
                                  {QStringLiteral("still"), pathArray(result.still)},
                                  {QStringLiteral("changed"), pathArray(result.changed)},
                                  {QStringLiteral("notFound"), pathArray(notFound)}};
        made = QJsonDocument(summary).toJson(QJsonDocument::Compact) + '\n';
    } else {
        // The files still broken are some of the report's, so they fit one report.
        ReportOrigin again = origin(QStringLiteral("recheck"), {request.report});
        again.recheck = true;
        again.notChecked = result.notFound.size();
        made = reportBytes(again, result.now);
    }
    if (!deliver(made, request.output, out, err)) {
        return kExitUnreadable;
    }
    const QString counts = QStringLiteral("%1 fixed, %2 still, %3 not found, %4 changed kind")
                               .arg(result.fixed.size())
                               .arg(result.still.size())
                               .arg(result.notFound.size())
                               .arg(result.changed.size());
    if (!result.notFound.isEmpty()) {
        // Not seen is not fixed: a script must not take a wrong mapping for a clean collection.
        err.write("zentoria-report: " + counts.toUtf8() +
                  (result.notFound.size() == report.Entries.size()
                       ? QByteArray("; none of the report's files was found here: is --map right?\n")
                       : QByteArray("\n")));
    } else if (isTerminal(err)) {
        err.write(counts.toUtf8() + '\n');
    }
    return result.now.isEmpty() ? kExitRead : kExitDamaged;
}

} // namespace zentoria::cli
