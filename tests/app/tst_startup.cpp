#include "TestData.h"
#include "app/Startup.h"
#include "app/TerminationSignals.h"
#include "settings/Globals.h"
#include "settings/SettingsStore.h"
#include "shell/ListScrollHook.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/ImageList.h"
#include "ui/common/Twips.h"
#include "ui/document/ReportDocument.h"
#include "ui/main/frmMain.h"

#include <QAbstractScrollArea>
#include <QAction>
#include <QDialogButtonBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTextBrowser>

#include <csignal>

using namespace zentoria;

namespace {

// Starts the program in-process and waits until its splash has closed and shown the main window;
// its messages are collected instead of shown, marked when the window was not on screen for them.
std::unique_ptr<frmMain> start(const QStringList& arguments, QStringList& messages) {
    StartUpHooks hooks;
    hooks.mainWindowCreated = [&messages](frmMain& window) {
        window.messageBoxes().setAnswerer([&messages, &window](const QString& text) {
            const auto* splash = window.findChild<QWidget*>("frmSplash");
            const bool inFront = window.isVisible() && !(splash && splash->isVisible());
            messages << (inFront ? text : "(behind the splash) " + text);
        });
    };
    std::unique_ptr<frmMain> window = Main(arguments, hooks);
    // The main window is hidden until the splash closes: close it now, as Escape would.
    if (auto* splash = window->findChild<QWidget*>("frmSplash")) {
        QTest::keyClick(splash, Qt::Key_Escape);
    }
    return window;
}

QString stored(const char* key) {
    return readSetting(thisProgram(), "Preferences", key, {});
}

QString twips(int pixels, const QWidget* window) {
    return QString::number(float(pixelsToTwips(pixels, logicalDpi(window))));
}

} // namespace

class tst_StartUp : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        // Each test starts as a first run, in a per-user folder of its own.
        m_home = std::make_unique<QTemporaryDir>();
        qputenv("XDG_CONFIG_HOME", m_home->path().toLocal8Bit());
    }

    void opensCommandLineReport_data() {
        addColumns<QStringList, QString>("arguments", "message");

        static QTemporaryDir dir;
        QDir().mkpath(dir.filePath("my reports"));
        QFile::copy(dataFile("corrupted.txt"), dir.filePath("my reports/old report.txt"));
        const QString quoted = dir.filePath("my reports/my \"best\" report.vzt");
        QFile::copy(dataFile("corrupted.txt"), quoted);
        const QString corrupted = "The file is corrupted";

        addRow("plain path", QStringList{"zentoria", dataFile("corrupted.txt")}, corrupted);
        addRow("quoted path with blanks, split",
               QStringList{"zentoria", "\"" + dir.filePath("my"), "reports/old", "report.txt\""}, corrupted);
        addRow("a name with double quotes", QStringList{"zentoria", quoted}, corrupted);
        addRow("two paths are one", QStringList{"zentoria", dataFile("mixed.vzt"), dataFile("second.vzt")},
               "The report \"" + dataFile("mixed.vzt") + " " + dataFile("second.vzt") +
                   "\" cannot be opened: No such file or directory.");
    }

    void opensCommandLineReport() {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);

        QStringList shown;
        const auto window = start(arguments, shown);
        QCOMPARE(shown, QStringList{message});
        QVERIFY(window->isVisible());
        const QString title = QString(window->messageBoxes().lastTitle()).remove(u'"');
        QVERIFY2(title.contains(QFileInfo(arguments.last().remove('"')).fileName()), qPrintable(title));
    }

    // A start, first or with stored settings: the language of the menus, of Qt's buttons and of the help;
    // the tree's width and the view; and, whatever is stored, the panel and the help as they start.
    void startsAsStored_data() {
        addColumns<QString, QStringList, QString, QString, int, bool>(
            "languageFile", "captions", "treeWidth", "webStyle", "expectedWidth", "expectedWebStyle");

        addRow("first run", "",
               QStringList{"&File", "&Open", "&Quit", "&Tools", "WebStyle", "&Help", "Contents", "Address"},
               "", "", 3000, true);
        // The English file gives every menu item an access key, where the built-in captions do not.
        addRow("English, stored", ZENTORIA_SOURCE_DIR "/examples/languages/English.ini",
               QStringList{"&File", "&Open", "&Quit", "&Tools", "&WebStyle", "&Help", "&Contents", "Address"},
               "2800", "0", 2800, false);
        // Widths edited by hand into what no window can show are repaired by the first layout pass.
        addRow("Deutsch, negative width", ZENTORIA_SOURCE_DIR "/examples/languages/Deutsch.ini",
               QStringList{"&Datei", "Ö&ffnen", "&Beenden", "&Extras", "&Webansicht", "&Hilfe", "&Inhalt",
                           "Adresse"},
               "-500", "1", 3000, true);
        addRow(
            "partial, lower-case keys; width not a number", ZENTORIA_TEST_DATA "/tricky.ini",
            QStringList{"&Datei", "Ö&ffnen", "&Quit", "&Extras", "WebStyle", "&Hilfe", "Contents", "Address"},
            "NaN", "0", 3000, false);
    }

    void startsAsStored() {
        QFETCH(QString, languageFile);
        QFETCH(QStringList, captions);
        QFETCH(QString, treeWidth);
        QFETCH(QString, webStyle);
        QFETCH(int, expectedWidth);
        QFETCH(bool, expectedWebStyle);

        // The "Language" setting is relative to the program's folder.
        const QString setting =
            languageFile.isEmpty() ? QString() : QDir(GetAppPath()).relativeFilePath(languageFile);
        if (!languageFile.isEmpty()) {
            writeSetting("Melvadex", "Preferences", "Language", setting);
            writeSetting(thisProgram(), "Preferences", "Initial TV Width", treeWidth);
            writeSetting(thisProgram(), "Preferences", "WebStyle", webStyle);
        }
        QStringList messages;
        const auto window = start({"zentoria"}, messages);
        QVERIFY(window->isVisible());
        QVERIFY(messages.isEmpty());
        QCOMPARE(globals().HelpFile, QCoreApplication::applicationDirPath() + "/Brantwell.hlp");
        QCOMPARE(globals().LanguageFile, QCoreApplication::applicationDirPath() + '/' + setting);
        QCOMPARE(QFileInfo(globals().LanguageFile).canonicalFilePath(),
                 QFileInfo(languageFile.isEmpty() ? GetAppPath() : languageFile).canonicalFilePath());
        // The file-type icons follow the eight images of the design, whatever the desktop offers.
        const auto* images = window->findChild<ImageList*>("ImgDirTree");
        QCOMPARE(images->indexOf("MP3"), 9);
        QCOMPARE(images->indexOf("M3U"), 10);
        // The panel as the program starts: the MP3 icon with its stack, the program's name, no item text.
        QVERIFY(!window->findChild<QLabel*>("ImgIcon")->pixmap().isNull());
        QCOMPARE(window->findChild<CaptionLabel*>("lblWebFolder")->caption(), QStringLiteral("Zentoria"));
        for (const char* field : {"WebItemName", "WebItemType", "WebToolTip", "lblInfo", "WEPath"}) {
            QVERIFY2(window->findChild<CaptionLabel*>(field)->caption().isEmpty(), field);
        }
        QVERIFY(!QGuiApplication::overrideCursor());
        QStringList shown;
        for (const char* name : {"mnuFile", "submnuOpen", "submnuExit", "mnuTools", "submnuWebStyle",
                                 "mnuHelp", "submnuShowHelp"}) {
            shown << window->findChild<QAction*>(name)->text();
        }
        shown << window->findChild<CaptionLabel*>("lblAddress")->caption();
        QCOMPARE(shown, captions);
        QCOMPARE(window->findChild<QMenu*>("mnuFile")->title(), captions.first());
        QCOMPARE(globals().InitialTVWidth, expectedWidth);
        // Start-up lays the window out, and a pass that completes saves the width it used.
        QCOMPARE(stored("Initial TV Width"), QString::number(expectedWidth));
        QCOMPARE(window->WebStyle, expectedWebStyle);
        QCOMPARE(window->findChild<QAction*>("submnuWebStyle")->isChecked(), expectedWebStyle);
        // Qt's own buttons speak the language file's language too.
        const bool german = languageFile.endsWith("Deutsch.ini");
        QCOMPARE(QDialogButtonBox(QDialogButtonBox::Cancel).button(QDialogButtonBox::Cancel)->text(),
                 german ? "Abbrechen" : "Cancel");

        // And so does the manual that ships inside the program, shown by Help > Contents.
        window->findChild<QAction*>("submnuShowHelp")->trigger();
        auto* viewer = window->findChild<QTextBrowser*>("HelpViewer");
        QVERIFY(viewer);
        QVERIFY(viewer->isVisible());
        for (const QString& topic :
             german ? QStringList{"Einen Bericht öffnen"}
                    : QStringList{"Opening a report", "Check Folder", "Check Listed Files Again",
                                  "Save Report As", "Tools > Preferences"}) {
            QVERIFY2(viewer->toPlainText().contains(topic), qPrintable(topic));
        }
        QCOMPARE(viewer->windowTitle(), german ? "Hilfe — Zentoria" : "Help — Zentoria");
        // A window that only shows text closes with Escape, and with the main window.
        QVERIFY(QTest::qWaitForWindowExposed(viewer));
        viewer->activateWindow();
        QTRY_VERIFY(viewer->isActiveWindow());
        QTest::keyClick(viewer, Qt::Key_Escape);
        QTRY_VERIFY(!viewer->isVisible());
        // Shown again, one window, and all of it on the screen, however large it was left.
        viewer->resize(viewer->screen()->availableGeometry().size() * 2);
        window->findChild<QAction*>("submnuShowHelp")->trigger();
        QCOMPARE(window->findChildren<QTextBrowser*>().size(), 1);
        QVERIFY(viewer->screen()->availableGeometry().contains(viewer->frameGeometry()));
        window->close();
        QVERIFY(!viewer->isVisible());
    }

    // However the window closes, the next start puts it where it was and the tree as wide as it was; a
    // maximized window keeps its normal place too. A logout does not wait for an answer: the unsaved
    // result is kept, and the next start says where.
    void closingKeepsTheWindow_data() {
        addColumns<QString>("how");
        for (const char* how : {"File > Quit", "the close box", "maximized", "a logout"}) {
            addRow(how, QString(how));
        }
    }

    void closingKeepsTheWindow() {
        QFETCH(QString, how);
        const bool maximized = how == "maximized";

        QStringList messages;
        QRect frame;
        {
            const std::unique_ptr<frmMain> window = start({"zentoria"}, messages);
            QVERIFY(window->isVisible());
            window->move(70, 40);
            window->resize(700, 430);
            globals().InitialTVWidth = 2610;
            QTRY_COMPARE(window->size(), QSize(700, 430));
            frame = window->frameGeometry();
            if (maximized) {
                window->showMaximized();
                QTRY_VERIFY(window->isMaximized());
            }
            auto* list = window->findChild<QAbstractScrollArea*>("LV");
            QVERIFY(isHooked(list));
            if (how == "a logout") {
                closeOnTermination(*window);
                window->document().showResult({{1, ProblemKind::ID3v2, "/music/a.mp3"}}, "Check of /music",
                                              {}, ReportDocument::Source::Check);
                ::raise(SIGTERM);
                QTRY_VERIFY(!window->isVisible());
            } else if (how == "File > Quit") {
                window->findChild<QAction*>("submnuExit")->trigger();
            } else {
                window->close();
            }
            QVERIFY(!window->isVisible());
            QVERIFY(!isHooked(list));
            QCOMPARE(messages, QStringList());
            QCOMPARE(stored("Initial TV Width"), QStringLiteral("2610"));
            QCOMPARE(stored("Width"), twips(frame.width(), window.get()));
            QCOMPARE(stored("Height"), twips(frame.height(), window.get()));
            QCOMPARE(stored("Top"), twips(frame.y(), window.get()));
            QCOMPARE(stored("Left"), twips(frame.x(), window.get()));
            QCOMPARE(stored("Maximized"), QString(maximized ? "1" : "0"));
        }

        const std::unique_ptr<frmMain> again = start({"zentoria"}, messages);
        if (maximized) {
            QTRY_VERIFY(again->isMaximized());
        } else {
            QCOMPARE(again->frameGeometry(), frame);
        }
        QCOMPARE(globals().InitialTVWidth, 2610);
        QCOMPARE(messages.size(), how == "a logout" ? 1 : 0);
        if (how == "a logout") {
            const QString kept = messages.first().section(u'"', 1, 1);
            QVERIFY2(messages.first().contains("was not saved") && QFileInfo(kept).isFile(),
                     qPrintable(messages.first()));
            QCOMPARE(again->findChild<QAction*>("submnuRecent1")->data().toString(), kept);
            QString file = kept;
            again->OpenFile(file);
            QCOMPARE(again->document().entries(),
                     (QList<ReportEntry>{{1, ProblemKind::ID3v2, "/music/a.mp3"}}));
            // Told once: the kept report has a name of its own now.
            QCOMPARE((start({"zentoria"}, messages), messages.size()), 1);
        }
    }

private:
    std::unique_ptr<QTemporaryDir> m_home;
};

QTEST_MAIN(tst_StartUp)
#include "tst_startup.moc"
