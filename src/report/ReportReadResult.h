#pragma once

#include "FileNameForm.h"
#include "ReportEntry.h"
#include "ReportHeader.h"

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
    QString endedEarly = QStringLiteral("The report ends too early: it should go on at line %1 up to its "
                                        "closing \"Date of creation:\" line, but the file ends there. %2");
    QString oneFileRead = QStringLiteral("1 file was read before it.");
    QString filesRead = QStringLiteral("%1 files were read before it.");
    QString tooManyRecords = QStringLiteral("The report lists more than %1 files, more than can be shown. "
                                            "Reading stopped at line %2; the files of the first %1 records "
                                            "were read.");
    QString oneSkipped =
        QStringLiteral("1 line does not fit the report format, so its record was skipped (line %1).");
    QString manySkipped =
        QStringLiteral("%1 lines do not fit the report format, so their records were skipped (lines %2).");
    QString andMore = QStringLiteral("%1 and %2 more");
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
