// How fast a check of the collection goes against the floor of touching the same files, and how much
// memory a large one takes.
//
//   bench_scan [--files N] [--runs N] [--jobs N] [--cold]   scan against the floor, best of the runs
//   bench_scan --memory N                        peak resident memory of a scan of N files
#include "PeakResident.h"
#include "TaggedFiles.h"
#include "scan/Scanner.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMutex>
#include <QRegularExpression>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QThreadPool>

#include <atomic>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

using namespace zentoria;

namespace {

// Files per folder, as albums hold them.
constexpr int kPerFolder = 200;

// A collection of `files` MP3 files as people have one: most with both tags and a cover of 30 to
// 200 KB, ID3v2.3 and 2.4 mixed, one in ten lacking a tag. Twenty files are written through TagLib; the
// rest are hard links to them when `linked`, copies otherwise.
bool makeCollection(const QString& root, int files, bool linked) {
    QStringList originals;
    for (int i = 0; i < 20; ++i) {
        const int tags = i == 0 ? V2 : i == 10 ? V1 : BothTags;
        originals << root + QStringLiteral("/original-%1.mp3").arg(i);
        if (!writeTaggedFile(originals.last(), tags, 3 + i % 2, (30 + (i * 53) % 171) * 1024)) {
            return false;
        }
    }
    for (int i = 0; i < files; ++i) {
        const QString path = root + QStringLiteral("/Album %1/%2 - Track.mp3").arg(i / kPerFolder).arg(i);
        if (i % kPerFolder == 0 && !QDir().mkpath(QFileInfo(path).path())) {
            return false;
        }
        const QString& original = originals.at(i % originals.size());
        const bool made =
            linked ? ::link(QFile::encodeName(original).constData(), QFile::encodeName(path).constData()) == 0
                   : QFile::copy(original, path);
        if (!made) {
            return false;
        }
    }
    for (const QString& original : originals) {
        QFile::remove(original);
    }
    return true;
}

// Every MP3 file under the root, by a walk as the scanner's.
QStringList allFiles(const QString& root) {
    QStringList files;
    QStringList pending{root};
    while (!pending.isEmpty()) {
        const QString folder = pending.takeLast();
        for (const QFileInfo& entry :
             QDir(folder).entryInfoList(QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot)) {
            (entry.isDir() ? pending : files) << entry.filePath();
        }
    }
    return files;
}

// What a program that opens each file with TagLib by its name does: read-write, with the audio
// properties. For comparison only; answers the files opened.
qint64 plainTagLibPass(const QStringList& files, int jobs) {
    QThreadPool pool;
    pool.setMaxThreadCount(jobs);
    std::atomic<qint64> opened = 0;
    for (qsizetype first = 0; first < files.size(); first += 64) {
        pool.start([batch = files.mid(first, 64), &opened] {
            for (const QString& file : batch) {
                TagLib::MPEG::File mpeg(QFile::encodeName(file).constData());
                if (mpeg.isValid()) {
                    ++opened;
                }
            }
        });
    }
    pool.waitForDone();
    return opened;
}

// The floor: per file open, read the first 10 bytes and the last 128, close; the same walk, the same
// number of threads, no TagLib. Answers the files touched.
qint64 floorPass(const QString& root, int jobs) {
    QThreadPool pool;
    pool.setMaxThreadCount(jobs);
    std::atomic<qint64> touched = 0;
    QStringList pending{root};
    while (!pending.isEmpty()) {
        const QString folder = pending.takeLast();
        DIR* dir = ::opendir(QFile::encodeName(folder).constData());
        if (!dir) {
            continue;
        }
        QStringList files;
        while (const dirent* entry = ::readdir(dir)) {
            if (entry->d_name[0] == '.') {
                continue;
            }
            const QString path = folder + u'/' + QFile::decodeName(entry->d_name);
            (entry->d_type == DT_DIR ? pending : files) << path;
        }
        ::closedir(dir);
        for (qsizetype first = 0; first < files.size(); first += 64) {
            const QStringList batch = files.mid(first, 64);
            pool.start([batch, &touched] {
                char head[10];
                char tail[128];
                for (const QString& file : batch) {
                    const int fd = ::open(QFile::encodeName(file).constData(), O_RDONLY | O_CLOEXEC);
                    if (fd < 0) {
                        continue;
                    }
                    if (::read(fd, head, sizeof head) == sizeof head && ::lseek(fd, -128, SEEK_END) >= 0 &&
                        ::read(fd, tail, sizeof tail) == sizeof tail) {
                        ++touched;
                    }
                    ::close(fd);
                }
            });
        }
    }
    pool.waitForDone();
    return touched;
}

void dropCaches() {
    ::sync();
    QFile drop(QStringLiteral("/proc/sys/vm/drop_caches"));
    if (!drop.open(QIODevice::WriteOnly) || drop.write("3\n") != 2) {
        std::fprintf(stderr, "bench_scan: cannot drop the caches (run as root)\n");
        std::exit(2);
    }
}

int argument(const QStringList& arguments, const QString& name, int fallback) {
    const qsizetype at = arguments.indexOf(name);
    return at >= 0 ? arguments.value(at + 1).toInt() : fallback;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QTemporaryDir dir;

    if (const int files = argument(arguments, QStringLiteral("--memory"), 0); files > 0) {
        // Hard links: the scan opens and reads each name as it would a file of its own.
        if (!makeCollection(dir.path(), files, true)) {
            std::fprintf(stderr, "bench_scan: cannot make the files\n");
            return 2;
        }
        const qint64 before = peakResidentKb();
        scan::Scanner scanner;
        const scan::ScanResult result = scanner.scanFolders({dir.path()});
        const qint64 peak = peakResidentKb();
        std::printf("%lld files scanned, %lld problem files: peak resident memory %lld kB (%lld kB before)\n",
                    result.counts.probed, qint64(result.problems.size()), peak, before);
        const bool bounded = peak <= 128 * 1024;
        if (!bounded) {
            std::printf("bench_scan: more than 128 MB\n");
        }
        return result.counts.probed == files && bounded ? 0 : 1;
    }

    const int files = argument(arguments, QStringLiteral("--files"), 20000);
    const int runs = argument(arguments, QStringLiteral("--runs"), 5);
    const bool cold = arguments.contains(QStringLiteral("--cold"));
    if (!makeCollection(dir.path(), files, false)) {
        std::fprintf(stderr, "bench_scan: cannot make the files\n");
        return 2;
    }
    const int jobs = argument(arguments, QStringLiteral("--jobs"), scan::Scanner::kDefaultJobs);
    // Once each untimed: both passes then find every file in the page cache.
    floorPass(dir.path(), jobs);
    double bestScan = 0;
    double bestFloor = 0;
    double bestPlain = 0;
    const QStringList all = allFiles(dir.path());
    for (int run = 0; run < runs; ++run) {
        // Interleaved, so that whatever else the machine does falls on both alike.
        if (cold) {
            dropCaches();
        }
        QElapsedTimer clock;
        clock.start();
        const qint64 touched = floorPass(dir.path(), jobs);
        bestFloor = std::max(bestFloor, touched * 1e9 / double(clock.nsecsElapsed()));
        if (cold) {
            dropCaches();
        }
        if (cold) {
            dropCaches();
        }
        clock.restart();
        bestPlain = std::max(bestPlain, plainTagLibPass(all, jobs) * 1e9 / double(clock.nsecsElapsed()));
        if (cold) {
            dropCaches();
        }
        scan::Scanner scanner(jobs);
        clock.restart();
        const scan::ScanResult result = scanner.scanFolders({dir.path()});
        bestScan = std::max(bestScan, result.counts.probed * 1e9 / double(clock.nsecsElapsed()));
        if (result.counts.probed != files || touched != files) {
            std::fprintf(stderr, "bench_scan: %lld files scanned, %lld touched, of %d\n",
                         result.counts.probed, touched, files);
            return 1;
        }
    }
    std::printf("%d files, %d threads, %s cache, best of %d runs\n", files, jobs, cold ? "cold" : "warm",
                runs);
    std::printf("scan:          %8.0f files/s  %.2f of the floor\n", bestScan, bestScan / bestFloor);
    std::printf("plain TagLib:  %8.0f files/s  %.2f of the floor\n", bestPlain, bestPlain / bestFloor);
    std::printf("floor:         %8.0f files/s\n", bestFloor);
    return 0;
}
