#include "TestData.h"
#include "ui/views/FileListModel.h"
#include "ui/views/NodeCollection.h"

#include <QAbstractItemModelTester>
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
    void listSorting_data();
    void listSorting();
    void sortKeepsTheSelection();
};

void tst_ReportModels::listSorting_data() {
    addColumns<QStringList, QStringList, QStringList>("paths", "ascending", "descending");

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
