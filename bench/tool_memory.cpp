#include "../tests/report/ReportBuilder.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// The peak memory of zentoria-report listing the largest report with long paths; fails when the
// output waits for the whole report instead of streaming.
class ToolMemory : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void outputStreamsInBoundedMemory();

private:
    QTemporaryDir m_dir;
};

void ToolMemory::outputStreamsInBoundedMemory() {
    // The most records a report can have, with long paths: about 50 MB of paths, which a tool holding
    // the whole report keeps twice over (as text and as output).
    const int records = 32766;
    const QByteArray folder = "C:\\M\xC3\xBCsik\\" + QByteArray(1500, 'a') + "\\";
    QFile report(m_dir.filePath("large.vzt"));
    QVERIFY(report.open(QIODevice::WriteOnly));
    report.write(ReportBuilder().start().bytes());
    for (int i = 1; i <= records; ++i) {
        report.write(ReportBuilder()
                         .record(folder + QByteArray::number(i) + ".mp3",
                                 "  Melvadex could not get the ID3v2 information")
                         .bytes());
    }
    report.write(ReportBuilder().closing().bytes());
    report.close();

    // GNU time measures the tool alone: a child's own peak would count the pages of the test it was
    // forked from.
    const QString time = QStringLiteral("/usr/bin/time");
    if (!QFileInfo(time).isExecutable()) {
        QSKIP("GNU time is missing (scripts/bootstrap installs it)");
    }
    QProcess tool;
    // Under AddressSanitizer freed memory waits in a quarantine of up to 256 MB, which would count
    // as the tool's own; without it the instrumented tool stays within the same bound.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString asan = environment.value(QStringLiteral("ASAN_OPTIONS"));
    environment.insert(QStringLiteral("ASAN_OPTIONS"),
                       (asan.isEmpty() ? QString() : asan + QLatin1Char(':')) +
                           QStringLiteral("quarantine_size_mb=0"));
    tool.setProcessEnvironment(environment);
    tool.setStandardOutputFile(m_dir.filePath("large.json"));
    tool.start(time, {"-f", "%M", "-o", m_dir.filePath("peak.txt"), ZENTORIA_REPORT_TOOL, "list", "--json",
                      report.fileName()});
    QVERIFY(tool.waitForFinished(120000));
    QCOMPARE(tool.exitCode(), 0);
    QFile peak(m_dir.filePath("peak.txt"));
    QVERIFY(peak.open(QIODevice::ReadOnly));
    const qint64 peakKiB = peak.readAll().trimmed().toLongLong();
    qInfo("peak memory of zentoria-report: %lld KiB", peakKiB);
    QVERIFY(peakKiB > 0);
    QVERIFY2(peakKiB <= 32 * 1024, "the output must stream, not wait for the whole report");

    QFile output(m_dir.filePath("large.json"));
    QVERIFY(output.open(QIODevice::ReadOnly));
    const QJsonArray entries = QJsonDocument::fromJson(output.readAll()).object().value("entries").toArray();
    QCOMPARE(entries.size(), records);
    QCOMPARE(entries.last().toObject().value("path").toString(),
             QString::fromUtf8(folder) + QStringLiteral("32766.mp3"));
}

QTEST_GUILESS_MAIN(ToolMemory)
#include "tool_memory.moc"
