#include "MainWindowFixture.h"
#include "report/NodeCollection.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/ImageList.h"
#include "ui/common/Twips.h"
#include "ui/views/FileListModel.h"
#include "ui/views/FileListView.h"
#include "ui/views/ReportTree.h"

#include <QAbstractItemModelTester>
#include <QLabel>
#include <QScopeGuard>
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

ReportEntry entry(int ordinal, ProblemKind kind, const QString& path) {
    return {qint16(ordinal), kind, path};
}

// The folders every report tree has: the root at 1, the kinds "ID3v1", "ID3v2", "ID3v0" at 2 to 4.
void addFolders(NodeCollection& nodes) {
    nodes.add({}, "Integrity", "Integrity Report");
    for (ProblemKind kind : {ProblemKind::ID3v1, ProblemKind::ID3v2, ProblemKind::ID3v0}) {
        nodes.add("Integrity", kindCode(kind), kindCaption(kind));
    }
}

// The list's rows as "key text", top to bottom.
QStringList rows(const FileListModel& model) {
    QStringList out;
    for (int row = 0; row < model.rowCount(); ++row) {
        out << model.key(row) + ' ' + model.index(row, 0).data().toString();
    }
    return out;
}

} // namespace

class tst_ReportViews : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void clickKind_data() {
        addColumns<QString, QStringList, QStringList>("kind", "keys", "files");

        addRow("ID3v1", "ID3v1", QStringList{"ID3v16"},
               QStringList{"C:\\Music\\Queen\\Bohemian Rhapsody.mp3"});
        addRow("ID3v2", "ID3v2", kID3v2Keys, QStringList{kWaterloo, kSos, kInnuendo});
        addRow("ID3v0 (trimmed)", "ID3v0", QStringList{"ID3v08"},
               QStringList{"C:\\Music\\Beatles\\Help.mp3"});
    }

    void clickKind() {
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
        // Every name shows whole in the list: the column is as wide as the list, not its design width.
        QCOMPARE(v.list->columnWidth(0), v.list->viewport()->width());
        QVERIFY(!v.list->isHeaderHidden());
        for (int row = 0; row < model->rowCount(); ++row) {
            QVERIFY(v.item(row).data(Qt::DecorationRole).isNull()); // no small icon
            QVERIFY(!model->hasChildren(v.item(row)));
        }
    }

    void activationsThatListNothing() {
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

    void expandButtonClickIsSwallowed() {
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

    void keysMoveAndActivate_data() {
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

    void keysMoveAndActivate() {
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
        QCOMPARE(refills.size(),
                 activations); // one activation per move: the click notification is the mouse's
        if (activations > 0 && selected != QLatin1StringView("Integrity")) {
            QCOMPARE(v.title->caption(), v.selectedNode().data().toString());
        }
    }

    void keyboardExpansionSwallowsTheNextActivation() {
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

    void collapsingTheSelectedKind() {
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

    void headerClicksSort() {
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
        // Its sort indicator stands where the list ends, however wide the column.
        QStyleOptionHeader section;
        section.initFrom(header);
        section.state |= QStyle::State_Horizontal;
        section.rect = QRect(header->sectionViewportPosition(0), 0, header->sectionSize(0), header->height());
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

    void rightClick() {
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

    void reportDataIsPlainText() {
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

    void everyFileOfTheLargestReportIsListed() {
        QTemporaryDir dir;
        Views v(writeGeneratedReport(dir.filePath("largest.vzt"), 32766));
        clickIndex(v.tree, v.node("ID3v1"));
        QCOMPARE(v.list->model()->rowCount(), 32766);
        QCOMPARE(v.item(32765).data().toString(), QStringLiteral("C:\\Music\\Artist 566\\32766 - Track.mp3"));
    }

    void theKeyboardsPlaceShows() {
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

    void listSorting_data() {
        addColumns<QStringList, QStringList, QStringList, QString>("paths", "ascending", "descending",
                                                                   "locale");

        // Entries 1.. at positions 5.., all of kind ID3v1, listed with keys "ID3v1" + position.
        addRow("letter case aside, equal texts in tree order",
               QStringList{"b.mp3", "a.mp3", "  A.mp3", "B.MP3", "a.mp3"},
               QStringList{"ID3v16 a.mp3", "ID3v17 A.mp3", "ID3v19 a.mp3", "ID3v15 b.mp3", "ID3v18 B.MP3"},
               QStringList{"ID3v15 b.mp3", "ID3v18 B.MP3", "ID3v16 a.mp3", "ID3v17 A.mp3", "ID3v19 a.mp3"},
               "C");
        addRow("the text as listed, trimmed", QStringList{" c", "b ", "  a  "},
               QStringList{"ID3v17 a", "ID3v16 b", "ID3v15 c"},
               QStringList{"ID3v15 c", "ID3v16 b", "ID3v17 a"}, "C");
        addRow("all equal", QStringList{"x", "X", "x"}, QStringList{"ID3v15 x", "ID3v16 X", "ID3v17 x"},
               QStringList{"ID3v15 x", "ID3v16 X", "ID3v17 x"}, "C");
        addRow("accents as the locale collates", QStringList{"Specials", "Sébastien", "Z", "Édith", "edith"},
               QStringList{"ID3v19 edith", "ID3v18 Édith", "ID3v16 Sébastien", "ID3v15 Specials", "ID3v17 Z"},
               QStringList{"ID3v17 Z", "ID3v15 Specials", "ID3v16 Sébastien", "ID3v18 Édith", "ID3v19 edith"},
               "en_US");
        addRow("letter case aside there too", QStringList{"b", "A", "a", "B"},
               QStringList{"ID3v16 A", "ID3v17 a", "ID3v15 b", "ID3v18 B"},
               QStringList{"ID3v15 b", "ID3v18 B", "ID3v16 A", "ID3v17 a"}, "de_DE");
    }

    void listSorting() {
        QFETCH(QStringList, paths);
        QFETCH(QStringList, ascending);
        QFETCH(QStringList, descending);
        QFETCH(QString, locale);
        const QLocale before;
        QLocale::setDefault(QLocale(locale));
        const auto restore = qScopeGuard([&before] { QLocale::setDefault(before); });

        NodeCollection nodes;
        addFolders(nodes);
        for (int i = 0; i < paths.size(); ++i) {
            nodes.addEntry(entry(i + 1, ProblemKind::ID3v1, paths[i]));
        }
        FileListModel model(nodes);
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setSingleColumn("File", "MP3");
        model.setItems("ID3v1", nodes.children(2), {});
        QVERIFY(!model.isSorted());

        // A new sort, then the same list turned round, then round again: each as if sorted anew.
        model.sort(0, Qt::DescendingOrder);
        QCOMPARE(rows(model), descending);
        model.sort(0, Qt::AscendingOrder);
        QCOMPARE(rows(model), ascending);
        model.sort(0, Qt::DescendingOrder);
        QCOMPARE(rows(model), descending);

        // New items are sorted the way the list is.
        model.setItems("ID3v1", nodes.children(2), {});
        QCOMPARE(rows(model), descending);
        model.sort(0, Qt::AscendingOrder);
        model.setItems("ID3v1", nodes.children(2), {});
        QCOMPARE(rows(model), ascending);
    }

    void sortKeepsTheSelection() {
        NodeCollection nodes;
        addFolders(nodes);
        const QStringList paths{"d", "b", "c", "a"};
        for (int i = 0; i < paths.size(); ++i) {
            nodes.addEntry(entry(i + 1, ProblemKind::ID3v2, paths[i]));
        }
        FileListModel model(nodes);
        model.setSingleColumn("File", "MP3");
        model.setItems("ID3v2", nodes.children(3), {});
        const QPersistentModelIndex b = model.index(1, 0);
        const QPersistentModelIndex a = model.index(3, 0);

        model.sort(0, Qt::AscendingOrder);
        QCOMPARE(a.row(), 0);
        QCOMPARE(b.row(), 1);
        QCOMPARE(b.data().toString(), QStringLiteral("b"));
        model.sort(0, Qt::DescendingOrder);
        QCOMPARE(a.row(), 3);
        QCOMPARE(b.data(FileListModel::KeyRole).toString(), QStringLiteral("ID3v26"));
    }
};

QTEST_MAIN(tst_ReportViews)
#include "tst_reportviews.moc"
