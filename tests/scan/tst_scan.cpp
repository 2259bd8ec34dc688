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
        QVERIFY(writeMp3(music.filePath("A/none.mp3"), NoTag) && writeMp3(music.filePath("A/v1.mp3"), V1));
        QVERIFY(writeMp3(music.filePath("A/both.mp3"), BothTags) &&
                writeMp3(music.filePath("B/cut.mp3"), V2));
        QVERIFY(writeMp3(music.filePath("B/Björk – Jóga.mp3"), V2));
        // An ID3v2 tag cut in the middle, and 16 MB that is no audio: neither can be checked.
        QVERIFY(::truncate(QFile::encodeName(music.filePath("B/cut.mp3")).constData(), 20) == 0);
        QVERIFY(writeFile(music.filePath("B/junk.mp3"), QByteArray(16 << 20, 'x')));
        // Capital letters in the extension, a file that is no MP3 by its name, a loop and a second way in.
        QVERIFY(writeMp3(music.filePath("B/LOUD.MP3"), V1) && writeMp3(music.filePath("B/cover.jpg"), NoTag));
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

    void cancelLeavesNothingBehind() {
        QTemporaryDir dir;
        QVERIFY(writeMp3(dir.filePath("first.mp3"), NoTag));
        QVERIFY(linkMany(dir.filePath("first.mp3"), dir.path(), 2000, "%d.mp3"));
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
