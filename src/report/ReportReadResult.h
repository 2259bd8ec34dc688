#pragma once

#include "FileNameForm.h"
#include "ReportEntry.h"
#include "ReportHeader.h"
#include "TextTable.h"

#include <QList>

namespace zentoria {

enum class Outcome {
    Loaded,         // the closing line stood where a path line was expected
    Corrupted,      // the first line is not the banner
    NoProblems,     // the closing line stood where a detail line was expected
    EndedEarly,     // the file ended before any closing line
    TooManyRecords, // a record began after the last one the 16-bit counter can number
};

QString outcomeName(Outcome outcome);

// The sentences that describe a damaged report, English unless the window gives its language's.
struct ProblemWording {
    ProblemWording(QString (*words)(const TextKey&) = english);
    QString endedEarly;
    QString oneFileRead;
    QString filesRead;
    QString tooManyRecords;
    QString oneSkipped;
    QString manySkipped;
    QString andMore;
};

struct ReportReadResult {
    zentoria::Outcome Outcome = zentoria::Outcome::Corrupted;
    // In file order. Empty for Corrupted.
    QList<ReportEntry> Entries;
    // 1-based numbers of the path and detail lines that did not fit the format; their records were
    // skipped like a record with an empty detail line.
    QList<qint64> SkippedLines;
    // EndedEarly: the line that was still expected. TooManyRecords: the first line not read as part
    // of a record. 0 otherwise.
    qint64 StopLine = 0;
    // Loaded and NoProblems: what the closing line says after "Date of creation:", blanks trimmed
    // ("23.11.2026 21:14"). Empty otherwise.
    QString CreationDate;
    // Records that gave no entry because they could not be read: skipped ones, one the file's end cut
    // in two, and every one after the last a report can number (counted, not read).
    qint64 UnreadRecords = 0;
    // What the header says is missing, in a report this program wrote.
    MissingRecords Written;

    // All that the report lacks: this reading's and what its header carries.
    MissingRecords missing() const;
    // How the paths lead back to files: escaped when the header says this program wrote the report,
    // as text for any other.
    NameReading Names = NameReading::AsText;

    // Explains what went wrong beyond the report's own outcomes (EndedEarly, TooManyRecords, skipped
    // records), in sentences for a person; empty when nothing did.
    QString describeProblems(const ProblemWording& wording = {}) const;
    // The same for a result whose entries were handed on as they were read.
    QString describeProblems(qsizetype entriesRead, const ProblemWording& wording = {}) const;
};

} // namespace zentoria
