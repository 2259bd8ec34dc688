// "zentoria-report scan" and "recheck": the collection checked here, with TagLib.
#include "CommandArguments.h"
#include "ReportCommand.h"
#include "Version.h"
#include "report/FileNameForm.h"
#include "report/ReportReader.h"
#include "scan/Recheck.h"
#include "scan/ScanReport.h"
#include "scan/Scanner.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <fcntl.h>
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

// The mappings that put files under a local folder, as --map gives them: "C:\\Music=/media/music".
QString mappingsTo(const PathMappings& mapping, const QString& folder) {
    QStringList texts;
    for (const PathMapping& one : mapping.list) {
        if (one.localFolder == folder) {
            texts << one.toText();
        }
    }
    return texts.join(QStringLiteral(", "));
}

QJsonObject recheckSummary(const scan::RecheckResult& result, const PathMappings& mapping,
                           const MissingRecords& missing) {
    QStringList notFound;
    for (const scan::Failure& failure : result.notFound) {
        notFound << failure.path;
    }
    QJsonArray unreachable;
    for (const scan::UnreachableFolder& folder : result.unreachable) {
        unreachable.append(QJsonObject{{QStringLiteral("mapping"), mappingsTo(mapping, folder.folder)},
                                       {QStringLiteral("folder"), folder.folder},
                                       {QStringLiteral("reason"), describe(folder.reach)},
                                       {QStringLiteral("files"), pathArray(folder.files)}});
    }
    return {{QStringLiteral("fixed"), pathArray(result.fixed)},
            {QStringLiteral("still"), pathArray(result.still)},
            {QStringLiteral("changed"), pathArray(result.changed)},
            {QStringLiteral("notFound"), pathArray(notFound)},
            {QStringLiteral("unreachable"), unreachable},
            {QStringLiteral("notRead"), missing.notRead},
            {QStringLiteral("endedEarly"), missing.endedEarly},
            {QStringLiteral("leftOut"), missing.leftOut}};
}

// Names on err, one line each, what the re-check did not look at: files not found, folders out of
// reach, and what the report itself could not give.
void nameNotChecked(QIODevice& err, const RecheckRequest& request, const scan::RecheckResult& result,
                    const MissingRecords& missing) {
    const PathMappings& mapping = request.mapping;
    for (const scan::Failure& failure : result.notFound) {
        name(err, failure.path,
             QStringLiteral("not found here (%1: %2)").arg(mapping.map(failure.path), describe(failure)));
    }
    for (const scan::UnreachableFolder& folder : result.unreachable) {
        name(err, mappingsTo(mapping, folder.folder),
             QStringLiteral("unreachable: %1 %2; its %3 listed files were not checked (kept with their "
                            "earlier kind)")
                 .arg(folder.folder, describe(folder.reach))
                 .arg(folder.files.size()));
    }
    if (missing.notRead > 0 || missing.endedEarly) {
        name(err, request.report,
             QStringLiteral("%1 records of the report could not be read%2, so their files were not checked")
                 .arg(missing.notRead)
                 .arg(missing.endedEarly ? QStringLiteral(" (it ends early: more may be missing)")
                                         : QString()));
    }
    if (missing.leftOut > 0) {
        name(err, request.report,
             QStringLiteral("%1 more problem files were left out of the report, so they were not checked")
                 .arg(missing.leftOut));
    }
}

QString countsLine(const scan::RecheckResult& result, const MissingRecords& missing) {
    QString counts = QStringLiteral("%1 fixed, %2 still, %3 not found, %4 changed kind")
                         .arg(result.fixed.size())
                         .arg(result.still.size())
                         .arg(result.notFound.size())
                         .arg(result.changed.size());
    if (!result.unreachable.isEmpty()) {
        counts += QStringLiteral(", %1 unreachable").arg(result.unreachableFiles());
    }
    if (missing.notRead > 0 || missing.endedEarly) {
        counts += QStringLiteral(", %1 records not read").arg(missing.notRead);
    }
    if (missing.leftOut > 0) {
        counts += QStringLiteral(", %1 left out").arg(missing.leftOut);
    }
    return counts;
}

// Whether a local folder is another or holds it.
bool holdsFolder(const QString& outer, const QString& inner) {
    return inner == outer || outer == u"/" || inner.startsWith(outer + u'/');
}

// The request's folders as the scan walks them, and as the report names them through the mapping that
// --as gives; an exit status, with the reason on err, for folders that cannot be checked so.
std::optional<int> takeFolders(const ScanRequest& request, QStringList& folders, QStringList& checked,
                               PathMappings& mapping, QIODevice& err) {
    for (qsizetype i = 0; i < request.folders.size(); ++i) {
        const QString& folder = request.folders.at(i);
        bool exists = false;
        const std::optional<QString> found = commandLineFolder(folder, &exists);
        if (!found) {
            name(err, shownFileName(argumentBytes(folder)),
                 exists ? QStringLiteral("not a folder") : QStringLiteral("no such folder"));
            return kExitUnreadable;
        }
        folders << *found;
        checked << *found;
        if (request.windowsFolders.isEmpty()) {
            continue;
        }
        const QString& windows = request.windowsFolders.at(i);
        const std::optional<PathMapping> one = PathMapping::parse(windows + u'=' + *found);
        // The folder starts every path the report names: what would garble a path garbles them all.
        if (!one || one->isEmpty() || !fitsReport(windows)) {
            err.write("zentoria-report: '" + windows.toUtf8() +
                      "' is no Windows folder a report can name\nTry 'zentoria-report --help'.\n");
            return kExitUnreadable;
        }
        // A file under two of them would be named under one and lead back under the other.
        for (const PathMapping& other : std::as_const(mapping.list)) {
            const bool nested = other.covers(one->windowsFolder) || one->covers(other.windowsFolder);
            if (nested || holdsFolder(other.localFolder, one->localFolder) ||
                holdsFolder(one->localFolder, other.localFolder)) {
                const auto [outer, inner] = nested ? std::pair(other.windowsFolder, one->windowsFolder)
                                                   : std::pair(other.localFolder, one->localFolder);
                err.write("zentoria-report: the folders given with --as overlap ('" + outer.toUtf8() +
                          "' and '" + inner.toUtf8() +
                          "'): a report could not name the files they share so that they lead back; check "
                          "them apart\n");
                return kExitUnreadable;
            }
        }
        mapping.list << *one;
        checked.last() = one->windowsFolder;
    }
    return std::nullopt;
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
        tellOutputFailed(out, err);
        return false;
    }
    return true;
}

void tellOutputFailed(QIODevice& out, QIODevice& err) {
    // The bytes that failed stay buffered and fail again at the last flush: one message is enough.
    const char* const told = "outputFailureTold";
    if (out.property(told).toBool()) {
        return;
    }
    out.setProperty(told, true);
    const auto* file = qobject_cast<QFileDevice*>(&out);
    // A standard output closed when the tool started holds a placeholder open for reading only.
    const bool closed =
        file && file->handle() >= 0 && (::fcntl(file->handle(), F_GETFL) & O_ACCMODE) == O_RDONLY;
    err.write("zentoria-report: writing standard output failed: " +
              (closed ? QByteArray("it is closed") : out.errorString().toUtf8()) + '\n');
}

int runScan(const ScanRequest& request, QIODevice& out, QIODevice& err) {
    PathMappings mapping;
    QStringList folders;
    QStringList checked;
    if (const std::optional<int> refused = takeFolders(request, folders, checked, mapping, err)) {
        return *refused;
    }
    scan::Scanner scanner(request.jobs > 0 ? request.jobs : scan::Scanner::kDefaultJobs);
    // Named while they are found: the report keeps the first in its own order, and a name it refuses
    // takes no place of one it could hold.
    scanner.setReportNaming(
        scan::reportNaming([&mapping](const QString& path) { return mapping.reversibleWindowsPath(path); }));
    const scan::ScanResult result = scanner.scanFolders(folders, progressOn(err, "checked"));
    endProgress(err);
    const scan::ScanReport made = scan::reportOf(result, origin(QStringLiteral("scan"), checked));
    const QList<ReportEntry>& entries = made.entries;
    const QList<scan::Failure>& failures = made.failures;
    const qsizetype leftOut = made.origin.leftOut;
    const qsizetype notChecked = made.origin.notChecked;
    for (const scan::Failure& failure : failures) {
        name(err, failure.path, describe(failure));
    }
    if (made.failuresLeftOut > 0) {
        err.write(QStringLiteral("zentoria-report: … and %1 more not named here\n")
                      .arg(made.failuresLeftOut)
                      .toUtf8());
    }
    if (!deliver(reportBytes(made.origin, entries), request.output, out, err)) {
        return kExitUnreadable;
    }
    if (leftOut > 0) {
        err.write(
            QStringLiteral("zentoria-report: %1 problem files found, but a report holds %2: the last %3 "
                           "in the report's order are not in it; check fewer folders at a time\n")
                .arg(entries.size() + leftOut)
                .arg(kMaxRecords)
                .arg(leftOut)
                .toUtf8());
    }
    if (notChecked > 0) {
        err.write(QStringLiteral("zentoria-report: %1 files or folders could not be checked\n")
                      .arg(notChecked)
                      .toUtf8());
        return kExitUnreadable;
    }
    return entries.isEmpty() ? kExitRead : kExitDamaged;
}

QString localPath(const PathMappings& mapping, NameReading reading, const QString& reportPath) {
    return shownFileName(mapping.map(reportPath), reading);
}

int runRecheck(const RecheckRequest& request, QIODevice& out, QIODevice& err) {
    ReportReadResult report;
    if (const std::optional<int> failed = readWholeReport(request.report, report, err)) {
        return *failed;
    }
    return recheckRead(request, report, out, err);
}

int recheckRead(const RecheckRequest& request, const ReportReadResult& report, QIODevice& out,
                QIODevice& err) {
    // What the report could not give, now or when an earlier re-check read it: never checked, so never
    // counted as fine.
    const MissingRecords missing = report.missing();
    const PathMappings& mapping = request.mapping;
    scan::Scanner scanner(request.jobs > 0 ? request.jobs : scan::Scanner::kDefaultJobs);
    // A name leads to one file: as Windows wrote it in Melvadex's reports, in our escaped form in ours.
    const NameReading reading = report.Names;
    const scan::RecheckResult result = scan::recheckEntries(
        report.Entries,
        [&mapping, reading](const QString& path) {
            const PathMapping* one = mapping.mappingFor(path);
            return scan::LocalPlace{localPath(mapping, reading, path), one ? one->localFolder : QString()};
        },
        scanner, progressOn(err, "checked again"));
    endProgress(err);
    nameNotChecked(err, request, result, missing);
    // Following printed its changes on out: the report of what is left goes to a file or nowhere.
    const bool keepOut = request.follow && !request.json && request.output.isEmpty();
    QByteArray made;
    if (request.json) {
        made = QJsonDocument(recheckSummary(result, mapping, missing)).toJson(QJsonDocument::Compact) + '\n';
    } else if (!keepOut) {
        // The files still broken are some of the report's, so they fit one report.
        ReportOrigin again = origin(QStringLiteral("recheck"), {request.report});
        again.recheck = true;
        again.notChecked = result.notFound.size();
        again.unreachable = result.unreachableFiles();
        again.carry(missing);
        again.names = reading;
        made = reportBytes(again, result.now);
    }
    if (!keepOut && !deliver(made, request.output, out, err)) {
        return kExitUnreadable;
    }
    const QString counts = countsLine(result, missing);
    if (!result.notFound.isEmpty() || !result.unreachable.isEmpty() || missing.any()) {
        // Not seen is not fixed: a script must not take a wrong mapping for a clean collection.
        err.write("zentoria-report: " + counts.toUtf8() +
                  (result.noneFound()
                       ? QByteArray("; none of the report's files was found here: is --map right?\n")
                       : QByteArray("\n")));
    } else if (isTerminal(err) || request.follow) {
        err.write(counts.toUtf8() + '\n');
    }
    if (!result.unreachable.isEmpty() || missing.notRead > 0 || missing.endedEarly) {
        return kExitUnreadable;
    }
    return result.now.isEmpty() && missing.leftOut == 0 ? kExitRead : kExitDamaged;
}

} // namespace zentoria::cli
