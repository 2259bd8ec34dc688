#pragma once

#include "Failure.h"
#include "report/ProblemKind.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>
#include <variant>

namespace zentoria::scan {

// A file whose tags lack information, by its path on this computer.
struct FoundProblem {
    QString path;
    ProblemKind kind = ProblemKind::ID3v0;
    friend bool operator==(const FoundProblem&, const FoundProblem&) = default;
};

// Counts while a check runs.
struct ScanCounts {
    // Files to check found so far; the total once `allFound`.
    qint64 found = 0;
    // The walk is over: no more files will be found, so `probed` can be told as a share of `found`.
    bool allFound = false;
    qint64 probed = 0;
    // Of the probed files, those that could not be read.
    qint64 unreadable = 0;
    // Everything that could not be checked: the unreadable files, and what the walk could not look at.
    qint64 failed = 0;
    KindCounts<qint64> perKind;
    qint64 problems() const { return perKind.total(); }
};

// What a walk names of what it could not check: more than a person reads, few enough to hold.
inline constexpr qsizetype kMostFailuresNamed = 10000;

struct ScanResult {
    // In the order the file list sorts them (ListOrder); no more than a report holds, the first in that
    // order, so that memory does not grow with the collection. Each by the name the report gives it,
    // where the scanner was told how (setReportNaming).
    QList<FoundProblem> problems;
    // The problem files found beyond those, counted.
    qsizetype leftOut = 0;
    // Files that are no MP3 audio or cannot be read, and folders that cannot be listed, by path. A walk
    // keeps the first kMostFailuresNamed in that order, so that memory does not grow with a collection
    // that cannot be read; the given files are all kept, each one named by the caller.
    QList<Failure> failures;
    // The failures found beyond those, counted.
    qsizetype failuresLeftOut = 0;
    ScanCounts counts;
    bool cancelled = false;
};

// The order of the file list (ListOrder: by path as the locale collates, letter case aside), then
// exactly, so that the order is one whatever order the threads found the files in.
bool listedBefore(const FoundProblem& a, const FoundProblem& b);
void sortAsListed(QList<FoundProblem>& problems);

// Checks MP3 files' tags on a small pool of threads. The caller's thread walks the folders (or hands
// out the given files) and waits; the probes run on the pool. Memory grows with the problem files and
// the folders, not with the files that are fine. Open descriptors stay within what the process's
// limit leaves (DescriptorBudget), whatever the depth: fewer threads when it is low, and folders past
// the budget opened by a longer name from one kept open.
class Scanner {
public:
    // The fastest on a local disk with nothing cached, measured (bench_scan --cold): the disk takes
    // many small reads at once better than a few; with everything cached it costs a fifth.
    static constexpr int kDefaultJobs = 16;

    // Called on the caller's thread, a few times a second and once at the end.
    using Progress = std::function<void(const ScanCounts&)>;

    // How a report will name a problem file found here, or why it cannot: asked on the pool's threads
    // before the file is kept, so that the files kept are the first in the report's order and none the
    // report refuses takes the place of one it could hold. A refused file is a failure.
    using ReportNaming = std::function<std::variant<QString, Obstacle>(const QString& path)>;

    // Progress is told every `progressMs` milliseconds at most; 0 tells it after every batch of files.
    explicit Scanner(int jobs = kDefaultJobs, int progressMs = 200);

    // Problem files are then given by the names the report will give them.
    void setReportNaming(ReportNaming naming) { m_naming = std::move(naming); }

    // Stops the check at the next file, from any thread; what ran returns with `cancelled` set.
    void cancel() { m_cancelled = true; }
    bool isCancelled() const { return m_cancelled; }

    // Every file ending in ".mp3" (letter case aside) under the folders, symbolic links followed; a
    // folder reached twice (a loop, or two links to one folder) is walked once. Within a folder, files
    // are probed in the order of their inodes, which saves a spinning disk its seeks. The walk goes by
    // open folders and names' bytes, so neither depth nor a name that is no UTF-8 stops it; paths are
    // given in the form of FileNameForm. Every folder that cannot be entered or listed, and every
    // ".mp3" that is no regular file or vanished, is a failure.
    ScanResult scanFolders(const QStringList& folders, const Progress& progress = {});
    // The given files only, as they are named (in the form of FileNameForm); a file that is not there
    // is a failure.
    ScanResult probeFiles(const QStringList& files, const Progress& progress = {});

private:
    class Run;
    int m_jobs;
    int m_progressMs;
    ReportNaming m_naming;
    std::atomic<bool> m_cancelled = false;
};

} // namespace zentoria::scan
