#pragma once

#include "Scanner.h"
#include "report/ReportWriter.h"

#include <functional>
#include <optional>

namespace zentoria::scan {

// How a report names a file found here (the local path through the path mappings, say); none when no
// name would lead back to the file (a backslash in a local name, which Windows reads as a folder).
using ReportPath = std::function<std::optional<QString>(const QString& localPath)>;

// The problem files as a report lists them (no more than a report holds, as a scan keeps them): each
// path as the report names it, sorted as the file list sorts, numbered from 1. A file the report
// cannot name, or whose name would garble the report (fitsReport), is added to `unnamed` instead.
QList<ReportEntry> reportEntries(QList<FoundProblem> problems, const ReportPath& reportPath,
                                 QList<Failure>* unnamed);

} // namespace zentoria::scan
