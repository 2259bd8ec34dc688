// zentoria-report's scan and recheck: what they write, what they name, and how they end.
#include "../report/ReportBuilder.h"
#include "../scan/Mp3Files.h"
#include "ToolRun.h"

#include <QDir>
#include <QTemporaryDir>

#include <csignal>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

class tst_CheckCommands : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The tool runs where the test does: in a folder of its own, where reports are named by their names.
    // m_many holds files enough for a scan that takes a while.
    void initTestCase() {
        QVERIFY(QDir::setCurrent(m_dir.path()));
        QVERIFY(writeMp3(m_many.filePath("first.mp3"), NoTag));
        QVERIFY(linkMany(m_many.filePath("first.mp3"), m_many.path(), 3000, "%d a long name of a song.mp3"));
    }

    void scanFixRecheck() {
        QTemporaryDir music;
        QVERIFY(writeMp3(music.filePath("Abba/Waterloo.mp3"), V2));
        QVERIFY(writeMp3(music.filePath("Abba/Fernando.mp3"), NoTag));
        QVERIFY(writeMp3(music.filePath("Björk/Jóga.mp3"), V1));
        QVERIFY(writeMp3(music.filePath("fine.mp3"), BothTags));

        // Written as Melvadex would have written them for the folder on Windows, in the list's order.
        const QString report = m_dir.filePath("music.vzt");
        Run run = runTool({"scan", "--as", "C:\\Music", "--jobs", "2", "-o", report, music.path()});
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
        run = runTool({"recheck", "--json", "--map", map, report});
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(QJsonDocument::fromJson(run.out),
                 QJsonDocument::fromJson(R"({"fixed": ["C:\\Music\\Abba\\Waterloo.mp3"], "changed": [],
                     "still": ["C:\\Music\\Björk\\Jóga.mp3"], "notFound": ["C:\\Music\\Abba\\Fernando.mp3"],
                     "unreachable": [], "notRead": 0, "endedEarly": false, "leftOut": 0})"));
        QVERIFY_SAID(run.err, "C:\\Music\\Abba\\Fernando.mp3");
        // Written over the report it reads.
        QVERIFY(QFile::copy(report, m_dir.filePath("before.vzt")));
        run = runTool({"recheck", "--map", map, "--output", report, report});
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(entries(contentsOf(report)),
                 (QStringList{"ID3v0 C:\\Music\\Abba\\Fernando.mp3", "ID3v2 C:\\Music\\Björk\\Jóga.mp3"}));
        QVERIFY(contentsOf(report).contains("\r\n  Not found: 1 (listed with their earlier kind)\r\n"));
        run = runTool({"diff", "before.vzt", report});
        QCOMPARE(run.out, "fixed\tID3v1\tC:\\Music\\Abba\\Waterloo.mp3\n"
                          "still\tID3v0\tC:\\Music\\Abba\\Fernando.mp3\n"
                          "still\tID3v2\tC:\\Music\\Björk\\Jóga.mp3\n");

        // A wrong mapping (to a folder that holds other things) finds nothing, and says so: every file
        // keeps its kind, none is fixed.
        run = runTool({"recheck", "--map", "C:\\Music=" + m_dir.path(), "before.vzt"});
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(entries(run.out).size(), 3);
        QVERIFY(run.out.contains("\r\n  Not found: 3 (listed with their earlier kind)\r\n"));
        QVERIFY_SAID(run.err, "none of the report's files was found here: is --map right?");

        // All found and fixed: nothing still broken.
        QVERIFY(writeMp3(music.filePath("Abba/Fernando.mp3"), BothTags));
        QVERIFY(setTags(music.filePath("Björk/Jóga.mp3"), BothTags));
        run = runTool({"recheck", "--map", map, report});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(entries(run.out), QStringList());
    }

    // Followed while they are mended: a's tags written in place, b replaced by rename as an editor saves
    // it, c deleted. Each change is told as it is seen; the signal ends it with the re-check.
    void followTellsChanges_data() {
        addColumns<int, int, QStringList, QStringList, QString>("aNow", "signal", "options", "told",
                                                                "counts");
        // a is listed lacking ID3v2: with ID3v2 alone it lacks ID3v1 instead.
        addRow("fixed", int(BothTags), SIGINT, QStringList(),
               QStringList{"fixed\ta.mp3", "fixed\tb.mp3", "gone\tc.mp3"},
               QString("2 fixed, 0 still, 1 not found, 0 changed kind"));
        addRow("changed, ended by SIGTERM, to a file", int(V2), SIGTERM, QStringList{"-o", "now.vzt"},
               QStringList{"changed\ta.mp3", "fixed\tb.mp3", "gone\tc.mp3"},
               QString("1 fixed, 0 still, 1 not found, 1 changed kind"));
        addRow("still, JSON Lines", int(V1), SIGINT, QStringList{"--json"},
               QStringList{"fixed\tb.mp3", "gone\tc.mp3", "still\tID3v2\ta.mp3"},
               QString("1 fixed, 1 still, 1 not found, 0 changed kind"));
    }
    void followTellsChanges() {
        QFETCH(int, aNow);
        QFETCH(int, signal);
        QFETCH(QStringList, options);
        QFETCH(QStringList, told);
        QFETCH(QString, counts);
        const bool json = options.contains("--json");
        QTemporaryDir music;
        QVERIFY(writeMp3(music.filePath("a.mp3"), V1) && writeMp3(music.filePath("b.mp3"), NoTag) &&
                writeMp3(music.filePath("c.mp3"), V2));
        const QString report = m_dir.filePath("follow.vzt");
        QCOMPARE(runTool({"scan", "-o", report, music.path()}).exitCode, 1);
        QProcess tool;
        tool.start(ZENTORIA_REPORT_TOOL, QStringList{"recheck", "--follow", report} + options);
        QByteArray said;
        QTRY_VERIFY_WITH_TIMEOUT((said += tool.readAllStandardError()).contains("Ctrl+C ends"), 10000);
        QCOMPARE(said, "zentoria-report: following 3 files in 1 folder; Ctrl+C ends\n");

        QVERIFY(setTags(music.filePath("a.mp3"), aNow));
        QVERIFY(writeMp3(music.filePath(".b.mp3.new"), BothTags));
        QVERIFY(::rename(QFile::encodeName(music.filePath(".b.mp3.new")),
                         QFile::encodeName(music.filePath("b.mp3"))) == 0);
        QVERIFY(QFile::remove(music.filePath("c.mp3")));
        QByteArray out;
        QTRY_COMPARE_WITH_TIMEOUT((out += tool.readAllStandardOutput()).count('\n'), 3, 5000);
        QVERIFY(::kill(tool.processId(), signal) == 0);
        QVERIFY(tool.waitForFinished(20000));
        QCOMPARE(tool.exitStatus(), QProcess::NormalExit);
        // c was not seen to be fixed.
        QCOMPARE(tool.exitCode(), 1);
        said += tool.readAllStandardError();
        QVERIFY_SAID(said, counts.toUtf8());
        QList<QByteArray> lines = (out + tool.readAllStandardOutput()).trimmed().split('\n');
        if (json) {
            // One object a change, the re-check's summary last.
            const QJsonObject summary = QJsonDocument::fromJson(lines.takeLast()).object();
            QCOMPARE(summary.value("notFound").toArray(), QJsonArray{music.filePath("c.mp3")});
            QCOMPARE(summary.value("still").toArray(), QJsonArray{music.filePath("a.mp3")});
            for (QByteArray& line : lines) {
                const QJsonObject change = QJsonDocument::fromJson(line).object();
                QStringList fields{change.value("state").toString(), change.value("path").toString()};
                if (change.contains("kind")) {
                    fields.insert(1, change.value("kind").toString());
                }
                line = fields.join(u'\t').toUtf8();
            }
        } else if (!options.isEmpty()) {
            // The report of what is left went to its file; without one it goes nowhere.
            QCOMPARE(entries(contentsOf("now.vzt")),
                     (QStringList{"ID3v1 " + music.filePath("a.mp3"), "ID3v1 " + music.filePath("c.mp3")}));
        }
        QStringList seen;
        for (const QByteArray& line : std::as_const(lines)) {
            seen << QString::fromUtf8(line).replace(music.path() + u'/', QString());
        }
        seen.sort();
        QCOMPARE(seen, told);
    }

    // A re-check of a report it could not read whole never passes for clean, nor does one of itself.
    void honestRechecks_data() {
        addColumns<QByteArray, int, int, bool, int>("report", "exitCode", "notRead", "endedEarly", "leftOut");
        const QByteArray fine = "C:\\M\\fine.mp3";
        const auto report = [&fine](QByteArrayView problemFiles = "") {
            return ReportBuilder()
                .start({"", "  Written by zentoria-report scan", "  Checked: C:\\M", problemFiles})
                .record(fine, zentoria::kDetailID3v1);
        };
        addRow("whole", report().closing().bytes(), 0, 0, false, 0);
        addRow("named twice", report().record(fine, zentoria::kDetailID3v2).closing().bytes(), 0, 0, false,
               0);
        addRow("garbled", report().record("C:\\M\\b.mp3", "garbled").closing().bytes(), 2, 1, false, 0);
        addRow("cut", report().unterminated("C:\\M\\cut.mp3").bytes(), 2, 1, true, 0);
        addRow("capped", report("  Problem files: 1 (7 more left out)").closing().bytes(), 1, 0, false, 7);
        ReportBuilder overLong = report();
        for (int i = 0; i < zentoria::kMaxRecords + 2; ++i) {
            overLong.record(fine, zentoria::kDetailID3v1);
        }
        addRow("over-long", overLong.closing().bytes(), 2, 3, false, 0);
    }
    void honestRechecks() {
        QFETCH(QByteArray, report);
        QFETCH(int, exitCode);
        QFETCH(int, notRead);
        QFETCH(bool, endedEarly);
        QFETCH(int, leftOut);
        QTemporaryDir music;
        QVERIFY(writeMp3(music.filePath("fine.mp3"), BothTags));
        const QString file = m_dir.filePath("honest.vzt");
        QVERIFY(writeFile(file, report));
        const QString map = "C:\\M=" + music.path();
        // Read as it came, then written over itself twice: what it lacks is said every time.
        for (int round = 0; round < 3; ++round) {
            const Run run = runTool({"recheck", "--json", "--map", map, file}, {}, 30);
            const QJsonObject summary = json(run);
            QCOMPARE(run.exitCode, exitCode);
            QCOMPARE(run.err.contains("so their files were not checked") ||
                         run.err.contains("so they were not checked"),
                     exitCode != 0);
            // Only the first round finds the fine file fixed.
            QCOMPARE((QVariantList{summary["notRead"].toInt(), summary["endedEarly"].toBool(),
                                   summary["leftOut"].toInt(), int(summary["fixed"].toArray().size())}),
                     (QVariantList{notRead, endedEarly, leftOut, round == 0 ? 1 : 0}));
            QCOMPARE(runTool({"recheck", "--map", map, "-o", file, file}, {}, 30).exitCode, exitCode);
            QVERIFY(exitCode == 0 || !contentsOf(file).contains("  Problem files: 0\r\n"));
            const QByteArray written = contentsOf(file);
            zentoria::MemoryLineSource source(written);
            QVERIFY(zentoria::ReadReport(source).missing() ==
                    (zentoria::MissingRecords{notRead, endedEarly, leftOut}));
        }
    }

    // A mapping whose folder is gone or holds nothing (a share not mounted) is out of reach, not empty
    // of files: it is named once, and its files keep their kinds.
    void unreachableMappings_data() {
        addColumns<bool, QString>("makeFolder", "why");
        addRow("missing folder", false, "is missing");
        addRow("empty mount point", true, "is empty (a share not mounted?)");
    }
    void unreachableMappings() {
        QFETCH(bool, makeFolder);
        QFETCH(QString, why);
        QTemporaryDir music;
        QVERIFY(writeMp3(music.filePath("a/here.mp3"), V1));
        const QString share = music.filePath("share");
        QVERIFY(!makeFolder || QDir().mkpath(share));
        const QString file = m_dir.filePath("share.vzt");
        ReportBuilder report;
        report.start().record("C:\\A\\here.mp3", zentoria::kDetailID3v2);
        report.record("S:\\x.mp3", zentoria::kDetailID3v0).record("S:\\y\\z.mp3", zentoria::kDetailID3v2);
        QVERIFY(writeFile(file, report.closing().bytes()));
        const QStringList maps{"--map", "C:\\A=" + music.filePath("a"), "--map", "S:\\=" + share};
        Run run = runTool(QStringList{"recheck", "--json"} + maps + QStringList{file});
        QCOMPARE(run.exitCode, 2);
        const QJsonObject summary = json(run);
        QCOMPARE(summary.value("still").toArray().size(), 1);
        QCOMPARE(summary.value("notFound").toArray().size(), 0);
        QCOMPARE(summary.value("unreachable").toArray().at(0).toObject().value("files").toArray().size(), 2);
        QCOMPARE(run.err.count("unreachable: "), 1);
        QVERIFY_SAID(run.err,
                     QString("S:=%1: unreachable: %1 %2; its 2 listed files").arg(share, why).toUtf8());
        QVERIFY2(!run.err.contains("not found here"), run.err.constData());
        run = runTool(QStringList{"recheck"} + maps + QStringList{file});
        QCOMPARE(run.exitCode, 2);
        QCOMPARE(entries(run.out).size(), 3);
        QVERIFY(run.out.contains("\r\n  Not found: 0; unreachable: 2 (listed with their earlier kind)\r\n"));
    }

    void scanNamesWhatItCannotCheck() {
        // Under one folder: a name that is no UTF-8, a folder deeper than a path can name, a named pipe,
        // a link to a device, a name holding a backslash, and something that is no MP3.
        QTemporaryDir music;
        QVERIFY(putMp3(music.path(), "caf\xE9.mp3", NoTag) && putMp3(music.path(), "Bj\xF6rk/J.mp3", V2));
        QString deep;
        const int inner = makeDeepFolders(music.filePath("deep"), &deep);
        QVERIFY(putMp3(inner, "x.mp3", V1));
        ::close(inner);
        QVERIFY(::mkfifo(QFile::encodeName(music.filePath("pipe.mp3")).constData(), 0600) == 0);
        QVERIFY(QFile::link("/dev/zero", music.filePath("zero.mp3")) &&
                QFile::link(music.filePath("nothing"), music.filePath("gone.mp3")));
        QVERIFY(writeMp3(music.filePath("Date of creation: 1.mp3"), NoTag) &&
                writeMp3(music.filePath("a\\b.mp3"), NoTag));
        QVERIFY(writeFile(music.filePath("junk.mp3"), "no audio"));

        Run run = runTool({"scan", "--as", "C:\\Music", music.path()});
        QCOMPARE(run.exitCode, 2);
        const QString windowsDeep = "C:\\Music" + deep.mid(music.path().size()).replace(u'/', u'\\');
        QCOMPARE(entries(run.out),
                 (QStringList{"ID3v1 C:\\Music\\Bj%F6rk\\J.mp3", "ID3v0 C:\\Music\\caf%E9.mp3",
                              "ID3v2 " + windowsDeep + "\\x.mp3"}));
        QVERIFY(run.out.contains("\r\n  Not checked: 6 files or folders\r\n"));
        for (const char* named :
             {"pipe.mp3: not a regular file", "zero.mp3: not a regular file",
              "gone.mp3: a link that leads nowhere",
              "a\\b.mp3: a report cannot name it so that it leads back here", "junk.mp3: no MPEG audio found",
              "Date of creation: 1.mp3: a report cannot name it: its name holds a line break"}) {
            QVERIFY_SAID(run.err, music.filePath(named).toUtf8());
        }
        QVERIFY_SAID(run.err, "6 files or folders could not be checked");
        // The names as written lead back to the files.
        const QString report = m_dir.filePath("odd.vzt");
        QVERIFY(writeFile(report, run.out));
        run = runTool({"recheck", "--json", "--map", "C:\\Music=" + music.path(), report});
        QCOMPARE(json(run).value("still").toArray().size(), 3);
        removeTree(music.path());
    }

    void everyNameHasOneReading() {
        // Beside each name stands the twin its other reading would find.
        QTemporaryDir music;
        const QByteArray top = QFile::encodeName(music.path());
        for (const char* name : {"caf%E9/literal.mp3", "caf\xE9/latin.mp3", "Bj\xF6rk/J.mp3",
                                 "pair/caf\xE9.mp3", "bom/\xEF\xBB\xBFsong.mp3"}) {
            QVERIFY(putMp3(music.path(), name, NoTag));
        }
        QVERIFY(putMp3(music.path(), "pair/caf%E9.mp3", BothTags) &&
                putMp3(music.path(), "bom/song.mp3", BothTags));
        // A path longer than a report can name.
        QString deep;
        const int folder = makeDeepFolders(music.filePath("deep"), &deep, zentoria::kMaxPathLength);
        QVERIFY(putMp3(folder, "deep.mp3", NoTag));
        ::close(folder);

        // A folder on the command line by its name's bytes, or by its %XX form where no folder has that name.
        for (const auto& [given, listed] : {std::pair("caf%E9", "caf%25E9/literal.mp3"),
                                            {"caf\\xE9", "caf%E9/latin.mp3"},
                                            {"Bj%F6rk", "Bj%F6rk/J.mp3"},
                                            {"Bj\\xF6rk", "Bj%F6rk/J.mp3"}}) {
            const Run run = runShell(R"x("$0" scan "$(printf %b "$1")")x", {given}, music.path());
            QCOMPARE(entries(run.out), QStringList{"ID3v0 " + music.filePath(listed)});
        }

        const QString report = m_dir.filePath("names.vzt");
        Run run = runTool({"scan", "-o", report, music.path()});
        QCOMPARE(run.exitCode, 2);
        QVERIFY_SAID(run.err, "/deep.mp3: a report cannot name it: its path is too long for a report");
        const QString bom = music.filePath(QStringLiteral("bom/\uFEFFsong.mp3"));
        QVERIFY(entries(contentsOf(report)).contains("ID3v0 " + bom));
        // A report from Windows names "caf%E9.mp3" by its text: the tagged file of that name.
        const QString windows = m_dir.filePath("windows.vzt");
        const QByteArray windowsPath = "C:\\M\\pair\\caf%E9.mp3";
        QVERIFY(writeFile(
            windows, ReportBuilder().start().record(windowsPath, zentoria::kDetailID3v0).closing().bytes()));
        run = runTool({"recheck", "--json", "--map", "C:\\M=" + music.path(), windows});
        QCOMPARE(json(run).value("fixed").toArray(), QJsonArray{windowsPath.data()});
        run = runTool({"export", "--map", "C:\\M=" + music.path(), windows});
        QVERIFY2(run.out.endsWith('\n' + QFile::encodeName(music.filePath("pair/caf%E9.mp3")) + '\n'),
                 run.out.constData());

        // Ours names the untagged file only: once it is moved away, it is not found, never fixed.
        QVERIFY(::rename((top + "/pair/caf\xE9.mp3").constData(), (top + "/moved.mp3").constData()) == 0);
        run = runTool({"recheck", "--json", report});
        QCOMPARE(run.exitCode, 1);
        const QJsonObject summary = json(run);
        QCOMPARE(summary.value("notFound").toArray(), QJsonArray{music.filePath("pair/caf%E9.mp3")});
        QCOMPARE(summary.value("fixed").toArray(), QJsonArray());
        QVERIFY(summary.value("still").toArray().contains(bom));
        QCOMPARE(summary.value("still").toArray().size(), 4);
        removeTree(music.path());
    }

    void capsTellTheTruth() {
        QTemporaryDir music;
        // Here "f/" sorts before "f00000", in the report "f\" after it; a backslash is refused with --as.
        QVERIFY(writeMp3(music.filePath("f/z.mp3"), NoTag) && writeMp3(music.filePath("a\\b.mp3"), NoTag));
        QVERIFY(linkMany(music.filePath("f/z.mp3"), music.path(), zentoria::kMaxRecords + 1, "f%05d.mp3"));
        Run run = runTool({"scan", "--as", "C:\\M", music.path()}, {}, 60);
        QCOMPARE(run.exitCode, 2);
        const QStringList listed = entries(run.out);
        QCOMPARE(listed.size(), zentoria::kMaxRecords);
        QCOMPARE(listed.last(), QString::asprintf("ID3v0 C:\\M\\f%05d.mp3", zentoria::kMaxRecords - 1));
        QVERIFY(run.out.contains("\r\n  Problem files: 32766 (2 more left out)\r\n"));
        QVERIFY_SAID(run.err, "32768 problem files found, but a report holds 32766: the last 2 ");

        // Folders that overlap are refused for what they are.
        run = runTool({"scan", "--as", "C:\\M", music.path(), "--as", "C:\\M\\f", music.filePath("f")});
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.contains("the folders given with --as overlap") && !run.err.contains("backslash"),
                 run.err.constData());
    }

    void outputThatIsNoRegularFileStaysSo() {
        QTemporaryDir music;
        QVERIFY(writeMp3(music.filePath("a.mp3"), NoTag));
        const QStringList listed{"ID3v0 " + music.filePath("a.mp3")};
        // A link stays a link; its target gets the report.
        QVERIFY(QFile::link("target.vzt", m_dir.filePath("link.vzt")));
        QCOMPARE(runTool({"scan", "-o", "link.vzt", music.path()}).exitCode, 1);
        QVERIFY(QFileInfo(m_dir.filePath("link.vzt")).isSymLink());
        QCOMPARE(entries(contentsOf(m_dir.filePath("target.vzt"))), listed);
        // Standard output by its name, a pipe here.
        QCOMPARE(entries(runShell(R"("$0" scan -o /dev/stdout "$1" | cat)", {music.path()}).out), listed);
        // A device is written into, and stays a device.
        const QByteArray device = QFile::encodeName(m_dir.filePath("null"));
        if (::mknod(device.constData(), S_IFCHR | 0666, makedev(1, 3)) != 0) {
            QSKIP("mknod is refused here");
        }
        QCOMPARE(runTool({"scan", "-o", "null", music.path()}).exitCode, 1);
        struct stat status = {};
        QVERIFY(::lstat(device.constData(), &status) == 0 && S_ISCHR(status.st_mode));
    }

    void foldersAUserCannotEnterAreNamed() {
        // Root enters every folder: the tool runs as nobody, where nobody can run it.
        const QStringList asNobody{"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
        if (::geteuid() == 0 && runTool({"--version"}, {}, 10, asNobody).exitCode != 0) {
            QSKIP("the tool cannot run as nobody here (setpriv failed, or its folder is closed to others)");
        }
        QTemporaryDir music;
        for (const auto& [name, mode] : {std::pair("closed", 0700), {"listed only", 0744}, {"open", 0755}}) {
            QVERIFY(writeMp3(music.filePath(name) + "/a.mp3", NoTag));
            QVERIFY(::chmod(QFile::encodeName(music.filePath(name)).constData(), mode) == 0);
        }
        QVERIFY(::chmod(QFile::encodeName(music.path()).constData(), 0755) == 0);
        const Run run = runTool({"scan", music.path()}, {}, 20, ::geteuid() == 0 ? asNobody : QStringList());
        QCOMPARE(run.exitCode, 2);
        QCOMPARE(entries(run.out), QStringList{"ID3v0 " + music.filePath("open/a.mp3")});
        for (const char* named :
             {"closed: cannot be entered: Permission denied", "listed only: cannot be entered"}) {
            QVERIFY_SAID(run.err, QFile::encodeName(music.filePath(named)));
        }
    }

    void failuresAreCountedBeyondThoseNamed() {
        // Memory and standard error do not grow with a collection that cannot be read; the count is exact.
        QTemporaryDir music;
        QVERIFY(writeFile(music.filePath("junk"), "no audio"));
        QVERIFY(linkMany(music.filePath("junk"), music.path(), 10003, "%05d.mp3"));
        const Run run = runTool({"scan", music.path()}, {}, 60);
        QCOMPARE(run.exitCode, 2);
        QVERIFY(run.out.contains("\r\n  Not checked: 10003 files or folders\r\n"));
        const QList<QByteArray> lines = run.err.trimmed().split('\n');
        QCOMPARE(lines.size(), 10002);
        QVERIFY2(lines.at(9999).contains("/09999.mp3: no MPEG audio found"), lines.at(9999));
        QCOMPARE(lines.mid(10000),
                 (QList<QByteArray>{"zentoria-report: … and 3 more not named here",
                                    "zentoria-report: 10003 files or folders could not be checked"}));
    }

    void fewDescriptorsWalkAnyDepth() {
        // 1,200 nested folders, each beside a folder and a file: a walk that kept each waiting folder's
        // parent open would need more than a thousand descriptors.
        QTemporaryDir music;
        QVERIFY(writeMp3(music.filePath("a.mp3"), NoTag));
        const QByteArray mp3 = QFile::encodeName(music.filePath("a.mp3"));
        int folder = ::open(QFile::encodeName(music.path()).constData(), O_RDONLY | O_DIRECTORY);
        for (int level = 0; level < 1200; ++level) {
            QVERIFY(::mkdirat(folder, "d", 0755) == 0 && ::mkdirat(folder, "s", 0755) == 0);
            QVERIFY(::linkat(AT_FDCWD, mp3, folder, "s/x.mp3", 0) == 0 &&
                    ::linkat(AT_FDCWD, mp3, folder, "y.mp3", 0) == 0);
            const int inner = ::openat(folder, "d", O_RDONLY | O_DIRECTORY);
            ::close(folder);
            folder = inner;
        }
        ::close(folder);
        QVERIFY(::unlink(mp3) == 0);
        // At 18, sixteen threads used to abort the tool as they started (no descriptor for their wakeup).
        for (const auto& [limit, jobs] :
             {std::pair("--nofile=64", "1"), {"--nofile=64", "16"}, {"--nofile=18", "16"}}) {
            const Run run = runTool({"scan", "--jobs", jobs, music.path()}, {}, 60, {"prlimit", limit});
            QCOMPARE(run.err, QByteArray());
            QCOMPARE(run.exitCode, 1);
            QCOMPARE(entries(run.out).size(), 2400);
        }
#ifndef __SANITIZE_ADDRESS__ // whose runtime needs descriptors of its own to look at memory
        // With next to none, the walk may still get through, a folder and a file at a time; whatever it
        // could not open is named by its cause.
        const Run run = runTool({"scan", "--jobs", "16", music.path()}, {}, 60, {"prlimit", "--nofile=6"});
        QVERIFY2(run.exitCode == 2 || (run.exitCode == 1 && entries(run.out).size() == 2400), run.err);
        for (const QByteArray& line : run.err.trimmed().split('\n')) {
            QVERIFY2(line.isEmpty() || line.endsWith(": Too many open files") ||
                         line.endsWith("could not be checked"),
                     line);
        }
#endif
    }

    // Reports are written whole or not at all. Standard output that cannot take the report: a full device,
    // a reader gone ("true" is long gone when the scan is done and writes).
    void standardOutputThatFailsIsNamedOnce() {
        for (const auto& [shell, why] :
             {std::pair("\"$0\" scan \"$1\" >/dev/full; echo $? >&2", "No space left on device"),
              {"\"$0\" scan \"$1\" | true; echo ${PIPESTATUS[0]} >&2", "Broken pipe"},
              {"\"$0\" scan \"$1\" >&-; echo $? >&2", "it is closed"}}) {
            const Run run = runShell(shell, {m_many.path()});
            const QByteArray said = run.out + run.err;
            // Said once, however often the output fails.
            QCOMPARE(said.count("writing standard output failed"), 1);
            QVERIFY2(said.contains(QByteArray("writing standard output failed: ") + why) &&
                         said.endsWith("2\n"),
                     said.constData());
        }
    }

    void aDiskTooFullKeepsTheOldReport() {
        QTemporaryDir small;
        if (QProcess::execute("mount", {"-t", "tmpfs", "-o", "size=16k", "tmpfs", small.path()}) != 0) {
            QSKIP("cannot mount a small tmpfs here to fill");
        }
        const QString full = small.filePath("music.vzt");
        QVERIFY(writeFile(full, "last week's report"));
        const Run run = runTool({"scan", "-o", full, m_many.path()});
        const QByteArray left = contentsOf(full);
        QProcess::execute("umount", {small.path()});
        QCOMPARE(run.exitCode, 2);
        QVERIFY_SAID(run.err, QFile::encodeName(full) + ": cannot be written: No space left on device");
        QCOMPARE(left, "last week's report");
    }

    // The scan takes some milliseconds here: the wait shrinks until the scan no longer ends first.
    void anInterruptedScanKeepsTheOldReport() {
        const QString report = m_dir.filePath("last week.vzt");
        QVERIFY(writeFile(report, "last week's report"));
        for (int wait : {50, 20, 10, 5, 2, 1}) {
            QProcess interrupted;
            interrupted.start(ZENTORIA_REPORT_TOOL, {"scan", "--jobs", "1", "-o", report, m_many.path()});
            QVERIFY(interrupted.waitForStarted());
            QTest::qWait(wait);
            interrupted.terminate();
            // It may have ended already, while the test waited.
            QVERIFY(interrupted.waitForFinished(20000) || interrupted.state() == QProcess::NotRunning);
            if (interrupted.exitStatus() != QProcess::NormalExit) {
                // Stopped before its report was in place the old one stays; stopped right after, the new
                // one is whole.
                const QByteArray left = contentsOf(report);
                QVERIFY2(left == "last week's report" ||
                             (left.startsWith(zentoria::kBanner.toByteArray()) &&
                              left.contains(zentoria::kClosingMarker.toByteArray())),
                         left.left(200).constData());
                return;
            }
            QVERIFY(writeFile(report, "last week's report"));
        }
        QSKIP("the scan always ended before it could be interrupted");
    }

private:
    QTemporaryDir m_dir;
    QTemporaryDir m_many;
};

QTEST_GUILESS_MAIN(tst_CheckCommands)
#include "tst_checkcommands.moc"
