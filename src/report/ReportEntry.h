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

// Entries move as plain bytes: a report's list grows to tens of thousands of them, and Qt's list moves
// other types one by one, many times over.
Q_DECLARE_TYPEINFO(zentoria::ReportEntry, Q_RELOCATABLE_TYPE);
