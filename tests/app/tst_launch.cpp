#include "TestData.h"
#include "Version.h"
#include "app/CommandLine.h"
#include "app/Startup.h"
#include "settings/SettingsStore.h"
#include "ui/main/frmMain.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>
#include <QTemporaryDir>

#include <csignal>

using namespace zentoria;

namespace {

constexpr char kStartMode[] = "--start-and-report";

// The child of the screen tests: starts the program as its executable does and prints where its window
// is, frame included, and the available area of the screen it is on.
int startAndReport(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zentoria"));
    const std::unique_ptr<frmMain> window = Main({QStringLiteral("zentoria")});
    if (!QTest::qWaitForWindowExposed(window.get())) {
        return 1;
    }
    QTest::qWait(50);
    const QRect frame = window->frameGeometry();
    const QRect area = window->screen()->availableGeometry();
    std::printf("%d %d %d %d %d %d %d %d %s\n", frame.x(), frame.y(), frame.width(), frame.height(), area.x(),
                area.y(), area.width(), area.height(), qPrintable(window->screen()->name()));
    return 0;
}

QJsonObject screen(const QString& name, int x, int y, int width, int height) {
    return {{"name", name},         {"x", x},           {"y", y},
            {"width", width},       {"height", height}, {"logicalDpi", 96},
            {"logicalBaseDpi", 96}, {"dpr", 1.0}};
}

// A program started offscreen in a folder and a per-user folder of the test's, where the test's own
// settings go too.
struct Program {
    QTemporaryDir folder;
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();

    Program() {
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder.filePath("config")));
        environment.insert("XDG_CONFIG_HOME", folder.filePath("config"));
        environment.insert("QT_QPA_PLATFORM", "offscreen");
    }
    void start(const QString& binary, const QStringList& arguments) {
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder.path());
        process.start(binary, arguments);
    }
    QString stored(const char* key) const {
        const QSettings settings(folder.filePath("config/zentoria.conf"), QSettings::IniFormat);
        return settings.value(QStringLiteral("Preferences/") + QLatin1StringView(key)).toString();
    }
};

} // namespace

class tst_Launch : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void noAnswer() {
        // What the options print is checked on the real program below.
        for (const QString text : {"C:\\Music\\report.vzt", "--help me", "--HELP", ""}) {
            QVERIFY2(!commandLineAnswer(text), qPrintable(text));
        }
    }

    void printsAndExits() {
        for (const auto& [option, output] : {std::pair{"--help", "Usage: zentoria [REPORT]"},
                                             {"-h", "Usage: zentoria [REPORT]"},
                                             {"--version", "zentoria " ZENTORIA_VERSION "\n"}}) {
            QVERIFY2(commandLineAnswer(option).value_or(QString()).startsWith(output), option);
            Program program;
            // No display is needed to answer.
            for (const char* display : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
                program.environment.remove(display);
            }
            program.start(ZENTORIA_BINARY, {option});
            QVERIFY(program.process.waitForFinished(10000));
            QCOMPARE(program.process.exitStatus(), QProcess::NormalExit);
            QCOMPARE(program.process.exitCode(), 0);
            QVERIFY(QString::fromUtf8(program.process.readAllStandardOutput()).startsWith(output));
            QCOMPARE(program.process.readAllStandardError(), QByteArray());
        }
    }

    void aReportNamedLikeAnOption() {
        Program program;
        QVERIFY(QFile::copy(dataFile("mixed.vzt"), program.folder.filePath("--help")));
        QVERIFY(!commandLineAnswer(program.folder.filePath("--help")));
        program.start(ZENTORIA_BINARY, {"--help"});
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

    void windowFitsItsScreen_data() {
        addColumns<QJsonArray, QString>("screens", "scale");
        // The stored placement in twips: left, top, width, height; empty for a first run.
        addColumns<QStringList, QString>("placement", "screenName");
        // The window's outer size, or an empty size where only its fit matters.
        QTest::addColumn<QSize>("size");

        const QJsonArray laptop{screen("laptop", 0, 0, 1600, 1000)};
        addRow("2x on 1600 x 1000, first run", laptop, "2", QStringList{}, "laptop", QSize());
        // A least window size larger than the screen would push the list off it.
        addRow("2x on 800 x 600, first run", QJsonArray{screen("tiny", 0, 0, 800, 600)}, "2", QStringList{},
               "tiny", QSize());
        addRow("2x on 1600 x 1000, a placement from 1x", laptop, "2",
               QStringList{"45", "465", "24000", "14700"}, "laptop", QSize(800, 500));
        addRow("larger than the screen", QJsonArray{screen("small", 0, 0, 1024, 600)}, "1",
               QStringList{"0", "0", "30000", "20000"}, "small", QSize(1024, 600));
        addRow("partly past the right edge", QJsonArray{screen("small", 0, 0, 1024, 768)}, "1",
               QStringList{"13500", "300", "12000", "7350"}, "small", QSize(800, 490));
        const QJsonArray two{screen("left", 0, 0, 1024, 768), screen("right", 1024, 0, 1280, 1024)};
        addRow("on the second screen", two, "1", QStringList{"16500", "1500", "12000", "7350"}, "right",
               QSize(800, 490));
        addRow("past the second screen's bottom", two, "1", QStringList{"16500", "12000", "12000", "7350"},
               "right", QSize(800, 490));
    }

    void windowFitsItsScreen() {
        QFETCH(QJsonArray, screens);
        QFETCH(QString, scale);
        QFETCH(QStringList, placement);
        QFETCH(QString, screenName);
        QFETCH(QSize, size);

        Program child;
        const QString config = child.folder.filePath("screens.json");
        QVERIFY(writeFile(config, QJsonDocument(QJsonObject{{"screens", screens}}).toJson()));
        const char* keys[] = {"Left", "Top", "Width", "Height"};
        for (int i = 0; i < placement.size(); ++i) {
            writeSetting(thisProgram(), "Preferences", keys[i], placement[i]);
        }
        child.environment.insert("QT_QPA_PLATFORM", "offscreen:configfile=" + config);
        child.environment.insert("QT_SCALE_FACTOR", scale);
        child.start(QCoreApplication::applicationFilePath(), {kStartMode});
        QVERIFY(child.process.waitForFinished(30000));
        QVERIFY2(child.process.exitCode() == 0, child.process.readAllStandardError().constData());
        const QList<QByteArray> figures = child.process.readAllStandardOutput().simplified().split(' ');
        QCOMPARE(figures.size(), 9);
        const QRect frame(figures[0].toInt(), figures[1].toInt(), figures[2].toInt(), figures[3].toInt());
        const QRect area(figures[4].toInt(), figures[5].toInt(), figures[6].toInt(), figures[7].toInt());

        QCOMPARE(QString::fromUtf8(figures[8]), screenName);
        QVERIFY2(area.contains(frame), qPrintable(QDebug::toString(frame) + " on " + QDebug::toString(area)));
        if (size.isValid()) {
            QCOMPARE(frame.size(), size);
        }
    }
};

int main(int argc, char** argv) {
    if (argc >= 2 && qstrcmp(argv[1], kStartMode) == 0) {
        return startAndReport(argc, argv);
    }
    QCoreApplication app(argc, argv);
    tst_Launch test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_launch.moc"
