#pragma once

#include "Scanner.h"
#include "report/ReportWriter.h"

#include <functional>
#include <optional>

namespace zentoria::scan {

// How a report names a file found here (the local path through the path mappings, say); none when no
// name would lead back to the file (a backslash in a local name, which Windows reads as a folder).
using ReportPath = std::function<std::optional<QString>(const QString& localPath)>;

// The same as a scanner asks it (Scanner::setReportNaming) while it finds problem files: the name, or
// why a report cannot hold one (too long, a line break, the closing words, no way back).
Scanner::ReportNaming reportNaming(ReportPath reportPath);

// A check's result as a report: the entries, and who made it from what, counting in its header the
// problem files that did not fit and what could not be checked.
struct ScanReport {
    QList<ReportEntry> entries;
    ReportOrigin origin;
    // What the check could not look at, the files the report cannot name among them; those beyond
    // the ones kept by name are counted.
    QList<Failure> failures;
    qsizetype failuresLeftOut = 0;
};

// The one way a check's result becomes a report, for the tool and the window alike. The problem
// files carry the names the scanner's reportNaming gave them; one a report still cannot hold is told
// as not checked.
ScanReport reportOf(const ScanResult& result, ReportOrigin origin);

} // namespace zentoria::scan
