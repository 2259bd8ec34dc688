#include "Mp3Files.h"
#include "report/ReportReader.h"
#include "scan/ScanReport.h"
#include "scan/Scanner.h"
#include "scan/TagProbe.h"

#include <QTemporaryDir>

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace zentoria;
using namespace zentoria::scan;

namespace {

// Makes the file a recipe names at path: "none", "v1", "v2", "both" (real MP3 audio with those tags),
// "cut" (an ID3v2 tag cut in the middle) or "junk" (16 MB that is no audio). What counts as a tag is
// tst_tagprobe's; files that cannot be read are named as the tool and the window name them.
void make(const QString& path, const QString& recipe) {
    const QByteArray name = QFile::encodeName(path);
    const QHash<QString, int> tags{{"none", NoTag}, {"v1", V1}, {"v2", V2}, {"both", BothTags}};
    if (tags.contains(recipe)) {
        QVERIFY(writeMp3(path, tags.value(recipe)));
    } else if (recipe == "cut") {
        QVERIFY(writeMp3(path, V2));
        QVERIFY(::truncate(name.constData(), 20) == 0);
    } else if (recipe == "junk") {
        QVERIFY(writeFile(path, QByteArray(16 << 20, 'x')));
    }
}

} // namespace

namespace zentoria::scan {
// For QCOMPARE's messages.
char* toString(const FoundProblem& problem) {
    return QTest::toString(problem.path + u' ' + QString::number(kindNumber(problem.kind)));
}
} // namespace zentoria::scan

class tst_Scan : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void probeNeverWrites() {
        // A file opened for writing is reported closed-after-writing to every watcher of its folder, which
        // makes music libraries read it again.
        QTemporaryDir dir;
        const QString path = dir.filePath("both.mp3");
        QVERIFY(writeMp3(path, BothTags));
        const int watcher = inotify_init1(IN_NONBLOCK);
        QVERIFY(watcher >= 0);
        QVERIFY(inotify_add_watch(watcher, QFile::encodeName(dir.path()).constData(),
                                  IN_CLOSE_WRITE | IN_MODIFY | IN_CLOSE_NOWRITE) >= 0);
        QCOMPARE(probeTags(path).outcome, TagProbe::Outcome::Probed);
        inotify_event events[8];
        const ssize_t length = ::read(watcher, events, sizeof events);
        ::close(watcher);
        QVERIFY(length > 0);
        // The probe closed it, and only as a reader.
        QCOMPARE(events[0].mask, quint32(IN_CLOSE_NOWRITE));
        QCOMPARE(length, ssize_t(sizeof(inotify_event) + events[0].len));
    }

    void scanWritesAReportThatReadsBack() {
        QTemporaryDir dir;
        const QDir music(dir.filePath("Music"));
        for (const auto& [name, recipe] : {std::pair("A/none", "none"),
                                           {"A/v1", "v1"},
                                           {"A/both", "both"},
                                           {"B/Björk – Jóga", "v2"},
                                           {"B/junk", "junk"},
                                           {"B/cut", "cut"}}) {
            QVERIFY(QDir().mkpath(QFileInfo(music.filePath(name)).path()));
            make(music.filePath(QString::fromUtf8(name) + ".mp3"), recipe);
        }
        // Capital letters in the extension, a file that is no MP3 by its name, a loop and a second way in.
        QVERIFY(writeMp3(music.filePath("B/LOUD.MP3"), V1));
        QVERIFY(writeMp3(music.filePath("B/cover.jpg"), NoTag));
        QVERIFY(QFile::link("..", music.filePath("B/loop")));
        QVERIFY(QFile::link(music.filePath("A"), dir.filePath("also A")));
        const QList<FoundProblem> expected{{music.filePath("A/none.mp3"), ProblemKind::ID3v0},
                                           {music.filePath("A/v1.mp3"), ProblemKind::ID3v2},
                                           {music.filePath("B/Björk – Jóga.mp3"), ProblemKind::ID3v1},
                                           {music.filePath("B/LOUD.MP3"), ProblemKind::ID3v2}};

        for (int jobs : {1, 4}) {
            // Told after every batch: the total is known only once the walk is over.
            Scanner scanner(jobs, 0);
            QList<ScanCounts> told;
            const ScanResult result = scanner.scanFolders({music.path(), dir.filePath("also A")},
                                                          [&](const ScanCounts& counts) { told << counts; });
            QVERIFY(!told.first().allFound && told.last().allFound);
            QVERIFY(std::all_of(told.begin(), told.end(), [](const ScanCounts& counts) {
                return !counts.allFound || counts.found == 7;
            }));
            QCOMPARE(result.problems, expected);
            QCOMPARE(result.failures.size(), 2);
            QCOMPARE(result.failures.at(0).path, music.filePath("B/cut.mp3"));
            QCOMPARE(result.failures.at(1).path, music.filePath("B/junk.mp3"));
            QCOMPARE(result.counts.found, 7);
            QCOMPARE(told.last().probed, 7);
            QVERIFY(!result.cancelled);
        }

        // Written, it reads back whole, found files or none.
        QList<ReportEntry> entries{{1, ProblemKind::ID3v0, expected.first().path}};
        for (const auto& written : {entries, QList<ReportEntry>()}) {
            const QByteArray bytes = reportBytes({"zentoria-report scan", "1.0", {music.path()}}, written);
            MemoryLineSource source(bytes);
            const ReportReadResult read = ReadReport(source);
            QCOMPARE(read.Outcome, zentoria::Outcome::Loaded);
            QCOMPARE(read.Entries, written);
        }
    }

    void keepsWhatAReportHolds() {
        // Memory is bounded by the report, not by the collection: the first files in list order stay.
        QTemporaryDir dir;
        QVERIFY(writeMp3(dir.filePath("a.mp3"), NoTag));
        for (int i = 0; i < kMaxRecords + 3; ++i) {
            const QString link = dir.filePath(QStringLiteral("b%1.mp3").arg(i, 5, 10, QChar(u'0')));
            QVERIFY(::link(QFile::encodeName(dir.filePath("a.mp3")), QFile::encodeName(link)) == 0);
        }
        Scanner scanner;
        const ScanResult result = scanner.scanFolders({dir.path()});
        QCOMPARE(result.problems.size(), kMaxRecords);
        QCOMPARE(result.leftOut, 4);
        QCOMPARE(result.problems.first().path, dir.filePath("a.mp3"));
        QCOMPARE(result.problems.last().path, dir.filePath("b32764.mp3"));
    }

    void cancelLeavesNothingBehind() {
        QTemporaryDir dir;
        QVERIFY(writeMp3(dir.filePath("first.mp3"), NoTag));
        for (int i = 0; i < 2000; ++i) {
            QVERIFY(QFile::copy(dir.filePath("first.mp3"), dir.filePath(QStringLiteral("%1.mp3").arg(i))));
        }
        const int threadsBefore = threadCount();
        Scanner scanner(4, 0);
        const ScanResult result = scanner.scanFolders({dir.path()}, [&scanner](const ScanCounts& counts) {
            if (counts.probed > 0) {
                scanner.cancel();
            }
        });
        QVERIFY(result.cancelled);
        QVERIFY2(result.counts.probed < 2001, qPrintable(QString::number(result.counts.probed)));
        // A thread the pool let go leaves the kernel's list a moment after it ends.
        QTRY_COMPARE(threadCount(), threadsBefore);
    }
};

QTEST_MAIN(tst_Scan)
#include "tst_scan.moc"
