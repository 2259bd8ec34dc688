#pragma once

#include "Scanner.h"
#include "report/ReportEntry.h"

namespace zentoria::scan {

// The files of a report looked at again, each by the path the report gives it.
struct RecheckResult {
    // The files still lacking information, with the kind they have now, in the report's order and
    // numbered anew: the report of their present state. A file that was not found keeps its earlier
    // kind: it is not known to be fixed.
    QList<ReportEntry> now;
    QStringList fixed;   // both tags there now
    QStringList still;   // the same kind as before
    QStringList changed; // another kind than before
    // Not there, or not readable as MP3 audio, each with the reason; in `now` too.
    QList<Failure> notFound;
    bool cancelled = false;
};

// Probes the files the entries name, found on this computer by `localPath` (a report's Windows path
// through the path mappings), and sorts each into fixed, still, changed or not found.
RecheckResult recheckEntries(const QList<ReportEntry>& entries,
                             const std::function<QString(const QString&)>& localPath, Scanner& scanner,
                             const Scanner::Progress& progress = {});

} // namespace zentoria::scan
