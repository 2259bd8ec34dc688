#pragma once

#include "Scanner.h"
#include "report/FileNameForm.h"
#include "report/ReportEntry.h"

#include <QDateTime>
#include <QList>
#include <QStringList>

#include <functional>
#include <optional>

class QIODevice;

namespace zentoria::scan {

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
    // A re-check's: the listed files under a folder it could not reach (kept with their earlier kind),
    // and the records of the report it could not read, this time or any time before.
    qsizetype unreachable = 0;
    qint64 notRead = 0;
    bool endedEarly = false;
    // How the entries' paths lead back to files: a re-check of a report from Windows keeps that
    // report's names, and says so, so that a re-check of the re-check reads them the same way.
    NameReading names = NameReading::Escaped;
};

// The bytes of a report that ReadReport reads back as "Loaded" with these entries, in this order and
// numbered from 1: the banner, six header lines saying who made it from what, the records, and the
// closing line with the date and time; UTF-8, CR LF. At most 32,766 entries (reportEntries keeps to
// that), none with a path that fitsReport refuses.
QByteArray reportBytes(const ReportOrigin& origin, const QList<ReportEntry>& entries);

// How a report names a file found here (the local path through the path mappings, say); none when no
// name would lead back to the file (a backslash in a local name, which Windows reads as a folder).
using ReportPath = std::function<std::optional<QString>(const QString& localPath)>;

// The same as a scanner asks it (Scanner::setReportNaming): the name, or why there is none.
Scanner::ReportNaming reportNaming(ReportPath reportPath);

// The problem files as a report lists them (no more than a report holds, as a scan keeps them): each
// path as the report names it, sorted as the file list sorts, numbered from 1. A file the report
// cannot name, or whose name would garble the report (fitsReport), is added to `unnamed` instead.
QList<ReportEntry> reportEntries(QList<FoundProblem> problems, const ReportPath& reportPath,
                                 QList<Failure>* unnamed);

// Whether a report can name this file: a path line that breaks in two, or holds the closing marker,
// would end or garble the report when read back; one longer than a report's path line holds would be
// skipped.
bool fitsReport(const QString& path);

// Writes the report to a file as a whole or not at all: a half-written report never replaces the old.
// A symbolic link stays a link and its target gets the report; a device, a named pipe or a descriptor
// (/dev/stdout) is written into, never replaced by a file. `error` gets the system's words.
bool saveReport(const QString& fileName, const QByteArray& bytes, QString* error);

} // namespace zentoria::scan
