// zentoria-report's scan and recheck: what they write, what they name, and how they end.
#include "../scan/Mp3Files.h"
#include "ToolRun.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

class tst_CheckCommands : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void scanFixRecheck() {
        QTemporaryDir music;
        QVERIFY(writeMp3(music.filePath("Abba/Waterloo.mp3"), V2));
        QVERIFY(writeMp3(music.filePath("Abba/Fernando.mp3"), NoTag));
        QVERIFY(writeMp3(music.filePath("Björk/Jóga.mp3"), V1));
        QVERIFY(writeMp3(music.filePath("fine.mp3"), BothTags));

        // Written as Melvadex would have written them for the folder on Windows, in the list's order.
        const QString report = m_dir.filePath("music.vzt");
        Run run = runTool({"scan", "--as", "C:\\Music", "--jobs", "2", "-o", report, music.path()},
                          m_dir.path(), 20);
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(entries(contentsOf(report)),
                 (QStringList{"ID3v0 C:\\Music\\Abba\\Fernando.mp3", "ID3v1 C:\\Music\\Abba\\Waterloo.mp3",
                              "ID3v2 C:\\Music\\Björk\\Jóga.mp3"}));
        QVERIFY(contentsOf(report).contains("\r\n  Not checked: 0 files or folders\r\n"));
        // Not a terminal: no progress; the report went to its file.
        QCOMPARE(run.out + run.err, QByteArray());

        // The user fixes Waterloo's tags and deletes Fernando: not seen is not fixed.
        QVERIFY(setTags(music.filePath("Abba/Waterloo.mp3"), BothTags));
        QVERIFY(QFile::remove(music.filePath("Abba/Fernando.mp3")));
        const QString map = "C:\\Music=" + music.path();
        run = runTool({"recheck", "--json", "--map", map, report}, m_dir.path(), 20);
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(QJsonDocument::fromJson(run.out),
                 QJsonDocument::fromJson(R"({"fixed": ["C:\\Music\\Abba\\Waterloo.mp3"], "changed": [],
                     "still": ["C:\\Music\\Björk\\Jóga.mp3"], "notFound": ["C:\\Music\\Abba\\Fernando.mp3"]})"));
        QVERIFY2(run.err.contains("C:\\Music\\Abba\\Fernando.mp3"), run.err.constData());
        // Written over the report it reads.
        QVERIFY(QFile::copy(report, m_dir.filePath("before.vzt")));
        run = runTool({"recheck", "--map", map, "--output", report, report}, m_dir.path(), 20);
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(entries(contentsOf(report)),
                 (QStringList{"ID3v0 C:\\Music\\Abba\\Fernando.mp3", "ID3v2 C:\\Music\\Björk\\Jóga.mp3"}));
        QVERIFY(contentsOf(report).contains("\r\n  Not found: 1 (listed with their earlier kind)\r\n"));
        run = runTool({"diff", "before.vzt", report}, m_dir.path(), 20);
        QCOMPARE(run.out, "fixed\tID3v1\tC:\\Music\\Abba\\Waterloo.mp3\n"
                          "still\tID3v0\tC:\\Music\\Abba\\Fernando.mp3\n"
                          "still\tID3v2\tC:\\Music\\Björk\\Jóga.mp3\n");

        // A wrong mapping finds nothing, and says so: every file keeps its kind, none is fixed.
        run = runTool({"recheck", "--map", "C:\\Music=/nowhere", "before.vzt"}, m_dir.path(), 20);
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(entries(run.out).size(), 3);
        QVERIFY(run.out.contains("\r\n  Not found: 3 (listed with their earlier kind)\r\n"));
        QVERIFY2(run.err.contains("none of the report's files was found here: is --map right?"),
                 run.err.constData());

        // All found and fixed: nothing still broken.
        QVERIFY(writeMp3(music.filePath("Abba/Fernando.mp3"), BothTags));
        QVERIFY(setTags(music.filePath("Björk/Jóga.mp3"), BothTags));
        run = runTool({"recheck", "--map", map, report}, m_dir.path(), 20);
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(entries(run.out), QStringList());
    }

    void scanNamesWhatItCannotCheck() {
        // Under one folder: a name that is no UTF-8, a folder deeper than a path can name, a named pipe,
        // a link to a device, a name holding a backslash, and something that is no MP3.
        QTemporaryDir music;
        const int top = ::open(QFile::encodeName(music.path()).constData(), O_RDONLY | O_DIRECTORY);
        QVERIFY(writeMp3(music.filePath("t"), NoTag) && moveToBytes(music.filePath("t"), top, "caf\xE9.mp3"));
        QVERIFY(::mkdirat(top, "Bj\xF6rk", 0755) == 0);
        QVERIFY(writeMp3(music.filePath("t"), V2) && moveToBytes(music.filePath("t"), top, "Bj\xF6rk/J.mp3"));
        ::close(top);
        QString deep;
        const int inner = makeDeepFolders(music.filePath("deep"), &deep);
        QVERIFY(writeMp3(music.filePath("t"), V1) && moveToBytes(music.filePath("t"), inner, "x.mp3"));
        ::close(inner);
        QVERIFY(::mkfifo(QFile::encodeName(music.filePath("pipe.mp3")).constData(), 0600) == 0);
        QVERIFY(QFile::link("/dev/zero", music.filePath("zero.mp3")));
        QVERIFY(QFile::link(music.filePath("nothing"), music.filePath("gone.mp3")));
        QVERIFY(writeMp3(music.filePath("Date of creation: 1.mp3"), NoTag));
        QVERIFY(writeMp3(music.filePath("a\\b.mp3"), NoTag));
        QVERIFY(writeFile(music.filePath("junk.mp3"), "no audio"));

        Run run = runTool({"scan", "--as", "C:\\Music", music.path()}, m_dir.path(), 20);
        QCOMPARE(run.exitCode, 2);
        const QString windowsDeep = "C:\\Music" + deep.mid(music.path().size()).replace(u'/', u'\\');
        QCOMPARE(entries(run.out),
                 (QStringList{"ID3v1 C:\\Music\\Bj%F6rk\\J.mp3", "ID3v0 C:\\Music\\caf%E9.mp3",
                              "ID3v2 " + windowsDeep + "\\x.mp3"}));
        QVERIFY(run.out.contains("\r\n  Not checked: 6 files or folders\r\n"));
        for (const QString& named :
             {music.filePath("pipe.mp3: not a regular file"), music.filePath("zero.mp3: not a regular file"),
              music.filePath("gone.mp3: a link that leads nowhere"),
              music.filePath("a\\b.mp3: a report cannot name it so that it leads back here"),
              music.filePath("junk.mp3: no MPEG audio found"),
              music.filePath("Date of creation: 1.mp3: a report cannot name it: its name holds a line break"),
              QString("6 files or folders could not be checked")}) {
            QVERIFY2(run.err.contains(named.toUtf8()), run.err.constData());
        }
        // The names as written lead back to the files.
        const QString report = m_dir.filePath("odd.vzt");
        QVERIFY(writeFile(report, run.out));
        run = runTool({"recheck", "--json", "--map", "C:\\Music=" + music.path(), report}, m_dir.path(), 20);
        QCOMPARE(QJsonDocument::fromJson(run.out).object().value("still").toArray().size(), 3);
        removeTree(music.path());
    }

    void foldersAUserCannotEnterAreNamed() {
        // Root enters every folder: the tool runs as nobody, where nobody can run it.
        const QStringList asNobody{"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
        if (::geteuid() == 0 && runTool({"--version"}, m_dir.path(), 10, asNobody).exitCode != 0) {
            QSKIP("the tool cannot run as nobody here (setpriv failed, or its folder is closed to others)");
        }
        QTemporaryDir music;
        for (const auto& [name, mode] : {std::pair("closed", 0700), {"listed only", 0744}, {"open", 0755}}) {
            QVERIFY(writeMp3(music.filePath(name) + "/a.mp3", NoTag));
            QVERIFY(::chmod(QFile::encodeName(music.filePath(name)).constData(), mode) == 0);
        }
        QVERIFY(::chmod(QFile::encodeName(music.path()).constData(), 0755) == 0);
        const Run run =
            runTool({"scan", music.path()}, m_dir.path(), 20, ::geteuid() == 0 ? asNobody : QStringList());
        QCOMPARE(run.exitCode, 2);
        QCOMPARE(entries(run.out), QStringList{"ID3v0 " + music.filePath("open/a.mp3")});
        for (const char* named :
             {"closed: cannot be entered: Permission denied", "listed only: cannot be entered"}) {
            QVERIFY2(run.err.contains(QFile::encodeName(music.filePath(named))), run.err.constData());
        }
    }

    void reportsAreWrittenWholeOrNotAtAll_data() {
        QTest::addColumn<int>("way");
        // Rows, so that a case this machine cannot stage skips only itself.
        addRow("standard output", 0);
        addRow("a full disk", 1);
        addRow("interrupted", 2);
    }

    void reportsAreWrittenWholeOrNotAtAll() {
        QFETCH(int, way);
        if (!m_music) {
            m_music = std::make_unique<QTemporaryDir>();
            QVERIFY(writeMp3(m_music->filePath("first.mp3"), NoTag));
            for (int i = 0; i < 3000; ++i) {
                QVERIFY(
                    QFile::copy(m_music->filePath("first.mp3"),
                                m_music->filePath(QStringLiteral("%1 a long name of a song.mp3").arg(i))));
            }
        }
        const QTemporaryDir& music = *m_music;
        if (way == 0) {
            // Standard output that cannot take the report: a full device, a reader gone ("true" is long gone
            // when the scan is done and writes).
            for (const auto& [shell, why] :
                 {std::pair("\"$0\" scan \"$1\" >/dev/full; echo $?", "No space left on device"),
                  {"\"$0\" scan \"$1\" | true; echo ${PIPESTATUS[0]}", "Broken pipe"}}) {
                QProcess bash;
                bash.start("bash", {"-c", shell, ZENTORIA_REPORT_TOOL, music.path()});
                QVERIFY(bash.waitForFinished(20000));
                QCOMPARE(bash.readAllStandardOutput(), "2\n");
                QVERIFY(bash.readAllStandardError().contains(QByteArray("writing standard output failed: ") +
                                                             why));
            }
        } else if (way == 1) {
            // A disk too full for the new report.
            QTemporaryDir small;
            if (QProcess::execute("mount", {"-t", "tmpfs", "-o", "size=16k", "tmpfs", small.path()}) != 0) {
                QSKIP("cannot mount a small tmpfs here to fill");
            }
            const QString full = small.filePath("music.vzt");
            QVERIFY(writeFile(full, "last week's report"));
            const Run run = runTool({"scan", "-o", full, music.path()}, m_dir.path(), 20);
            const QByteArray left = contentsOf(full);
            QProcess::execute("umount", {small.path()});
            QCOMPARE(run.exitCode, 2);
            QVERIFY2(run.err.contains(QFile::encodeName(full) + ": cannot be written: "),
                     run.err.constData());
            QCOMPARE(left, "last week's report");
        } else {
            // Interrupted, the old report stays as it was.
            const QString report = m_dir.filePath("last week.vzt");
            QVERIFY(writeFile(report, "last week's report"));
            QProcess interrupted;
            interrupted.start(ZENTORIA_REPORT_TOOL, {"scan", "--jobs", "1", "-o", report, music.path()});
            QVERIFY(interrupted.waitForStarted());
            QTest::qWait(50);
            interrupted.terminate();
            // It may have ended already, while the test waited.
            QVERIFY(interrupted.waitForFinished(20000) || interrupted.state() == QProcess::NotRunning);
            if (interrupted.exitStatus() == QProcess::NormalExit) {
                QSKIP("the scan ended before it could be interrupted");
            }
            QCOMPARE(contentsOf(report), "last week's report");
        }
    }

private:
    QTemporaryDir m_dir;
    std::unique_ptr<QTemporaryDir> m_music;
};

QTEST_GUILESS_MAIN(tst_CheckCommands)
#include "tst_checkcommands.moc"
