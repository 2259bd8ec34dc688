#pragma once

#include "ProblemKind.h"

#include <QString>

namespace zentoria {

// One problem file of a report.
struct ReportEntry {
    // 1-based number of the entry's record among all records, skipped ones included.
    qint16 Ordinal = 0;
    ProblemKind Kind = ProblemKind::ID3v0;
    // The record's first line exactly as read: never trimmed.
    QString Path;

    friend bool operator==(const ReportEntry&, const ReportEntry&) = default;
};

} // namespace zentoria
