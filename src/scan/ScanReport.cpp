#include "ScanReport.h"

#include "report/ReportFormat.h"

namespace zentoria::scan {

QList<ReportEntry> reportEntries(QList<FoundProblem> problems, const ReportPath& reportPath,
                                 QList<Failure>* unnamed) {
    QList<FoundProblem> named;
    named.reserve(problems.size());
    for (FoundProblem& problem : problems) {
        const std::optional<QString> path = reportPath(problem.path);
        if (!path) {
            unnamed->append({problem.path, Obstacle::NameHasBackslash});
        } else if (!fitsReport(*path)) {
            unnamed->append({problem.path, Obstacle::NameBreaksReport});
        } else {
            named.append({*path, problem.kind});
        }
    }
    // Named anew, they sort as the report's list will show them.
    sortAsListed(named);
    Q_ASSERT(named.size() <= kMaxRecords);
    QList<ReportEntry> entries;
    entries.reserve(named.size());
    for (qsizetype i = 0; i < named.size(); ++i) {
        entries.append({qint16(i + 1), named.at(i).kind, named.at(i).path});
    }
    return entries;
}

} // namespace zentoria::scan
