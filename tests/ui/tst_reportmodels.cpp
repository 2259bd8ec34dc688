#include "TestData.h"
#include "ui/main/CaseInsensitiveOrder.h"
#include "ui/main/FileListModel.h"
#include "ui/main/NodeCollection.h"
#include "ui/main/ReportTreeModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace zentoria;

namespace {

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

class tst_ReportModels : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nodeCollection();
    void keysAreParsed_data();
    void keysAreParsed();
    void treeModel();
    void caseInsensitiveOrder_data();
    void caseInsensitiveOrder();
    void listSorting_data();
    void listSorting();
    void sortKeepsTheSelection();
};

void tst_ReportModels::nodeCollection() {
    NodeCollection nodes;
    addFolders(nodes);
    QCOMPARE(nodes.addEntry(entry(1, ProblemKind::ID3v2, "C:\\a.mp3")), 5);
    QCOMPARE(nodes.addEntry(entry(3, ProblemKind::ID3v1, "  C:\\b.mp3 ")), 6);
    QCOMPARE(nodes.addEntry(entry(12, ProblemKind::ID3v2, "C:\\c.mp3")), 7);
    QCOMPARE(nodes.count(), 7);

    QStringList table;
    for (int p = 1; p <= nodes.count(); ++p) {
        table << QStringLiteral("%1 %2<%3 #%4 row %5: %6")
                     .arg(p)
                     .arg(nodes.key(p), nodes.parentKey(p))
                     .arg(nodes.childCount(p))
                     .arg(nodes.row(p))
                     .arg(nodes.text(p));
    }
    QCOMPARE(
        table,
        (QStringList{"1 Integrity< #3 row 0: Integrity Report", "2 ID3v1<Integrity #1 row 0: ID3v1 not found",
                     "3 ID3v2<Integrity #2 row 1: ID3v2 not found", "4 ID3v0<Integrity #0 row 2: No ID3 tags",
                     "5 ID3v11<ID3v2 #0 row 0: C:\\a.mp3", "6 ID3v13<ID3v1 #0 row 0:   C:\\b.mp3 ",
                     "7 ID3v112<ID3v2 #0 row 1: C:\\c.mp3"}));
    QCOMPARE(nodes.children(3), (QList<int>{5, 7}));
    QCOMPARE(nodes.children(0), (QList<int>{1}));
    QCOMPARE(nodes.fullPath(1), QStringLiteral("Integrity Report"));
    QCOMPARE(nodes.fullPath(6), QStringLiteral("Integrity Report\\ID3v1 not found\\  C:\\b.mp3 "));

    nodes.clear();
    QCOMPARE(nodes.positionOf(u"ID3v11"), 0);
}

void tst_ReportModels::keysAreParsed_data() {
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("position");

    addRow("root", "Integrity", 1);
    addRow("first entry", "ID3v11", 5);
    addRow("entry with a gap before it", "ID3v13", 6);
    addRow("largest ordinal", "ID3v132767", 8);
    addRow("ordinal in the gap", "ID3v12", 0);
    addRow("leading zero", "ID3v101", 0);
    addRow("not a number", "ID3v11x", 0);
    addRow("past 16 bits", "ID3v132768", 0);
    addRow("small letters", "id3v11", 0);
}

void tst_ReportModels::keysAreParsed() {
    QFETCH(QString, key);
    QFETCH(int, position);

    NodeCollection nodes;
    addFolders(nodes);
    nodes.addEntry(entry(1, ProblemKind::ID3v1, "a"));
    nodes.addEntry(entry(3, ProblemKind::ID3v0, "b"));
    nodes.addEntry(entry(32766, ProblemKind::ID3v2, "c"));
    nodes.addEntry(entry(32767, ProblemKind::ID3v2, "d"));
    QCOMPARE(nodes.positionOf(key), position);
    if (position) {
        QCOMPARE(nodes.key(position), key);
    }
}

void tst_ReportModels::treeModel() {
    ReportTreeModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);

    model.addNode({}, "Integrity", "Integrity Report");
    for (ProblemKind kind : {ProblemKind::ID3v1, ProblemKind::ID3v2, ProblemKind::ID3v0}) {
        model.addNode("Integrity", kindCode(kind), kindCaption(kind));
    }
    model.addEntry(entry(1, ProblemKind::ID3v2, "one at a time"));
    QCOMPARE(inserted.size(), 5);
    QCOMPARE(model.rowCount(model.indexOf(3)), 1);
    {
        const ReportTreeModel::EntryBatch batch(model, 4);
        model.addEntry(entry(2, ProblemKind::ID3v1, "a"));
        model.addEntry(entry(3, ProblemKind::ID3v2, "b"));
        model.addEntry(entry(4, ProblemKind::ID3v1, "c"));
        // Views learn of the batch when it ends.
        QCOMPARE(model.rowCount(model.indexOf(2)), 0);
        QVERIFY(!model.indexOf(6).isValid());
        QCOMPARE(inserted.size(), 5);
    }
    // One insertion per kind that got entries.
    QCOMPARE(inserted.size(), 7);
    QCOMPARE(inserted.at(5).at(0).toModelIndex(), model.indexOf(2));
    QCOMPARE(inserted.at(5).at(1).toInt(), 0);
    QCOMPARE(inserted.at(5).at(2).toInt(), 1);
    QCOMPARE(model.rowCount(model.indexOf(3)), 2);

    const QModelIndex c = model.indexOf(8);
    QCOMPARE(c.data().toString(), QStringLiteral("c"));
    QCOMPARE(c.data(ReportTreeModel::KeyRole).toString(), QStringLiteral("ID3v14"));
    QCOMPARE(c.row(), 1);
    QCOMPARE(c.parent(), model.indexOf(2));
    QCOMPARE(ReportTreeModel::positionOf(c), 8);
    QVERIFY(c.data(Qt::DecorationRole).isNull());
    QVERIFY(c.flags() & Qt::ItemNeverHasChildren);
    QVERIFY(!model.hasChildren(c));
    QVERIFY(model.hasChildren(model.indexOf(2)));
    QVERIFY(!model.hasChildren(model.indexOf(4)));

    model.clear();
    QCOMPARE(model.rowCount(), 0);
}

void tst_ReportModels::caseInsensitiveOrder_data() {
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");

    addRow("case only", "C:\\MUSIC\\A.MP3", "c:\\music\\a.mp3");
    addRow("case, then letter", "C:\\Music\\Ab.mp3", "C:\\music\\aC.mp3");
    addRow("prefix", "C:\\Music", "c:\\music\\a.mp3");
    // Folded capitals sort after the punctuation between the two alphabets.
    addRow("capital against bracket", "A", "[");
    addRow("umlaut case", "Ärger.mp3", "ärger.mp3");
    addRow("umlaut against ASCII", "Ärger.mp3", "Arger.mp3");
    addRow("accent against next letter", "é.mp3", "f.mp3");
    addRow("sharp s", "straße", "STRASSE");
    addRow("surrogate pair case", "a\U00010400b", "A\U00010428b");
    addRow("surrogate pair, then letter", "a\U00010400b", "a\U00010428c");
    addRow("lone surrogate", QString(QChar(0xD801)), QString(QChar(0xDC00)));
}

void tst_ReportModels::caseInsensitiveOrder() {
    QFETCH(QString, a);
    QFETCH(QString, b);

    const auto sign = [](int n) { return (n > 0) - (n < 0); };
    const int expected = sign(QStringView(a).compare(b, Qt::CaseInsensitive));
    QCOMPARE(sign(compareCaseInsensitive(a, b)), expected);
    QCOMPARE(sign(compareCaseInsensitive(b, a)), -expected);
}

void tst_ReportModels::listSorting_data() {
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<QStringList>("ascending");
    QTest::addColumn<QStringList>("descending");

    // Entries 1.. at positions 5.., all of kind ID3v1, listed with keys "ID3v1" + position.
    addRow("letter case aside, equal texts in tree order",
           QStringList{"b.mp3", "a.mp3", "  A.mp3", "B.MP3", "a.mp3"},
           QStringList{"ID3v16 a.mp3", "ID3v17 A.mp3", "ID3v19 a.mp3", "ID3v15 b.mp3", "ID3v18 B.MP3"},
           QStringList{"ID3v15 b.mp3", "ID3v18 B.MP3", "ID3v16 a.mp3", "ID3v17 A.mp3", "ID3v19 a.mp3"});
    addRow("the text as listed, trimmed", QStringList{" c", "b ", "  a  "},
           QStringList{"ID3v17 a", "ID3v16 b", "ID3v15 c"}, QStringList{"ID3v15 c", "ID3v16 b", "ID3v17 a"});
    addRow("all equal", QStringList{"x", "X", "x"}, QStringList{"ID3v15 x", "ID3v16 X", "ID3v17 x"},
           QStringList{"ID3v15 x", "ID3v16 X", "ID3v17 x"});
}

void tst_ReportModels::listSorting() {
    QFETCH(QStringList, paths);
    QFETCH(QStringList, ascending);
    QFETCH(QStringList, descending);

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

void tst_ReportModels::sortKeepsTheSelection() {
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

QTEST_GUILESS_MAIN(tst_ReportModels)
#include "tst_reportmodels.moc"
