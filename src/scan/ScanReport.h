#pragma once

#include "Scanner.h"
#include "report/ReportWriter.h"

#include <functional>
#include <optional>

namespace zentoria::scan {

// How a report names a file found here (the local path through the path mappings, say); none when no
// name would lead back to the file (a backslash in a local name, which Windows reads as a folder).
using ReportPath = std::function<std::optional<QString>(const QString& localPath)>;

// A check's result as a report: the entries, and who made it from what, counting in its header the
// problem files that did not fit and what could not be checked.
struct ScanReport {
    QList<ReportEntry> entries;
    ReportOrigin origin;
    // What the check could not look at, the files the report cannot name among them.
    QList<Failure> failures;
};

// The one way a check's result becomes a report, for the tool and the window alike.
ScanReport reportOf(const ScanResult& result, const ReportPath& reportPath, ReportOrigin origin);

} // namespace zentoria::scan
