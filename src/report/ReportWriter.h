#pragma once

#include "report/FileNameForm.h"
#include "report/ReportEntry.h"
#include "report/ReportHeader.h"

#include <QDateTime>
#include <QList>
#include <QStringList>

class QIODevice;

namespace zentoria {

// What the header of a written report says made it.
struct ReportOrigin {
    // "zentoria-report scan", "Zentoria": who checked the files.
    QString program;
    QString version;
    // The folders checked (or, for a re-check, the report checked again), as the report's paths name them.
    QStringList folders;
    QDateTime created = QDateTime::currentDateTime();
    // Problem files found that did not fit the report, said in its header.
    qsizetype leftOut = 0;
    // What the check could not look at, said in the header so that the report never passes for whole:
    // the files and folders a scan could not check, or the listed files a re-check did not find (those
    // keep their earlier kind).
    qsizetype notChecked = 0;
    bool recheck = false;
    // Set when the files were followed while the report was open rather than checked again: the report
    // says since when, and the files it did not see change keep their earlier kind.
    QDateTime followedSince = QDateTime();
    // A re-check's: the listed files under a folder it could not reach (kept with their earlier kind),
    // and the records of the report it could not read, this time or any time before.
    qsizetype unreachable = 0;
    qint64 notRead = 0;
    bool endedEarly = false;
    // What the report lacks, as one: read from these three, and carried on into the next report.
    MissingRecords missing() const { return {notRead, endedEarly, leftOut}; }
    void carry(const MissingRecords& missing) {
        notRead = missing.notRead;
        endedEarly = missing.endedEarly;
        leftOut = missing.leftOut;
    }
    // How the entries' paths lead back to files: a re-check of a report from Windows keeps that
    // report's names, and says so, so that a re-check of the re-check reads them the same way.
    NameReading names = NameReading::Escaped;
};

// The bytes of a report that ReadReport reads back as "Loaded" with these entries, in this order and
// numbered from 1: the banner, six header lines saying who made it from what, the records, and the
// closing line with the date and time; UTF-8, CR LF. At most 32,766 entries (a check keeps to
// that), none with a path that fitsReport refuses.
QByteArray reportBytes(const ReportOrigin& origin, const QList<ReportEntry>& entries);

// Whether a report can name this file: a path line that breaks in two, or holds the closing marker,
// would end or garble the report when read back; one longer than a report's path line holds would be
// skipped.
bool fitsReport(const QString& path);

// Writes the report to a file as a whole or not at all: a half-written report never replaces the old.
// A symbolic link stays a link and its target gets the report; a device, a named pipe or a descriptor
// (/dev/stdout) is written into, never replaced by a file. `error` gets the system's words.
bool saveReport(const QString& fileName, const QByteArray& bytes, QString* error);

} // namespace zentoria
