#include "MainWindowFixture.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/ImageList.h"
#include "ui/common/Twips.h"
#include "ui/main/FileListView.h"
#include "ui/main/NodeCollection.h"
#include "ui/main/ReportTree.h"

#include <QLabel>
#include <QTemporaryDir>
#include <QTimer>

using namespace zentoria;

namespace {

// The tree, the list and the panel title of one shown main window.
struct Views : MainWindowFixture {
    ReportTree* tree = child<ReportTree>("TV");
    FileListView* list = child<FileListView>("LV");
    CaptionLabel* title = child<CaptionLabel>("lblWebFolder");

    explicit Views(const char* report = "mixed.vzt") {
        show();
        open(dataFile(report));
    }
    QTreeWidgetItem* node(const char* key) {
        return tree->item(tree->nodes().positionOf(QLatin1StringView(key)));
    }
    QStringList listKeys() const {
        QStringList keys;
        for (int i = 0; i < list->topLevelItemCount(); ++i) {
            keys << FileListView::key(list->topLevelItem(i));
        }
        return keys;
    }
};

const QString kWaterloo = QStringLiteral("C:\\Music\\Abba\\Waterloo.mp3");
const QString kSos = QStringLiteral("C:\\Music\\Abba\\SOS.mp3");
const QString kInnuendo = QStringLiteral("C:\\Music\\Queen\\Innuendo.mp3");

} // namespace

class tst_ReportViews : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nodeCollection();
    void treeOfAReport();
    void secondReportReplacesTheFirst();
    void clickKind_data();
    void clickKind();
    void clickRootChangesNothing();
    void clickEntryNode();
    void expandButtonClickIsSwallowed();
    void keyboardExpansionSwallowsTheNextActivation();
    void collapsingTheSelectedKind();
    void headerClicksSort();
    void rightClick();
    void listClicksArmTheRefresh();
    void doubleClickKeepsTheList();
    void reportDataIsPlainText();
    void walkStopsAtPosition32767();
    void mp3ImageWhenThereIsOne();
};

void tst_ReportViews::nodeCollection() {
    NodeCollection nodes;
    QCOMPARE(nodes.add({}, "Integrity", "Integrity Report"), 1);
    QCOMPARE(nodes.add("Integrity", "ID3v1", "ID3v1 not found"), 2);
    QCOMPARE(nodes.add("Integrity", "ID3v1", "again"), 0); // keys are unique
    QCOMPARE(nodes.add("ID3v9", "ID3v15", "orphan"), 0);   // the parent must exist
    QCOMPARE(nodes.add("ID3v1", "ID3v15", "  a.mp3 "), 3);
    QCOMPARE(nodes.count(), 3);
    QCOMPARE(nodes.positionOf("ID3v15"), 3);
    QCOMPARE(nodes.positionOf("nothing"), 0);
    QCOMPARE(nodes.parentKey(3), QStringLiteral("ID3v1"));
    QCOMPARE(nodes.parentKey(1), QString());
    QCOMPARE(nodes.childCount(1), 1);
    QCOMPARE(nodes.fullPath(1), QStringLiteral("Integrity Report"));
    QCOMPARE(nodes.fullPath(3), QStringLiteral("Integrity Report\\ID3v1 not found\\  a.mp3 "));
    nodes.clear();
    QCOMPARE(nodes.count(), 0);
    QCOMPARE(nodes.add({}, "Integrity", "x"), 1);
}

void tst_ReportViews::treeOfAReport() {
    Views v;
    const NodeCollection& nodes = v.tree->nodes();
    QStringList rows;
    for (int p = 1; p <= nodes.count(); ++p) {
        rows << nodes.key(p) + " < " + nodes.parentKey(p) + " : " + nodes.text(p);
    }
    QCOMPARE(
        rows,
        (QStringList{"Integrity <  : Integrity Report", "ID3v1 < Integrity : ID3v1 not found",
                     "ID3v2 < Integrity : ID3v2 not found", "ID3v0 < Integrity : No ID3 tags",
                     "ID3v11 < ID3v2 : " + kWaterloo,
                     "ID3v12 < ID3v1 : C:\\Music\\Queen\\Bohemian Rhapsody.mp3", "ID3v13 < ID3v2 : " + kSos,
                     "ID3v15 < ID3v0 :   C:\\Music\\Beatles\\Help.mp3  ", "ID3v16 < ID3v2 : " + kInnuendo}));
    QVERIFY(v.node("Integrity")->isExpanded());
    for (const char* kind : {"ID3v1", "ID3v2", "ID3v0"}) {
        QVERIFY2(!v.node(kind)->isExpanded(), kind);
        QVERIFY(!v.node(kind)->icon(0).isNull());
    }
    QVERIFY(v.node("ID3v11")->icon(0).isNull());
    QVERIFY(v.messages.isEmpty());
}

void tst_ReportViews::secondReportReplacesTheFirst() {
    Views v;
    clickExpandButton(v.tree, v.node("ID3v2"));
    QVERIFY(v.node("ID3v2")->isExpanded());
    clickItem(v.tree, v.node("ID3v2"));
    QCOMPARE(v.list->topLevelItemCount(), 3);

    v.open(dataFile("second.vzt"));
    QCOMPARE(v.tree->nodes().count(), 6);
    QCOMPARE(v.tree->nodes().text(5), QStringLiteral("D:\\Rips\\Track 01.mp3"));
    QCOMPARE(v.tree->nodes().key(6), QStringLiteral("ID3v12"));
    QVERIFY(!v.node("ID3v2")->isExpanded());
    QCOMPARE(v.list->topLevelItemCount(), 0);

    // A corrupted report leaves the second one on screen.
    v.open(dataFile("corrupted.txt"));
    QCOMPARE(v.messages, QStringList{"The file is corrupted"});
    QCOMPARE(v.tree->nodes().count(), 6);
}

void tst_ReportViews::clickKind_data() {
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QStringList>("files");

    QTest::newRow("ID3v1") << "ID3v1" << QStringList{"ID3v16"}
                           << QStringList{"C:\\Music\\Queen\\Bohemian Rhapsody.mp3"};
    QTest::newRow("ID3v2") << "ID3v2" << QStringList{"ID3v25", "ID3v27", "ID3v29"}
                           << QStringList{kWaterloo, kSos, kInnuendo};
    QTest::newRow("ID3v0 (trimmed)") << "ID3v0" << QStringList{"ID3v08"}
                                     << QStringList{"C:\\Music\\Beatles\\Help.mp3"};
}

void tst_ReportViews::clickKind() {
    QFETCH(QString, kind);
    QFETCH(QStringList, keys);
    QFETCH(QStringList, files);

    Views v;
    clickItem(v.tree, v.node(kind.toLatin1().constData()));
    QCOMPARE(v.listKeys(), keys);
    QCOMPARE(texts(v.list), files);
    QCOMPARE(v.title->caption(), v.node(kind.toLatin1().constData())->text(0));
    QCOMPARE(v.list->columnCount(), 1);
    QCOMPARE(v.list->headerItem()->text(0), QStringLiteral("MP3"));
    QCOMPARE(v.list->columnKey(0), QStringLiteral("File"));
    QCOMPARE(v.list->columnWidth(0), twipsToPixels(6500, logicalDpi(v.list)));
    QVERIFY(!v.list->isHeaderHidden());
    for (int i = 0; i < v.list->topLevelItemCount(); ++i) {
        QVERIFY(v.list->topLevelItem(i)->icon(0).isNull()); // no small icon
    }
}

void tst_ReportViews::clickRootChangesNothing() {
    Views v;
    clickItem(v.tree, v.node("ID3v2"));
    v.list->topLevelItem(1)->setSelected(true);
    clickItem(v.tree, v.node("Integrity"));
    QCOMPARE(v.listKeys(), (QStringList{"ID3v25", "ID3v27", "ID3v29"}));
    QVERIFY(v.list->topLevelItem(1)->isSelected());
    QCOMPARE(v.title->caption(), QStringLiteral("ID3v2 not found"));
}

void tst_ReportViews::clickEntryNode() {
    Views v;
    clickItem(v.tree, v.node("ID3v0"));
    QCOMPARE(v.list->topLevelItemCount(), 1);
    clickExpandButton(v.tree, v.node("ID3v0"));
    clickItem(v.tree, v.node("ID3v15"));
    QCOMPARE(v.list->topLevelItemCount(), 0);
    QCOMPARE(v.list->headerItem()->text(0), QStringLiteral("MP3"));
    QCOMPARE(v.title->caption(), QStringLiteral("  C:\\Music\\Beatles\\Help.mp3  "));
}

void tst_ReportViews::expandButtonClickIsSwallowed() {
    Views v;
    clickItem(v.tree, v.node("ID3v2"));
    clickExpandButton(v.tree, v.node("ID3v1"));
    QVERIFY(v.node("ID3v1")->isExpanded());
    QVERIFY(v.node("ID3v1")->isSelected());
    QCOMPARE(v.listKeys(), (QStringList{"ID3v25", "ID3v27", "ID3v29"}));
    QCOMPARE(v.title->caption(), QStringLiteral("ID3v2 not found"));

    clickItem(v.tree, v.node("ID3v1"));
    QCOMPARE(v.listKeys(), QStringList{"ID3v16"});
    QCOMPARE(v.title->caption(), QStringLiteral("ID3v1 not found"));
}

void tst_ReportViews::keyboardExpansionSwallowsTheNextActivation() {
    Views v;
    clickItem(v.tree, v.node("ID3v2"));
    QTest::keyClick(v.tree, Qt::Key_Up); // moves to "ID3v1 not found" without activating it
    QVERIFY(v.node("ID3v1")->isSelected());
    QTest::keyClick(v.tree, Qt::Key_Right);
    QVERIFY(v.node("ID3v1")->isExpanded());
    QCOMPARE(v.listKeys(), (QStringList{"ID3v25", "ID3v27", "ID3v29"}));

    // A click beside the nodes reaches the tree once: that one is swallowed, the next one activates.
    clickEmptySpace(v.tree);
    QCOMPARE(v.listKeys(), (QStringList{"ID3v25", "ID3v27", "ID3v29"}));
    clickEmptySpace(v.tree);
    QCOMPARE(v.listKeys(), QStringList{"ID3v16"});

    // A click on a node reaches it twice, so after another keyboard expansion the second run activates.
    QTest::keyClick(v.tree, Qt::Key_Down);
    QTest::keyClick(v.tree, Qt::Key_Down);
    QTest::keyClick(v.tree, Qt::Key_Right);
    QVERIFY(v.node("ID3v2")->isExpanded());
    clickItem(v.tree, v.node("ID3v0"));
    QCOMPARE(v.listKeys(), QStringList{"ID3v08"});
}

void tst_ReportViews::collapsingTheSelectedKind() {
    Views v;
    clickExpandButton(v.tree, v.node("ID3v2"));
    clickItem(v.tree, v.node("ID3v2"));
    QCOMPARE(v.list->topLevelItemCount(), 3);
    clickItem(v.list, v.list->topLevelItem(2));
    QVERIFY(v.list->topLevelItem(2)->isSelected());

    clickExpandButton(v.tree, v.node("ID3v2"));
    QVERIFY(!v.node("ID3v2")->isExpanded());
    // Not refilled: a refill would have dropped the selection.
    QVERIFY(v.list->topLevelItem(2)->isSelected());

    // Collapsing a kind whose entry is selected selects the kind; that click is swallowed too.
    clickExpandButton(v.tree, v.node("ID3v1"));
    clickItem(v.tree, v.node("ID3v12"));
    QCOMPARE(v.title->caption(), QStringLiteral("C:\\Music\\Queen\\Bohemian Rhapsody.mp3"));
    clickExpandButton(v.tree, v.node("ID3v1"));
    QVERIFY(v.node("ID3v1")->isSelected());
    QCOMPARE(v.title->caption(), QStringLiteral("C:\\Music\\Queen\\Bohemian Rhapsody.mp3"));
}

void tst_ReportViews::headerClicksSort() {
    Views v;
    clickItem(v.tree, v.node("ID3v2"));
    QCOMPARE(texts(v.list), (QStringList{kWaterloo, kSos, kInnuendo}));
    QHeaderView* header = v.list->header();
    const QPoint onHeader(header->sectionViewportPosition(0) + 10, header->height() / 2);

    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, onHeader);
    QCOMPARE(v.list->sortOrder(), 1);
    QCOMPARE(texts(v.list), (QStringList{kInnuendo, kWaterloo, kSos}));
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, onHeader);
    QCOMPARE(v.list->sortOrder(), 0);
    QCOMPARE(texts(v.list), (QStringList{kSos, kWaterloo, kInnuendo}));

    // The order holds for the window's life: the next activation and the next report keep it.
    clickItem(v.tree, v.node("ID3v1"));
    clickItem(v.tree, v.node("ID3v2"));
    QCOMPARE(texts(v.list), (QStringList{kSos, kWaterloo, kInnuendo}));
    QCOMPARE(v.listKeys(), (QStringList{"ID3v27", "ID3v25", "ID3v29"}));
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, onHeader);
    v.open(dataFile("mixed.vzt"));
    clickItem(v.tree, v.node("ID3v2"));
    QCOMPARE(texts(v.list), (QStringList{kInnuendo, kWaterloo, kSos}));
}

void tst_ReportViews::rightClick() {
    Views v;
    clickItem(v.tree, v.node("ID3v2"));
    clickItem(v.list, v.list->topLevelItem(0));
    clickItem(v.list, v.list->topLevelItem(2), Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(v.list->selectedItems().size(), 3);

    // Below the last row: nothing there, nothing changes.
    QTest::mousePress(v.list->viewport(), Qt::RightButton, {}, QPoint(20, v.list->viewport()->height() - 3));
    QTest::mouseRelease(v.list->viewport(), Qt::RightButton, {},
                        QPoint(20, v.list->viewport()->height() - 3));
    QCOMPARE(v.list->selectedItems().size(), 3);

    clickItem(v.list, v.list->topLevelItem(1), Qt::RightButton);
    QCOMPARE(v.list->selectedItems(), QList<QTreeWidgetItem*>{v.list->topLevelItem(1)});
    QCOMPARE(v.list->currentItem(), v.list->topLevelItem(1));
}

void tst_ReportViews::listClicksArmTheRefresh() {
    Views v;
    auto* refresh = v.child<QTimer>("ShowSelectedItems");
    QTRY_VERIFY(!refresh->isActive()); // the load sequence's refresh has run
    clickItem(v.tree, v.node("ID3v2"));
    QVERIFY(!refresh->isActive());
    clickItem(v.list, v.list->topLevelItem(1));
    QVERIFY(refresh->isActive());
    QCOMPARE(refresh->interval(), 150);
    QTRY_VERIFY(!refresh->isActive());
    clickEmptySpace(v.list);
    QVERIFY(refresh->isActive());
}

void tst_ReportViews::doubleClickKeepsTheList() {
    Views v;
    clickItem(v.tree, v.node("ID3v2"));
    clickItem(v.list, v.list->topLevelItem(1));
    QTest::mouseDClick(v.list->viewport(), Qt::LeftButton, {}, itemPoint(v.list, v.list->topLevelItem(1)));
    QCOMPARE(v.listKeys(), (QStringList{"ID3v25", "ID3v27", "ID3v29"}));
    QCOMPARE(v.list->selectedItems(), QList<QTreeWidgetItem*>{v.list->topLevelItem(1)});
    QCOMPARE(v.title->caption(), QStringLiteral("ID3v2 not found"));
}

void tst_ReportViews::reportDataIsPlainText() {
    Views v("markup.vzt");
    clickItem(v.tree, v.node("ID3v1"));
    QCOMPARE(texts(v.list), (QStringList{"<b>x</b>.mp3", "C:\\Rock & Roll\\<i>y</i>.mp3"}));
    clickExpandButton(v.tree, v.node("ID3v1"));
    clickItem(v.tree, v.node("ID3v11"));
    QCOMPARE(v.title->text(), QStringLiteral("<b>x</b>.mp3"));
    QCOMPARE(v.title->textFormat(), Qt::PlainText);
    QCOMPARE(v.tree->currentItem()->text(0), QStringLiteral("<b>x</b>.mp3"));
}

void tst_ReportViews::walkStopsAtPosition32767() {
    QTemporaryDir dir;
    QFile file(dir.filePath("largest.vzt"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QByteArray bytes = "   This file was created with Melvadex (By Orsolt)\r\n\r\n\r\n\r\n\r\n\r\n\r\n";
    for (int i = 1; i <= 32766; ++i) {
        bytes += "C:\\Music\\" + QByteArray::number(i) +
                 ".mp3\r\n  Melvadex could not get the ID3v1 information\r\n\r\n";
    }
    bytes += "Date of creation: today\r\n";
    file.write(bytes);
    file.close();

    MainWindowFixture w;
    w.show();
    w.open(file.fileName());
    auto* tree = w.child<ReportTree>("TV");
    auto* list = w.child<FileListView>("LV");
    QCOMPARE(tree->nodes().count(), 4 + 32766);
    clickItem(tree, tree->item(2));
    // Positions 5 to 32767 are listed; the three entries behind them are out of the walk's reach.
    QCOMPARE(list->topLevelItemCount(), 32763);
    QCOMPARE(FileListView::key(list->topLevelItem(32762)), QStringLiteral("ID3v132767"));
}

void tst_ReportViews::mp3ImageWhenThereIsOne() {
    // Without the desktop's MP3 image the icon steps are skipped: the files are listed all the same.
    Views without;
    clickItem(without.tree, without.node("ID3v2"));
    QCOMPARE(without.list->topLevelItemCount(), 3);
    QVERIFY(FileListView::largeIcon(without.list->topLevelItem(0)).isNull());
    QVERIFY(without.child<QLabel>("ImgIcon")->pixmap().isNull());

    Views with;
    QPixmap note(32, 32);
    note.fill(Qt::darkBlue);
    const QIcon mp3(note);
    with.child<ImageList>("ImgDirTree")->add("MP3", mp3);
    clickItem(with.tree, with.node("ID3v2"));
    QCOMPARE(with.list->topLevelItemCount(), 3);
    for (int i = 0; i < 3; ++i) {
        QTreeWidgetItem* item = with.list->topLevelItem(i);
        QCOMPARE(FileListView::largeIcon(item).cacheKey(), mp3.cacheKey()); // the large icon only
        QVERIFY(item->icon(0).isNull());
    }
    QVERIFY(!with.child<QLabel>("ImgIcon")->pixmap().isNull());
}

QTEST_MAIN(tst_ReportViews)
#include "tst_reportviews.moc"
