#include "Recheck.h"

#include <QHash>
#include <QSet>

namespace zentoria::scan {

RecheckResult recheckEntries(const QList<ReportEntry>& entries,
                             const std::function<QString(const QString&)>& localPath, Scanner& scanner,
                             const Scanner::Progress& progress) {
    QStringList files;
    QSet<QString> seen;
    for (const ReportEntry& entry : entries) {
        // A file listed twice is probed once.
        if (const QString file = localPath(entry.Path); !seen.contains(file)) {
            seen.insert(file);
            files.append(file);
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
    QHash<QString, QString> failures;
    for (const Failure& failure : scanned.failures) {
        failures.insert(failure.path, failure.why);
    }
    for (const ReportEntry& entry : entries) {
        const QString file = localPath(entry.Path);
        if (const auto failure = failures.constFind(file); failure != failures.cend()) {
            result.notFound.append({entry.Path, *failure});
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
