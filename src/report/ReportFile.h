#pragma once

#include "ReportReader.h"

#include <QString>

class QIODevice;

namespace zentoria {

// Why a report file could not be read as a report. Every reader of report files (the window, each
// command of the tool, a re-check) decides by this alone, and differs only in how it says it.
enum class ReportFailure {
    None,       // read; the result's outcome says how far (damage after the banner is not a failure)
    CannotOpen, // missing, no permission, a folder, a pipe, a device
    Empty,      // nothing in it
    NotAReport, // its first line is not the banner
    ReadFailed, // the disk failed while it was read; what was read before stays in the result
};

struct ReportFile {
    ReportFailure failure = ReportFailure::None;
    // CannotOpen and ReadFailed: the system's reason ("No such file or directory").
    QString reason;
    ReportReadResult result;
    // How many entries were read, also when they were handed on instead of kept.
    qsizetype entriesRead = 0;

    // Loaded or NoProblems, with nothing failed: read to its closing line.
    bool complete() const;
};

// Reads the report at a path (its name already free of quotes). Only a regular file is opened. With a
// sink each entry is handed on as soon as it is read and the result keeps none.
ReportFile readReportFile(const QString& path, const EntrySink& onEntry = {});
// The same over a device already open for reading (bytes in memory): everything but the opening.
ReportFile readReport(QIODevice& device, const EntrySink& onEntry = {});

// What kept the file from being read, in English, naming it as `name`; empty for None. The tool prints
// it; the window says the same things in the user's language.
QString describeFailure(const ReportFile& file, const QString& name);

} // namespace zentoria
