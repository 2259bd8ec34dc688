#include "BenchmarkRatio.h"
#include "LargestReport.h"
#include "report/ReportReader.h"
#include "settings/Preferences.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/CommonDialog.h"
#include "ui/main/frmMain.h"
#include "ui/panel/WebPanel.h"
#include "ui/views/FileListView.h"
#include "ui/views/ReportTree.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QHeaderView>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

using namespace zentoria;

namespace {

// The largest report, in a file.
struct LargestReport {
    QTemporaryDir dir;
    QString path = dir.filePath(QStringLiteral("largest.vzt"));
    int largestKind = kLargestKindFiles;

    LargestReport() {
        QFile file(path);
        if (file.open(QIODevice::WriteOnly)) {
            file.write(largestReportBytes());
        }
    }
};

const LargestReport& largestReport() {
    static const LargestReport report;
    return report;
}

// What the user waits for after an action: the work the views put off (their item layout) and the
// repaint, which run as soon as the event loop gets control.
void settle() {
    QCoreApplication::processEvents();
}

// A shown main window, with the largest report open and its largest kind listed when asked.
struct Shown {
    std::unique_ptr<frmMain> window = std::make_unique<frmMain>();
    ReportTree* tree = window->findChild<ReportTree*>(QStringLiteral("TV"));
    FileListView* list = window->findChild<FileListView*>(QStringLiteral("LV"));

    explicit Shown(bool listLargestKind = false) {
        window->Form_Load();
        window->messageBoxes().setAnswerer([](const QString&) {});
        window->show();
        if (!QTest::qWaitForWindowExposed(window.get())) {
            std::fprintf(stderr, "the window did not show\n");
        }
        if (listLargestKind) {
            QString path = largestReport().path;
            window->OpenFile(path);
            clickLargestKind();
            settle();
        }
    }
    void clickLargestKind() {
        const QModelIndex kind = tree->indexOf(tree->nodes().positionOf(u"ID3v2"));
        tree->scrollTo(kind);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(kind).center());
    }
    void clickHeader() {
        QTest::mouseClick(list->header()->viewport(), Qt::LeftButton, {},
                          QPoint(10, list->header()->height() / 2));
    }
    bool listsLargestKind() const { return list->model()->rowCount() == largestReport().largestKind; }
};

// The floor of OpenFile: reading the same file alone, into the entries it shows.
void BM_ReadReport(benchmark::State& state) {
    for (auto _ : state) {
        QFile file(largestReport().path);
        if (!file.open(QIODevice::ReadOnly)) {
            state.SkipWithError("the report cannot be opened");
            break;
        }
        DeviceLineSource source(file);
        auto result = std::make_unique<ReportReadResult>(ReadReport(source));
        state.PauseTiming();
        result.reset();
        state.ResumeTiming();
    }
}

void BM_OpenFile(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto shown = std::make_unique<Shown>();
        QString path = largestReport().path;
        state.ResumeTiming();
        shown->window->OpenFile(path);
        settle();
        state.PauseTiming();
        shown.reset();
        state.ResumeTiming();
    }
}

// The old floor of OpenFile, kept for comparison: as many plain items as the report has entries, added
// one at a time under a collapsed node of a shown, bare tree widget.
void BM_TreeFloor(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto tree = std::make_unique<QTreeWidget>();
        tree->show();
        auto* parent = new QTreeWidgetItem(tree.get(), {QStringLiteral("kind")});
        state.ResumeTiming();
        for (int i = 1; i <= kMaxRecords; ++i) {
            parent->addChild(
                new QTreeWidgetItem({QStringLiteral("C:\\Music\\Artist\\%1 - Track.mp3").arg(i)}));
        }
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
    }
}

// A real click on "ID3v2 not found": ItemClick runs twice, each time listing the kind's 16,382 files.
void BM_ClickLargestKind(benchmark::State& state) {
    Shown shown(true);
    for (auto _ : state) {
        state.PauseTiming();
        shown.list->listModel()->clear();
        settle();
        state.ResumeTiming();
        shown.clickLargestKind();
        settle();
    }
    if (!shown.listsLargestKind()) {
        state.SkipWithError("the click did not list the kind");
    }
}

// A click on the expand button of "ID3v2 not found": the tree shows its 16,383 files and fits its
// column to their texts.
void BM_ExpandLargestKind(benchmark::State& state) {
    Shown shown(true);
    const QModelIndex kind = shown.tree->indexOf(shown.tree->nodes().positionOf(u"ID3v2"));
    for (auto _ : state) {
        state.PauseTiming();
        shown.tree->collapse(kind);
        settle();
        const QRect row = shown.tree->visualRect(kind);
        state.ResumeTiming();
        QTest::mouseClick(shown.tree->viewport(), Qt::LeftButton, {},
                          QPoint(row.left() - shown.tree->indentation() / 2, row.center().y()));
        settle();
    }
    if (!shown.tree->isExpanded(kind)) {
        state.SkipWithError("the click did not expand the kind");
    }
}

// The old floor of a click, kept for comparison: as many plain items as the kind has, added one at a
// time to a shown, bare list widget of one column.
void BM_ListFloor(benchmark::State& state) {
    const int count = largestReport().largestKind;
    for (auto _ : state) {
        state.PauseTiming();
        auto list = std::make_unique<QTreeWidget>();
        list->setRootIsDecorated(false);
        list->setColumnCount(1);
        list->show();
        state.ResumeTiming();
        for (int i = 1; i <= count; ++i) {
            list->addTopLevelItem(
                new QTreeWidgetItem({QStringLiteral("C:\\Music\\Artist\\%1 - Track.mp3").arg(i)}));
        }
        state.PauseTiming();
        list.reset();
        state.ResumeTiming();
    }
}

// The first header click on the largest kind: sorting goes on, and its files are sorted anew.
void BM_HeaderClickSorts(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto shown = std::make_unique<Shown>(true);
        state.ResumeTiming();
        shown->clickHeader();
        settle();
        state.PauseTiming();
        if (!shown->list->isSorted() || !shown->listsLargestKind()) {
            state.SkipWithError("the click did not sort the list");
        }
        shown.reset();
        state.ResumeTiming();
    }
}

// Every further header click: the sorted list turns round.
void BM_HeaderClickTurnsRound(benchmark::State& state) {
    Shown shown(true);
    shown.clickHeader();
    settle();
    for (auto _ : state) {
        shown.clickHeader();
        settle();
    }
}

// The panel's refresh after Ctrl+A in the list of the largest kind: a count line and 16,383 names.
void BM_PanelRefreshAfterSelectAll(benchmark::State& state) {
    Shown shown(true);
    shown.list->setFocus();
    for (auto _ : state) {
        state.PauseTiming();
        shown.list->clearSelection();
        QTest::keyClick(shown.list, Qt::Key_A, Qt::ControlModifier);
        settle();
        state.ResumeTiming();
        shown.window->webPanel()->ShowSelectionInfo();
        settle();
    }
    const auto* names = shown.window->findChild<CaptionLabel*>(QStringLiteral("WebItemType"));
    if (!names->caption().startsWith(QString::number(largestReport().largestKind) + u' ')) {
        state.SkipWithError("the panel does not describe the selection");
    }
}

// Ctrl+A in the list of the largest kind.
void BM_SelectAllLargestKind(benchmark::State& state) {
    Shown shown(true);
    shown.list->setFocus();
    for (auto _ : state) {
        state.PauseTiming();
        shown.list->clearSelection();
        settle();
        state.ResumeTiming();
        QTest::keyClick(shown.list, Qt::Key_A, Qt::ControlModifier);
        settle();
    }
    if (shown.list->selectionModel()->selectedRows().size() != largestReport().largestKind) {
        state.SkipWithError("Ctrl+A did not select every file");
    }
}

// Select All and Copy in the list of the largest kind: every path to the clipboard (no mapping, so no
// file is looked for).
void BM_SelectAllAndCopy(benchmark::State& state) {
    Shown shown(true);
    QAction* selectAll = shown.window->findChild<QAction*>(QStringLiteral("submnuSelectAll"));
    QAction* copy = shown.window->findChild<QAction*>(QStringLiteral("submnuCopy"));
    for (auto _ : state) {
        state.PauseTiming();
        shown.list->clearSelection();
        QApplication::clipboard()->clear();
        settle();
        state.ResumeTiming();
        selectAll->trigger();
        copy->trigger();
        settle();
    }
    if (QApplication::clipboard()->text().count(u'\n') != largestReport().largestKind - 1) {
        state.SkipWithError("Copy did not copy every file");
    }
}

// Select All and Export in the list of the largest kind, as a playlist written to a file.
void BM_SelectAllAndExport(benchmark::State& state) {
    Shown shown(true);
    // Paths as they stand: the question of where the files are is answered.
    write(settings::PathMap, QString());
    QTemporaryDir dir;
    const QString playlist = dir.filePath(QStringLiteral("largest.m3u8"));
    shown.window->findChild<CommonDialog*>(QStringLiteral("CMDlg"))->setChooser([&](const CommonDialog&) {
        return playlist;
    });
    QAction* selectAll = shown.window->findChild<QAction*>(QStringLiteral("submnuSelectAll"));
    QAction* exportFiles = shown.window->findChild<QAction*>(QStringLiteral("submnuExport"));
    for (auto _ : state) {
        state.PauseTiming();
        shown.list->clearSelection();
        QFile::remove(playlist);
        settle();
        state.ResumeTiming();
        selectAll->trigger();
        exportFiles->trigger();
        settle();
    }
    QFile written(playlist);
    if (!written.open(QIODevice::ReadOnly) ||
        written.readAll().count("#EXTINF") != largestReport().largestKind) {
        state.SkipWithError("Export did not write every file");
    }
}

} // namespace

BENCHMARK(BM_ReadReport)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OpenFile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TreeFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ClickLargestKind)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ExpandLargestKind)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ListFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HeaderClickSorts)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HeaderClickTurnsRound)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SelectAllLargestKind)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PanelRefreshAfterSelectAll)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SelectAllAndCopy)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SelectAllAndExport)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    std::printf("report: %d entries, largest kind %d\n", int(kMaxRecords), largestReport().largestKind);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printTimes("BM_OpenFile", "BM_ReadReport");
    reporter.printTimes("BM_OpenFile", "BM_TreeFloor");
    reporter.printTimes("BM_ClickLargestKind", "BM_ListFloor");
    reporter.printTimes("BM_HeaderClickSorts", "BM_ListFloor");
    reporter.printTimes("BM_HeaderClickTurnsRound", "BM_ListFloor");
    reporter.printTimes("BM_SelectAllLargestKind", "BM_ListFloor");
    reporter.printTimes("BM_ExpandLargestKind", "BM_ListFloor");
    reporter.printTimes("BM_PanelRefreshAfterSelectAll", "BM_ListFloor");
    reporter.printTimes("BM_SelectAllAndCopy", "BM_ListFloor");
    reporter.printTimes("BM_SelectAllAndExport", "BM_ListFloor");
    benchmark::Shutdown();
    return 0;
}
