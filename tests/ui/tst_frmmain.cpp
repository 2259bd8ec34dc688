#include "MainWindowFixture.h"
#include "ui/common/CaptionLabel.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

#include <sys/stat.h>

using namespace zentoria;

using Window = MainWindowFixture;

class tst_frmMain : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void menuShortcuts_data() {
        addColumns<QString, QKeySequence>("action", "keys");

        addRow("Open", "submnuOpen", QKeySequence(Qt::CTRL | Qt::Key_O));
        addRow("Quit", "submnuExit", QKeySequence(Qt::CTRL | Qt::Key_Q));
        addRow("Contents", "submnuShowHelp", QKeySequence(Qt::Key_F1));
    }

    void menuShortcuts() {
        QFETCH(QString, action);
        QFETCH(QKeySequence, keys);

        Window w;
        w.child<CommonDialog>("CMDlg")->setChooser([](const CommonDialog&) { return QString(); });
        QSignalSpy help(&w.window, &frmMain::helpContentsRequested);
        w.show();
        QVERIFY(QTest::qWaitForWindowActive(&w.window));
        QSignalSpy triggered(w.window.findChild<QAction*>(action), &QAction::triggered);
        QTest::keySequence(&w.window, keys);
        QCOMPARE(triggered.count(), 1);
        // Quit closes the window, Contents asks for the help, a cancelled Open says nothing.
        QCOMPARE(w.window.isVisible(), action != "submnuExit");
        QCOMPARE(help.count(), action == "submnuShowHelp" ? 1 : 0);
        QVERIFY(w.messages.isEmpty());
    }

    void openFileMessages_data() {
        // "given" is what OpenFile is called with, "file" what it leaves of it: the quotes around a name
        // and in it go, but for those that are part of a file's name; blanks stay.
        addColumns<QString, QString, QStringList, bool>("given", "file", "messages", "keepsTheReport");

        static QTemporaryDir dir;
        const QString pipe = dir.filePath("pipe.vzt");
        QFile::remove(pipe);
        QVERIFY(::mkfifo(QFile::encodeName(pipe).constData(), 0600) == 0);
        const QString empty = dir.filePath("empty.vzt");
        QVERIFY(writeFile(empty, {}));
        const QString quoted = dir.filePath("my \"best\" report.vzt");
        QVERIFY(writeFile(quoted, contentsOf(dataFile("mixed.vzt"))));
        const auto cannotOpen = [](const QString& file, const QString& why) {
            return QStringList{"The report \"" + file + "\" cannot be opened: " + why + "."};
        };
        const auto same = [&](const char* name, const QString& file, const QStringList& messages,
                              bool keeps) { addRow(name, file, file, messages, keeps); };
        const QString corrupted = dataFile("corrupted.txt");

        same("loaded", dataFile("mixed.vzt"), QStringList(), false);
        same("corrupted", corrupted, QStringList{"The file is corrupted"}, true);
        same("no problems", dataFile("noproblems.vzt"),
             QStringList{"The are no MP3 file with \"problems\" in this report."}, false);
        same("ended early", dataFile("endedearly.vzt"),
             QStringList{
                 "\"" + dataFile("endedearly.vzt") +
                 "\" was not read completely.\n\nThe report ends too early: it should go on at line 15 "
                 "up to its closing \"Date of creation:\" line, but the file ends there. 2 files were "
                 "read before it."},
             false);
        same("skipped record", dataFile("skipped.vzt"),
             QStringList{"\"" + dataFile("skipped.vzt") +
                         "\" was not read completely.\n\n1 line does not fit the "
                         "report format, so its record was skipped (line 15)."},
             false);
        same("missing", "/nonexistent/report.vzt",
             cannotOpen("/nonexistent/report.vzt", "No such file or directory"), true);
        // Opening a pipe that nobody writes to would wait for ever, with no window to close.
        same("named pipe", pipe, cannotOpen(pipe, "it is a named pipe, not a file"), true);
        same("empty file", empty, QStringList{"The file \"" + empty + "\" is empty: it holds no report."},
             true);
        addRow("quotes removed", "\"" + dataFile("corr\"upted.txt\""), corrupted,
               QStringList{"The file is corrupted"}, true);
        addRow("blanks kept", " " + corrupted, " " + corrupted,
               cannotOpen(" " + corrupted, "No such file or directory"), true);
        same("quotes of the name", quoted, QStringList(), false);
        addRow("quotes of the name, quoted", "\"" + quoted + "\"", quoted, QStringList(), false);
    }

    void openFileMessages() {
        QFETCH(QString, given);
        QFETCH(QString, file);
        QFETCH(QStringList, messages);
        QFETCH(bool, keepsTheReport);

        Window w;
        QString before = dataFile("export.vzt");
        w.window.OpenFile(before);
        QVERIFY(w.window.windowTitle().startsWith("export.vzt"));

        w.window.OpenFile(given);
        QCOMPARE(given, file);
        QCOMPARE(w.messages, messages);
        // A file that is no report leaves the one on screen as it was.
        QCOMPARE(w.window.windowTitle().startsWith("export.vzt"), keepsTheReport);
        if (messages.isEmpty()) {
            QCOMPARE(w.window.windowTitle(), QFileInfo(file).fileName() + " — Melvadex's Zentoria");
        }
    }

    void fileOpenDialog() {
        HomeWindowFixture w;
        QString filter, title, folder;
        QString answer = dataFile("mixed.vzt");
        w.dialogs->setChooser([&](const CommonDialog& dialog) {
            filter = dialog.Filter;
            title = dialog.DialogTitle;
            folder = dialog.InitDir;
            return answer;
        });
        // It starts at home until a report was opened, then in the folder of the last one.
        w.trigger("submnuOpen");
        QCOMPARE(folder, QDir::homePath());
        answer = dataFile("corrupted.txt");
        w.trigger("submnuOpen");
        QCOMPARE(folder, QStringLiteral(ZENTORIA_TEST_DATA));
        QCOMPARE(filter,
                 QStringLiteral("Melvadex Integrity Report (*.vzt)|*.vzt|Melvadex Integrity Report (prev. "
                                "versions) (*.txt)|*.txt"));
        QCOMPARE(title, QStringLiteral("Select the file to view"));
        QCOMPARE(w.messages, QStringList{"The file is corrupted"});
        QCOMPARE(
            CommonDialog::toQtFilter(filter),
            QStringLiteral(
                "Melvadex Integrity Report (*.vzt);;Melvadex Integrity Report (prev. versions) (*.txt)"));

        // A name whose quotes are part of it, chosen in the dialog, or typed into its name box, which has
        // the keyboard when the dialog opens.
        const QString quoted = w.home.filePath("my \"best\" report.vzt");
        QVERIFY(QFile::copy(dataFile("mixed.vzt"), quoted));
        w.open(quoted);
        QCOMPARE(w.window.windowTitle(), "my \"best\" report.vzt — Melvadex's Zentoria");
        w.open(dataFile("export.vzt"));
        w.dialogs->setChooser({});
        QTimer::singleShot(0, [&quoted] {
            QLineEdit* edit = nullptr;
            const bool typing = QTest::qWaitFor([&edit] {
                return (edit = qobject_cast<QLineEdit*>(QApplication::focusWidget())) != nullptr;
            });
            if (!typing) {
                QApplication::activeModalWidget()->close();
                QFAIL("the open dialog starts with the keyboard in its name box");
            }
            edit->setText(quoted);
            // Whatever stays open (Qt's "File not found") is closed, and the title below tells.
            QTimer::singleShot(1000, [] {
                while (QWidget* modal = QApplication::activeModalWidget()) {
                    modal->close();
                }
            });
            QTest::keyClick(edit, Qt::Key_Return);
        });
        w.trigger("submnuOpen");
        QCOMPARE(w.window.windowTitle(), "my \"best\" report.vzt — Melvadex's Zentoria");
    }

    void messagesAndCaptionsArePlainText() {
        const auto box = MessageBoxes::create(nullptr, "<b>C:\\x.mp3</b>");
        QCOMPARE(std::tuple(box->windowTitle(), box->icon(), box->buttons().size(), box->standardButtons(),
                            box->textFormat()),
                 std::tuple(QStringLiteral("Zentoria"), QMessageBox::NoIcon, qsizetype(1),
                            QMessageBox::StandardButtons(QMessageBox::Ok), Qt::PlainText));
        // A short message under a long title shows the title whole; a question's buttons have keys.
        const QString title = "a damaged report of the whole collection.vzt — Zentoria";
        const auto titled = MessageBoxes::create(nullptr, "The file is corrupted", title);
        titled->show();
        QVERIFY(titled->width() > titled->fontMetrics().horizontalAdvance(title));
        const auto ask = MessageBoxes::createSaveQuestion(nullptr, "?");
        QCOMPARE(ask->button(QMessageBox::Save)->text() + ask->button(QMessageBox::Discard)->text() +
                     ask->button(QMessageBox::Cancel)->text(),
                 "&Save&Discard&Cancel");

        // "&&" shows one ampersand, a lone "&" marks the access key, markup is text.
        for (const auto& [caption, shown] :
             std::initializer_list<std::pair<QString, QString>>{{"Rock && Roll", "Rock & Roll"},
                                                                {"&File", "File"},
                                                                {"<i>x</i>", "<i>x</i>"},
                                                                {"a&&&b", "a&b"}}) {
            CaptionLabel label;
            label.setCaption(caption);
            QCOMPARE(label.caption() + u'|' + label.text(), caption + u'|' + shown);
            QCOMPARE(label.textFormat(), Qt::PlainText);
        }
    }
};

QTEST_MAIN(tst_frmMain)
#include "tst_frmmain.moc"
