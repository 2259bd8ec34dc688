#include "../report/ReportBuilder.h"
#include "MainWindowFixture.h"
#include "settings/Globals.h"
#include "settings/Preferences.h"
#include "ui/common/CaptionLabel.h"

#include <QClipboard>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScopeGuard>
#include <QTableWidget>
#include <QTimer>
#include <QUrl>

#include <cstdio>

using namespace zentoria;

namespace {

// export.vzt's files, as the report writes them.
const QString kWaterloo = QStringLiteral("C:\\Music\\Abba\\Waterloo.mp3");
const QString kLive = QStringLiteral("C:\\Music\\Queen\\\"Live\" at Wembley.mp3");
const QString kTrack = QStringLiteral("D:\\Elsewhere\\Track01.mp3");

// A shown window with export.vzt open, in a per-user folder of its own, and a local music folder
// that holds some of the report's files.
struct Editing : HomeWindowFixture {
    QString music = home.filePath(QStringLiteral("music"));

    Editing() {
        open(dataFile("export.vzt"));
        // Each test answers the dialogs it expects; the rest are real.
        dialogs->setChooser({});
    }
    // Shows the ID3v2 files (the kind of every file the tests select) and selects those with these
    // paths, as Ctrl+clicks do.
    void select(const QStringList& paths) {
        activate("ID3v2");
        list->clearSelection();
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            if (paths.contains(list->model()->index(row, 0).data().toString())) {
                clickIndex(list, rowIndex(list, row), Qt::LeftButton, Qt::ControlModifier);
            }
        }
    }
    void makeLocalFiles(const QStringList& relativePaths) {
        for (const QString& path : relativePaths) {
            QVERIFY(writeFile(QDir(music).filePath(path), {}));
        }
    }
    // What the panel says of the selection.
    QString countLine() { return child<CaptionLabel>("WebItemType")->caption(); }
    void mapToMusic() { write(settings::PathMap, QStringLiteral("C:\\Music=") + music); }
    // File > Open in Tag Editor with a fake kid3 on PATH, which writes its arguments, one per line,
    // once it has them all (a failed write shows as the record never coming), to the file whose name
    // this returns.
    QString openInFakeEditor() {
        const QString kid3 = home.filePath("bin/kid3");
        writeFile(kid3, "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$0.part\" && mv \"$0.part\" \"$0.txt\"\n");
        QFile::setPermissions(kid3, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", QFile::encodeName(home.filePath("bin")) + ':' + path);
        trigger("submnuOpenWith");
        qputenv("PATH", path);
        return kid3 + ".txt";
    }
    // Runs act on the next modal dialog once it is open; it must be the one of this name.
    template <typename Act>
    void onNextDialog(const char* name, Act act) {
        QTimer::singleShot(0, [=] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            QVERIFY2(dialog && dialog->objectName() == QLatin1StringView(name), name);
            act(dialog);
        });
    }
};

} // namespace

class tst_EditActions : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void enabledWithASelection() {
        Editing e;
        const auto enabled = [&e](const char* name) { return e.child<QAction>(name)->isEnabled(); };
        // Nothing listed yet.
        QVERIFY(!enabled("submnuCopy") && !enabled("submnuOpenWith") && !enabled("submnuExport"));
        QVERIFY(!enabled("submnuSelectAll") && !enabled("submnuSelectMatching"));

        e.activate("ID3v2");
        QVERIFY(!enabled("submnuCopy") && !enabled("submnuOpenWith"));
        QVERIFY(enabled("submnuExport") && enabled("submnuSelectAll") && enabled("submnuSelectMatching"));

        e.select({kWaterloo});
        QVERIFY(enabled("submnuCopy") && enabled("submnuOpenWith") && enabled("submnuExport"));
        e.list->clearSelection();
        QVERIFY(!enabled("submnuCopy") && !enabled("submnuOpenWith"));

        // Select All, from anywhere in the window, is shown in the panel as a selection by hand is.
        e.tree->setFocus();
        QTest::keyClick(&e.window, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(e.selectedTexts(), (QStringList{kWaterloo, kLive, kTrack}));
        QTRY_VERIFY2(e.countLine().startsWith("3 files selected (ID3v2 Not found)."),
                     qPrintable(e.countLine()));
    }

    void exportAsksThePathMapOnce() {
        // Asked with the report's common root, not the album's folder; then about a folder outside it.
        Editing e;
        e.makeLocalFiles({"Abba/Waterloo.mp3", "Elsewhere/Track01.mp3"});
        e.select({kWaterloo});
        QStringList asked;
        e.dialogs->setChooser([&](const CommonDialog& request) {
            const bool map = request.DialogTitle == "PathMap";
            asked << (map ? request.InitDir : request.DialogTitle);
            return !map                               ? e.home.filePath("a.txt")
                   : request.InitDir.startsWith("D:") ? "d:/elsewhere=" + e.music + "/Elsewhere"
                                                      : "c:/music=" + e.music;
        });
        e.trigger("submnuExport");
        QCOMPARE(read(settings::PathMap), QStringLiteral("c:\\music=") + e.music);
        QCOMPARE(contentsOf(e.home.filePath("a.txt")), (e.music + "/Abba/Waterloo.mp3\n").toUtf8());
        e.select({kWaterloo, kTrack});
        e.trigger("submnuExport");
        QCOMPARE(contentsOf(e.home.filePath("a.txt")),
                 (e.music + "/Abba/Waterloo.mp3\n" + e.music + "/Elsewhere/Track01.mp3\n").toUtf8());
        // Remembered: the next export does not ask.
        e.trigger("submnuExport");
        // export.vzt's files share only "C:\\" ("C:\\Musical" among them).
        QCOMPARE(asked, (QStringList{"C:\\", "Export", "D:\\Elsewhere", "Export", "Export"}));

        // No file selected exports the kind's files, mapped whatever the letter case of their folder.
        e.activate("ID3v0");
        QStringList filters;
        e.dialogs->setChooser([&](const CommonDialog& request) {
            filters << request.Filter;
            // The user picks the third filter, text, for a name without an extension.
            const_cast<CommonDialog&>(request).FilterIndex = 3;
            return e.home.filePath("out");
        });
        e.trigger("submnuExport");
        QCOMPARE(e.messages, QStringList());
        QCOMPARE(filters.size(), 1);
        QVERIFY(filters.first().contains("*.m3u8") && filters.first().contains("*.csv"));
        QCOMPARE(contentsOf(e.home.filePath("out.txt")),
                 QFile::encodeName(e.music) + "/Bj\xC3\xB6rk/J\xC3\xB3ga.mp3\n");
        QCOMPARE(e.child<QLabel>("lblStatusMessage")->accessibleName(),
                 "1 file exported to \"" + e.home.filePath("out.txt") + "\".");
    }

    void tagEditorAndCopy_data() {
        // The arguments are relative to the music folder; the message is its start, or empty. A file
        // outside the mapping is asked about (answered: where it is, or as it stands). Copy gives the
        // files' texts, and those that are here as URLs a file manager takes.
        addColumns<QStringList, QString, QStringList, QString>("selected", "answer", "arguments", "message");

        addRow("asked, not missing", QStringList{kWaterloo, kLive, kTrack}, "D:\\Elsewhere=%1/Elsewhere",
               QStringList{"Abba/Waterloo.mp3", "Queen/\"Live\" at Wembley.mp3", "Elsewhere/Track01.mp3"},
               "");
        const QString missing =
            "1 file does not exist on this computer:\nD:\\Elsewhere\\Track01.mp3\n\nThe tag ";
        addRow("one missing", QStringList{kWaterloo, kTrack}, "", QStringList{"Abba/Waterloo.mp3"},
               missing + "editor starts with the other file.");
        addRow("none here", QStringList{kTrack}, "", QStringList(), missing + "editor was not started.");
    }

    void tagEditorAndCopy() {
        QFETCH(QStringList, selected);
        QFETCH(QString, answer);
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);

        Editing e;
        e.makeLocalFiles({"Abba/Waterloo.mp3", "Queen/\"Live\" at Wembley.mp3", "Elsewhere/Track01.mp3"});
        e.mapToMusic();
        e.answer(QString(answer).replace("%1", e.music));
        e.select(selected);
        const QString record = e.openInFakeEditor();

        QCOMPARE(e.messages, message.isEmpty() ? QStringList() : QStringList{message});
        QByteArray expected;
        QList<QUrl> urls;
        for (const QString& argument : arguments) {
            expected += QFile::encodeName(e.music + u'/' + argument) + '\n';
            urls << QUrl::fromLocalFile(e.music + u'/' + argument);
        }
        if (arguments.isEmpty()) {
            QTest::qWait(200);
            QVERIFY(!QFile::exists(record));
        } else {
            QTRY_COMPARE(contentsOf(record), expected);
        }
        e.list->setFocus();
        QTest::keyClick(e.list, Qt::Key_C, Qt::ControlModifier);
        const QMimeData* copied = QApplication::clipboard()->mimeData();
        QVERIFY(copied);
        QCOMPARE(copied->text(), selected.join(u'\n'));
        QCOMPARE(copied->urls(), urls);
    }

    void oddNamesLeadToTheRealFile() {
        // A name that is no UTF-8, as a check made here writes it.
        Editing e;
        QByteArray report =
            ReportBuilder().start().record("C:\\Music\\caf%E9.mp3", kDetailID3v2).closing().bytes();
        QVERIFY(
            writeFile(e.home.filePath("odd.vzt"),
                      report.replace("  Checked folder: C:\\Music", "  Written by Zentoria 0.1.0 on Linux")));
        const QByteArray real = QFile::encodeName(e.music) + "/caf\xE9.mp3";
        QVERIFY(writeFile(e.music + "/t", {}) && ::rename(QFile::encodeName(e.music + "/t"), real) == 0);
        e.mapToMusic();
        e.open(e.home.filePath("odd.vzt"));
        e.select({"C:\\Music\\caf%E9.mp3"});
        const QUrl url = QUrl::fromEncoded("file://" + real.toPercentEncoding("/"));

        e.trigger("submnuCopy");
        QCOMPARE(QApplication::clipboard()->mimeData()->urls(), QList<QUrl>{url});
        const QString record = e.openInFakeEditor();
        QTRY_COMPARE(contentsOf(record), real + '\n');
        e.answer(e.home.filePath("odd.m3u8"));
        e.trigger("submnuExport");
        QVERIFY2(contentsOf(e.home.filePath("odd.m3u8")).contains('\n' + url.toEncoded() + '\n'),
                 contentsOf(e.home.filePath("odd.m3u8")).constData());
        QCOMPARE(e.messages, QStringList());
        removeTree(e.music);
    }

    void selectMatching_data() {
        addColumns<QString, QStringList, QString>("pattern", "selected", "message");

        addRow("part of the path", "QUEEN", QStringList{kLive}, "");
        addRow("wildcard on the file name", "track??.mp3", QStringList{kTrack}, "");
        addRow("wildcard over the path", "c:\\music\\*", QStringList{kWaterloo, kLive}, "");
        addRow("nothing matches", "zappa", QStringList{kWaterloo},
               "No file in the list matches \"zappa\"; the selection stays as it was.");
        addRow("empty", "   ", QStringList{kWaterloo}, "Type a part");
    }

    void selectMatching() {
        QFETCH(QString, pattern);
        QFETCH(QStringList, selected);
        QFETCH(QString, message);

        Editing e;
        e.select({kWaterloo});
        QTRY_VERIFY(!e.child<QTimer>("ShowSelectedItems")->isActive());
        e.onNextDialog("frmSelectMatching", [pattern](QDialog* dialog) {
            auto* edit = dialog->findChild<QLineEdit*>("txtPattern");
            edit->selectAll();
            QTest::keyClicks(edit, pattern);
            QTest::keyClick(edit, Qt::Key_Return);
        });
        e.list->setFocus();
        QTest::keyClick(e.list, Qt::Key_F, Qt::ControlModifier);

        QCOMPARE(e.selectedTexts(), selected);
        if (message.isEmpty()) {
            QCOMPARE(e.messages, QStringList());
            // The panel shows the new selection as it shows any other.
            QVERIFY(e.child<QTimer>("ShowSelectedItems")->isActive());
        } else {
            QCOMPARE(e.messages.size(), 1);
            QVERIFY2(e.messages.first().startsWith(message), qPrintable(e.messages.first()));
        }
    }

    void languageTexts_data() {
        // Each row is named by its language file.
        addColumns<QString, QString, QString>("countLine", "matchingTitle", "shown");
        addRow("Deutsch", "2 Dateien ausgewählt (ID3v2 Not found).", "Passende auswählen", "Angezeigt: ");
        addRow("English", "2 files selected (ID3v2 Not found).", "Select Matching", "Shown: ");
    }

    void languageTexts() {
        QFETCH(QString, countLine);
        QFETCH(QString, matchingTitle);
        QFETCH(QString, shown);
        globals().LanguageFile = QStringLiteral(ZENTORIA_TEST_DATA "/../../examples/languages/") +
                                 QTest::currentDataTag() + ".ini";
        const auto english = qScopeGuard([] { globals().LanguageFile.clear(); });
        Editing e;
        e.select({kWaterloo, kTrack});
        // The count line reads with its blanks, though the language file's texts lose theirs at the ends.
        QTRY_VERIFY2(e.countLine().startsWith(countLine), qPrintable(e.countLine()));
        // A screen reader hears what the panel's title is in the language too.
        QVERIFY(e.child<CaptionLabel>("lblWebFolder")->accessibleName().startsWith(shown));
        QString title;
        e.onNextDialog("frmSelectMatching", [&title](QDialog* dialog) {
            title = dialog->windowTitle();
            dialog->close();
        });
        e.trigger("submnuSelectMatching");
        QCOMPARE(title, matchingTitle);
        // No two items of a menu share an access key, and each has one.
        for (const QMenu* menu : e.window.findChildren<QMenu*>()) {
            QString keys;
            for (const QAction* action : menu->actions()) {
                const QString key = action->text().section(u'&', 1).left(1).toLower();
                QVERIFY2(action->isSeparator() || menu->objectName() == u"mnuRecent" || !key.isEmpty(),
                         qPrintable(action->text()));
                QVERIFY2(key.isEmpty() || !keys.contains(key), qPrintable(action->text()));
                keys += key;
            }
        }
    }

    void preferences() {
        Editing e;
        // Folder names that once broke the stored list: "|" joined the mappings, "=/" split one.
        const QString a = e.home.filePath("a|b");
        const QString b = e.home.filePath("x=/y & \"z\"");
        const QString c = e.home.filePath("c");
        QVERIFY(QDir().mkpath(a) && QDir().mkpath(b) && QDir().mkpath(c));
        // Opens Preferences, notes the mappings it shows, types the ones given (a Windows folder and
        // where it is, with Tab between as a user does), tests a tag editor that is not here and presses
        // OK; notes whether it was still open after.
        QStringList shown;
        bool open = true;
        const auto fill = [&](const QList<std::pair<QString, QString>>& added) {
            e.onNextDialog("frmPreferences", [&, added](QDialog* dialog) {
                auto* table = dialog->findChild<QTableWidget*>("tblPathMaps");
                for (int row = 0; row < table->rowCount(); ++row) {
                    shown << table->item(row, 0)->text() + u'=' + table->item(row, 1)->text();
                }
                auto* add = dialog->findChild<QPushButton*>("cmdAddMapping");
                for (const auto& [windows, local] : added) {
                    add->click();
                    for (const QString& typed : {windows, local}) {
                        QTest::keyClicks(dialog->focusWidget(), typed);
                        QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
                    }
                    QCOMPARE(dialog->focusWidget(), add);
                }
                auto* editor = dialog->findChild<QLineEdit*>("txtTagEditor");
                auto* test = dialog->findChild<QPushButton*>("cmdTestTagEditor");
                // Its label gives it an access key and a name a screen reader says.
                QCOMPARE(editor->accessibleName(), "Tag editor");
                QVERIFY(std::ranges::any_of(dialog->findChildren<QLabel*>(), [editor](const QLabel* label) {
                    return label->buddy() == editor && label->text() == "&Tag editor:";
                }));
                QCOMPARE(test->text(), "Te&st");
                editor->setText("zentoria-no-editor %F");
                test->click();
                shown << dialog->findChild<QLabel*>("lblTagEditorTest")->text();
                editor->setText("kid3 %F");
                dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
                open = dialog->isVisible();
                dialog->reject();
            });
            e.trigger("submnuPreferences");
        };
        fill({{"C:\\Music", a}, {"D:\\Rips", b}, {"F:\\Old=New", c}});
        QVERIFY(!open);
        const QString three = read(settings::PathMap);
        QCOMPARE(read(settings::TagEditor), QStringLiteral("kid3 %F"));

        // Opened again, it shows both; a folder that is not here is refused with a warning.
        fill({{"E:\\Gone", e.home.filePath("gone")}});
        QCOMPARE(shown, (QStringList{"zentoria-no-editor is not on this computer.", "C:\\Music=" + a,
                                     "D:\\Rips=" + b, "F:\\Old=New=" + c,
                                     "zentoria-no-editor is not on this computer."}));
        QVERIFY(open);
        QCOMPARE(e.messages,
                 QStringList{"The folder \"" + e.home.filePath("gone") + "\" is not on this computer."});
        QCOMPARE(read(settings::PathMap), three);
    }
};

QTEST_MAIN(tst_EditActions)
#include "tst_editactions.moc"
