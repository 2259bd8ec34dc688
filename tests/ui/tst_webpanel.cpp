#include "MainWindowFixture.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/Twips.h"
#include "ui/panel/WebPanel.h"

#include <QLabel>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QTimer>

using namespace zentoria;

namespace {

const QString kBold = QStringLiteral("C:\\Music\\<b>Bold</b>.mp3");

struct Panel : MainWindowFixture {
    QTimer* refresh = child<QTimer>("ShowSelectedItems");
    CaptionLabel* title = child<CaptionLabel>("lblWebFolder");
    CaptionLabel* name = child<CaptionLabel>("WebItemName");
    CaptionLabel* kind = child<CaptionLabel>("WebItemType");
    CaptionLabel* tip = child<CaptionLabel>("WebToolTip");
    CaptionLabel* info = child<CaptionLabel>("lblInfo");
    QWidget* line = child<QWidget>("pctWebLine");
    QWidget* panel = child<QWidget>("pctWeb");
    QScrollBar* scroll = child<QScrollBar>("vsbBack");

    explicit Panel(const QString& report = dataFile("panel.vzt")) {
        show();
        open(report);
        settle();
    }
    void settle() const { QTRY_VERIFY(!refresh->isActive()); }
    void clickRow(int row, Qt::KeyboardModifiers modifiers = {}) {
        clickIndex(list, rowIndex(list, row), Qt::LeftButton, modifiers);
    }
    // Every label of the panel at or below the one above it, as a reader goes down the panel.
    void verifyStacked() const {
        const QList<QWidget*> topToBottom{title, line, name, kind, tip, info};
        for (qsizetype i = 1; i < topToBottom.size(); ++i) {
            const TwipsRect above = geometryTwips(topToBottom[i - 1]);
            QVERIFY2(geometryTwips(topToBottom[i]).Top >= above.Top + above.Height - 0.5,
                     qPrintable(topToBottom[i]->objectName()));
        }
    }
};

} // namespace

class tst_WebPanel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void selection_data() {
        addColumns<QString, QList<int>, QString, QString, QString>("kindKey", "rows", "caption", "shown",
                                                                   "kind");

        addRow("ampersand", "ID3v1", QList<int>{0}, "C:\\Music\\Rock && Roll\\Track.mp3",
               "C:\\Music\\Rock & Roll\\Track.mp3", "ID3v1 not found");
        addRow("markup", "ID3v1", QList<int>{1}, kBold, kBold, "ID3v1 not found");
        addRow("kind 2, capital N", "ID3v2", QList<int>{0}, "D:\\Other.mp3", "D:\\Other.mp3",
               "ID3v2 Not found");
        // Several files: a count line, two empty ones, then a name a line. The list has one column: the
        // details add nothing, not an empty line per file.
        addRow("three files", "ID3v1", QList<int>{0, 1, 2}, "", "",
               "3 files selected (ID3v1 not found).\r\r\rC:\\Music\\Rock && Roll\\Track.mp3\r" + kBold +
                   "\rC:\\Music\\Plain.mp3");
    }

    void selection() {
        QFETCH(QString, kindKey);
        QFETCH(QList<int>, rows);
        QFETCH(QString, caption);
        QFETCH(QString, shown);
        QFETCH(QString, kind);

        Panel p;
        p.activate(kindKey.toLatin1().constData());
        // A click empties the fields at once; the refresh describes the selection as it is when the timer
        // fires, once for clicks within its interval.
        QSignalSpy ticks(p.refresh, &QTimer::timeout);
        for (qsizetype i = 0; i < rows.size(); ++i) {
            p.clickRow(rows[i], i > 0 ? Qt::ControlModifier : Qt::NoModifier);
        }
        QVERIFY(p.refresh->isActive());
        QCOMPARE(p.name->caption(), QString());
        p.settle();
        QTest::qWait(2 * p.refresh->interval());
        QCOMPARE(ticks.size(), 1);
        QCOMPARE((QStringList{p.name->caption(), p.name->text(), p.kind->caption(), p.info->caption()}),
                 (QStringList{caption, shown, kind, QString()}));
        QCOMPARE(p.name->textFormat(), Qt::PlainText);
        // Each carriage return is a line on screen.
        QVERIFY(p.kind->wrappedText().rows().size() > kind.count(u'\r'));
        QVERIFY(!p.tip->isVisible());
        QCOMPARE(geometryTwips(p.name).Top, geometryTwips(p.line).Top + geometryTwips(p.line).Height + 30);
        QCOMPARE(geometryTwips(p.info).Width, 2515.0);
        p.verifyStacked();
    }

    void columnDetails_data() {
        addColumns<int, QString>("length", "shownValue");

        const QString value = QString(1200, u'x');
        addRow("1200 characters, whole", 1200, value);
        addRow("1201 characters, cut", 1201, value + " ...\r");
    }

    void columnDetails() {
        QFETCH(int, length);
        QFETCH(QString, shownValue);

        // The program's list has one column; the panel describes the further columns of any list.
        QStandardItemModel model(3, 5);
        model.setHorizontalHeaderLabels({"MP3", "Artist & Band", "Comment", "Hidden", "Empty"});
        for (int row = 0; row < 3; ++row) {
            model.setData(model.index(row, 0), "ID3v2" + QString::number(row + 5), Qt::UserRole);
        }
        model.setData(model.index(2, 1), "AC&DC");
        model.setData(model.index(2, 2), QString(length, u'x'));
        model.setData(model.index(2, 3), "a column of width 0");
        QTreeView list;
        list.setModel(&model);
        list.setSelectionMode(QAbstractItemView::ExtendedSelection);
        list.header()->setMinimumSectionSize(0);
        list.setColumnWidth(3, 0);
        WebPanel panel(nullptr);
        panel.describe(&list);
        auto* info = panel.findChild<CaptionLabel*>("lblInfo");
        auto* kind = panel.findChild<CaptionLabel*>("WebItemType");

        list.setCurrentIndex(model.index(2, 0));
        panel.ShowSelectionInfo();
        QCOMPARE(kind->caption(), QStringLiteral("ID3v2 Not found"));
        QCOMPARE(info->caption(), "Artist && Band: AC&&DC\r\n\r\nComment: " + shownValue + "\r\n\r\n");
        // Several files: each one's second column on a line of its own.
        list.selectionModel()->select(model.index(1, 0),
                                      QItemSelectionModel::Select | QItemSelectionModel::Rows);
        panel.ShowSelectionInfo();
        QCOMPARE(info->caption(), QStringLiteral("\r\rAC&&DC\r"));
    }

    void iconStack() {
        WebPanel panel(nullptr);
        panel.prepare();
        auto* icon = panel.findChild<QLabel*>("ImgIcon");
        const auto copies = [&panel] { return panel.findChildren<QLabel*>("ImgOthers"); };
        // Started without a picture: no copies behind it.
        QVERIFY(std::ranges::all_of(copies(), &QWidget::isHidden));
        QPixmap note(32, 32);
        note.fill(Qt::darkBlue);
        icon->setPixmap(note);
        for (bool others : {true, false}) {
            panel.LoadOtherImages(others);
            QCOMPARE(copies().size(), 2); // element 1 is made once and used again
            for (QLabel* copy : copies()) {
                const int index = copy->property("index").toInt();
                QCOMPARE(geometryTwips(copy).Left, geometryTwips(icon).Left + 100 * (index + 1));
                QCOMPARE(geometryTwips(copy).Top, geometryTwips(icon).Top - 50 * (index + 1));
                QCOMPARE(copy->pixmap().cacheKey(), icon->pixmap().cacheKey());
                QCOMPARE(copy->isHidden(), !others);
                QVERIFY(panel.children().indexOf(copy) < panel.children().indexOf(icon)); // behind the icon
            }
        }
    }

    void largeSelection() {
        QTemporaryDir dir;
        // Sixteen thousand files of one kind, and one of another.
        Panel p(
            writeGeneratedReport(dir.filePath("large.vzt"), 16383, "Track.mp3",
                                 "D:\\Other.mp3\r\n  Melvadex could not get the ID3v2 information\r\n\r\n"));
        p.activate("ID3v1");
        QCOMPARE(p.list->model()->rowCount(), 16383);
        p.list->setFocus();
        QTest::keyClick(p.list, Qt::Key_A, Qt::ControlModifier);
        p.settle();
        QVERIFY(p.kind->caption().startsWith(
            "16383 files selected (ID3v1 not found).\r\r\rC:\\Music\\Artist 1\\1 - Track.mp3\r"));
        QVERIFY(p.kind->caption().endsWith("\rC:\\Music\\Artist 283\\16383 - Track.mp3"));
        QVERIFY(p.kind->wrappedText().rows().size() > 16383);

        // The panel's scroll bar reaches the last name, in coarser steps than twips.
        QVERIFY(p.scroll->isVisible());
        QCOMPARE(p.scroll->maximum(), 32767);
        p.scroll->setValue(p.scroll->maximum());
        const auto* borders = p.panel->parentWidget();
        const QPoint lastLine = p.kind->mapTo(borders, QPoint(0, p.kind->height() - 1));
        QVERIFY2(lastLine.y() < borders->height() && lastLine.y() > 0,
                 qPrintable(QString::number(lastLine.y())));
        // The scroll bar stands on the list's left edge: the rows and the header start right of it.
        const auto underFirstCharacter = [&p, borders] {
            return borders->childAt(p.list->viewport()->mapTo(
                borders, p.list->visualRect(rowIndex(p.list, 0)).topLeft() + QPoint(2, 4)));
        };
        QCOMPARE(underFirstCharacter(), p.list->viewport());
        const QPoint headerStart =
            p.list->header()->mapTo(borders, QPoint(2, p.list->header()->height() / 2));
        QVERIFY(p.list->header()->isAncestorOf(borders->childAt(headerStart)));

        // Keys on the panel's scroll bar scroll the panel by a line, or a page, and skip nothing; the
        // focus and the selection stay.
        p.scroll->setValue(0);
        p.scroll->setFocus();
        const double line = pixelsToTwips(p.kind->fontMetrics().lineSpacing(), logicalDpi(p.kind));
        const double page = geometryTwips(p.list).Height;
        for (const auto& [key, least, most] :
             {std::tuple{Qt::Key_Down, 1.0, line}, std::tuple{Qt::Key_PageDown, page / 2, page}}) {
            const double before = geometryTwips(p.panel).Top;
            QTest::keyClick(p.scroll, key);
            const double moved = before - geometryTwips(p.panel).Top;
            QVERIFY2(moved >= least && moved <= most, qPrintable(QString::number(moved)));
            QVERIFY(p.scroll->hasFocus());
            QCOMPARE(p.list->selectionModel()->selectedRows().size(), 16383);
        }
        // A change made with the mouse gives the keyboard back to the list.
        QTest::mouseClick(p.scroll, Qt::LeftButton, {},
                          QPoint(p.scroll->width() / 2, p.scroll->height() - 30));
        QTRY_VERIFY(p.list->hasFocus());

        // Without the panel nothing of it stays over the list: its first character is the list's. With
        // it again, the layout pass alone places it, and its scroll bar is back.
        p.scroll->setValue(0);
        p.trigger("submnuWebStyle");
        QVERIFY(!p.scroll->isVisible());
        QCOMPARE(underFirstCharacter(), p.list->viewport());
        p.trigger("submnuWebStyle");
        QVERIFY(p.scroll->isVisible());
        QCOMPARE(geometryTwips(p.panel), (TwipsRect{0, 0, 2895, geometryTwips(p.list).Height + 540}));
        p.window.FitWebPanel();

        // Scrolled to its end, then another kind: the panel shows that kind's caption and picture.
        QTest::keyClick(p.scroll, Qt::Key_End);
        p.activate("ID3v2");
        p.settle();
        for (const QWidget* part : {static_cast<QWidget*>(p.title), p.child<QWidget>("ImgIcon")}) {
            QVERIFY2(borders->rect().contains(QRect(part->mapTo(borders, QPoint()), part->size())),
                     part->objectName().toLatin1());
        }
        QCOMPARE(p.title->caption(), QStringLiteral("ID3v2 not found"));
    }

    void followsTheSelectionWhateverChangesIt() {
        Panel p;
        p.activate("ID3v1");
        p.clickRow(0);
        p.clickRow(3, Qt::ShiftModifier);
        p.settle();
        QVERIFY(p.kind->caption().startsWith("4 files selected (ID3v1 not found)."));
        // A right click leaves one file selected: the panel names that one.
        clickIndex(p.list, rowIndex(p.list, 1), Qt::RightButton);
        p.settle();
        QCOMPARE(p.name->caption(), kBold);
        // Nothing selected any more: nothing of the earlier selection stays.
        p.clickRow(1, Qt::ControlModifier);
        p.settle();
        QCOMPARE(p.name->caption() + p.kind->caption(), QString());
        // Another kind refills the list with nothing selected: the panel is empty of items, after one
        // file selected as after several.
        for (const int last : {3, 0}) {
            p.activate(last ? "ID3v1" : "ID3v2");
            p.clickRow(0);
            p.clickRow(last, Qt::ShiftModifier);
            p.settle();
            p.activate(last ? "ID3v2" : "ID3v1");
            p.settle();
            QCOMPARE(p.name->caption() + p.kind->caption() + p.info->caption(), QString());
        }
        // Another report: the program's name as title, and nothing of the earlier one.
        p.clickRow(0);
        p.open(dataFile("mixed.vzt"));
        QCOMPARE(p.title->caption(), QStringLiteral("Zentoria"));
        QCOMPARE(p.name->caption() + p.kind->caption() + p.tip->caption() + p.info->caption(), QString());
        QVERIFY(!p.refresh->isActive());
        p.verifyStacked();
    }
};

QTEST_MAIN(tst_WebPanel)
#include "tst_webpanel.moc"
