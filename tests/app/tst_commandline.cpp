#include "TestData.h"
#include "Version.h"
#include "app/CommandLine.h"

#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace zentoria;

namespace {

// The real program, started offscreen in a folder and a per-user folder of the test's.
struct Program {
    QTemporaryDir folder;
    QProcess process;

    void start(const QStringList& arguments) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        environment.insert("XDG_CONFIG_HOME", folder.filePath("config"));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder.path());
        process.start(ZENTORIA_BINARY, arguments);
    }
    QString stored(const char* key) const {
        const QSettings settings(folder.filePath("config/zentoria.conf"), QSettings::IniFormat);
        return settings.value(QStringLiteral("Preferences/") + QLatin1StringView(key)).toString();
    }
};

} // namespace

class tst_CommandLine : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void answers_data() {
        addColumns<QString, QString>("text", "starts");

        // What the options print is checked on the real program below.
        addRow("--help", "--help", "Usage: zentoria [REPORT]");
        addRow("a path", "C:\\Music\\report.vzt", QString());
        addRow("--help with more", "--help me", QString());
        addRow("--HELP", "--HELP", QString());
        addRow("nothing", "", QString());
    }

    void answers() {
        QFETCH(QString, text);
        QFETCH(QString, starts);

        const std::optional<QString> answer = commandLineAnswer(text);
        QCOMPARE(answer.has_value(), !starts.isEmpty());
        if (answer) {
            QVERIFY(answer->startsWith(starts));
        }
    }

    void printsAndExits_data() {
        addColumns<QString, QString>("option", "output");

        addRow("--help", "--help", "Usage: zentoria [REPORT]");
        addRow("-h", "-h", "Usage: zentoria [REPORT]");
        addRow("--version", "--version", "zentoria " ZENTORIA_VERSION "\n");
    }

    void printsAndExits() {
        QFETCH(QString, option);
        QFETCH(QString, output);

        Program program;
        // No display is needed to answer.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove("QT_QPA_PLATFORM");
        environment.remove("DISPLAY");
        environment.remove("WAYLAND_DISPLAY");
        program.process.setProcessEnvironment(environment);
        program.process.start(ZENTORIA_BINARY, {option});
        QVERIFY(program.process.waitForFinished(10000));
        QCOMPARE(program.process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.process.exitCode(), 0);
        QVERIFY(QString::fromUtf8(program.process.readAllStandardOutput()).startsWith(output));
        QCOMPARE(program.process.readAllStandardError(), QByteArray());
    }

    void aReportNamedLikeAnOption() {
        Program program;
        QVERIFY(QFile::copy(dataFile("mixed.vzt"), program.folder.filePath("--help")));
        QVERIFY(!commandLineAnswer(program.folder.filePath("--help")));
        program.start({"--help"});
        QVERIFY(program.process.waitForStarted());
        // The program runs with the report open; past its splash, the main window shows.
        QVERIFY(!program.process.waitForFinished(1500));
        QCOMPARE(program.process.readAllStandardOutput(), QByteArray());

        // A logout ends it the way File > Quit does: the window's placement is kept.
        ::kill(pid_t(program.process.processId()), SIGTERM);
        QVERIFY(program.process.waitForFinished(10000));
        QCOMPARE(program.process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.process.exitCode(), 0);
        QCOMPARE(program.stored("Width"), QStringLiteral("12000"));
        QCOMPARE(program.stored("Maximized"), QStringLiteral("0"));
    }
};

QTEST_MAIN(tst_CommandLine)
#include "tst_commandline.moc"
