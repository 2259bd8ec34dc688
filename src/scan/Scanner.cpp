#include "Scanner.h"

#include "ReportWriter.h"
#include "TagProbe.h"
#include "report/CaseInsensitiveOrder.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMutex>
#include <QSemaphore>
#include <QSet>
#include <QThreadPool>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <sys/stat.h>
#include <vector>

namespace zentoria::scan {

namespace {

// Files handed to a thread at once: enough to make handing out cheap, few enough to share the work.
constexpr qsizetype kBatch = 64;
// How long the walking thread waits for the pool before it looks at the clock again.
constexpr int kWaitMs = 50;

bool isMp3Name(const char* name) {
    const std::size_t length = std::strlen(name);
    return length >= 4 && strncasecmp(name + length - 4, ".mp3", 4) == 0;
}

QString systemError() {
    return QString::fromLocal8Bit(std::strerror(errno));
}

QString joined(const QString& folder, const QString& name) {
    return folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
}

} // namespace

void sortAsListed(QList<FoundProblem>& problems) {
    std::sort(problems.begin(), problems.end(), [](const FoundProblem& a, const FoundProblem& b) {
        const int folded = compareCaseInsensitive(a.path, b.path);
        return folded != 0 ? folded < 0 : a.path < b.path;
    });
}

// One check: the pool, the counts and what was found so far.
class Scanner::Run {
public:
    Run(Scanner& scanner, const Progress& progress)
        : m_scanner(scanner)
        , m_progress(progress)
        , m_slots(4 * scanner.m_jobs) {
        m_pool.setMaxThreadCount(scanner.m_jobs);
        m_clock.start();
    }

    // Hands files to the pool, waiting while enough are queued: the walk never runs far ahead.
    void submit(QStringList files) {
        m_found += files.size();
        while (!files.isEmpty() && !m_scanner.isCancelled()) {
            const QStringList batch = files.first(std::min(kBatch, files.size()));
            files.remove(0, batch.size());
            while (!m_slots.tryAcquire(1, kWaitMs)) {
                tick();
            }
            m_pool.start([this, batch] {
                for (const QString& file : batch) {
                    if (m_scanner.isCancelled()) {
                        break;
                    }
                    record(file, probeTags(file));
                }
                m_slots.release();
            });
            tick();
        }
    }

    void fail(const QString& path, const QString& why) {
        const QMutexLocker lock(&m_mutex);
        m_result.failures.append({path, why});
    }

    // Waits for the pool, and gives the result in its one order.
    ScanResult finish() {
        while (!m_pool.waitForDone(kWaitMs)) {
            tick();
        }
        m_result.cancelled = m_scanner.isCancelled();
        m_result.counts = counts();
        sortAsListed(m_result.problems);
        std::sort(m_result.failures.begin(), m_result.failures.end(),
                  [](const Failure& a, const Failure& b) { return a.path < b.path; });
        if (m_progress) {
            m_progress(m_result.counts);
        }
        return std::move(m_result);
    }

    void tick() {
        if (m_progress && m_clock.elapsed() >= m_scanner.m_progressMs) {
            m_clock.restart();
            m_progress(counts());
        }
    }

private:
    void record(const QString& file, const TagProbe& probe) {
        const std::optional<ProblemKind> kind = problemKindOf(probe);
        if (probe.outcome != TagProbe::Outcome::Probed) {
            const QMutexLocker lock(&m_mutex);
            m_result.failures.append({file, probe.error});
        } else if (kind) {
            ++m_perKind[kindNumber(*kind)];
            const QMutexLocker lock(&m_mutex);
            m_result.problems.append({file, *kind});
        }
        ++m_probed;
    }
    ScanCounts counts() const {
        ScanCounts counts;
        counts.found = m_found;
        counts.probed = m_probed;
        for (int kind = 0; kind < 3; ++kind) {
            counts.perKind[kind] = m_perKind[kind];
        }
        return counts;
    }

    Scanner& m_scanner;
    const Progress& m_progress;
    QThreadPool m_pool;
    QSemaphore m_slots;
    QElapsedTimer m_clock;
    QMutex m_mutex;
    ScanResult m_result;
    std::atomic<qint64> m_found = 0;
    std::atomic<qint64> m_probed = 0;
    std::atomic<qint64> m_perKind[3] = {0, 0, 0};
};

Scanner::Scanner(int jobs, int progressMs)
    : m_jobs(std::max(1, jobs))
    , m_progressMs(std::max(0, progressMs)) {}

ScanResult Scanner::scanFolders(const QStringList& folders, const Progress& progress) {
    Run run(*this, progress);
    // Folders already walked, by device and inode: a link back up, or a second link, is not followed.
    QSet<std::pair<dev_t, ino_t>> walked;
    const auto firstVisit = [&walked](const QString& folder) {
        struct stat status = {};
        if (::stat(QFile::encodeName(folder).constData(), &status) != 0) {
            return false;
        }
        const auto id = std::pair(status.st_dev, status.st_ino);
        if (walked.contains(id)) {
            return false;
        }
        walked.insert(id);
        return true;
    };

    // One folder after the other, in the order given: a folder reached from two of them counts as the
    // first one's.
    QStringList pending;
    for (const QString& root : folders) {
        const QString clean = QDir::cleanPath(QDir(root).absolutePath());
        if (firstVisit(clean)) {
            pending.append(clean);
        }
        while (!pending.isEmpty() && !isCancelled()) {
            const QString folder = pending.takeLast();
            DIR* dir = ::opendir(QFile::encodeName(folder).constData());
            if (!dir) {
                run.fail(folder, systemError());
                continue;
            }
            std::vector<std::pair<ino_t, QString>> files;
            while (const dirent* entry = ::readdir(dir)) {
                if (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0) {
                    continue;
                }
                const QString path = joined(folder, QFile::decodeName(entry->d_name));
                bool isFolder = entry->d_type == DT_DIR;
                bool isFile = entry->d_type == DT_REG;
                if (entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN) {
                    struct stat status = {};
                    if (::stat(QFile::encodeName(path).constData(), &status) == 0) {
                        isFolder = S_ISDIR(status.st_mode);
                        isFile = S_ISREG(status.st_mode);
                    } else if (isMp3Name(entry->d_name)) {
                        run.fail(path, systemError());
                    }
                }
                if (isFolder && firstVisit(path)) {
                    pending.append(path);
                } else if (isFile && isMp3Name(entry->d_name)) {
                    if (!fitsReport(path)) {
                        run.fail(path,
                                 QStringLiteral("a report cannot name it: its name holds a line break or "
                                                "the report's closing words"));
                    } else {
                        files.emplace_back(entry->d_ino, path);
                    }
                }
            }
            ::closedir(dir);
            std::sort(files.begin(), files.end(),
                      [](const auto& a, const auto& b) { return a.first < b.first; });
            QStringList paths;
            paths.reserve(qsizetype(files.size()));
            for (auto& [inode, path] : files) {
                paths.append(std::move(path));
            }
            run.submit(std::move(paths));
        }
    }
    return run.finish();
}

ScanResult Scanner::probeFiles(const QStringList& files, const Progress& progress) {
    Run run(*this, progress);
    run.submit(files);
    return run.finish();
}

} // namespace zentoria::scan
