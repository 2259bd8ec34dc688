#include "ScanReport.h"

#include "report/LineSource.h"
#include "report/ReportFormat.h"

namespace zentoria::scan {

Scanner::ReportNaming reportNaming(ReportPath reportPath) {
    return [reportPath = std::move(reportPath)](const QString& localPath) -> std::variant<QString, Obstacle> {
        std::optional<QString> path = reportPath(localPath);
        if (!path) {
            return Obstacle::NameHasBackslash;
        }
        if (path->size() > kMaxPathLength) {
            return Obstacle::NameTooLong;
        }
        if (!fitsReport(*path)) {
            return Obstacle::NameBreaksReport;
        }
        return *std::move(path);
    };
}

ScanReport reportOf(const ScanResult& result, ReportOrigin origin) {
    ScanReport report{{}, std::move(origin), result.failures, result.failuresLeftOut};
    const Scanner::ReportNaming asNamed =
        reportNaming([](const QString& named) { return std::optional<QString>(named); });
    QList<FoundProblem> named;
    named.reserve(result.problems.size());
    for (const FoundProblem& problem : result.problems) {
        const std::variant<QString, Obstacle> path = asNamed(problem.path);
        if (const auto* obstacle = std::get_if<Obstacle>(&path)) {
            report.failures.append({problem.path, *obstacle});
        } else {
            named.append(problem);
        }
    }
    // Sorted as the report's list will show them, and numbered so.
    sortAsListed(named);
    Q_ASSERT(named.size() <= kMaxRecords);
    report.entries.reserve(named.size());
    for (qsizetype i = 0; i < named.size(); ++i) {
        report.entries.append({qint16(i + 1), named.at(i).kind, named.at(i).path});
    }
    report.origin.leftOut = result.leftOut;
    report.origin.notChecked = report.failures.size() + report.failuresLeftOut;
    return report;
}

} // namespace zentoria::scan
