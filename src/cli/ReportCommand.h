#pragma once

#include "export/ExportWriter.h"
#include "report/FileNameForm.h"
#include "report/ReportFile.h"

#include <QStringList>

#include <functional>
#include <optional>

class QIODevice;

namespace zentoria::cli {

// Exit statuses, as the help text gives them.
inline constexpr int kExitRead = 0;
inline constexpr int kExitDamaged = 1;
inline constexpr int kExitUnreadable = 2;

// The exit status every command gives for a report it could not read: 2 when the file could not be
// opened or read, 1 when it is empty or no report (as for a damaged one).
int failureStatus(ReportFailure failure);

// Reads a report, handing each entry to the sink as it is read: the named file, or in tests and the
// fuzzer bytes already in memory.
using ReportSource = std::function<ReportFile(const EntrySink& onEntry)>;
ReportSource reportAt(const QString& path);

// What to print about a report.
enum class Listing {
    Plain,   // one line per entry: ORDINAL<TAB>CODE<TAB>PATH
    Json,    // one JSON object
    Summary, // one line of counts
};

// The help text: usage, commands, options and exit statuses.
extern const char kUsage[];

// Runs "zentoria-report" with the arguments after the program name and answers its exit status.
int runReportCommand(const QStringList& arguments, QIODevice& out, QIODevice& err);

// Prints a listing of the report, entry by entry as it is read: the output never waits for the whole
// report and memory does not grow with it. `name` is how messages call the report.
int writeListing(Listing listing, const ReportSource& report, const QString& name, QIODevice& out,
                 QIODevice& err);

// What "export" writes: the files of one kind or of all, in a format, with paths mapped or as they stand.
struct ExportRequest {
    std::optional<ProblemKind> kind;
    ExportFormat format = ExportFormat::M3u8;
    PathMappings mapping;
};

// Writes the report's files as the request says, entry by entry as they are read. Exit statuses as for
// a listing.
int writeExport(const ReportSource& report, const QString& name, const ExportRequest& request, QIODevice& out,
                QIODevice& err);

// Reads a report whole; its exit status, with the reason on err naming the file, when it cannot be
// read or is no report. A report damaged after its start is read as far as it goes, the damage told on
// err.
std::optional<int> readWholeReport(const QString& fileName, ReportReadResult& result, QIODevice& err);

// "scan": the folders' MP3 files checked here, written to out as a report. `windowsFolders` is empty
// or names, for each folder in turn, the Windows folder its paths are written under.
// `output` names a file to write the report to instead, whole or not at all. Exit status 2 when any
// file or folder could not be checked (each is named on err) or the report could not be written, else
// 1 when a file lacks a tag, else 0.
struct ScanRequest {
    QStringList folders;
    QStringList windowsFolders;
    int jobs = 0;
    QString output;
};
int runScan(const ScanRequest& request, QIODevice& out, QIODevice& err);

// "recheck": the files a report lists checked again, found through the mapping; their present state
// written to out (or to `output`) as a report with the same paths, or as a JSON summary. A file not
// found, or under a mapping whose folder is missing or empty (unreachable), keeps its earlier kind.
// Records the report could not give (unread, or left out by its check) are counted, never taken for
// fixed. Exit status 2 when the report cannot be read, the result written, a folder reached or a record
// read, else 1 when a file is still broken or was not found or the report left files out, else 0.
struct RecheckRequest {
    QString report;
    PathMappings mapping;
    bool json = false;
    int jobs = 0;
    QString output;
    // Follows the files while they are mended (followRecheck) before the re-check.
    bool follow = false;
};
int runRecheck(const RecheckRequest& request, QIODevice& out, QIODevice& err);
// The re-check of a report already read. Following (request.follow) printed its changes on out: the
// report of the present state goes only to `output`, and the counts line is always given.
int recheckRead(const RecheckRequest& request, const ReportReadResult& report, QIODevice& out,
                QIODevice& err);
// Where a path of the report is on this computer: through the mapping, its name read as the report
// writes names. A path no mapping leads here stays as the report gives it.
QString localPath(const PathMappings& mapping, NameReading reading, const QString& reportPath);

// "recheck --follow": the report's local files followed until SIGINT or SIGTERM, one line on out for
// each change as it is seen ("fixed", "still", "changed" with the kind now, "gone", "unreadable" with
// the reason; a tab; the report's path), or one JSON object a line; then the re-check, as recheckRead
// ends it. Exit status 2 at once when no file can be followed.
int followRecheck(const RecheckRequest& request, QIODevice& out, QIODevice& err);

// Writes what a command made whole: to the file through QSaveFile (an interruption or a full disk
// leaves the old file as it was), or to out. False, with a message on err naming what failed, when it
// could not be written.
bool deliver(const QByteArray& bytes, const QString& outputFile, QIODevice& out, QIODevice& err);

// Says that writing standard output failed, and why ("Broken pipe", or that it is closed); once, however
// often the output fails after.
void tellOutputFailed(QIODevice& out, QIODevice& err);

// Two reports compared by path, letter case aside: what is only in the old one, only in the new one,
// and in both (as the new one has it). Linear in the reports' sizes.
struct ReportDiff {
    QList<ReportEntry> fixed; // in the old report's order
    QList<ReportEntry> added; // in the new report's order
    QList<ReportEntry> still; // in the new report's order
};
ReportDiff compareReports(const QList<ReportEntry>& oldEntries, const QList<ReportEntry>& newEntries);

// Prints the comparison of two report files. Exit status 0 when nothing is new, 1 when something is,
// 2 when a report cannot be read.
int writeDiff(const QString& oldFile, const QString& newFile, bool json, QIODevice& out, QIODevice& err);

} // namespace zentoria::cli
