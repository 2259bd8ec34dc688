#include "Scanner.h"

#include "DescriptorBudget.h"
#include "LocalFile.h"
#include "TagProbe.h"
#include "WorkerPool.h"
#include "report/FileNameForm.h"
#include "report/ReportFormat.h"

#include <QDir>
#include <QElapsedTimer>
#include <QMutex>
#include <QSemaphore>
#include <QSet>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <limits>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
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

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NONBLOCK;

// An open folder, closed when the last file or folder found in it has been looked at; counted, so that
// the walk keeps no more open than its budget.
struct OpenFolder {
    int descriptor;
    std::atomic<int>& open;
    OpenFolder(int d, std::atomic<int>& count)
        : descriptor(d)
        , open(count) {
        ++open;
    }
    ~OpenFolder() {
        ::close(descriptor);
        --open;
    }
    OpenFolder(const OpenFolder&) = delete;
    OpenFolder& operator=(const OpenFolder&) = delete;
};
using FolderHandle = std::shared_ptr<const OpenFolder>;

// A file or folder by its name under an open folder, and by the path a person reads. The name leads
// through the folders between where those were not kept open; with no folder, the path is opened.
struct Found {
    FolderHandle in;
    QByteArray name;
    QString path;
};

bool outOfDescriptors(int error) {
    return error == EMFILE || error == ENFILE;
}

QString childPath(const QString& folder, const QByteArray& name) {
    const QString shown = shownFileName(name);
    return folder.endsWith(u'/') ? folder + shown : folder + u'/' + shown;
}

} // namespace

// One check: the pool, the counts and what was found so far.
class Scanner::Run {
public:
    // The pool's threads all start here, before the walk opens anything.
    Run(Scanner& scanner, const Progress& progress, qsizetype mostFailures)
        : m_scanner(scanner)
        , m_progress(progress)
        , m_mostFailures(mostFailures)
        , m_budget(descriptorBudgetHere(scanner.m_jobs))
        , m_slots(4 * m_budget.jobs)
        , m_pool(m_budget.jobs) {
        m_clock.start();
    }

    // Hands files to the pool, waiting while enough are queued: the walk never runs far ahead. `last`
    // says no more files will follow.
    void submit(std::vector<Found> files, bool last = false) {
        m_found += qsizetype(files.size());
        if (last) {
            m_allFound = true;
        }
        for (std::size_t next = 0; next < files.size() && !m_scanner.isCancelled();) {
            const std::size_t end = std::min(files.size(), next + std::size_t(kBatch));
            std::vector<Found> batch(std::make_move_iterator(files.begin() + std::ptrdiff_t(next)),
                                     std::make_move_iterator(files.begin() + std::ptrdiff_t(end)));
            next = end;
            while (!m_slots.tryAcquire(1, kWaitMs)) {
                tick();
            }
            m_pool.start([this, batch = std::move(batch)] {
                for (const Found& file : batch) {
                    if (m_scanner.isCancelled()) {
                        break;
                    }
                    record(file.path,
                           file.in ? probeTagsAt(file.in->descriptor, file.name) : probeTags(file.path));
                }
                m_slots.release();
            });
            tick();
        }
    }

    // Opens the folder and lists it: its files go to the pool, its folders to `pending`.
    void walk(const Found& folder, QSet<std::pair<dev_t, ino_t>>& walked, std::vector<Found>& pending);

    // An open that found no descriptor free tries again once the probes have given theirs back.
    template <typename Open>
    int opening(const Open& open) {
        int descriptor = open();
        if (descriptor < 0 && outOfDescriptors(errno)) {
            while (!m_pool.waitForDone(kWaitMs)) {
                tick();
            }
            descriptor = open();
        }
        return descriptor;
    }

    // Kept as the problems are, the first in path order: a heap whose top is the last kept.
    void fail(const QString& path, Obstacle obstacle, int error = 0) {
        ++m_failed;
        const QMutexLocker lock(&m_mutex);
        QList<Failure>& kept = m_result.failures;
        if (kept.size() == m_mostFailures) {
            ++m_result.failuresLeftOut;
            if (!(path < kept.front().path)) {
                return;
            }
            std::pop_heap(kept.begin(), kept.end(), byPath);
            kept.removeLast();
        }
        kept.append({path, obstacle, error});
        std::push_heap(kept.begin(), kept.end(), byPath);
    }

    // Waits for the pool, and gives the result in its one order.
    ScanResult finish() {
        m_allFound = true;
        while (!m_pool.waitForDone(kWaitMs)) {
            tick();
        }
        m_result.cancelled = m_scanner.isCancelled();
        m_result.counts = counts();
        std::sort_heap(m_kept.begin(), m_kept.end(), listedBefore);
        m_result.problems = QList<FoundProblem>(std::make_move_iterator(m_kept.begin()),
                                                std::make_move_iterator(m_kept.end()));
        std::sort(m_result.failures.begin(), m_result.failures.end(), byPath);
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
            ++m_unreadable;
            fail(file, probe.obstacle, probe.error);
        } else if (kind) {
            const std::variant<QString, Obstacle> named =
                m_scanner.m_naming ? m_scanner.m_naming(file) : std::variant<QString, Obstacle>(file);
            if (const auto* obstacle = std::get_if<Obstacle>(&named)) {
                // Read, but a report cannot name it: not checked, as far as anyone told is concerned.
                ++m_unreadable;
                fail(file, *obstacle);
            } else {
                ++m_perKind[kindNumber(*kind)];
                const QMutexLocker lock(&m_mutex);
                keep({std::get<QString>(named), *kind});
            }
        }
        ++m_probed;
    }
    // Keeps the problems a report can hold, the first in list order: a heap whose top is the last kept.
    void keep(FoundProblem problem) {
        if (qsizetype(m_kept.size()) < kMaxRecords) {
            m_kept.push_back(std::move(problem));
            std::push_heap(m_kept.begin(), m_kept.end(), listedBefore);
        } else if (listedBefore(problem, m_kept.front())) {
            std::pop_heap(m_kept.begin(), m_kept.end(), listedBefore);
            m_kept.back() = std::move(problem);
            std::push_heap(m_kept.begin(), m_kept.end(), listedBefore);
            ++m_result.leftOut;
        } else {
            ++m_result.leftOut;
        }
    }
    ScanCounts counts() const {
        ScanCounts counts;
        counts.found = m_found;
        counts.probed = m_probed;
        counts.allFound = m_allFound;
        counts.unreadable = m_unreadable;
        counts.failed = m_failed;
        for (ProblemKind kind : {ProblemKind::ID3v0, ProblemKind::ID3v1, ProblemKind::ID3v2}) {
            counts.perKind.add(kind, m_perKind[kindNumber(kind)]);
        }
        return counts;
    }

    // Lists the open folder `descriptor`, whose entries are named under `under`.
    void list(int descriptor, const Found& under, std::vector<Found>& pending);

    static bool byPath(const Failure& a, const Failure& b) { return a.path < b.path; }

    Scanner& m_scanner;
    const Progress& m_progress;
    const qsizetype m_mostFailures;
    const DescriptorBudget m_budget;
    std::atomic<int> m_openFolders = 0;
    QSemaphore m_slots;
    QElapsedTimer m_clock;
    QMutex m_mutex;
    ScanResult m_result;
    std::vector<FoundProblem> m_kept;
    std::atomic<qint64> m_found = 0;
    std::atomic<qint64> m_probed = 0;
    std::atomic<bool> m_allFound = false;
    std::atomic<qint64> m_unreadable = 0;
    std::atomic<qint64> m_failed = 0;
    std::atomic<qint64> m_perKind[3] = {0, 0, 0};
    // Last: its threads end before what they use goes.
    WorkerPool m_pool;
};

Scanner::Scanner(int jobs, int progressMs)
    : m_jobs(std::max(1, jobs))
    , m_progressMs(std::max(0, progressMs)) {}

ScanResult Scanner::scanFolders(const QStringList& folders, const Progress& progress) {
    Run run(*this, progress, kMostFailuresNamed);
    // Folders already walked, by device and inode: a link back up, or a second link, is not followed.
    QSet<std::pair<dev_t, ino_t>> walked;
    // One folder after the other, in the order given: a folder reached from two of them counts as the
    // first one's.
    std::vector<Found> pending;
    for (const QString& root : folders) {
        pending.push_back({nullptr, {}, QDir::cleanPath(QDir(root).absolutePath())});
        while (!pending.empty() && !isCancelled()) {
            const Found folder = std::move(pending.back());
            pending.pop_back();
            run.walk(folder, walked, pending);
        }
    }
    return run.finish();
}

void Scanner::Run::walk(const Found& folder, QSet<std::pair<dev_t, ino_t>>& walked,
                        std::vector<Found>& pending) {
    const int descriptor = opening([&folder] {
        return folder.in ? openBytesAt(folder.in->descriptor, folder.name, kFolderFlags)
                         : openLocal(folder.path, kFolderFlags);
    });
    if (descriptor < 0) {
        const int error = errno;
        fail(folder.path, error == ENOENT ? Obstacle::Vanished : Obstacle::CannotEnter, error);
        return;
    }
    const auto open = std::make_shared<const OpenFolder>(descriptor, m_openFolders);
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || walked.contains({status.st_dev, status.st_ino})) {
        return;
    }
    walked.insert({status.st_dev, status.st_ino});
    // A folder stays open for what it holds while the budget allows. Past it, what it holds is named
    // from the folder this one was opened from, and this one closes once listed: a waiting folder keeps
    // no descriptor of its own, so no depth holds more than the budget.
    const bool keep = !folder.in || m_openFolders <= m_budget.folders;
    list(descriptor, keep ? Found{open, {}, folder.path} : Found{folder.in, folder.name + '/', folder.path},
         pending);
}

void Scanner::Run::list(int descriptor, const Found& under, std::vector<Found>& pending) {
    const QString& path = under.path;
    const auto found = [&under](const char* name) {
        return Found{under.in, under.name + name, childPath(under.path, name)};
    };
    // A folder that can be listed but not searched shows its names and hides its files: say so once,
    // for the folder, instead of failing every file in it.
    struct stat self = {};
    if (::fstatat(descriptor, ".", &self, 0) != 0) {
        fail(path, Obstacle::CannotEnter, errno);
        return;
    }
    const int listed = opening([descriptor] { return ::fcntl(descriptor, F_DUPFD_CLOEXEC, 0); });
    DIR* listing = listed >= 0 ? ::fdopendir(listed) : nullptr;
    if (!listing) {
        const int error = errno;
        if (listed >= 0) {
            ::close(listed);
        }
        fail(path, Obstacle::CannotList, error);
        return;
    }
    std::vector<std::pair<ino_t, Found>> files;
    for (;;) {
        errno = 0;
        const dirent* entry = ::readdir(listing);
        if (!entry) {
            if (errno != 0) {
                fail(path, Obstacle::CannotListToEnd, errno);
            }
            break;
        }
        if (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0) {
            continue;
        }
        const bool mp3 = isMp3Name(entry->d_name);
        bool isFolder = entry->d_type == DT_DIR;
        bool isFile = entry->d_type == DT_REG;
        if (!isFolder && !isFile) {
            struct stat status = {};
            if (::fstatat(descriptor, entry->d_name, &status, 0) != 0) {
                const int error = errno;
                // A link that leads nowhere is no file that was missed, unless it is named as one.
                if (error != ENOENT || mp3) {
                    struct stat link = {};
                    const bool dangling = error == ENOENT && ::fstatat(descriptor, entry->d_name, &link,
                                                                       AT_SYMLINK_NOFOLLOW) == 0;
                    fail(childPath(path, entry->d_name),
                         dangling          ? Obstacle::DanglingLink
                         : error == ENOENT ? Obstacle::Vanished
                                           : Obstacle::CannotCheck,
                         error);
                }
                continue;
            }
            isFolder = S_ISDIR(status.st_mode);
            isFile = S_ISREG(status.st_mode);
            if (!isFolder && !isFile && mp3) {
                fail(childPath(path, entry->d_name), Obstacle::NotRegularFile);
                continue;
            }
        }
        if (isFolder) {
            pending.push_back(found(entry->d_name));
        } else if (isFile && mp3) {
            files.emplace_back(entry->d_ino, found(entry->d_name));
        }
    }
    ::closedir(listing);
    std::sort(files.begin(), files.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<Found> batch;
    batch.reserve(files.size());
    for (auto& [inode, file] : files) {
        batch.push_back(std::move(file));
    }
    submit(std::move(batch));
}

ScanResult Scanner::probeFiles(const QStringList& files, const Progress& progress) {
    Run run(*this, progress, std::numeric_limits<qsizetype>::max());
    std::vector<Found> named;
    named.reserve(std::size_t(files.size()));
    for (const QString& file : files) {
        named.push_back({nullptr, {}, file});
    }
    run.submit(std::move(named), true);
    return run.finish();
}

} // namespace zentoria::scan
