#include "ScanReport.h"

#include "report/ReportFormat.h"

namespace zentoria::scan {

namespace {

// The problem files as a report lists them (no more than a report holds, as a scan keeps them): each
// path as the report names it, sorted as the file list sorts, numbered from 1. A file the report
// cannot name, or whose name would garble the report (fitsReport), is added to `unnamed` instead.
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

} // namespace

ScanReport reportOf(const ScanResult& result, const ReportPath& reportPath, ReportOrigin origin) {
    ScanReport report{{}, std::move(origin), result.failures};
    report.entries = reportEntries(result.problems, reportPath, &report.failures);
    report.origin.leftOut = result.leftOut;
    report.origin.notChecked = report.failures.size();
    return report;
}

} // namespace zentoria::scan
