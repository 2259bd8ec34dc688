#include "../report/ReportBuilder.h"
#include "TestData.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct Run {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

Run runTool(const QStringList& arguments) {
    QProcess tool;
    tool.start(QStringLiteral(ZENTORIA_REPORT_TOOL), arguments);
    Run run;
    if (!tool.waitForFinished(60000) || tool.exitStatus() != QProcess::NormalExit) {
        return run;
    }
    run.exitCode = tool.exitCode();
    run.out = tool.readAllStandardOutput();
    run.err = tool.readAllStandardError();
    return run;
}

} // namespace

class tst_Cli : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void usage_data();
    void usage();
    void listPlain();
    void listJson_data();
    void listJson();
    void check_data();
    void check();
    void hugeFileWithoutLineBreak();
};

void tst_Cli::usage_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("stdoutHas");
    QTest::addColumn<QString>("stderrHas");

    QTest::newRow("help") << QStringList{"--help"} << 0 << "Usage: zentoria-report list [--json] REPORT"
                          << "";
    QTest::newRow("version") << QStringList{"--version"} << 0 << "zentoria-report 0."
                             << "";
    QTest::newRow("nothing") << QStringList() << 2 << ""
                             << "missing command";
    QTest::newRow("unknown command") << QStringList{"show", dataFile("mixed.vzt")} << 2 << ""
                                     << "unknown command 'show'";
    QTest::newRow("no report") << QStringList{"list"} << 2 << ""
                               << "name exactly one report";
    QTest::newRow("two reports") << QStringList{"check", dataFile("mixed.vzt"), dataFile("second.vzt")} << 2
                                 << ""
                                 << "name exactly one report";
    QTest::newRow("json with check") << QStringList{"check", "--json", dataFile("mixed.vzt")} << 2 << ""
                                     << "unknown option '--json'";
    QTest::newRow("missing file") << QStringList{"list", "--json", "/nonexistent/report.vzt"} << 2 << ""
                                  << "cannot open \"/nonexistent/report.vzt\"";
    QTest::newRow("folder") << QStringList{"list", QStringLiteral(ZENTORIA_TEST_DATA)} << 2 << ""
                            << "cannot open";
}

void tst_Cli::usage() {
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, stdoutHas);
    QFETCH(QString, stderrHas);

    const Run run = runTool(arguments);
    QCOMPARE(run.exitCode, exitCode);
    QVERIFY2(run.out.contains(stdoutHas.toUtf8()), run.out.constData());
    QVERIFY2(run.err.contains(stderrHas.toUtf8()), run.err.constData());
    QCOMPARE(run.out.isEmpty(), stdoutHas.isEmpty());
}

void tst_Cli::listPlain() {
    const Run run = runTool({"list", dataFile("mixed.vzt")});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.out, QByteArray("1\tID3v2\tC:\\Music\\Abba\\Waterloo.mp3\n"
                                 "2\tID3v1\tC:\\Music\\Queen\\Bohemian Rhapsody.mp3\n"
                                 "3\tID3v2\tC:\\Music\\Abba\\SOS.mp3\n"
                                 "5\tID3v0\t  C:\\Music\\Beatles\\Help.mp3  \n"
                                 "6\tID3v2\tC:\\Music\\Queen\\Innuendo.mp3\n"));
    QVERIFY(run.err.isEmpty());

    const Run old = runTool({"list", dataFile("cp1252.txt")});
    QCOMPARE(QString::fromUtf8(old.out), QStringLiteral("1\tID3v2\tC:\\Musik\\Motörhead\\Ace of Spades.mp3\n"
                                                        "2\tID3v0\tC:\\Musik\\Björk – Jóga.mp3\n"));
}

void tst_Cli::listJson_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("outcome");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QList<int>>("ordinals");
    QTest::addColumn<QList<int>>("skippedLines");

    QTest::newRow("loaded") << dataFile("mixed.vzt") << "Loaded" << 0 << QList<int>{1, 2, 3, 5, 6}
                            << QList<int>();
    QTest::newRow("no problems") << dataFile("noproblems.vzt") << "NoProblems" << 0 << QList<int>()
                                 << QList<int>();
    QTest::newRow("corrupted") << dataFile("corrupted.txt") << "Corrupted" << 1 << QList<int>()
                               << QList<int>();
    QTest::newRow("ended early") << dataFile("endedearly.vzt") << "EndedEarly" << 1 << QList<int>{1, 2}
                                 << QList<int>();
    QTest::newRow("skipped record") << dataFile("skipped.vzt") << "Loaded" << 0 << QList<int>{1}
                                    << QList<int>{15};
}

void tst_Cli::listJson() {
    QFETCH(QString, file);
    QFETCH(QString, outcome);
    QFETCH(int, exitCode);
    QFETCH(QList<int>, ordinals);
    QFETCH(QList<int>, skippedLines);

    const Run run = runTool({"list", "--json", file});
    QCOMPARE(run.exitCode, exitCode);
    QJsonParseError error;
    const QJsonObject root = QJsonDocument::fromJson(run.out, &error).object();
    QCOMPARE(error.error, QJsonParseError::NoError);
    QCOMPARE(root.value("outcome").toString(), outcome);
    QList<int> gotOrdinals;
    for (const QJsonValue& entry : root.value("entries").toArray()) {
        const QJsonObject object = entry.toObject();
        gotOrdinals << object.value("ordinal").toInt();
        QCOMPARE(object.value("code").toString(), QStringLiteral("ID3v%1").arg(object.value("kind").toInt()));
        QVERIFY(!object.value("path").toString().isEmpty());
    }
    QCOMPARE(gotOrdinals, ordinals);
    QList<int> gotSkipped;
    for (const QJsonValue& line : root.value("skippedLines").toArray()) {
        gotSkipped << line.toInt();
    }
    QCOMPARE(gotSkipped, skippedLines);
}

void tst_Cli::check_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("summary");

    QTest::newRow("loaded") << dataFile("mixed.vzt")
                            << "Loaded: 5 files (ID3v1 1, ID3v2 3, ID3v0 1), skipped records: 0\n";
    QTest::newRow("ended early")
        << dataFile("endedearly.vzt")
        << "EndedEarly: 2 files (ID3v1 1, ID3v2 1, ID3v0 0), skipped records: 0, ended "
           "before line 15\n";
    QTest::newRow("one skipped") << dataFile("skipped.vzt")
                                 << "Loaded: 1 file (ID3v1 1, ID3v2 0, ID3v0 0), skipped records: 1\n";
}

void tst_Cli::check() {
    QFETCH(QString, file);
    QFETCH(QString, summary);
    QCOMPARE(QString::fromUtf8(runTool({"check", file}).out), summary);
}

void tst_Cli::hugeFileWithoutLineBreak() {
    QTemporaryDir dir;
    QFile file(dir.filePath("huge.vzt"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(qint64(2) << 30)); // sparse: no disk space used
    file.close();

    QElapsedTimer timer;
    timer.start();
    const Run run = runTool({"list", "--json", file.fileName()});
    QCOMPARE(run.exitCode, 1);
    QCOMPARE(run.out, QByteArray("{\"entries\":[],\"outcome\":\"Corrupted\",\"skippedLines\":[]}\n"));
    QVERIFY2(timer.elapsed() < 10000, "the first line alone decides, so the rest must not be read");
}

QTEST_GUILESS_MAIN(tst_Cli)
#include "tst_cli.moc"
