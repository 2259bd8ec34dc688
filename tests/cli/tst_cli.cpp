#include "../report/ReportBuilder.h"
#include "ToolRun.h"

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
        QVERIFY(writeFile(m_dir.filePath("capped.vzt"),
                          ReportBuilder()
                              .start({"", "", "", "  Problem files: 1 (7 more left out)"})
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
        // The arguments as a command line: "@name" is a file of the test data, "%name" one in the test's
        // folder and "%" that folder.
        const auto row = [this](const char* name, const QString& line, int exitCode, const QString& out,
                                const QString& err = "") {
            QStringList arguments;
            for (const QString& word : line.split(u' ', Qt::SkipEmptyParts)) {
                arguments << (word.startsWith(u'@')   ? dataFile(qPrintable(word.mid(1)))
                              : word.startsWith(u'%') ? m_dir.filePath(word.mid(1))
                                                      : word);
            }
            addRow(name, arguments, exitCode, out, err);
        };
        const QString loaded = "Loaded: 5 files (ID3v1 1, ID3v2 3, ID3v0 1), skipped records: 0\n";
        const QString notReport = "{\"entries\":[],\"outcome\":\"Corrupted\",\"skippedLines\":[]}\n";
        row("list", "list @mixed.vzt", 0,
            "1\tID3v2\tC:\\Music\\Abba\\Waterloo.mp3\n2\tID3v1\tC:\\Music\\Queen\\Bohemian Rhapsody.mp3\n"
            "3\tID3v2\tC:\\Music\\Abba\\SOS.mp3\n5\tID3v0\t  C:\\Music\\Beatles\\Help.mp3  \n"
            "6\tID3v2\tC:\\Music\\Queen\\Innuendo.mp3\n");
        row("check", "check @mixed.vzt", 0, loaded);
        row("check, ended early", "check @endedearly.vzt", 1,
            "EndedEarly: 2 files (ID3v1 1, ID3v2 1, ID3v0 0), skipped records: 0, ended before line 15\n");
        // A check looks for damage, and a skipped record is damage.
        row("check, one skipped", "check @skipped.vzt", 1,
            "Loaded: 1 file (ID3v1 1, ID3v2 0, ID3v0 0), skipped records: 1\n");
        row("json", "list --json @skipped.vzt", 0,
            "{\"entries\":[{\"code\":\"ID3v1\",\"kind\":1,\"ordinal\":1,\"path\":\"C:\\\\Music\\\\One.mp3\"}]"
            ","
            "\"notRead\":1,\"outcome\":\"Loaded\",\"skippedLines\":[15]}\n");
        // Files a scan found but its report could not hold are no files fine.
        row("check, files left out", "check %capped.vzt", 0,
            "Loaded: 1 file (ID3v1 1, ID3v2 0, ID3v0 0), skipped records: 0, left out: 7\n");
        row("json, files left out", "list --json %capped.vzt", 0, "\"leftOut\":7,\"outcome\":\"Loaded\"");
        row("json, not a report", "list --json @corrupted.txt", 1, notReport, "not a Melvadex report");
        // The first line alone decides: the 2 GiB are not read (the tool has 10 seconds).
        row("json, 2 GiB without a line break", "list --json %huge.vzt", 1, notReport);
        // A script reading the JSON gets an object even for a file that cannot be read.
        row("json, a pipe", "list --json %pipe.vzt", 2,
            "{\"error\":\"cannot open \\\"" + m_dir.filePath("pipe.vzt") +
                "\\\": it is a named pipe, not a file\",\"outcome\":\"Unreadable\"}",
            "it is a named pipe, not a file");
        // b.mp3 fixed, d.mp3 new, Café.mp3 still (now without any tags, and written in capitals), a.mp3
        // still. Something is new: status 1.
        row("diff, letter case aside", "diff @before-fixes.vzt @after-fixes.vzt", 1,
            "fixed\tID3v2\tC:\\Music\\b.mp3\nnew\tID3v1\tC:\\Music\\d.mp3\n"
            "still\tID3v0\tc:\\MUSIC\\CAF\xC3\x89.MP3\nstill\tID3v1\tC:\\Music\\A.mp3\n");
        row("diff, json", "diff --json @before-fixes.vzt @after-fixes.vzt", 1,
            "{\"fixed\":[{\"code\":\"ID3v2\",\"path\":\"C:\\\\Music\\\\b.mp3\"}],"
            "\"new\":[{\"code\":\"ID3v1\",\"path\":\"C:\\\\Music\\\\d.mp3\"}],"
            "\"still\":[{\"code\":\"ID3v0\",\"path\":\"c:\\\\MUSIC\\\\CAF\xC3\x89.MP3\"},"
            "{\"code\":\"ID3v1\",\"path\":\"C:\\\\Music\\\\A.mp3\"}]}\n");
        row("diff, nothing new", "diff @after-fixes.vzt @after-fixes.vzt", 0, "still");
        // export.vzt: a comma, a double quote and non-ASCII letters in its paths, and folders beside the
        // mapped one that only start the same.
        row("export, a playlist by default, mapped",
            "export --map C:\\Music=/media/music --kind ID3v2 @export.vzt", 0,
            "#EXTM3U\n#EXTINF:-1,Waterloo.mp3\n/media/music/Abba/Waterloo.mp3\n"
            "#EXTINF:-1,\"Live\" at Wembley.mp3\n/media/music/Queen/\"Live\" at Wembley.mp3\n"
            "#EXTINF:-1,Track01.mp3\nD:\\Elsewhere\\Track01.mp3\n");
        row("export, csv of every kind, mapped with =", "export --format csv --map=c:/music=/m @export.vzt",
            0,
            "Ordinal,Kind,Problem,Path\r\n1,ID3v2,ID3v2 Not found,/m/Abba/Waterloo.mp3\r\n"
            "2,ID3v1,ID3v1 not found,\"/m/Crosby, Stills & Nash/Suite.mp3\"\r\n"
            "3,ID3v2,ID3v2 Not found,\"/m/Queen/\"\"Live\"\" at Wembley.mp3\"\r\n"
            "4,ID3v0,No ID3 tags,/m/Bj\xC3\xB6rk/J\xC3\xB3ga.mp3\r\n"
            "5,ID3v2,ID3v2 Not found,D:\\Elsewhere\\Track01.mp3\r\n"
            "6,ID3v1,ID3v1 not found,C:\\Musical\\Cats\\Memory.mp3\r\n");
        row("export, text of one kind as they stand", "export --format txt --kind id3v0 @export.vzt", 0,
            "C:\\MUSIC\\Bj\xC3\xB6rk\\J\xC3\xB3ga.mp3\n");
        row("export with a folder mapped each",
            "export --format txt --kind ID3v2 --map C:\\Music=/m --map=D:\\Elsewhere=/e @export.vzt", 0,
            "/m/Abba/Waterloo.mp3\n/m/Queen/\"Live\" at Wembley.mp3\n/e/Track01.mp3\n");
        // Whatever the damage, the files read before it are exported.
        row("export of a damaged report", "export --format txt @endedearly.vzt", 1,
            "C:\\Music\\One.mp3\nC:\\Music\\Two.mp3\n", "ends too early");
        row("help", "--help", 0, "Usage: zentoria-report list [--json] REPORT");
        row("version", "--version", 0, "zentoria-report 0.");
        row("nothing", "", 2, "", "missing command");
        row("unknown command", "show @mixed.vzt", 2, "", "unknown command 'show'");
        row("a report named like an option, after --", "check -- -mixed.vzt", 0, loaded);
        row("a report named like an option", "check -mixed.vzt", 2, "", "unknown option '-mixed.vzt'");
        row("folder", "list @", 2, "", "it is a folder, not a file");
        // Opening a pipe that nobody writes to would wait for ever.
        row("named pipe", "check %pipe.vzt", 2, "", "it is a named pipe, not a file");
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
        row("option after the report", "list @mixed.vzt --verbose", 2, "", "unknown option '--verbose'");
        row("export: unknown kind", "export --kind ID3v3 @export.vzt", 2, "", "unknown kind 'ID3v3'");
        row("export: unknown format", "export --format=pls @export.vzt", 2, "", "unknown format 'pls'");
        row("export: relative local folder", "export --map C:\\Music=music @export.vzt", 2, "",
            "is no mapping");
        row("export: option without its value", "export @export.vzt --kind", 2, "",
            "Missing value after '--kind'");
        row("export option with list", "list --format csv @export.vzt", 2, "", "unknown option '--format'");
        row("scan: no folder", "scan", 2, "", "name one or more folders");
        row("scan: a folder that is not there", "scan %none", 2, "",
            "zentoria-report: " + m_dir.filePath("none") + ": no such folder");
        row("scan: --as for one of two folders", "scan --as C:\\M % %", 2, "",
            "give --as once for every folder");
        row("scan: no jobs", "scan --jobs 0 %", 2, "", "'0' is no number of jobs");
        row("scan: json", "scan --json %", 2, "", "unknown option '--json'");
        addRow("scan: --as holding the closing words",
               QStringList{"scan", "--as", "C:\\Date of creation: 1", m_dir.path()}, 2, QString(),
               QString("is no Windows folder a report can name"));
        row("scan: --as with a line break", "scan --as C:\\M\nX %", 2, "",
            "is no Windows folder a report can name");
        row("list: -o", "list -o x.vzt @mixed.vzt", 2, "", "unknown option '-o'");
        row("list: --follow", "list --follow @mixed.vzt", 2, "", "unknown option '--follow'");
        // Following what cannot change ends at once instead of waiting for ever.
        row("follow: no file here", "recheck --follow @mixed.vzt", 2, "",
            "mixed.vzt: none of its files is on this computer (is --map right?); nothing to follow");
        addRow("follow: folders missing",
               QStringList{"recheck", "--follow", "--map", "C:\\Music=" + m_dir.filePath("none"),
                           dataFile("mixed.vzt")},
               2, QString(), QString("none of the folders of its files can be watched: 3 folders missing"));
        row("follow: no files", "recheck --follow @noproblems.vzt", 2, "",
            "it lists no files; nothing to follow");
        // A check of the report's own folder: it holds no MP3 file.
        row("scan: nothing found", "scan %", 0, "Date of creation: ");
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
