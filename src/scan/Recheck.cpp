#include "Recheck.h"

#include <QHash>
#include <QSet>

namespace zentoria::scan {

qsizetype RecheckResult::unreachableFiles() const {
    qsizetype files = 0;
    for (const UnreachableFolder& folder : unreachable) {
        files += folder.files.size();
    }
    return files;
}

bool RecheckResult::noneFound() const {
    return !notFound.isEmpty() && fixed.isEmpty() && still.isEmpty() && changed.isEmpty() &&
           unreachable.isEmpty();
}

RecheckResult recheckEntries(const QList<ReportEntry>& entries,
                             const std::function<LocalPlace(const QString&)>& placeOf, Scanner& scanner,
                             const Scanner::Progress& progress) {
    RecheckResult result;
    // Each file once, and each folder looked at once before any of its files.
    QList<qsizetype> listed;  // the entries kept, by position
    QStringList local;        // their files here
    QList<qsizetype> outside; // for each kept entry, its unreachable folder's position, or -1
    QStringList files;        // those to probe
    QSet<QString> seen;
    QHash<QString, qsizetype> folders; // position in result.unreachable, or -1 when reachable
    for (qsizetype i = 0; i < entries.size(); ++i) {
        const LocalPlace place = placeOf(entries.at(i).Path);
        if (seen.contains(place.path)) {
            continue;
        }
        seen.insert(place.path);
        qsizetype folder = -1;
        if (!place.folder.isEmpty()) {
            auto known = folders.constFind(place.folder);
            if (known == folders.cend()) {
                const FolderReach reach = reachOf(place.folder);
                if (!reach.reachable()) {
                    result.unreachable.append({place.folder, reach, {}});
                }
                known = folders.insert(place.folder, reach.reachable() ? -1 : result.unreachable.size() - 1);
            }
            folder = *known;
        }
        listed.append(i);
        local.append(place.path);
        outside.append(folder);
        if (folder < 0) {
            files.append(place.path);
        }
    }
    const ScanResult scanned = scanner.probeFiles(files, progress);
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
    for (qsizetype k = 0; k < listed.size(); ++k) {
        const ReportEntry& entry = entries.at(listed.at(k));
        const QString& file = local.at(k);
        const auto kind = kinds.constFind(file);
        if (outside.at(k) >= 0) {
            result.unreachable[outside.at(k)].files.append(entry.Path);
            result.now.append({qint16(result.now.size() + 1), entry.Kind, entry.Path});
        } else if (const auto failure = failures.constFind(file); failure != failures.cend()) {
            result.notFound.append({entry.Path, failure->obstacle, failure->error});
            result.now.append({qint16(result.now.size() + 1), entry.Kind, entry.Path});
        } else if (kind != kinds.cend()) {
            (*kind == entry.Kind ? result.still : result.changed).append(entry.Path);
            result.now.append({qint16(result.now.size() + 1), *kind, entry.Path});
        } else {
            result.fixed.append(entry.Path);
        }
    }
    return result;
}

} // namespace zentoria::scan
