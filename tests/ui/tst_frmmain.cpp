#include "MainWindowFixture.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/CommonDialog.h"
#include "ui/common/Twips.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <sys/stat.h>

using namespace zentoria;

using Window = MainWindowFixture;

class tst_frmMain : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void controls_data();
    void controls();
    void creationOrder_data();
    void creationOrder();
    void menus_data();
    void menus();
    void shortcuts_data();
    void shortcuts();
    void loadSequence();
    void statusBar();
    void openFileMessages_data();
    void openFileMessages();
    void openFileRemovesQuotes();
    void refusedFilesKeepTheReport_data();
    void refusedFilesKeepTheReport();
    void fileOpenDialog();
    void fileOpenCancelled();
    void quitClosesTheWindow();
    void helpContents();
    void messageBoxLooks();
    void captionsArePlainText_data();
    void captionsArePlainText();
};

void tst_frmMain::controls_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("container");
    QTest::addColumn<QRect>("design");

    // Design rectangles in twips; the "client" container is the window's client area.
    QTest::newRow("pctBorders") << "pctBorders"
                                << "zentoria::PictureBox"
                                << "client" << QRect(4440, 1080, 5775, 2775);
    QTest::newRow("vsbBack") << "vsbBack"
                             << "QScrollBar"
                             << "pctBorders" << QRect(5280, 0, 255, 6375);
    QTest::newRow("pctWeb") << "pctWeb"
                            << "zentoria::PictureBox"
                            << "pctBorders" << QRect(0, 0, 2895, 2655);
    QTest::newRow("ImgOthers") << "ImgOthers"
                               << "QLabel"
                               << "pctWeb" << QRect(720, 240, 480, 480);
    QTest::newRow("WebItemType") << "WebItemType"
                                 << "zentoria::CaptionLabel"
                                 << "pctWeb" << QRect(170, 1440, 2100, -1);
    QTest::newRow("ImgIcon") << "ImgIcon"
                             << "QLabel"
                             << "pctWeb" << QRect(195, 175, 480, 480);
    QTest::newRow("LV") << "LV"
                        << "QTreeView"
                        << "pctBorders" << QRect(3000, 0, 1935, 2685);
    QTest::newRow("SB") << "SB"
                        << "zentoria::StatusBar"
                        << "client" << QRect(0, 7335, 11880, 255);
    QTest::newRow("TBAddress") << "TBAddress"
                               << "QFrame"
                               << "client" << QRect(0, 375, 5055, 520);
    QTest::newRow("TBAD_Drag") << "TBAD_Drag"
                               << "zentoria::PictureBox"
                               << "TBAddress" << QRect(45, 150, 60, 330);
    QTest::newRow("WEPath") << "WEPath"
                            << "zentoria::CaptionLabel"
                            << "TBAddress"
                            << QRect(-1, 150, 2415, 320); // its left follows the address caption
    QTest::newRow("Separator") << "Separator"
                               << "zentoria::PictureBox"
                               << "client" << QRect(4200, 1080, 75, 5835);
    QTest::newRow("TV") << "TV"
                        << "QTreeView"
                        << "client" << QRect(0, 1080, 4215, 5775);
    QTest::newRow("pctToLoad") << "pctToLoad"
                               << "zentoria::PictureBox"
                               << "client" << QRect(9960, 0, 300, 300);
}

void tst_frmMain::controls() {
    QFETCH(QString, name);
    QFETCH(QString, kind);
    QFETCH(QString, container);
    QFETCH(QRect, design);

    frmMain window;
    auto* widget = window.findChild<QWidget*>(name);
    QVERIFY(widget);
    QVERIFY2(widget->inherits(kind.toLatin1()), widget->metaObject()->className());
    QCOMPARE(widget->parentWidget()->objectName(), container);
    const double dpi = logicalDpi(&window);
    // Labels that size themselves keep their design position and width; the height follows the text.
    const QRect expected =
        twipsRectToPixels(design.x(), design.y(), design.width(), qMax(design.height(), 0), dpi);
    if (design.x() >= 0) {
        QCOMPARE(widget->x(), expected.x());
    }
    QCOMPARE(widget->y(), expected.y());
    QCOMPARE(widget->width(), expected.width());
    if (design.height() >= 0) {
        QCOMPARE(widget->height(), expected.height());
    }
}

void tst_frmMain::creationOrder_data() {
    QTest::addColumn<QString>("container");
    QTest::addColumn<QStringList>("children");

    QTest::newRow("client") << "client"
                            << QStringList{"pctBorders", "SB", "pctToLoad", "TBAddress", "Separator", "TV"};
    // Created as vsbBack, pctWeb, LV; stacked bottom to top as the list, the panel over it and the
    // panel's scroll bar over both (children() lists them bottom to top).
    QTest::newRow("pctBorders") << "pctBorders" << QStringList{"LV", "pctWeb", "vsbBack"};
    QTest::newRow("pctWeb") << "pctWeb"
                            << QStringList{"pctWebLine",  "ImgOthers",  "lblInfo",     "lblWebFolder",
                                           "WebItemType", "WebToolTip", "WebItemName", "ImgIcon"};
    QTest::newRow("TBAddress") << "TBAddress" << QStringList{"TBAD_Drag", "WEPath", "lblAddress"};
}

void tst_frmMain::creationOrder() {
    QFETCH(QString, container);
    QFETCH(QStringList, children);

    frmMain window;
    auto* parent = window.findChild<QWidget*>(container);
    QVERIFY(parent);
    QStringList order;
    for (QObject* child : parent->children()) {
        if (child->isWidgetType() && !child->objectName().isEmpty() &&
            !child->objectName().startsWith("qt_")) {
            order << child->objectName();
        }
    }
    QCOMPARE(order, children);
}

void tst_frmMain::menus_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("menu");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<bool>("checked");

    QTest::newRow("mnuFile") << "mnuFile"
                             << ""
                             << "&File" << false;
    QTest::newRow("submnuOpen") << "submnuOpen"
                                << "mnuFile"
                                << "&Open" << false;
    QTest::newRow("submnuExit") << "submnuExit"
                                << "mnuFile"
                                << "&Quit" << false;
    QTest::newRow("mnuTools") << "mnuTools"
                              << ""
                              << "&Tools" << false;
    QTest::newRow("submnuWebStyle") << "submnuWebStyle"
                                    << "mnuTools"
                                    << "WebStyle" << true;
    QTest::newRow("mnuHelp") << "mnuHelp"
                             << ""
                             << "&Help" << false;
    QTest::newRow("submnuShowHelp") << "submnuShowHelp"
                                    << "mnuHelp"
                                    << "Contents" << false;
}

void tst_frmMain::menus() {
    QFETCH(QString, name);
    QFETCH(QString, menu);
    QFETCH(QString, caption);
    QFETCH(bool, checked);

    frmMain window;
    auto* action = window.findChild<QAction*>(name);
    QVERIFY(action);
    QCOMPARE(action->text(), caption);
    QCOMPARE(action->isChecked(), checked);
    if (menu.isEmpty()) {
        QVERIFY(window.menuBar()->actions().contains(action));
    } else {
        QVERIFY(window.findChild<QMenu*>(menu)->actions().contains(action));
    }
    QCOMPARE(window.windowTitle(), QStringLiteral("Melvadex's Zentoria"));
}

void tst_frmMain::shortcuts_data() {
    QTest::addColumn<QString>("action");
    QTest::addColumn<QKeySequence>("keys");

    QTest::newRow("Open") << "submnuOpen" << QKeySequence(Qt::CTRL | Qt::Key_O);
    QTest::newRow("Quit") << "submnuExit" << QKeySequence(Qt::CTRL | Qt::Key_Q);
    QTest::newRow("Contents") << "submnuShowHelp" << QKeySequence(Qt::Key_F1);
}

void tst_frmMain::shortcuts() {
    QFETCH(QString, action);
    QFETCH(QKeySequence, keys);

    Window w;
    w.window.findChild<CommonDialog*>("CMDlg")->setChooser([](const CommonDialog&) { return QString(); });
    w.window.show();
    QVERIFY(QTest::qWaitForWindowActive(&w.window));
    auto* target = w.window.findChild<QAction*>(action);
    QCOMPARE(target->shortcut(), keys);
    QSignalSpy triggered(target, &QAction::triggered);
    QTest::keySequence(&w.window, keys);
    QCOMPARE(triggered.count(), 1);
}

void tst_frmMain::loadSequence() {
    Window w;
    for (const char* name : {"submnuOpen", "submnuShowHelp", "submnuExit"}) {
        QVERIFY2(!w.child<QAction>(name)->icon().isNull(), name);
    }
    QVERIFY(w.child<QAction>("submnuWebStyle")->icon().isNull());
    QVERIFY(w.child<QLabel>("ImgIcon")->pixmap().isNull());
    QVERIFY(w.child<QLabel>("ImgOthers")->isHidden());
    QCOMPARE(w.child<CaptionLabel>("lblWebFolder")->caption(), QString());
    QCOMPARE(w.child<CaptionLabel>("WebToolTip")->caption(), QString());
    QCOMPARE(w.child<CaptionLabel>("lblInfo")->frameStyle(), int(QFrame::NoFrame));
    QCOMPARE(w.child<CaptionLabel>("lblAddress")->caption(), QStringLiteral("Address"));
    auto* timer = w.child<QTimer>("ShowSelectedItems");
    QVERIFY(timer->isActive());
    QCOMPARE(timer->interval(), 150);
}

void tst_frmMain::statusBar() {
    frmMain window;
    auto* bar = window.findChild<QWidget*>("SB");
    QStringList keys;
    for (auto* panel : bar->findChildren<QLabel*>(Qt::FindDirectChildrenOnly)) {
        keys << panel->objectName();
        QCOMPARE(panel->text(), panel->objectName() == "About" ? QStringLiteral("By Orsolt") : QString());
    }
    QCOMPARE(keys, (QStringList{"Playing", "PlayingStatus", "Blank", "About"}));
    QCOMPARE(bar->findChild<QLabel*>("About")->toolTip(), QStringLiteral("By Orsolt"));
}

void tst_frmMain::openFileMessages_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("messages");

    QTest::newRow("loaded") << dataFile("mixed.vzt") << QStringList();
    QTest::newRow("corrupted") << dataFile("corrupted.txt") << QStringList{"The file is corrupted"};
    QTest::newRow("no problems") << dataFile("noproblems.vzt")
                                 << QStringList{"The are no MP3 file with \"problems\" in this report."};
    QTest::newRow("ended early")
        << dataFile("endedearly.vzt")
        << QStringList{
               "\"" + dataFile("endedearly.vzt") +
               "\" was not read completely.\n\nThe report ends too early: it should go on at line 15 up to "
               "its "
               "closing \"Date of creation:\" line, but the file ends there. 2 files were read before it."};
    QTest::newRow("skipped record") << dataFile("skipped.vzt")
                                    << QStringList{
                                           "\"" + dataFile("skipped.vzt") +
                                           "\" was not read completely.\n\n1 line does not fit the report "
                                           "format, so its record was skipped (line 15)."};
    QTest::newRow("missing")
        << "/nonexistent/report.vzt"
        << QStringList{"The report \"/nonexistent/report.vzt\" cannot be opened: No such file or "
                       "directory."};
}

void tst_frmMain::openFileMessages() {
    QFETCH(QString, file);
    QFETCH(QStringList, messages);

    Window w;
    w.window.OpenFile(file);
    QCOMPARE(w.messages, messages);
}

void tst_frmMain::refusedFilesKeepTheReport_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("message");

    static QTemporaryDir dir;
    const QString pipe = dir.filePath("pipe.vzt");
    QFile::remove(pipe);
    QVERIFY(::mkfifo(QFile::encodeName(pipe).constData(), 0600) == 0);
    QFile empty(dir.filePath("empty.vzt"));
    QVERIFY(empty.open(QIODevice::WriteOnly));

    // Opening a pipe that nobody writes to would wait for ever, with no window to close.
    QTest::newRow("named pipe") << pipe
                                << "The report \"" + pipe +
                                       "\" cannot be opened: it is a named pipe, not a file.";
    QTest::newRow("character device")
        << "/dev/zero"
        << "The report \"/dev/zero\" cannot be opened: it is a character device, not a file.";
    QTest::newRow("folder") << QString(ZENTORIA_TEST_DATA)
                            << "The report \"" ZENTORIA_TEST_DATA
                               "\" cannot be opened: it is a folder, not a file.";
    QTest::newRow("empty file") << empty.fileName()
                                << "The file \"" + empty.fileName() + "\" is empty: it holds no report.";
}

void tst_frmMain::refusedFilesKeepTheReport() {
    QFETCH(QString, file);
    QFETCH(QString, message);

    Window w;
    QString report = dataFile("mixed.vzt");
    w.window.OpenFile(report);
    auto* tree = w.child<QTreeView>("TV");
    const QModelIndex kinds = tree->model()->index(0, 0);
    const int filesBefore = tree->model()->rowCount(tree->model()->index(0, 0, kinds));

    w.window.OpenFile(file);
    QCOMPARE(w.messages, QStringList{message});
    QCOMPARE(tree->model()->rowCount(tree->model()->index(0, 0, kinds)), filesBefore);
    QVERIFY(filesBefore > 0);
}

void tst_frmMain::openFileRemovesQuotes() {
    Window w;
    QString file = "\"" + dataFile("corr\"upted.txt\"");
    w.window.OpenFile(file);
    QCOMPARE(file, dataFile("corrupted.txt"));
    QCOMPARE(w.messages, QStringList{"The file is corrupted"});

    // Blanks are kept: only the quotes go.
    QString padded = " " + dataFile("corrupted.txt");
    w.messages.clear();
    w.window.OpenFile(padded);
    QCOMPARE(w.messages.size(), 1);
    QVERIFY2(w.messages.first().startsWith("The report \" /"), qPrintable(w.messages.first()));
}

void tst_frmMain::fileOpenDialog() {
    Window w;
    QString filter, title, folder;
    w.child<CommonDialog>("CMDlg")->setChooser([&](const CommonDialog& dialog) {
        filter = dialog.Filter;
        title = dialog.DialogTitle;
        folder = dialog.InitDir;
        return dataFile("corrupted.txt");
    });
    w.trigger("submnuOpen");
    QCOMPARE(filter, QStringLiteral(
                         "Melvadex Integrity Report (*.vzt)|*.vzt|Melvadex Integrity Report (prev. versions) "
                         "(*.txt)|*.txt"));
    QCOMPARE(title, QStringLiteral("Select the file to view"));
    QCOMPARE(folder, QCoreApplication::applicationDirPath());
    QCOMPARE(w.messages, QStringList{"The file is corrupted"});
    QCOMPARE(CommonDialog::toQtFilter(filter),
             QStringLiteral(
                 "Melvadex Integrity Report (*.vzt);;Melvadex Integrity Report (prev. versions) (*.txt)"));
}

void tst_frmMain::fileOpenCancelled() {
    Window w;
    int asked = 0;
    w.child<CommonDialog>("CMDlg")->setChooser([&](const CommonDialog&) {
        ++asked;
        return QString();
    });
    w.trigger("submnuOpen");
    QCOMPARE(asked, 1);
    QVERIFY(w.messages.isEmpty());
}

void tst_frmMain::quitClosesTheWindow() {
    Window w;
    w.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w.window));
    w.trigger("submnuExit");
    QVERIFY(!w.window.isVisible());
}

void tst_frmMain::helpContents() {
    Window w;
    QSignalSpy requested(&w.window, &frmMain::helpContentsRequested);
    w.trigger("submnuShowHelp");
    QCOMPARE(requested.count(), 1);
}

void tst_frmMain::messageBoxLooks() {
    const auto box = MessageBoxes::create(nullptr, "<b>C:\\x.mp3</b>");
    QCOMPARE(box->windowTitle(), QStringLiteral("Zentoria"));
    QCOMPARE(box->icon(), QMessageBox::NoIcon);
    QCOMPARE(box->standardButtons(), QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box->buttons().size(), 1);
    QCOMPARE(box->textFormat(), Qt::PlainText);
    QCOMPARE(box->text(), QStringLiteral("<b>C:\\x.mp3</b>"));
}

void tst_frmMain::captionsArePlainText_data() {
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("shown");

    QTest::newRow("doubled ampersand") << "Rock && Roll"
                                       << "Rock & Roll";
    QTest::newRow("access key mark") << "&File"
                                     << "File";
    QTest::newRow("markup") << "<i>x</i>"
                            << "<i>x</i>";
    QTest::newRow("trailing ampersand") << "AC/DC &"
                                        << "AC/DC ";
    QTest::newRow("triple ampersand") << "a&&&b"
                                      << "a&b";
}

void tst_frmMain::captionsArePlainText() {
    QFETCH(QString, caption);
    QFETCH(QString, shown);

    CaptionLabel standalone;
    auto* label = &standalone;
    label->setCaption(caption);
    QCOMPARE(label->caption(), caption);
    QCOMPARE(label->text(), shown);
    QCOMPARE(label->textFormat(), Qt::PlainText);
}

QTEST_MAIN(tst_frmMain)
#include "tst_frmmain.moc"
