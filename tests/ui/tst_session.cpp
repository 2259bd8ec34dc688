#include "../report/ReportBuilder.h"
#include "MainWindowFixture.h"
#include "ui/common/CaptionLabel.h"
#include "ui/document/ReportDocument.h"

#include <QAccessible>
#include <QFocusFrame>
#include <QMenu>
#include <QScrollBar>
#include <QUrl>

#include <array>

using namespace zentoria;

namespace {

const QString kTitle = QStringLiteral("Melvadex's Zentoria");

// A report of these files, each with a problem kind (1, 2 or 0).
QByteArray reportOf(const QList<std::pair<QByteArray, int>>& files) {
    ReportBuilder report = ReportBuilder().start();
    for (const auto& [path, kind] : files) {
        report.record(path, std::array{kDetailID3v0, kDetailID3v1, kDetailID3v2}.at(kind));
    }
    return report.closing().bytes();
}

// A shown window whose settings are in this folder.
struct Session : HomeWindowFixture {
    CaptionLabel* address = child<CaptionLabel>("WEPath");

    using HomeWindowFixture::HomeWindowFixture;
    // The reports of File > Recent's items, top to bottom.
    QStringList recentMenu() {
        QStringList reports;
        for (QAction* item : child<QMenu>("mnuRecent")->actions()) {
            if (item->objectName().startsWith("submnuRecent")) {
                reports << item->data().toString();
            }
        }
        return reports;
    }
    QAction* recentItem(const QString& report) {
        return child<QAction>(
            ("submnuRecent" + QByteArray::number(recentMenu().indexOf(report) + 1)).constData());
    }
};

// Every object a screen reader finds in the window, but the menus, which name themselves: "role name".
QStringList accessibleObjects(QAccessibleInterface* object) {
    QStringList found;
    for (int i = 0; object && i < object->childCount(); ++i) {
        QAccessibleInterface* child = object->child(i);
        if (!child || child->role() == QAccessible::MenuBar) {
            continue;
        }
        if (!child->state().invisible) {
            found << QStringLiteral("%1 %2").arg(int(child->role())).arg(child->text(QAccessible::Name));
        }
        found += accessibleObjects(child);
    }
    return found;
}

} // namespace

class tst_Session : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_dir = std::make_unique<QTemporaryDir>(); }

    void titleAndAddressFollowTheReport() {
        Session s(file("config"));
        QCOMPARE(s.window.windowTitle(), kTitle);

        // A name with "&" shows it once, in the title and in the address.
        const QString report = file("Rock & Roll.vzt");
        writeFile(report, reportOf({{"C:\\Music\\a.mp3", 1}, {"C:\\Music\\b.mp3", 2}}));
        s.open(report);
        QCOMPARE(s.window.windowTitle(), "Rock & Roll.vzt — " + kTitle);
        QCOMPARE(s.address->text(), report);

        s.activate("ID3v2");
        QCOMPARE(s.address->text(), report + "\\Integrity Report\\ID3v2 not found");

        // Another report: its name, and nothing activated in it yet.
        const QString second = file("second.vzt");
        writeFile(second, reportOf({{"C:\\x.mp3", 0}}));
        s.open(second);
        QCOMPARE(s.window.windowTitle(), "second.vzt — " + kTitle);
        QCOMPARE(s.address->text(), second);

        // A file that is no report leaves both as they were.
        writeFile(file("bad.vzt"), "not a report\r\n");
        s.open(file("bad.vzt"));
        const QString title = "second.vzt — " + kTitle;
        const QString changed = "second.vzt (changed on disk — F5 to reload) — " + kTitle;
        QCOMPARE(s.window.windowTitle(), title);

        // Changed on disk: said in the title, nothing read behind the user's back, until F5.
        writeFile(second, reportOf({{"C:\\x.mp3", 0}, {"C:\\y.mp3", 1}}));
        QTRY_COMPARE(s.window.windowTitle(), changed);
        QCOMPARE(s.tree->nodes().entryCount(), 1);
        s.trigger("submnuReload");
        QCOMPARE(s.window.windowTitle(), title);
        QCOMPARE(s.tree->nodes().entryCount(), 2);
        // Replaced by a program that writes a new file and renames it over the old one: still noticed.
        writeFile(file("new.vzt"), reportOf({{"C:\\c.mp3", 2}}));
        QVERIFY(QFile::remove(second));
        QVERIFY(QFile::rename(file("new.vzt"), second));
        QTRY_COMPARE(s.window.windowTitle(), changed);
    }

    void dropping_data() {
        // "what": a file name in the test folder, "text" or "two".
        addColumns<QString, bool>("what", "opens");

        addRow("report", "dropped.vzt", true);
        addRow("report of an earlier version", "dropped.TXT", true);
        addRow("picture", "cover.png", false);
        addRow("two reports", "two", false);
        addRow("a path as text", "text", false);
    }

    void dropping() {
        QFETCH(QString, what);
        QFETCH(bool, opens);

        Session s(file("config"));
        const QByteArray report = reportOf({{"C:\\Music\\a.mp3", 1}});
        for (const char* name : {"dropped.vzt", "dropped.TXT", "cover.png", "other.vzt"}) {
            writeFile(file(name), report);
        }
        QMimeData data;
        if (what == "text") {
            data.setText(file("dropped.vzt"));
        } else if (what == "two") {
            data.setUrls({QUrl::fromLocalFile(file("dropped.vzt")), QUrl::fromLocalFile(file("other.vzt"))});
        } else {
            data.setUrls({QUrl::fromLocalFile(file(what))});
        }
        QCOMPARE(s.drop(data), opens);
        QCOMPARE(s.window.findChild<ReportDocument*>()->path(), opens ? file(what) : QString());
        QCOMPARE(s.messages,
                 opens ? QStringList()
                       : QStringList{"Only a Melvadex report can be dropped here: one .vzt or .txt file."});
    }

    void recentReports() {
        QStringList reports;
        for (int i = 1; i <= 9; ++i) {
            reports << file(QStringLiteral("report%1.vzt").arg(i));
            writeFile(reports.last(), reportOf({{"C:\\a.mp3", 1}}));
        }
        {
            Session s(file("config"));
            QCOMPARE(s.recentMenu(), QStringList());
            QVERIFY(!s.child<QAction>("submnuClearRecent")->isEnabled());
            for (const QString& report : reports) {
                s.open(report);
            }
            s.open(reports.at(4)); // opened again: first, and only once
            s.window.close();
        }
        // Across a restart: the last eight, newest first.
        Session s(file("config"));
        QCOMPARE(s.recentMenu(), (QStringList{reports[4], reports[8], reports[7], reports[6], reports[5],
                                              reports[3], reports[2], reports[1]}));

        // One that is gone: said, and removed.
        QVERIFY(QFile::remove(reports[7]));
        s.recentItem(reports[7])->trigger();
        QCOMPARE(s.messages.size(), 1);
        QVERIFY(s.messages.first().contains(reports[7]) && s.messages.first().contains("no longer exists"));
        QVERIFY(!s.recentMenu().contains(reports[7]));
        QCOMPARE(s.window.findChild<ReportDocument*>()->path(), QString());

        // One that is there opens.
        s.recentItem(reports[6])->trigger();
        QCOMPARE(s.recentMenu().first(), reports[6]);
        s.trigger("submnuClearRecent");
        QCOMPARE(s.recentMenu(), QStringList());
        Session again(file("config"));
        QCOMPARE(again.recentMenu(), QStringList());
    }

    void reloadKeepsTheView() {
        const QString report = file("report.vzt");
        writeFile(report, reportOf({{"C:\\b.mp3", 2}, {"C:\\a.mp3", 2}, {"C:\\c.mp3", 2}, {"C:\\d.mp3", 1}}));
        Session s(file("config"));
        s.open(report);
        s.activate("ID3v2");
        // Sorted descending by the first header click, and two files selected.
        QTest::mouseClick(s.list->header()->viewport(), Qt::LeftButton, {},
                          s.list->header()->rect().center());
        QCOMPARE(texts(s.list), (QStringList{"C:\\c.mp3", "C:\\b.mp3", "C:\\a.mp3"}));
        clickIndex(s.list, rowIndex(s.list, 0));
        clickIndex(s.list, rowIndex(s.list, 2), Qt::LeftButton, Qt::ControlModifier);
        QCOMPARE(s.selectedTexts(), (QStringList{"C:\\a.mp3", "C:\\c.mp3"}));

        // The file changes: c.mp3 fixed, e.mp3 new, a.mp3 now written in capitals.
        writeFile(report, reportOf({{"C:\\b.mp3", 2}, {"C:\\A.MP3", 2}, {"C:\\e.mp3", 2}, {"C:\\d.mp3", 1}}));
        QTest::keyClick(&s.window, Qt::Key_F5);

        QCOMPARE(s.list->listModel()->parentKey(), QStringLiteral("ID3v2"));
        QCOMPARE(texts(s.list), (QStringList{"C:\\e.mp3", "C:\\b.mp3", "C:\\A.MP3"}));
        QCOMPARE(s.selectedTexts(), QStringList{"C:\\A.MP3"});
        QCOMPARE(s.messages, QStringList());
    }

    void accessibleAndTabOrder() {
        Session s(file("config"));
        s.open(dataFile("mixed.vzt"));
        s.activate("ID3v2");
        clickIndex(s.list, rowIndex(s.list, 0));
        QTRY_VERIFY(!s.child<CaptionLabel>("WebItemName")->caption().isEmpty());
        // Every object shown has a name that says what it shows; no column is called by its number. An
        // empty text (the status bar's unused panels) says nothing at all.
        const QString emptyText = QString::number(int(QAccessible::StaticText)) + u' ';
        for (const QString& object : accessibleObjects(QAccessible::queryAccessibleInterface(&s.window))) {
            const QString name = object.section(u' ', 1);
            QVERIFY2((!name.isEmpty() || object == emptyText) && name != u"1", qPrintable(object));
        }
        QCOMPARE(s.tree->accessibleName(), QStringLiteral("Problem kinds"));
        QCOMPARE(s.list->accessibleName(), QStringLiteral("Files"));
        // Once the details are taller than the window, Tab goes tree, list, the details' scroll bar, which
        // shows it has the focus; away from it the right pane holds its three panes alone.
        s.open(writeGeneratedReport(file("large.vzt"), 2000));
        s.activate("ID3v1");
        s.list->setFocus();
        QTest::keyClick(s.list, Qt::Key_A, Qt::ControlModifier);
        auto* scroll = s.child<QScrollBar>("vsbBack");
        QTRY_VERIFY(scroll->isVisible());
        s.tree->setFocus();
        QTRY_VERIFY(s.tree->hasFocus());
        QTest::keyClick(s.tree, Qt::Key_Tab);
        QVERIFY(s.list->hasFocus());
        auto* focusMark = s.child<QFocusFrame>("vsbBackFocus");
        QTest::keyClick(s.list, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(scroll));
        QVERIFY(focusMark->isVisible());
        QTest::keyClick(scroll, Qt::Key_Backtab);
        QVERIFY(!focusMark->isVisible());
        QVERIFY(!s.child<QWidget>("pctBorders")->isAncestorOf(focusMark));
    }

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    QString file(const QString& name) const { return m_dir->filePath(name); }
};

QTEST_MAIN(tst_Session)
#include "tst_session.moc"
