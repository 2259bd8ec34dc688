#include "MainWindowFixture.h"
#include "report/NodeCollection.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/Twips.h"
#include "ui/views/FileListModel.h"
#include "ui/views/FileListView.h"
#include "ui/views/ReportTree.h"

#include <QAbstractItemModelTester>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QStyleOptionHeader>
#include <QTemporaryDir>

using namespace zentoria;

namespace {

struct Views : MainWindowFixture {
    CaptionLabel* title = child<CaptionLabel>("lblWebFolder");

    explicit Views(const QString& report = dataFile("mixed.vzt")) {
        show();
        open(report);
    }
    QModelIndex node(const QString& key) const { return indexOfKey(tree, key); }
    QModelIndex item(int row) const { return rowIndex(list, row); }
    QModelIndex selectedNode() const { return tree->selectionModel()->selectedIndexes().value(0); }
};

const QString kWaterloo = QStringLiteral("C:\\Music\\Abba\\Waterloo.mp3");
const QString kSos = QStringLiteral("C:\\Music\\Abba\\SOS.mp3");
const QString kInnuendo = QStringLiteral("C:\\Music\\Queen\\Innuendo.mp3");

// Does what a user does: "ID3v2" clicks that node, "+ID3v2" its expand button, "#1" the list's row 1
// ("shift#1", "right#1", "double#1" likewise; a row past the last is the space below it), and anything
// else is a key pressed where the focus is.
void perform(Views& v, const QString& step) {
    if (step.contains(u'#')) {
        const QString how = step.section(u'#', 0, 0);
        const int row = step.section(u'#', 1).toInt();
        const QPoint at = row < v.list->model()->rowCount() ? indexPoint(v.list, v.item(row))
                                                            : QPoint(20, v.list->viewport()->height() - 3);
        if (how == "double") {
            QTest::mouseDClick(v.list->viewport(), Qt::LeftButton, {}, at);
        } else {
            QTest::mouseClick(v.list->viewport(), how == "right" ? Qt::RightButton : Qt::LeftButton,
                              how == "shift" ? Qt::ShiftModifier : Qt::NoModifier, at);
        }
    } else if (step.startsWith(u'+')) {
        clickExpandButton(v.tree, v.node(step.mid(1)));
    } else if (const QModelIndex node = v.node(step); node.isValid()) {
        clickIndex(v.tree, node);
    } else {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(QKeySequence(step)[0].key()));
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
    // A kind's files, as read (the paths trimmed), listed in its one column; the title is the kind's caption.
    void clickKind_data() {
        addColumns<QString, QStringList>("kind", "files");

        addRow("ID3v1", "ID3v1", QStringList{"C:\\Music\\Queen\\Bohemian Rhapsody.mp3"});
        addRow("ID3v2", "ID3v2", QStringList{kWaterloo, kSos, kInnuendo});
        addRow("ID3v0 (trimmed)", "ID3v0", QStringList{"C:\\Music\\Beatles\\Help.mp3"});
    }

    void clickKind() {
        QFETCH(QString, kind);
        QFETCH(QStringList, files);

        Views v;
        const QModelIndex node = v.node(kind);
        clickIndex(v.tree, node);
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
        // A selection shows fainter in the pane that has not the focus.
        for (QAbstractItemView* view : QList<QAbstractItemView*>{v.tree, v.list}) {
            QVERIFY(view->palette().color(QPalette::Inactive, QPalette::Highlight) !=
                    view->palette().color(QPalette::Active, QPalette::Highlight));
        }
    }

    // A user's path through the tree and the list, and the state it leaves: the selected node and the open
    // ones | the list's keys | its selected rows, the current one starred | the title | how often the list
    // was filled.
    void treeAndListPaths_data() {
        addColumns<QStringList, QString>("steps", "state");

        // A click on a node activates it twice; the root lists nothing and leaves the list alone, a double
        // click in the list does nothing, an entry empties the list and shows its path as read.
        const QString id3v2 = "ID3v25 ID3v27 ID3v29";
        addRow("root and double click", QStringList{"ID3v2", "#1", "Integrity", "double#1"},
               "Integrity Integrity | " + id3v2 + " | 1* | ID3v2 not found | 2");
        addRow("an entry", QStringList{"ID3v2", "+ID3v0", "ID3v15"},
               "ID3v15 Integrity ID3v0 |  |  |   C:\\Music\\Beatles\\Help.mp3   | 4");
        // A key move activates once.
        addRow("Down twice", QStringList{"Integrity", "Down", "Down"},
               "ID3v2 Integrity | " + id3v2 + " |  | ID3v2 not found | 2");
        addRow("Right on the open root", QStringList{"Integrity", "Right"},
               "ID3v1 Integrity | ID3v16 |  | ID3v1 not found | 1");
        addRow("End, Home, Down", QStringList{"Integrity", "End", "Home", "Down"},
               "ID3v1 Integrity | ID3v16 |  | ID3v1 not found | 2");
        addRow("Down, Page Up", QStringList{"Integrity", "Down", "PgUp"},
               "Integrity Integrity | ID3v16 |  | ID3v1 not found | 1");
        addRow("type-ahead", QStringList{"Integrity", "N"}, "ID3v0 Integrity | ID3v08 |  | No ID3 tags | 1");
        addRow("Up at the top", QStringList{"Integrity", "Up"}, "Integrity Integrity |  |  | Zentoria | 0");
        // Expanding or collapsing swallows the activation it causes, or with the keyboard the next one; a
        // collapse that hides the selected entry selects its kind. The list is not refilled: it keeps its
        // selection.
        addRow("expand button", QStringList{"ID3v2", "+ID3v1"},
               "ID3v1 Integrity ID3v1 | " + id3v2 + " |  | ID3v2 not found | 2");
        addRow("then a click", QStringList{"ID3v2", "+ID3v1", "ID3v1"},
               "ID3v1 Integrity ID3v1 | ID3v16 |  | ID3v1 not found | 4");
        addRow("Right expands", QStringList{"ID3v2", "Right", "Up"},
               "ID3v1 Integrity ID3v2 | " + id3v2 + " |  | ID3v2 not found | 2");
        addRow("then moves", QStringList{"ID3v2", "Right", "Up", "Up", "Down"},
               "ID3v1 Integrity ID3v2 | ID3v16 |  | ID3v1 not found | 3");
        addRow("collapsing the listed kind", QStringList{"+ID3v2", "ID3v2", "#2", "+ID3v2"},
               "ID3v2 Integrity | " + id3v2 + " | 2* | ID3v2 not found | 2");
        addRow("collapsing the selected entry's kind", QStringList{"+ID3v1", "ID3v12", "+ID3v1"},
               "ID3v1 Integrity |  |  | C:\\Music\\Queen\\Bohemian Rhapsody.mp3 | 2");
        // Tab goes to the list, whose first Down selects its first file; a right click selects the file
        // under it, below the rows it changes nothing.
        addRow("Tab, Down", QStringList{"ID3v2", "Tab", "Down"},
               "ID3v2 Integrity | " + id3v2 + " | 0* | ID3v2 not found | 2");
        addRow("Tab, Down, Down", QStringList{"ID3v2", "Tab", "Down", "Down"},
               "ID3v2 Integrity | " + id3v2 + " | 1* | ID3v2 not found | 2");
        addRow("right click below", QStringList{"ID3v2", "#0", "shift#2", "right#3"},
               "ID3v2 Integrity | " + id3v2 + " | 0 1 2* | ID3v2 not found | 2");
        addRow("right click", QStringList{"ID3v2", "#0", "shift#2", "right#1"},
               "ID3v2 Integrity | " + id3v2 + " | 1* | ID3v2 not found | 2");
    }

    void treeAndListPaths() {
        QFETCH(QStringList, steps);
        QFETCH(QString, state);

        Views v;
        QSignalSpy fills(v.list->model(), &QAbstractItemModel::modelReset);
        for (const QString& step : std::as_const(steps)) {
            perform(v, step);
        }
        QStringList nodes{v.selectedNode().data(Qt::UserRole).toString()};
        for (const char* key : {"Integrity", "ID3v1", "ID3v2", "ID3v0"}) {
            if (v.tree->isExpanded(v.node(key))) {
                nodes << key;
            }
        }
        QStringList rows;
        for (const int row : selectedRows(v.list)) {
            rows << QString::number(row) + (row == v.list->currentIndex().row() ? "*" : "");
        }
        const QStringList seen{nodes.join(' '), keys(v.list).join(' '), rows.join(' '), v.title->caption(),
                               QString::number(fills.size())};
        QCOMPARE(seen.join(" | "), state);
        // A list once filled keeps its column, empty or not.
        if (!fills.isEmpty()) {
            QCOMPARE(v.list->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("MP3"));
        }
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

        // The folders every report tree has (the root at 1, the kinds at 2 to 4), then the entries.
        NodeCollection nodes;
        nodes.add({}, "Integrity", "Integrity Report");
        for (ProblemKind kind : {ProblemKind::ID3v1, ProblemKind::ID3v2, ProblemKind::ID3v0}) {
            nodes.add("Integrity", kindCode(kind), kindCaption(kind));
        }
        for (int i = 0; i < paths.size(); ++i) {
            nodes.addEntry({qint16(i + 1), ProblemKind::ID3v1, paths[i]});
        }
        FileListModel model(nodes);
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setSingleColumn("File", "MP3");
        model.setItems("ID3v1", nodes.children(2), {});
        QVERIFY(!model.isSorted());

        // A new sort, then the same list turned round, then round again: each as if sorted anew. Indexes held
        // across a sort, as the view's selection is, follow their files; new items are sorted the way the
        // list is.
        for (const Qt::SortOrder order : {Qt::DescendingOrder, Qt::AscendingOrder, Qt::DescendingOrder}) {
            const QStringList unsorted = rows(model);
            QList<QPersistentModelIndex> held;
            for (int row = 0; row < model.rowCount(); ++row) {
                held << model.index(row, 0);
            }
            model.sort(0, order);
            const QStringList& expected = order == Qt::AscendingOrder ? ascending : descending;
            QCOMPARE(rows(model), expected);
            for (int i = 0; i < held.size(); ++i) {
                QCOMPARE(held[i].data(FileListModel::KeyRole).toString() + ' ' + held[i].data().toString(),
                         unsorted[i]);
            }
            model.setItems("ID3v1", nodes.children(2), {});
            QCOMPARE(rows(model), expected);
        }
    }
};

QTEST_MAIN(tst_ReportViews)
#include "tst_reportviews.moc"
