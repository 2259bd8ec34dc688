#include "MainWindowFixture.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/ImageList.h"
#include "ui/common/Twips.h"
#include "ui/views/FileListView.h"
#include "ui/views/ReportTree.h"

#include <QLabel>
#include <QSignalSpy>
#include <QStyleOptionHeader>
#include <QTemporaryDir>

using namespace zentoria;

namespace {

// The tree, the list and the panel title of one shown main window with a report open.
struct Views : MainWindowFixture {
    CaptionLabel* title = child<CaptionLabel>("lblWebFolder");

    explicit Views(const QString& report = dataFile("mixed.vzt")) {
        show();
        open(report);
    }
    QModelIndex node(const char* key) const { return indexOfKey(tree, QLatin1StringView(key)); }
    QModelIndex item(int row) const { return rowIndex(list, row); }
    QModelIndex selectedNode() const { return tree->selectionModel()->selectedIndexes().value(0); }
};

const QString kWaterloo = QStringLiteral("C:\\Music\\Abba\\Waterloo.mp3");
const QString kSos = QStringLiteral("C:\\Music\\Abba\\SOS.mp3");
const QString kInnuendo = QStringLiteral("C:\\Music\\Queen\\Innuendo.mp3");
const QStringList kID3v2Keys{"ID3v25", "ID3v27", "ID3v29"};

} // namespace

class tst_ReportViews : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void clickKind_data();
    void clickKind();
    void activationsThatListNothing();
    void expandButtonClickIsSwallowed();
    void keysMoveAndActivate_data();
    void keysMoveAndActivate();
    void keyboardExpansionSwallowsTheNextActivation();
    void collapsingTheSelectedKind();
    void headerClicksSort();
    void rightClick();
    void reportDataIsPlainText();
    void everyFileOfTheLargestReportIsListed();
    void theKeyboardsPlaceShows();
};

void tst_ReportViews::clickKind_data() {
    addColumns<QString, QStringList, QStringList>("kind", "keys", "files");

    addRow("ID3v1", "ID3v1", QStringList{"ID3v16"}, QStringList{"C:\\Music\\Queen\\Bohemian Rhapsody.mp3"});
    addRow("ID3v2", "ID3v2", kID3v2Keys, QStringList{kWaterloo, kSos, kInnuendo});
    addRow("ID3v0 (trimmed)", "ID3v0", QStringList{"ID3v08"}, QStringList{"C:\\Music\\Beatles\\Help.mp3"});
}

void tst_ReportViews::clickKind() {
    QFETCH(QString, kind);
    QFETCH(QStringList, keys);
    QFETCH(QStringList, files);

    Views v;
    QSignalSpy refills(v.list->model(), &QAbstractItemModel::modelReset);
    const QModelIndex node = v.node(kind.toLatin1().constData());
    clickIndex(v.tree, node);
    QCOMPARE(refills.size(), 2); // a click on a node activates it twice
    QCOMPARE(::keys(v.list), keys);
    QCOMPARE(texts(v.list), files);
    QCOMPARE(v.title->caption(), node.data().toString());
    QAbstractItemModel* model = v.list->model();
    QCOMPARE(model->columnCount(), 1);
    QCOMPARE(model->headerData(0, Qt::Horizontal).toString(), QStringLiteral("MP3"));
    QCOMPARE(v.list->columnKey(0), QStringLiteral("File"));
    QCOMPARE(v.list->columnWidth(0), twipsToPixels(6500, logicalDpi(v.list)));
    QVERIFY(!v.list->isHeaderHidden());
    for (int row = 0; row < model->rowCount(); ++row) {
        QVERIFY(v.item(row).data(Qt::DecorationRole).isNull()); // no small icon
        QVERIFY(!model->hasChildren(v.item(row)));
    }
}

void tst_ReportViews::activationsThatListNothing() {
    Views v;
    clickIndex(v.tree, v.node("ID3v2"));
    clickIndex(v.list, v.item(1));
    // The root and a double click in the list leave the list, its selection and the title alone.
    clickIndex(v.tree, v.node("Integrity"));
    QTest::mouseDClick(v.list->viewport(), Qt::LeftButton, {}, indexPoint(v.list, v.item(1)));
    QCOMPARE(keys(v.list), kID3v2Keys);
    QCOMPARE(selectedRows(v.list), QList<int>{1});
    QCOMPARE(v.title->caption(), QStringLiteral("ID3v2 not found"));
    // An entry has no children: the list empties, keeps its column, and the title is the path as read.
    clickExpandButton(v.tree, v.node("ID3v0"));
    clickIndex(v.tree, v.node("ID3v15"));
    QCOMPARE(v.list->model()->rowCount(), 0);
    QCOMPARE(v.list->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("MP3"));
    QCOMPARE(v.title->caption(), QStringLiteral("  C:\\Music\\Beatles\\Help.mp3  "));
}

void tst_ReportViews::expandButtonClickIsSwallowed() {
    Views v;
    clickIndex(v.tree, v.node("ID3v2"));
    clickExpandButton(v.tree, v.node("ID3v1"));
    QVERIFY(v.tree->isExpanded(v.node("ID3v1")));
    QCOMPARE(v.selectedNode(), v.node("ID3v1"));
    QCOMPARE(keys(v.list), kID3v2Keys);
    QCOMPARE(v.title->caption(), QStringLiteral("ID3v2 not found"));

    clickIndex(v.tree, v.node("ID3v1"));
    QCOMPARE(keys(v.list), QStringList{"ID3v16"});
    QCOMPARE(v.title->caption(), QStringLiteral("ID3v1 not found"));
}

void tst_ReportViews::keysMoveAndActivate_data() {
    addColumns<QList<int>, QString, QStringList, int>("keys", "selected", "listed", "activations");

    const QStringList id3v1{"ID3v16"};
    const QStringList id3v0{"ID3v08"};
    addRow("Down twice", QList<int>{Qt::Key_Down, Qt::Key_Down}, "ID3v2", kID3v2Keys, 2);
    addRow("Right on the open root", QList<int>{Qt::Key_Right}, "ID3v1", id3v1, 1);
    addRow("End, Home, Down", QList<int>{Qt::Key_End, Qt::Key_Home, Qt::Key_Down}, "ID3v1", id3v1,
           2); // the root lists nothing
    addRow("Down, Page Up", QList<int>{Qt::Key_Down, Qt::Key_PageUp}, "Integrity", id3v1, 1);
    addRow("type-ahead", QList<int>{Qt::Key_N}, "ID3v0", id3v0, 1);
    addRow("Up at the top", QList<int>{Qt::Key_Up}, "Integrity", QStringList{}, 0);
}

void tst_ReportViews::keysMoveAndActivate() {
    QFETCH(QList<int>, keys);
    QFETCH(QString, selected);
    QFETCH(QStringList, listed);
    QFETCH(int, activations);

    Views v;
    clickIndex(v.tree, v.node("Integrity"));
    QSignalSpy refills(v.list->model(), &QAbstractItemModel::modelReset);
    for (int key : std::as_const(keys)) {
        QTest::keyClick(v.tree, Qt::Key(key));
    }
    QCOMPARE(v.selectedNode().data(Qt::UserRole).toString(), selected);
    QCOMPARE(::keys(v.list), listed);
    QCOMPARE(refills.size(), activations); // one activation per move: the click notification is the mouse's
    if (activations > 0 && selected != QLatin1StringView("Integrity")) {
        QCOMPARE(v.title->caption(), v.selectedNode().data().toString());
    }
}

void tst_ReportViews::keyboardExpansionSwallowsTheNextActivation() {
    Views v;
    clickIndex(v.tree, v.node("ID3v2"));
    QTest::keyClick(v.tree, Qt::Key_Right);
    QVERIFY(v.tree->isExpanded(v.node("ID3v2")));
    QCOMPARE(keys(v.list), kID3v2Keys);

    // The next activation is swallowed whatever it is; the one after works.
    QTest::keyClick(v.tree, Qt::Key_Up);
    QCOMPARE(v.selectedNode(), v.node("ID3v1"));
    QCOMPARE(keys(v.list), kID3v2Keys);
    QCOMPARE(v.title->caption(), QStringLiteral("ID3v2 not found"));
    QTest::keyClick(v.tree, Qt::Key_Up);
    QTest::keyClick(v.tree, Qt::Key_Down);
    QCOMPARE(keys(v.list), QStringList{"ID3v16"});
}

void tst_ReportViews::collapsingTheSelectedKind() {
    Views v;
    clickExpandButton(v.tree, v.node("ID3v2"));
    clickIndex(v.tree, v.node("ID3v2"));
    QCOMPARE(v.list->model()->rowCount(), 3);
    clickIndex(v.list, v.item(2));
    QCOMPARE(selectedRows(v.list), QList<int>{2});

    clickExpandButton(v.tree, v.node("ID3v2"));
    QVERIFY(!v.tree->isExpanded(v.node("ID3v2")));
    // Not refilled: a refill would have dropped the selection.
    QCOMPARE(selectedRows(v.list), QList<int>{2});

    // Collapsing a kind whose entry is selected selects the kind; that click is swallowed too.
    clickExpandButton(v.tree, v.node("ID3v1"));
    clickIndex(v.tree, v.node("ID3v12"));
    QCOMPARE(v.title->caption(), QStringLiteral("C:\\Music\\Queen\\Bohemian Rhapsody.mp3"));
    clickExpandButton(v.tree, v.node("ID3v1"));
    QCOMPARE(v.selectedNode(), v.node("ID3v1"));
    QCOMPARE(v.title->caption(), QStringLiteral("C:\\Music\\Queen\\Bohemian Rhapsody.mp3"));
}

void tst_ReportViews::headerClicksSort() {
    Views v;
    clickIndex(v.tree, v.node("ID3v2"));
    QCOMPARE(texts(v.list), (QStringList{kWaterloo, kSos, kInnuendo}));
    QHeaderView* header = v.list->header();
    const QPoint onHeader(header->sectionViewportPosition(0) + 10, header->height() / 2);

    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, onHeader);
    QCOMPARE(v.list->sortOrder(), 1);
    QCOMPARE(texts(v.list), (QStringList{kInnuendo, kWaterloo, kSos}));
    QVERIFY(header->isSortIndicatorShown());
    QCOMPARE(header->sortIndicatorOrder(), Qt::DescendingOrder);
    // The column is wider than the list shows; its sort indicator stands where the list ends.
    QStyleOptionHeader section;
    section.initFrom(header);
    section.state |= QStyle::State_Horizontal;
    section.rect = QRect(header->sectionViewportPosition(0), 0, header->sectionSize(0), header->height());
    QVERIFY(section.rect.right() > header->width());
    const QRect arrow = header->style()->subElementRect(QStyle::SE_HeaderArrow, &section, header);
    QVERIFY2(header->rect().contains(arrow), qPrintable(QDebug::toString(arrow)));
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, onHeader);
    QCOMPARE(v.list->sortOrder(), 0);
    QCOMPARE(texts(v.list), (QStringList{kSos, kWaterloo, kInnuendo}));

    // The order holds for the window's life: the next activation and the next report keep it.
    clickIndex(v.tree, v.node("ID3v1"));
    clickIndex(v.tree, v.node("ID3v2"));
    QCOMPARE(texts(v.list), (QStringList{kSos, kWaterloo, kInnuendo}));
    QCOMPARE(keys(v.list), (QStringList{"ID3v27", "ID3v25", "ID3v29"}));
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, onHeader);
    v.open(dataFile("mixed.vzt"));
    clickIndex(v.tree, v.node("ID3v2"));
    QCOMPARE(texts(v.list), (QStringList{kInnuendo, kWaterloo, kSos}));
    QCOMPARE(header->sortIndicatorOrder(), Qt::DescendingOrder);
}

void tst_ReportViews::rightClick() {
    Views v;
    clickIndex(v.tree, v.node("ID3v2"));
    clickIndex(v.list, v.item(0));
    clickIndex(v.list, v.item(2), Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(selectedRows(v.list), (QList<int>{0, 1, 2}));

    // Below the last row: nothing there, nothing changes.
    const QPoint below(20, v.list->viewport()->height() - 3);
    QTest::mousePress(v.list->viewport(), Qt::RightButton, {}, below);
    QTest::mouseRelease(v.list->viewport(), Qt::RightButton, {}, below);
    QCOMPARE(selectedRows(v.list), (QList<int>{0, 1, 2}));

    clickIndex(v.list, v.item(1), Qt::RightButton);
    QCOMPARE(selectedRows(v.list), QList<int>{1});
    QCOMPARE(v.list->currentIndex(), v.item(1));
}

void tst_ReportViews::reportDataIsPlainText() {
    Views v(dataFile("markup.vzt"));
    clickIndex(v.tree, v.node("ID3v1"));
    QCOMPARE(texts(v.list), (QStringList{"<b>x</b>.mp3", "C:\\Rock & Roll\\<i>y</i>.mp3"}));
    clickExpandButton(v.tree, v.node("ID3v1"));
    clickIndex(v.tree, v.node("ID3v11"));
    QCOMPARE(v.title->text(), QStringLiteral("<b>x</b>.mp3"));
    QCOMPARE(v.title->textFormat(), Qt::PlainText);
    QCOMPARE(v.tree->currentIndex().data().toString(), QStringLiteral("<b>x</b>.mp3"));
    // The title keeps an "&" of the path as typed; the line under it moves with its height.
    clickIndex(v.tree, v.node("ID3v12"));
    QCOMPARE(v.title->caption(), QStringLiteral("C:\\Rock && Roll\\<i>y</i>.mp3"));
    QCOMPARE(v.title->text(), QStringLiteral("C:\\Rock & Roll\\<i>y</i>.mp3"));
    const TwipsRect title = geometryTwips(v.title);
    QCOMPARE(geometryTwips(v.child<QWidget>("pctWebLine")).Top, title.Top + title.Height);
}

void tst_ReportViews::everyFileOfTheLargestReportIsListed() {
    QTemporaryDir dir;
    Views v(writeGeneratedReport(dir.filePath("largest.vzt"), 32766));
    clickIndex(v.tree, v.node("ID3v1"));
    QCOMPARE(v.list->model()->rowCount(), 32766);
    QCOMPARE(v.item(32765).data().toString(), QStringLiteral("C:\\Music\\Artist 566\\32766 - Track.mp3"));
}

void tst_ReportViews::theKeyboardsPlaceShows() {
    Views v;
    clickIndex(v.tree, v.node("ID3v2"));
    QTest::keyClick(v.tree, Qt::Key_Tab);
    QVERIFY(v.list->hasFocus());
    // The first Down in a list with nothing selected selects its first file.
    QTest::keyClick(v.list, Qt::Key_Down);
    QCOMPARE(selectedRows(v.list), QList<int>{0});
    QTest::keyClick(v.list, Qt::Key_Down);
    QCOMPARE(selectedRows(v.list), QList<int>{1});
    // A selection shows fainter in the pane that has not the focus.
    for (QAbstractItemView* view :
         {static_cast<QAbstractItemView*>(v.tree), static_cast<QAbstractItemView*>(v.list)}) {
        QVERIFY(view->palette().color(QPalette::Inactive, QPalette::Highlight) !=
                view->palette().color(QPalette::Active, QPalette::Highlight));
    }
}

QTEST_MAIN(tst_ReportViews)
#include "tst_reportviews.moc"
