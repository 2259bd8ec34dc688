#include "../scan/Mp3Files.h"
#include "TestData.h"
#include "report/ReportReader.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

struct Run {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

// Runs the tool and waits at most `seconds` for it; a tool that hangs is killed and fails the caller.
Run runTool(const QStringList& arguments, const QString& folder, int seconds) {
    QProcess tool;
    tool.setWorkingDirectory(folder);
    tool.start(QStringLiteral(ZENTORIA_REPORT_TOOL), arguments);
    Run run;
    if (!tool.waitForFinished(seconds * 1000) || tool.exitStatus() != QProcess::NormalExit) {
        tool.kill();
        tool.waitForFinished();
        return run;
    }
    run.exitCode = tool.exitCode();
    run.out = tool.readAllStandardOutput();
    run.err = tool.readAllStandardError();
    return run;
}

// A report's entries as "CODE PATH", or "not loaded".
QStringList entries(const QByteArray& report) {
    zentoria::MemoryLineSource source(report);
    const zentoria::ReportReadResult read = zentoria::ReadReport(source);
    QStringList listed;
    for (const zentoria::ReportEntry& entry : read.Entries) {
        listed << zentoria::kindCode(entry.Kind) + u' ' + entry.Path;
    }
    return read.Outcome == zentoria::Outcome::Loaded ? listed : QStringList{"not loaded"};
}

} // namespace

class tst_Cli : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        // A pipe that nobody writes to and an empty file, made once for every test that names them.
        QVERIFY(::mkfifo(QFile::encodeName(m_dir.filePath("pipe.vzt")).constData(), 0600) == 0);
        QVERIFY(writeFile(m_dir.filePath("empty.vzt"), {}));
        // A report whose name starts with a dash, named relative to the working folder.
        QVERIFY(QFile::copy(dataFile("mixed.vzt"), m_dir.filePath("-mixed.vzt")));
        // 2 GiB without a line break, sparse, so it costs no disk space.
        QFile huge(m_dir.filePath("huge.vzt"));
        QVERIFY(huge.open(QIODevice::WriteOnly) && huge.resize(qint64(2) << 30));
    }

    void commands_data() {
        addColumns<QStringList, int, QString, QString>("arguments", "exitCode", "stdoutHas", "stderrHas");

        addRow("list", QStringList{"list", dataFile("mixed.vzt")}, 0,
               "1\tID3v2\tC:\\Music\\Abba\\Waterloo.mp3\n2\tID3v1\tC:\\Music\\Queen\\Bohemian Rhapsody.mp3\n"
               "3\tID3v2\tC:\\Music\\Abba\\SOS.mp3\n5\tID3v0\t  C:\\Music\\Beatles\\Help.mp3  \n"
               "6\tID3v2\tC:\\Music\\Queen\\Innuendo.mp3\n",
               "");
        addRow("check", QStringList{"check", dataFile("mixed.vzt")}, 0,
               "Loaded: 5 files (ID3v1 1, ID3v2 3, ID3v0 1), skipped records: 0\n", "");
        addRow("check, ended early", QStringList{"check", dataFile("endedearly.vzt")}, 1,
               "EndedEarly: 2 files (ID3v1 1, ID3v2 1, ID3v0 0), skipped records: 0, ended before line 15\n",
               "");
        // A check looks for damage, and a skipped record is damage.
        addRow("check, one skipped", QStringList{"check", dataFile("skipped.vzt")}, 1,
               "Loaded: 1 file (ID3v1 1, ID3v2 0, ID3v0 0), skipped records: 1\n", "");
        addRow("json", QStringList{"list", "--json", dataFile("skipped.vzt")}, 0,
               "{\"entries\":[{\"code\":\"ID3v1\",\"kind\":1,\"ordinal\":1,\"path\":\"C:\\\\Music\\\\One."
               "mp3\"}],"
               "\"outcome\":\"Loaded\",\"skippedLines\":[15]}\n",
               "");
        addRow("json, not a report", QStringList{"list", "--json", dataFile("corrupted.txt")}, 1,
               "{\"entries\":[],\"outcome\":\"Corrupted\",\"skippedLines\":[]}\n", "not a Melvadex report");
        // The first line alone decides: the 2 GiB are not read (the tool has 10 seconds).
        addRow("json, 2 GiB without a line break", QStringList{"list", "--json", m_dir.filePath("huge.vzt")},
               1, "{\"entries\":[],\"outcome\":\"Corrupted\",\"skippedLines\":[]}\n", "");
        // A script reading the JSON gets an object even for a file that cannot be read.
        addRow("json, a pipe", QStringList{"list", "--json", m_dir.filePath("pipe.vzt")}, 2,
               "{\"error\":\"cannot open \\\"" + m_dir.filePath("pipe.vzt") +
                   "\\\": it is a named pipe, not a file\",\"outcome\":\"Unreadable\"}",
               "it is a named pipe, not a file");
        // b.mp3 fixed, d.mp3 new, Café.mp3 still (now without any tags, and written in capitals), a.mp3
        // still.
        const QString old = dataFile("before-fixes.vzt");
        const QString now = dataFile("after-fixes.vzt");
        // Something is new: status 1.
        addRow("diff, letter case aside", QStringList{"diff", old, now}, 1,
               "fixed\tID3v2\tC:\\Music\\b.mp3\nnew\tID3v1\tC:\\Music\\d.mp3\n"
               "still\tID3v0\tc:\\MUSIC\\CAF\xC3\x89.MP3\nstill\tID3v1\tC:\\Music\\A.mp3\n",
               "");
        addRow("diff, json", QStringList{"diff", "--json", old, now}, 1,
               "{\"fixed\":[{\"code\":\"ID3v2\",\"path\":\"C:\\\\Music\\\\b.mp3\"}],"
               "\"new\":[{\"code\":\"ID3v1\",\"path\":\"C:\\\\Music\\\\d.mp3\"}],"
               "\"still\":[{\"code\":\"ID3v0\",\"path\":\"c:\\\\MUSIC\\\\CAF\xC3\x89.MP3\"},"
               "{\"code\":\"ID3v1\",\"path\":\"C:\\\\Music\\\\A.mp3\"}]}\n",
               "");
        addRow("diff, nothing new", QStringList{"diff", now, now}, 0, "still", "");
        addRow("diff with no report", QStringList{"diff", old, dataFile("corrupted.txt")}, 2, "",
               "not a Melvadex report");
        // export.vzt: a comma, a double quote and non-ASCII letters in its paths, and folders beside the
        // mapped one that only start the same.
        addRow("export, a playlist by default, mapped",
               QStringList{"export", "--map", "C:\\Music=/media/music", "--kind", "ID3v2",
                           dataFile("export.vzt")},
               0,
               "#EXTM3U\n#EXTINF:-1,Waterloo.mp3\n/media/music/Abba/Waterloo.mp3\n"
               "#EXTINF:-1,\"Live\" at Wembley.mp3\n/media/music/Queen/\"Live\" at Wembley.mp3\n"
               "#EXTINF:-1,Track01.mp3\nD:\\Elsewhere\\Track01.mp3\n",
               "");
        addRow("export, csv of every kind, mapped with =",
               QStringList{"export", "--format", "csv", "--map=c:/music=/m", dataFile("export.vzt")}, 0,
               "Ordinal,Kind,Problem,Path\r\n1,ID3v2,ID3v2 Not found,/m/Abba/Waterloo.mp3\r\n"
               "2,ID3v1,ID3v1 not found,\"/m/Crosby, Stills & Nash/Suite.mp3\"\r\n"
               "3,ID3v2,ID3v2 Not found,\"/m/Queen/\"\"Live\"\" at Wembley.mp3\"\r\n"
               "4,ID3v0,No ID3 tags,/m/Bj\xC3\xB6rk/J\xC3\xB3ga.mp3\r\n5,ID3v2,ID3v2 Not "
               "found,D:\\Elsewhere\\Track01.mp3\r\n"
               "6,ID3v1,ID3v1 not found,C:\\Musical\\Cats\\Memory.mp3\r\n",
               "");
        addRow("export, text of one kind as they stand",
               QStringList{"export", "--format", "txt", "--kind", "id3v0", dataFile("export.vzt")}, 0,
               "C:\\MUSIC\\Bj\xC3\xB6rk\\J\xC3\xB3ga.mp3\n", "");
        addRow("export with a folder mapped each",
               QStringList{"export", "--format", "txt", "--kind", "ID3v2", "--map", "C:\\Music=/m",
                           "--map=D:\\Elsewhere=/e", dataFile("export.vzt")},
               0, "/m/Abba/Waterloo.mp3\n/m/Queen/\"Live\" at Wembley.mp3\n/e/Track01.mp3\n", "");
        // Whatever the damage, the files read before it are exported.
        addRow("export of a damaged report",
               QStringList{"export", "--format", "txt", dataFile("endedearly.vzt")}, 1,
               "C:\\Music\\One.mp3\nC:\\Music\\Two.mp3\n", "ends too early");
        addRow("help", QStringList{"--help"}, 0, "Usage: zentoria-report list [--json] REPORT", "");
        addRow("version", QStringList{"--version"}, 0, "zentoria-report 0.", "");
        addRow("nothing", QStringList(), 2, "", "missing command");
        addRow("unknown command", QStringList{"show", dataFile("mixed.vzt")}, 2, "",
               "unknown command 'show'");
        addRow("a report named like an option, after --", QStringList{"check", "--", "-mixed.vzt"}, 0,
               "Loaded: 5 files (ID3v1 1, ID3v2 3, ID3v0 1), skipped records: 0\n", "");
        addRow("a report named like an option", QStringList{"check", "-mixed.vzt"}, 2, "",
               "unknown option '-mixed.vzt'");
        addRow("folder", QStringList{"list", QStringLiteral(ZENTORIA_TEST_DATA)}, 2, "",
               "it is a folder, not a file");
        // Opening a pipe that nobody writes to would wait for ever.
        addRow("named pipe", QStringList{"check", m_dir.filePath("pipe.vzt")}, 2, "",
               "it is a named pipe, not a file");
        // Every command names the report its message is about.
        for (const char* command : {"list", "check", "export"}) {
            // A playlist starts before the report is read; a check sums up whatever it read.
            const QString started = qstrcmp(command, "export") == 0  ? "#EXTM3U"
                                    : qstrcmp(command, "check") == 0 ? "Corrupted: 0 files"
                                                                     : "";
            const QString empty = m_dir.filePath("empty.vzt");
            QTest::addRow("%s, an empty file", command)
                << QStringList{command, empty} << 1 << started
                << "zentoria-report: " + empty + ": the file is empty";
            QTest::addRow("%s, no banner", command)
                << QStringList{command, dataFile("corrupted.txt")} << 1 << started
                << "zentoria-report: " + dataFile("corrupted.txt") + ": not a Melvadex report";
            const QString missing = m_dir.filePath("missing.vzt");
            QTest::addRow("%s, unreadable", command)
                << QStringList{command, missing} << 2 << ""
                << "cannot open \"" + missing + "\": No such file or directory";
        }
        addRow("option after the report", QStringList{"list", dataFile("mixed.vzt"), "--verbose"}, 2, "",
               "unknown option '--verbose'");
        addRow("export: unknown kind", QStringList{"export", "--kind", "ID3v3", dataFile("export.vzt")}, 2,
               "", "unknown kind 'ID3v3'");
        addRow("export: unknown format", QStringList{"export", "--format=pls", dataFile("export.vzt")}, 2, "",
               "unknown format 'pls'");
        addRow("export: relative local folder",
               QStringList{"export", "--map", "C:\\Music=music", dataFile("export.vzt")}, 2, "",
               "is no mapping");
        addRow("export: option without its value", QStringList{"export", dataFile("export.vzt"), "--kind"}, 2,
               "", "Missing value after '--kind'");
        addRow("export option with list", QStringList{"list", "--format", "csv", dataFile("export.vzt")}, 2,
               "", "unknown option '--format'");
        addRow("scan: no folder", QStringList{"scan"}, 2, "", "name one or more folders");
        addRow("scan: a folder that is not there", QStringList{"scan", m_dir.filePath("none")}, 2, "",
               "zentoria-report: " + m_dir.filePath("none") + ": no such folder");
        addRow("scan: --as for one of two folders",
               QStringList{"scan", "--as", "C:\\M", m_dir.path(), m_dir.path()}, 2, "",
               "give --as once for every folder");
        addRow("scan: no jobs", QStringList{"scan", "--jobs", "0", m_dir.path()}, 2, "",
               "'0' is no number of jobs");
        addRow("scan: json", QStringList{"scan", "--json", m_dir.path()}, 2, "", "unknown option '--json'");
        addRow("scan: --as holding the closing words",
               QStringList{"scan", "--as", "C:\\Date of creation: 1", m_dir.path()}, 2, "",
               "is no Windows folder a report can name");
        addRow("scan: --as with a line break", QStringList{"scan", "--as", "C:\\M\nX", m_dir.path()}, 2, "",
               "is no Windows folder a report can name");
        addRow("list: -o", QStringList{"list", "-o", "x.vzt", dataFile("mixed.vzt")}, 2, "",
               "unknown option '-o'");
        // A check of the report's own folder: it holds no MP3 file.
        addRow("scan: nothing found", QStringList{"scan", m_dir.path()}, 0, "Date of creation: ", "");
        for (const char* report : {"empty.vzt", "corrupted.txt", "missing.vzt"}) {
            const QString path =
                qstrcmp(report, "corrupted.txt") == 0 ? dataFile(report) : m_dir.filePath(report);
            QTest::addRow("recheck of %s", report) << QStringList{"recheck", path} << 2 << "" << path;
        }
    }

    void commands() {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QString, stdoutHas);
        QFETCH(QString, stderrHas);

        const Run run = runTool(arguments, m_dir.path(), 10);
        QCOMPARE(run.exitCode, exitCode);
        QVERIFY2(run.out.contains(stdoutHas.toUtf8()), run.out.constData());
        QVERIFY2(run.err.contains(stderrHas.toUtf8()), run.err.constData());
        QCOMPARE(run.out.isEmpty(), stdoutHas.isEmpty());
    }

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
        // Not a terminal: no progress.
        QCOMPARE(run.err, QByteArray());
        QCOMPARE(run.out, QByteArray());

        // The user fixes Waterloo's tags and deletes Fernando: not seen is not fixed.
        QVERIFY(setTags(music.filePath("Abba/Waterloo.mp3"), BothTags));
        QVERIFY(QFile::remove(music.filePath("Abba/Fernando.mp3")));
        const QString map = "C:\\Music=" + music.path();
        run = runTool({"recheck", "--json", "--map", map, report}, m_dir.path(), 20);
        QCOMPARE(run.exitCode, 1);
        const QJsonObject summary = QJsonDocument::fromJson(run.out).object();
        QCOMPARE(summary.value("fixed").toVariant().toStringList(),
                 QStringList{"C:\\Music\\Abba\\Waterloo.mp3"});
        QCOMPARE(summary.value("still").toVariant().toStringList(),
                 QStringList{"C:\\Music\\Björk\\Jóga.mp3"});
        QCOMPARE(summary.value("changed").toVariant().toStringList(), QStringList());
        QCOMPARE(summary.value("notFound").toVariant().toStringList(),
                 QStringList{"C:\\Music\\Abba\\Fernando.mp3"});
        QVERIFY2(run.err.contains("C:\\Music\\Abba\\Fernando.mp3"), run.err.constData());
        // Written over the report it reads.
        const QByteArray before = contentsOf(report);
        run = runTool({"recheck", "--map", map, "--output", report, report}, m_dir.path(), 20);
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(entries(contentsOf(report)),
                 (QStringList{"ID3v0 C:\\Music\\Abba\\Fernando.mp3", "ID3v2 C:\\Music\\Björk\\Jóga.mp3"}));
        QVERIFY(contentsOf(report).contains("\r\n  Not found: 1 (listed with their earlier kind)\r\n"));
        QVERIFY(writeFile(m_dir.filePath("before.vzt"), before));
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
        ::close(top);
        QString deep;
        const int inner = makeDeepFolders(music.filePath("deep"), &deep);
        QVERIFY(writeMp3(music.filePath("t"), V1) && moveToBytes(music.filePath("t"), inner, "x.mp3"));
        ::close(inner);
        QVERIFY(::mkfifo(QFile::encodeName(music.filePath("pipe.mp3")).constData(), 0600) == 0);
        QVERIFY(QFile::link("/dev/zero", music.filePath("zero.mp3")));
        QVERIFY(writeMp3(music.filePath("a\\b.mp3"), NoTag));
        QVERIFY(writeFile(music.filePath("junk.mp3"), "no audio"));

        Run run = runTool({"scan", "--as", "C:\\Music", music.path()}, m_dir.path(), 20);
        QCOMPARE(run.exitCode, 2);
        const QString windowsDeep = "C:\\Music" + deep.mid(music.path().size()).replace(u'/', u'\\');
        QCOMPARE(entries(run.out),
                 (QStringList{"ID3v0 C:\\Music\\caf%E9.mp3", "ID3v2 " + windowsDeep + "\\x.mp3"}));
        QVERIFY(run.out.contains("\r\n  Not checked: 4 files or folders\r\n"));
        for (const QString& named :
             {music.filePath("pipe.mp3: not a regular file"), music.filePath("zero.mp3: not a regular file"),
              music.filePath("a\\b.mp3: a report cannot name it so that it leads back here"),
              music.filePath("junk.mp3: no MPEG audio found"),
              QString("4 files or folders could not be checked")}) {
            QVERIFY2(run.err.contains(named.toUtf8()), run.err.constData());
        }
        // The names as written lead back to the files.
        const QString report = m_dir.filePath("odd.vzt");
        QVERIFY(writeFile(report, run.out));
        run = runTool({"recheck", "--json", "--map", "C:\\Music=" + music.path(), report}, m_dir.path(), 20);
        QCOMPARE(QJsonDocument::fromJson(run.out).object().value("still").toArray().size(), 2);
        removeTree(music.path());
    }

    void foldersAUserCannotEnterAreNamed() {
        // Root enters every folder: the tool runs as nobody, where nobody can run it.
        const QStringList asNobody{"--reuid=65534", "--regid=65534", "--clear-groups", ZENTORIA_REPORT_TOOL};
        if (::geteuid() == 0 && QProcess::execute("setpriv", asNobody + QStringList{"--version"}) != 0) {
            QSKIP("the tool cannot run as nobody here (setpriv failed, or its folder is closed to others)");
        }
        QTemporaryDir music;
        QVERIFY(writeMp3(music.filePath("closed/a.mp3"), NoTag));
        QVERIFY(writeMp3(music.filePath("listed only/b.mp3"), NoTag));
        QVERIFY(writeMp3(music.filePath("open/c.mp3"), NoTag));
        for (const auto& [name, mode] : {std::pair("", 0755), {"closed", 0700}, {"listed only", 0744}}) {
            QVERIFY(::chmod(QFile::encodeName(music.filePath(name)).constData(), mode) == 0);
        }
        QProcess tool;
        if (::geteuid() == 0) {
            tool.start("setpriv", asNobody + QStringList{"scan", music.path()});
        } else {
            tool.start(ZENTORIA_REPORT_TOOL, {"scan", music.path()});
        }
        QVERIFY(tool.waitForFinished(20000));
        const QByteArray err = tool.readAllStandardError();
        QCOMPARE(tool.exitCode(), 2);
        QCOMPARE(entries(tool.readAllStandardOutput()), QStringList{"ID3v0 " + music.filePath("open/c.mp3")});
        QVERIFY2(
            err.contains(QFile::encodeName(music.filePath("closed: cannot be entered: Permission denied"))),
            err.constData());
        QVERIFY2(err.contains(QFile::encodeName(music.filePath("listed only: cannot be entered"))),
                 err.constData());
    }

    void reportsAreWrittenWholeOrNotAtAll() {
        QTemporaryDir music;
        QVERIFY(writeMp3(music.filePath("first.mp3"), NoTag));
        for (int i = 0; i < 3000; ++i) {
            QVERIFY(QFile::copy(music.filePath("first.mp3"),
                                music.filePath(QStringLiteral("%1 a long name of a song.mp3").arg(i))));
        }
        // Standard output that cannot take the report: a full device, a reader gone.
        QProcess tool;
        tool.setStandardOutputFile("/dev/full");
        tool.start(ZENTORIA_REPORT_TOOL, {"scan", music.path()});
        QVERIFY(tool.waitForFinished(20000));
        QCOMPARE(tool.exitCode(), 2);
        QVERIFY(
            tool.readAllStandardError().contains("writing standard output failed: No space left on device"));
        // "true" is long gone when the scan is done and writes.
        QProcess pipe;
        pipe.start("bash", {"-c", "\"$0\" scan \"$1\" | true; echo ${PIPESTATUS[0]}", ZENTORIA_REPORT_TOOL,
                            music.path()});
        QVERIFY(pipe.waitForFinished(20000));
        QCOMPARE(pipe.readAllStandardOutput(), "2\n");
        QVERIFY(pipe.readAllStandardError().contains("writing standard output failed: Broken pipe"));

        // A disk too full for the new report.
        QTemporaryDir small;
        Run run;
        if (QProcess::execute("mount", {"-t", "tmpfs", "-o", "size=16k", "tmpfs", small.path()}) != 0) {
            QSKIP("cannot mount a small tmpfs here to fill");
        }
        const QString full = small.filePath("music.vzt");
        QVERIFY(writeFile(full, "last week's report"));
        run = runTool({"scan", "-o", full, music.path()}, m_dir.path(), 20);
        const QByteArray left = contentsOf(full);
        QProcess::execute("umount", {small.path()});
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.contains(QFile::encodeName(full) + ": cannot be written: "), run.err.constData());
        QCOMPARE(left, "last week's report");

        // Interrupted, the old report stays as it was.
        const QString report = m_dir.filePath("last week.vzt");
        QVERIFY(writeFile(report, "last week's report"));
        QProcess interrupted;
        interrupted.start(ZENTORIA_REPORT_TOOL, {"scan", "--jobs", "1", "-o", report, music.path()});
        QVERIFY(interrupted.waitForStarted());
        QTest::qWait(50);
        interrupted.terminate();
        QVERIFY(interrupted.waitForFinished(20000));
        if (interrupted.exitStatus() == QProcess::NormalExit) {
            QSKIP("the scan ended before it could be interrupted");
        }
        QCOMPARE(contentsOf(report), "last week's report");
    }

private:
    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(tst_Cli)
#include "tst_cli.moc"
