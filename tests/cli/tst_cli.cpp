#include "../report/ReportBuilder.h"
#include "ToolRun.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

class tst_Cli : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        // A pipe that nobody writes to and an empty file, made once for every test that names them.
        QVERIFY(::mkfifo(QFile::encodeName(m_dir.filePath("pipe.vzt")).constData(), 0600) == 0);
        QVERIFY(writeFile(m_dir.filePath("empty.vzt"), {}));
        // A scan's report that could not hold all it found.
        QVERIFY(writeFile(m_dir.filePath("capped.vzt"), ReportBuilder()
                                                            .banner()
                                                            .line("")
                                                            .line("")
                                                            .line("")
                                                            .line("  Problem files: 1 (7 more left out)")
                                                            .line("")
                                                            .line("")
                                                            .record("a.mp3", zentoria::kDetailID3v1)
                                                            .closing()
                                                            .bytes()));
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
               "\"notRead\":1,\"outcome\":\"Loaded\",\"skippedLines\":[15]}\n",
               "");
        // Files a scan found but its report could not hold are no files fine.
        addRow("check, files left out", QStringList{"check", m_dir.filePath("capped.vzt")}, 0,
               "Loaded: 1 file (ID3v1 1, ID3v2 0, ID3v0 0), skipped records: 0, left out: 7\n", "");
        addRow("json, files left out", QStringList{"list", "--json", m_dir.filePath("capped.vzt")}, 0,
               "\"leftOut\":7,\"outcome\":\"Loaded\"", "");
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
        // Every command says the same of a file that is no report, and of one it cannot open, with the
        // same exit status, naming the file.
        const QString empty = m_dir.filePath("empty.vzt");
        const QString corrupted = dataFile("corrupted.txt");
        const QString missing = m_dir.filePath("missing.vzt");
        for (const char* command : {"list", "check", "export", "diff", "recheck"}) {
            // A playlist starts before the report is read; a check sums up whatever it read.
            const QString started = qstrcmp(command, "export") == 0  ? "#EXTM3U"
                                    : qstrcmp(command, "check") == 0 ? "Corrupted: 0 files"
                                                                     : "";
            // diff compares a good report with the bad one.
            const QStringList before = qstrcmp(command, "diff") == 0
                                           ? QStringList{command, dataFile("mixed.vzt")}
                                           : QStringList{command};
            QTest::addRow("%s, an empty file", command)
                << before + QStringList{empty} << 1 << started
                << "zentoria-report: " + empty + ": the file is empty, not a Melvadex report\n";
            QTest::addRow("%s, no banner", command)
                << before + QStringList{corrupted} << 1 << started
                << "zentoria-report: " + corrupted + ": not a Melvadex report\n";
            QTest::addRow("%s, unreadable", command)
                << before + QStringList{missing} << 2 << ""
                << "zentoria-report: cannot open \"" + missing + "\": No such file or directory\n";
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

private:
    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(tst_Cli)
#include "tst_cli.moc"
