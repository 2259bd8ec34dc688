// How soon following shows files mended at once as fixed, against the floor of probing the same files,
// and the memory following adds.
//
//   bench_follow [--files N] [--folders M] [--rewrite K] [--smoke | --memory-only]
//                                                        defaults 10000, 1000, 1000
//
// N files with a cover of about 100 KB and no ID3v1 tag, in M folders, are followed; then another
// process, as a tag editor would be, gives K of them (spread over the folders) an ID3v1 tag through
// TagLib: half in place, half in a new file renamed over the old one. Exits 1 when a target is missed,
// or with --smoke only when following does not work; --memory-only leaves the time out (a test on a
// loaded machine).
#include "PeakResident.h"
#include "TaggedFiles.h"
#include "follow/FixFollower.h"
#include "scan/TagProbe.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QThread>
#include <QThreadPool>
#include <QTimer>

#include <atomic>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <optional>
#include <string>
#include <sys/wait.h>
#include <taglib/attachedpictureframe.h>
#include <taglib/id3v2header.h>
#include <taglib/textidentificationframe.h>
#include <unistd.h>
#include <vector>

using namespace zentoria;

namespace {

constexpr qint64 kTargetMs = 2000;
constexpr qint64 kTargetKb = 16 * 1024;
// How long to wait for every file to be shown before calling following broken.
constexpr int kGiveUpMs = 60'000;
constexpr int kOriginals = 8;

// On the clock both processes share, so the editor's times and the follower's can be compared.
qint64 monotonicNs() {
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return qint64(now.tv_sec) * 1'000'000'000 + now.tv_nsec;
}

struct Collection {
    QList<follow::FollowedFile> listed;
    QStringList rewritten;
};

// `files` files lacking ID3v1 in `folders` folders, named as albums name them. The ones to be rewritten
// (every files/rewrite-th, so spread over the folders) are copies of their own; the rest are hard links
// to a few originals, which costs no disk space, and which an editor's write to another file never
// reaches.
std::optional<Collection> makeCollection(const QString& root, int files, int folders, int rewrite) {
    QStringList originals;
    for (int i = 0; i < kOriginals; ++i) {
        originals << root + QStringLiteral("/original-%1.mp3").arg(i);
        if (!writeTaggedFile(originals.last(), V2, 3 + i % 2, (90 + i * 3) * 1024)) {
            return std::nullopt;
        }
    }
    std::vector<bool> toRewrite(size_t(files), false);
    for (qint64 j = 0; j < rewrite; ++j) {
        toRewrite[size_t(j * files / rewrite)] = true;
    }
    const int perFolder = (files + folders - 1) / folders;
    Collection made;
    for (int i = 0; i < files; ++i) {
        const QString path = root + QStringLiteral("/Album %1/%2 - Track.mp3").arg(i / perFolder).arg(i);
        if (i % perFolder == 0 && !QDir().mkpath(QFileInfo(path).path())) {
            return std::nullopt;
        }
        const QString& original = originals.at(i % kOriginals);
        const bool ok = toRewrite[size_t(i)] ? QFile::copy(original, path)
                                             : ::link(QFile::encodeName(original).constData(),
                                                      QFile::encodeName(path).constData()) == 0;
        if (!ok) {
            return std::nullopt;
        }
        made.listed.append({path, ProblemKind::ID3v1});
        if (toRewrite[size_t(i)]) {
            made.rewritten << path;
        }
    }
    return made;
}

// What a tag editor does when the user gives the file an ID3v1 tag: TagLib writes both tags back, the
// ID3v2 tag in the version it had.
bool addId3v1(const char* path) {
    TagLib::MPEG::File file(path, false);
    if (!file.isValid() || !file.ID3v2Tag()) {
        return false;
    }
    const bool v3 = file.ID3v2Tag()->header()->majorVersion() == 3;
    file.ID3v1Tag(true)->setTitle("Waterloo");
    file.ID3v1Tag()->setArtist("ABBA");
    return file.save(TagLib::MPEG::File::ID3v1 | TagLib::MPEG::File::ID3v2, TagLib::File::StripOthers,
                     v3 ? TagLib::ID3v2::v3 : TagLib::ID3v2::v4);
}

bool copyBytes(const char* from, const char* to) {
    const int in = ::open(from, O_RDONLY | O_CLOEXEC);
    const int out = ::open(to, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    bool ok = in >= 0 && out >= 0;
    char buffer[64 * 1024];
    while (ok) {
        const ssize_t got = ::read(in, buffer, sizeof buffer);
        if (got <= 0) {
            ok = got == 0;
            break;
        }
        ok = ::write(out, buffer, size_t(got)) == got;
    }
    if (in >= 0) {
        ::close(in);
    }
    if (out >= 0) {
        ok = ::close(out) == 0 && ok;
    }
    return ok;
}

// When the editor's first rewrite ended and when its last did; ok when every one was written.
struct EditorTimes {
    qint64 firstEndNs = 0;
    qint64 lastEndNs = 0;
    qint64 ok = 0;
};

// The editor, in a process of its own as it would be, so that its memory is not counted as the
// follower's: the even files written in place, the odd ones written anew under a temporary name in
// their folder and renamed over the old. Only TagLib and the system here: the process was forked.
[[noreturn]] void runEditor(const std::vector<std::string>& paths, int out) {
    EditorTimes times{0, 0, 1};
    for (size_t i = 0; i < paths.size(); ++i) {
        const std::string& path = paths[i];
        bool done = false;
        if (i % 2 == 0) {
            done = addId3v1(path.c_str());
        } else {
            const size_t slash = path.rfind('/');
            const std::string temporary = path.substr(0, slash + 1) + '.' + path.substr(slash + 1) + ".part";
            done = copyBytes(path.c_str(), temporary.c_str()) && addId3v1(temporary.c_str()) &&
                   ::rename(temporary.c_str(), path.c_str()) == 0;
        }
        if (!done) {
            times.ok = 0;
        }
        if (i == 0) {
            times.firstEndNs = monotonicNs();
        }
    }
    times.lastEndNs = monotonicNs();
    const bool told = ::write(out, &times, sizeof times) == sizeof times;
    ::_exit(told ? 0 : 1);
}

// The floor: the same files probed with the check's own probe, one after the other or on the threads
// the follower has; answers the time in ms and, through `fixed`, how many were seen fixed.
double probeAll(const QStringList& files, int threads, qsizetype* fixed) {
    std::atomic<qsizetype> seenFixed = 0;
    const auto probe = [&seenFixed](const QStringList& batch) {
        for (const QString& file : batch) {
            if (follow::seenIn(scan::probeTags(file), ProblemKind::ID3v1).state == follow::FileState::Fixed) {
                ++seenFixed;
            }
        }
    };
    QElapsedTimer clock;
    clock.start();
    if (threads <= 1) {
        probe(files);
    } else {
        QThreadPool pool;
        pool.setMaxThreadCount(threads);
        const qsizetype share = (files.size() + threads - 1) / threads;
        for (qsizetype first = 0; first < files.size(); first += share) {
            pool.start([&probe, batch = files.mid(first, share)] { probe(batch); });
        }
        pool.waitForDone();
    }
    *fixed = seenFixed;
    return double(clock.nsecsElapsed()) / 1e6;
}

int argument(const QStringList& arguments, const QString& name, int fallback) {
    const qsizetype at = arguments.indexOf(name);
    return at >= 0 ? arguments.value(at + 1).toInt() : fallback;
}

int fail(const char* message) {
    std::fprintf(stderr, "bench_follow: %s\n", message);
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int files = argument(arguments, QStringLiteral("--files"), 10000);
    const int folders = argument(arguments, QStringLiteral("--folders"), 1000);
    const int rewrite = argument(arguments, QStringLiteral("--rewrite"), 1000);
    const bool smoke = arguments.contains(QStringLiteral("--smoke"));
    const bool timeCounts = !smoke && !arguments.contains(QStringLiteral("--memory-only"));
    if (files < 1 || folders < 1 || folders > files || rewrite < 1 || rewrite > files) {
        return fail("usage: bench_follow [--files N] [--folders M <= N] [--rewrite K <= N] [--smoke | "
                    "--memory-only]");
    }

    QTemporaryDir dir;
    QElapsedTimer setup;
    setup.start();
    const std::optional<Collection> collection =
        dir.isValid() ? makeCollection(dir.path(), files, folders, rewrite) : std::nullopt;
    if (!collection) {
        return fail("cannot make the files");
    }
    std::vector<std::string> editorPaths;
    for (const QString& path : collection->rewritten) {
        editorPaths.push_back(QFile::encodeName(path).toStdString());
    }
    std::printf("set-up: %d files with a cover in %d folders made in %lld ms (not counted)\n", files, folders,
                setup.elapsed());

    // Once before the reset, so that the first reading's own memory is not counted as following's.
    residentKb();
    if (!resetPeakResident()) {
        return fail("cannot reset the peak resident memory (/proc/self/clear_refs)");
    }
    const qint64 residentBefore = residentKb();
    const qint64 peakBefore = peakResidentKb();

    follow::FixFollower follower;
    QEventLoop loop;
    qint64 allShownNs = 0;
    qsizetype signals = 0;
    qsizetype named = 0;
    QObject::connect(&follower, &follow::FixFollower::changed, &loop, [&](const QList<qsizetype>& entries) {
        ++signals;
        named += entries.size();
        if (allShownNs == 0 && follower.states().count(follow::FileState::Fixed) == rewrite) {
            allShownNs = monotonicNs();
            loop.quit();
        }
    });
    QElapsedTimer followClock;
    followClock.start();
    follower.follow(collection->listed);
    const qint64 followMs = followClock.elapsed();
    const qint64 peakFollowed = peakResidentKb();
    if (follower.followedFolders() != folders || follower.followedFiles() != files) {
        std::fprintf(stderr, "bench_follow: %lld of %d folders and %lld of %d files followed\n",
                     qint64(follower.followedFolders()), folders, qint64(follower.followedFiles()), files);
        return 1;
    }

    int pipe[2];
    if (::pipe2(pipe, O_CLOEXEC) != 0) {
        return fail("cannot make a pipe");
    }
    const pid_t editor = ::fork();
    if (editor < 0) {
        return fail("cannot start the editor");
    }
    if (editor == 0) {
        ::close(pipe[0]);
        runEditor(editorPaths, pipe[1]);
    }
    ::close(pipe[1]);
    QTimer::singleShot(kGiveUpMs, &loop, &QEventLoop::quit);
    loop.exec();
    const qint64 peakFollowing = peakResidentKb();

    EditorTimes edited;
    const bool told = ::read(pipe[0], &edited, sizeof edited) == sizeof edited;
    ::close(pipe[0]);
    int status = 0;
    ::waitpid(editor, &status, 0);
    if (!told || !edited.ok || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        return fail("the editor could not rewrite the files");
    }
    const follow::FollowStates& states = follower.states();
    if (allShownNs == 0 || states.count(follow::FileState::AsListed) != files - rewrite) {
        std::fprintf(stderr, "bench_follow: %lld of %d shown fixed, %lld of %d untouched as listed\n",
                     qint64(states.count(follow::FileState::Fixed)), rewrite,
                     qint64(states.count(follow::FileState::AsListed)), files - rewrite);
        return 1;
    }
    follower.stop();

    const int threads = std::max(1, QThread::idealThreadCount());
    qsizetype fixedSequential = 0;
    qsizetype fixedParallel = 0;
    const double floorSequential = probeAll(collection->rewritten, 1, &fixedSequential);
    const double floorParallel = probeAll(collection->rewritten, threads, &fixedParallel);
    if (fixedSequential != rewrite || fixedParallel != rewrite) {
        return fail("the probe does not see every rewritten file fixed");
    }

    const double shownMs = double(allShownNs - edited.firstEndNs) / 1e6;
    const qint64 addedKb = peakFollowing - residentBefore;
    std::printf("follow(): %d files in %d folders watched in %lld ms\n", files, folders, followMs);
    std::printf("changed(): %lld signals naming %lld entries\n", qint64(signals), qint64(named));
    std::printf("editor: %d files rewritten (%d in place, %d renamed over), %.0f ms from the first ending to "
                "the last\n",
                rewrite, (rewrite + 1) / 2, rewrite / 2, double(edited.lastEndNs - edited.firstEndNs) / 1e6);
    std::printf("all %d shown fixed: %.0f ms after the first rewrite ended (%.0f ms after the last; the "
                "%d ms settle included)  target < %lld ms\n",
                rewrite, shownMs, double(allShownNs - edited.lastEndNs) / 1e6, follow::FixFollower::kSettleMs,
                kTargetMs);
    std::printf("floor: the same %d files probed in %.1f ms one by one, %.1f ms on %d threads: following "
                "takes %.0f and %.0f times as long\n",
                rewrite, floorSequential, floorParallel, threads, shownMs / floorSequential,
                shownMs / floorParallel);
    std::printf(
        "memory: %lld kB resident before follow() (peak %lld kB), peak %lld kB once follow() returned, "
        "%lld kB while following and showing: +%lld kB  target < %lld kB\n",
        residentBefore, peakBefore, peakFollowed, peakFollowing, addedKb, kTargetKb);

    const bool fast = shownMs < double(kTargetMs);
    const bool small = addedKb < kTargetKb;
    if (!fast) {
        std::printf("bench_follow: slower than %lld ms%s\n", kTargetMs, timeCounts ? "" : " (not counted)");
    }
    if (!small) {
        std::printf("bench_follow: more than %lld kB%s\n", kTargetKb, smoke ? " (not counted)" : "");
    }
    return (fast || !timeCounts) && (small || smoke) ? 0 : 1;
}
