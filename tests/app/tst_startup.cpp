#include "app/HelpViewer.h"
#include "app/Startup.h"
#include "settings/Globals.h"
#include "ui/common/CaptionLabel.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>

using namespace zentoria;

namespace {

QString dataFile(const char* name) {
    return QStringLiteral(ZENTORIA_TEST_DATA "/") + QLatin1StringView(name);
}

// Starts the program in-process; its messages are collected instead of shown.
std::unique_ptr<frmMain> start(const QStringList& arguments, QStringList& messages) {
    StartUpHooks hooks;
    hooks.mainWindowCreated = [&messages](frmMain& window) {
        window.messageBoxes().setAnswerer([&messages](const QString& text) { messages << text; });
    };
    return Main(arguments, hooks);
}

} // namespace

class tst_StartUp : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void commandLineText_data();
    void commandLineText();
    void appPath_data();
    void appPath();
    void startsWithoutReport();
    void opensCommandLineReport_data();
    void opensCommandLineReport();
    void helpContents();
};

void tst_StartUp::commandLineText_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("text");

    QTest::newRow("none") << QStringList{"zentoria"} << "";
    QTest::newRow("one") << QStringList{"zentoria", "/music/r.vzt"} << "/music/r.vzt";
    QTest::newRow("split by the shell")
        << QStringList{"zentoria", "\"/my", "music/r.vzt\""} << "\"/my music/r.vzt\"";
    QTest::newRow("empty argument") << QStringList{"zentoria", ""} << "";
    QTest::newRow("two empty arguments") << QStringList{"zentoria", "", ""} << " ";
}

void tst_StartUp::commandLineText() {
    QFETCH(QStringList, arguments);
    QFETCH(QString, text);
    QCOMPARE(rawCommandLine(arguments), text);
}

void tst_StartUp::appPath_data() {
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("path");

    QTest::newRow("root") << "/"
                          << "";
    QTest::newRow("plain") << "/usr/bin"
                           << "/usr/bin";
    QTest::newRow("trailing separator") << "/opt/zentoria/"
                                        << "/opt/zentoria";
}

void tst_StartUp::appPath() {
    QFETCH(QString, folder);
    QFETCH(QString, path);
    QCOMPARE(withoutTrailingSeparator(folder), path);
    QCOMPARE(withoutTrailingSeparator(folder) + "/Brantwell.hlp", path + "/Brantwell.hlp");
}

void tst_StartUp::startsWithoutReport() {
    QStringList messages;
    const auto window = start({"zentoria"}, messages);
    QVERIFY(window->isVisible());
    QVERIFY(messages.isEmpty());
    QCOMPARE(globals().HelpFile, QCoreApplication::applicationDirPath() + "/Brantwell.hlp");
    QCOMPARE(globals().LanguageFile, QCoreApplication::applicationDirPath() + "/");
    QCOMPARE(globals().InitialTVWidth, 3000);
    QVERIFY(window->WebStyle);
    QVERIFY(window->findChild<QAction*>("submnuWebStyle")->isChecked());
    QCOMPARE(window->findChild<CaptionLabel*>("WEPath")->caption(), QString());
    QVERIFY(window->findChild<QWidget*>("TV")->isVisible());
    QVERIFY(window->findChild<QWidget*>("LV")->isVisible());
    QVERIFY(!QGuiApplication::overrideCursor());
}

void tst_StartUp::opensCommandLineReport_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("messages");

    QTemporaryDir* dir = new QTemporaryDir;
    dir->setAutoRemove(true);
    connect(this, &QObject::destroyed, [dir] { delete dir; });
    QDir().mkpath(dir->filePath("my reports"));
    const QString spaced = dir->filePath("my reports/old report.txt");
    QFile::copy(dataFile("corrupted.txt"), spaced);

    QTest::newRow("plain path") << QStringList{"zentoria", dataFile("corrupted.txt")}
                                << QStringList{"The file is corrupted"};
    QTest::newRow("quoted path with blanks, split")
        << QStringList{"zentoria", "\"" + dir->filePath("my"), "reports/old", "report.txt\""}
        << QStringList{"The file is corrupted"};
    QTest::newRow("two paths are one")
        << QStringList{"zentoria", dataFile("mixed.vzt"), dataFile("second.vzt")}
        << QStringList{"The report \"" + dataFile("mixed.vzt") + " " + dataFile("second.vzt") +
                       "\" cannot be opened: No such file or directory."};
}

void tst_StartUp::opensCommandLineReport() {
    QFETCH(QStringList, arguments);
    QFETCH(QStringList, messages);

    QStringList shown;
    const auto window = start(arguments, shown);
    QCOMPARE(shown, messages);
    QVERIFY(window->isVisible());
}

void tst_StartUp::helpContents() {
    QStringList messages;
    const auto window = start({"zentoria"}, messages);
    QCOMPARE(helpResourceFor(globals().HelpFile), QStringLiteral(":/help/Brantwell.html"));
    window->findChild<QAction*>("submnuShowHelp")->trigger();
    auto* viewer = window->findChild<QTextBrowser*>("HelpViewer");
    QVERIFY(viewer);
    QVERIFY(viewer->isVisible());
    QVERIFY(viewer->toPlainText().contains("Opening a report"));
    window->close();
    QVERIFY(!viewer->isVisible());
}

QTEST_MAIN(tst_StartUp)
#include "tst_startup.moc"
