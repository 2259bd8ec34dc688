#pragma once

#include "FolderReach.h"
#include "Scanner.h"
#include "report/ReportEntry.h"

namespace zentoria::scan {

// A folder the report's files are looked for under that could not be reached: none of its files was
// looked at, so none of them is called fixed or not found.
struct UnreachableFolder {
    QString folder; // here, as the mapping names it
    FolderReach reach;
    QStringList files; // the report's paths, in its order
};

// The files of a report looked at again, each by the path the report gives it.
struct RecheckResult {
    // The files still lacking information, with the kind they have now, in the report's order and
    // numbered anew: the report of their present state. A file that was not found, or lies under a
    // folder that could not be reached, keeps its earlier kind: it is not known to be fixed.
    QList<ReportEntry> now;
    QStringList fixed;   // both tags there now
    QStringList still;   // the same kind as before
    QStringList changed; // another kind than before
    // Not there, or not readable as MP3 audio, each with the reason; in `now` too.
    QList<Failure> notFound;
    // In the order the report first names a file under each.
    QList<UnreachableFolder> unreachable;
    bool cancelled = false;

    qsizetype unreachableFiles() const;
    // Nothing was found: every file looked for was not there, and there was one to look for.
    bool noneFound() const;
};

// Where a report's file is looked for here: its path on this computer (a Windows path through the
// path mappings), and the folder that must be reachable for it to be there (the mapping's local
// folder; empty when no mapping holds the path).
struct LocalPlace {
    QString path;
    QString folder;
};

// Probes the files the entries name, found on this computer where `placeOf` says, and sorts each into
// fixed, still, changed, not found or unreachable. A file the report names twice is probed, listed and
// counted once, where it is named first.
RecheckResult recheckEntries(const QList<ReportEntry>& entries,
                             const std::function<LocalPlace(const QString&)>& placeOf, Scanner& scanner,
                             const Scanner::Progress& progress = {});

} // namespace zentoria::scan
