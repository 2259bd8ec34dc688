#include "Recheck.h"

#include <QHash>
#include <QSet>

namespace zentoria::scan {

RecheckResult recheckEntries(const QList<ReportEntry>& entries,
                             const std::function<QString(const QString&)>& localPath, Scanner& scanner,
                             const Scanner::Progress& progress) {
    // Each entry's file here, and each file once: a file listed twice is probed once.
    QStringList local;
    local.reserve(entries.size());
    QStringList files;
    QSet<QString> seen;
    for (const ReportEntry& entry : entries) {
        local.append(localPath(entry.Path));
        if (!seen.contains(local.last())) {
            seen.insert(local.last());
            files.append(local.last());
        }
    }
    const ScanResult scanned = scanner.probeFiles(files, progress);
    RecheckResult result;
    result.cancelled = scanned.cancelled;
    if (result.cancelled) {
        return result;
    }
    QHash<QString, ProblemKind> kinds;
    for (const FoundProblem& problem : scanned.problems) {
        kinds.insert(problem.path, problem.kind);
    }
    QHash<QString, Failure> failures;
    for (const Failure& failure : scanned.failures) {
        failures.insert(failure.path, failure);
    }
    for (qsizetype i = 0; i < entries.size(); ++i) {
        const ReportEntry& entry = entries.at(i);
        const QString& file = local.at(i);
        if (const auto failure = failures.constFind(file); failure != failures.cend()) {
            result.notFound.append({entry.Path, failure->obstacle, failure->error});
            result.now.append({qint16(result.now.size() + 1), entry.Kind, entry.Path});
        } else if (const auto kind = kinds.constFind(file); kind != kinds.cend()) {
            (*kind == entry.Kind ? result.still : result.changed).append(entry.Path);
            result.now.append({qint16(result.now.size() + 1), *kind, entry.Path});
        } else {
            result.fixed.append(entry.Path);
        }
    }
    return result;
}

} // namespace zentoria::scan
