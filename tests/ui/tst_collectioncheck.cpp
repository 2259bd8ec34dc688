#include "../report/ReportBuilder.h"
#include "../scan/Mp3Files.h"
#include "MainWindowFixture.h"
#include "settings/Globals.h"
#include "settings/Preferences.h"
#include "ui/check/CheckProgress.h"

#include <QAccessible>
#include <QLabel>
#include <QMap>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <QUrl>

#include <sys/stat.h>

using namespace zentoria;

namespace {

const QString kTitle = QStringLiteral("Melvadex's Zentoria");

// A shown window in a per-user folder of its own, with a music folder: Waterloo has only an ID3v2
// tag, Fernando none, Jóga only ID3v1, Mamma Mia both, and junk.mp3 is no MP3 at all.
struct Checking : HomeWindowFixture {
    QString music = home.filePath(QStringLiteral("Music"));
    QWidget* progress = child<QWidget>("fraCheckProgress");

    Checking() {
        QVERIFY(writeMp3(music + "/Abba/Waterloo.mp3", V2));
        QVERIFY(writeMp3(music + "/Abba/Fernando.mp3", NoTag));
        QVERIFY(writeMp3(music + "/Björk/Jóga.mp3", V1));
        QVERIFY(writeMp3(music + "/Abba/Mamma Mia.mp3", BothTags));
        QVERIFY(writeFile(music + "/junk.mp3", "no audio"));
        QVERIFY(::mkfifo(QFile::encodeName(music + "/pipe.mp3").constData(), 0600) == 0);
    }
    // Runs the action, a check, to its end.
    void check(const char* action) {
        trigger(action);
        QTRY_VERIFY(!progress->isVisible());
    }
    void checkFolder(const QString& folder) {
        answer(folder);
        check("submnuCheckFolder");
    }
    QStringList listed(const char* kind) {
        activate(kind);
        return texts(list);
    }
    // The check's result on screen, asked about, is thrown away.
    void discardWhenAsked() {
        window.messageBoxes().setChooser(
            [](const QString&, QMessageBox::StandardButtons) { return QMessageBox::Discard; });
    }
};

} // namespace

class tst_CollectionCheck : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void checkFolderThenSave() {
        Checking c;
        QVERIFY(!c.child<QAction>("submnuSaveAs")->isEnabled());
        // Found without tags, but no report can name it: not checked, in every count.
        QVERIFY(writeMp3(c.music + "/Abba/Line\nbreak.mp3", NoTag));
        c.answer(c.music);
        c.trigger("submnuCheckFolder");
        // While it runs: its progress in the status bar, and no second check.
        QVERIFY(c.progress->isVisible());
        QVERIFY(!c.child<QAction>("submnuCheckFolder")->isEnabled());
        QTRY_VERIFY(!c.progress->isVisible());
        QCOMPARE(c.child<QLabel>("lblStatusMessage")->accessibleName(),
                 "Check done: 4 files checked: 1 without ID3v1, 1 without ID3v2, 1 without tags; 3 files or "
                 "folders could not be checked.");
        QCOMPARE(indexOfKey(c.tree, "ID3v0").data(Qt::ToolTipRole), "1 file");

        QCOMPARE(c.listed("ID3v1"), QStringList{c.music + "/Abba/Waterloo.mp3"});
        QCOMPARE(c.listed("ID3v2"), QStringList{c.music + "/Björk/Jóga.mp3"});
        QCOMPARE(c.listed("ID3v0"), QStringList{c.music + "/Abba/Fernando.mp3"});
        QCOMPARE(c.window.windowTitle(), "Check of " + c.music + " (not saved) — " + kTitle);
        // What it could not check is counted and named, each one in the details.
        QCOMPARE(c.messages.size(), 1);
        QVERIFY2(c.messages.first().startsWith("3 files or folders could not be checked"),
                 qPrintable(c.messages.first()));
        QCOMPARE(c.window.messageBoxes().lastDetails(),
                 c.music +
                     "/Abba/Line\nbreak.mp3: a report cannot name it: its name holds a line break or the "
                     "report's closing words\n" +
                     c.music + "/junk.mp3: no MPEG audio found: not an MP3 file, or cut short\n" + c.music +
                     "/pipe.mp3: not a regular file");
        QCOMPARE(read(settings::LastCheckedFolder), c.music);

        // Saved, it reads back as the same report, and is a report like any other; the next check starts
        // where the last one was made.
        QStringList startedAt;
        c.dialogs->setChooser([&](const CommonDialog& request) {
            startedAt << request.InitDir;
            return startedAt.size() == 1 ? c.home.filePath("music") : QString();
        });
        c.trigger("submnuSaveAs");
        const QByteArray saved = contentsOf(c.home.filePath("music.vzt"));
        MemoryLineSource source(saved);
        const ReportReadResult read = ReadReport(source);
        QCOMPARE(read.Outcome, Outcome::Loaded);
        QCOMPARE(read.Entries.size(), 3);
        QVERIFY(saved.contains("\r\n  Not checked: 3 files or folders\r\n"));
        QCOMPARE(read.Entries.at(0).Path, c.music + "/Abba/Fernando.mp3");
        QCOMPARE(c.window.windowTitle(), "music.vzt — " + kTitle);
        QVERIFY(!c.child<QAction>("submnuSaveAs")->isEnabled());
        c.trigger("submnuCheckFolder");
        QCOMPARE(startedAt, (QStringList{QDir::home().filePath("Music.vzt"), c.music}));

        // A check that found nothing loses nothing: quitting asks nothing (an answerer would say no).
        QVERIFY(QDir().mkpath(c.home.filePath("empty")));
        c.checkFolder(c.home.filePath("empty"));
        QVERIFY(c.window.close());
    }

    // Under a German language file, what could not be checked is said in German, the system's error
    // too, as is what a screen reader hears of the window.
    void checkSpeaksGerman() {
        globals().LanguageFile = QStringLiteral(ZENTORIA_TEST_DATA "/../../examples/languages/Deutsch.ini");
        const auto english = qScopeGuard([] { globals().LanguageFile.clear(); });
        Checking c;
        QCOMPARE(c.child<QWidget>("TV")->accessibleName(), "Problemarten");
        QCOMPARE(c.child<QWidget>("vsbBack")->accessibleName(), "Details blättern");
        // A link to itself: the system's error, in the language file's words.
        QVERIFY(QFile::link("loop.mp3", c.music + "/loop.mp3"));
        c.checkFolder(c.music);
        QCOMPARE(
            c.window.messageBoxes().lastDetails(),
            c.music + "/junk.mp3: keine MPEG-Audiodaten gefunden: keine MP3-Datei, oder abgeschnitten\n" +
                c.music + "/loop.mp3: lässt sich nicht prüfen: Zu viele Ebenen symbolischer Verknüpfungen\n" +
                c.music + "/pipe.mp3: keine gewöhnliche Datei");
        // The longer German end line is cut to the bar, not off at its edge.
        const QLabel* status = c.child<QLabel>("lblStatusMessage");
        QVERIFY(status->accessibleName().startsWith("Prüfung beendet: 4 Dateien geprüft"));
        QVERIFY(status->text() == status->accessibleName() || status->text().endsWith(u'…'));
        QVERIFY(status->fontMetrics().horizontalAdvance(status->text()) <= status->contentsRect().width());
    }

    void cancelAndCloseLeaveNothingBehind() {
        Checking c;
        c.open(dataFile("export.vzt"));
        const QString title = c.window.windowTitle();
        QVERIFY(QDir().mkpath(c.music + "/many") &&
                linkMany(c.music + "/Abba/Fernando.mp3", c.music + "/many", 3000, "%d.mp3"));
        const int threads = threadCount();
        c.answer(c.music);
        c.trigger("submnuCheckFolder");
        QTest::mouseClick(c.child<QPushButton>("cmdCancelCheck"), Qt::LeftButton);
        QTRY_VERIFY(!c.progress->isVisible());
        // Nothing of the check is shown or written: the report is still there, no message, nothing to save.
        QCOMPARE(QDir(c.home.path()).entryList({"*.vzt"}, QDir::Files), QStringList());
        QCOMPARE(c.window.windowTitle(), title);
        QCOMPARE(c.messages, QStringList());
        const QLabel* status = c.child<QLabel>("lblStatusMessage");
        QVERIFY2(status->isVisible() && status->accessibleName().startsWith("The check was cancelled after "),
                 qPrintable(status->accessibleName()));
        QVERIFY(!c.child<QAction>("submnuSaveAs")->isEnabled());
        QVERIFY(c.child<QAction>("submnuCheckFolder")->isEnabled());

        // Escape cancels as the button does.
        QVERIFY(QTest::qWaitForWindowActive(&c.window));
        c.trigger("submnuCheckFolder");
        QTest::keyClick(&c.window, Qt::Key_Escape);
        QTRY_VERIFY(!c.progress->isVisible());
        QCOMPARE(c.window.windowTitle(), title);

        // Closing the window in the middle of a check ends it at once.
        c.trigger("submnuCheckFolder");
        QVERIFY(c.progress->isVisible());
        c.window.close();
        QVERIFY(!c.progress->isVisible());
        QTRY_COMPARE(threadCount(), threads);
        QCOMPARE(c.window.windowTitle(), title);
    }

    void recheckSaysWhatChanged() {
        Checking c;
        const QString report = c.home.filePath("music.vzt");
        QVERIFY(writeFile(report, ReportBuilder()
                                      .start()
                                      .record("C:\\Music\\Abba\\Waterloo.mp3", kDetailID3v1)
                                      .record("C:\\Music\\Abba\\Fernando.mp3", kDetailID3v0)
                                      .record("C:\\Music\\Björk\\Jóga.mp3", kDetailID3v2)
                                      .record("C:\\Music\\Gone.mp3", kDetailID3v0)
                                      .record("C:\\Music\\Garbled.mp3", "garbled")
                                      .record("C:\\Music\\caf%E9.mp3", kDetailID3v0)
                                      .closing()
                                      .bytes()));
        // Melvadex names "caf%E9.mp3" by its text: the tagged file of that name, not the untagged twin
        // whose name holds the byte E9.
        QVERIFY(writeMp3(c.music + "/caf%E9.mp3", BothTags) && writeMp3(c.music + "/t", NoTag));
        QVERIFY(::rename(QFile::encodeName(c.music + "/t"), QFile::encodeName(c.music) + "/caf\xE9.mp3") ==
                0);
        c.open(report);
        QCOMPARE(c.messages.size(), 1); // the record it could not read
        c.messages.clear();
        // The user fixes Waterloo, and gives Fernando an ID3v1 tag only.
        QVERIFY(setTags(c.music + "/Abba/Waterloo.mp3", BothTags));
        QVERIFY(setTags(c.music + "/Abba/Fernando.mp3", V1));
        // Asked where the report's folder is, as for the tag editor.
        c.answer("C:\\Music=" + c.music);
        c.check("submnuRecheck");
        // Gone is not fixed: it keeps its kind, and the message names it.
        QCOMPARE(c.messages,
                 QStringList{"2 fixed, 1 still, 1 not found, 1 changed kind\nRecords of the report that "
                             "could not be read: 1. Their files were not checked.\nThese files were not "
                             "found; they are listed with their earlier kind:\nC:\\Music\\Gone.mp3: "
                             "no such file"});
        QCOMPARE(c.window.windowTitle(), "music.vzt, checked again (not saved) — " + kTitle);
        QCOMPARE(c.listed("ID3v2"),
                 (QStringList{"C:\\Music\\Abba\\Fernando.mp3", "C:\\Music\\Björk\\Jóga.mp3"}));
        QCOMPARE(c.listed("ID3v1"), QStringList());
        QCOMPARE(c.listed("ID3v0"), QStringList{"C:\\Music\\Gone.mp3"});
        QVERIFY(c.child<QAction>("submnuSaveAs")->isEnabled());

        // Its result checked again (and discarded, since not saved): "checked again" once, not twice.
        c.discardWhenAsked();
        c.check("submnuRecheck");
        QCOMPARE(c.window.windowTitle(), "music.vzt, checked again (not saved) — " + kTitle);

        // A folder that is not where the files are: nothing found, nothing fixed, and Preferences offered;
        // one that is missing (a share not mounted) is named as out of reach, its files not called gone.
        const QString elsewhere = c.home.filePath("elsewhere");
        const QString unread =
            "\nRecords of the report that could not be read: 1. Their files were not checked.";
        for (const auto& [folder, said] :
             {std::pair(c.home.path(),
                        "0 fixed, 0 still, 5 not found, 0 changed kind" + unread +
                            "\nNone of the report's files was found on this computer: the folder "
                            "where the report's files are is probably set wrong. They are "
                            "listed with their earlier kind."),
              {elsewhere, "0 fixed, 0 still, 0 not found, 0 changed kind\nThe folder \"" + elsewhere +
                              "\" could not be reached: it is missing. The report's files in it (5) were not "
                              "checked; they are listed with their earlier kind." +
                              unread}}) {
            write(settings::PathMap, "C:\\Music=" + folder);
            // The result shown is not saved: opening the report again asks first.
            c.discardWhenAsked();
            c.open(report);
            QSignalSpy preferences(c.child<QAction>("submnuPreferences"), &QAction::triggered);
            QString asked;
            c.window.messageBoxes().setQuestioner([&asked](const QString& text) {
                asked = text;
                // Preferences opens: the user closes it.
                QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); });
                return true;
            });
            c.trigger("submnuRecheck");
            QTRY_COMPARE(preferences.size(), 1);
            QCOMPARE(asked, said + "\nOpen Tools > Preferences to correct it?");
            QCOMPARE(c.listed("ID3v1"), QStringList{"C:\\Music\\Abba\\Waterloo.mp3"});
            if (folder != elsewhere) {
                // Which files were looked for is one click away.
                QCOMPARE(c.window.messageBoxes().lastDetails().split(u'\n').size(), 5);
                QVERIFY(c.window.messageBoxes().lastDetails().contains("C:\\Music\\Gone.mp3: no such file"));
            }
        }
    }

    // A check's result is on screen and in no file: File > Open, File > Recent, a drop, Quit, Check Listed
    // Files Again and Check Folder ask first; a discarded result leaves the screen.
    void unsavedResultIsAskedAbout_data() {
        addColumns<QString, QMessageBox::StandardButton>("route", "answer");
        // A menu's route is its action.
        for (const char* route :
             {"submnuOpen", "submnuRecent1", "drop", "quit", "submnuRecheck", "submnuCheckFolder"}) {
            for (const auto& [name, answer] : {std::pair{"cancel", QMessageBox::Cancel},
                                               {"discard", QMessageBox::Discard},
                                               {"save", QMessageBox::Save}}) {
                QTest::addRow("%s, %s", route, name) << QString(route) << answer;
            }
        }
    }
    void unsavedResultIsAskedAbout() {
        QFETCH(QString, route);
        QFETCH(QMessageBox::StandardButton, answer);
        const bool quit = route == u"quit";
        Checking c;
        c.open(dataFile("mixed.vzt")); // File > Recent lists it
        c.checkFolder(c.music);
        const QString unsaved = "Check of " + c.music + " (not saved) — " + kTitle;
        QCOMPARE(c.window.windowTitle(), unsaved);
        QStringList asked;
        c.window.messageBoxes().setChooser([&](const QString& text, auto) { return asked << text, answer; });
        // The report to open in the open dialog, a new name in the save dialog.
        const QString saved = c.home.filePath("kept.vzt");
        c.dialogs->setChooser([&saved](const CommonDialog& ask) {
            return ask.DialogTitle == u"Save the report as" ? saved : dataFile("mixed.vzt");
        });
        QMimeData dropped;
        dropped.setUrls({QUrl::fromLocalFile(dataFile("mixed.vzt"))});
        if (quit) {
            QCOMPARE(c.window.close(), answer != QMessageBox::Cancel);
        } else if (route == u"drop") {
            c.drop(dropped);
        } else {
            c.trigger(qPrintable(route));
        }
        QTRY_VERIFY(!c.progress->isVisible());
        QVERIFY2(asked.size() == 1 && asked.first().startsWith("Save the check's result?"),
                 qPrintable(asked.join('|')));
        QCOMPARE(c.window.isVisible(), !quit || answer == QMessageBox::Cancel);
        QCOMPARE(contentsOf(saved).contains(QFile::encodeName(c.music + "/Abba/Fernando.mp3")),
                 answer == QMessageBox::Save);
        // Shown after Cancel, Discard and Save (the title alone: nothing). Check Folder gets no folder.
        const QString again = ", checked again (not saved) — " + kTitle;
        const QMap<QString, QStringList> shown{
            {"quit", {unsaved, kTitle, "kept.vzt — " + kTitle}},
            {"submnuRecheck", {unsaved, "Check of " + c.music + again, "kept.vzt" + again}},
            {"submnuCheckFolder", {unsaved, kTitle, "kept.vzt — " + kTitle}}};
        const int answered = answer == QMessageBox::Cancel ? 0 : answer == QMessageBox::Discard ? 1 : 2;
        QCOMPARE(c.window.windowTitle(),
                 shown.value(route, {unsaved, "mixed.vzt — " + kTitle, "mixed.vzt — " + kTitle})[answered]);
    }

    void progressSpeaksItsValue() {
        CheckProgress progress;
        progress.start();
        scan::ScanCounts counts;
        counts.found = 40;
        counts.probed = 25;
        counts.perKind.add(ProblemKind::ID3v1, 3);
        auto* bar = progress.findChild<QProgressBar*>("prgCheck");
        // While files are still found it is busy: 25 of 40 would be a guess.
        progress.showCounts(counts);
        QCOMPARE(bar->maximum(), 0);
        QVERIFY(bar->accessibleDescription().startsWith("25 files checked, 40 found so far"));
        counts.allFound = true;
        progress.showCounts(counts);
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(bar);
        QVERIFY(accessible && accessible->valueInterface());
        QCOMPARE(accessible->valueInterface()->currentValue().toInt(), 25);
        QCOMPARE(accessible->valueInterface()->maximumValue().toInt(), 40);
        QCOMPARE(accessible->text(QAccessible::Name), QStringLiteral("Check progress"));
        QVERIFY(
            accessible->text(QAccessible::Description).startsWith("25 of 40 files checked: 3 without ID3v1"));
    }
};

QTEST_MAIN(tst_CollectionCheck)
#include "tst_collectioncheck.moc"
