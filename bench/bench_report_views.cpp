#include "BenchmarkRatio.h"
#include "report/ReportReader.h"
#include "ui/main/FileListView.h"
#include "ui/main/ReportTree.h"
#include "ui/main/frmMain.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace zentoria;

namespace {

// The largest report: 32,766 entries, half of them of kind ID3v2, the largest kind; largestKind counts
// the ones a click lists.
struct LargestReport {
    QTemporaryDir dir;
    QString path = dir.filePath(QStringLiteral("largest.vzt"));
    int largestKind = 0;

    LargestReport() {
        QByteArray bytes = QByteArray(kBanner.data(), kBanner.size()) + "\r\n\r\n\r\n\r\n\r\n\r\n\r\n";
        const QByteArrayView details[] = {kDetailID3v1, kDetailID3v2, kDetailID3v2, kDetailID3v0};
        for (int i = 1; i <= kMaxRecords; ++i) {
            bytes += "C:\\Music\\Artist " + QByteArray::number(i % 700) + "\\" + QByteArray::number(i) +
                     " - Track.mp3\r\n";
            bytes += details[i % 4].toByteArray() + "\r\n\r\n";
            // Entry i sits at tree position 4 + i; the walk of a click stops at position 32767.
            largestKind += (i % 4 == 1 || i % 4 == 2) && 4 + i <= 32767;
        }
        bytes += "Date of creation: 23.11.2026\r\n";
        QFile file(path);
        if (file.open(QIODevice::WriteOnly)) {
            file.write(bytes);
        }
    }
};

const LargestReport& largestReport() {
    static const LargestReport report;
    return report;
}

std::unique_ptr<frmMain> shownWindow() {
    auto window = std::make_unique<frmMain>();
    window->Form_Load();
    window->messageBoxes().setAnswerer([](const QString&) {});
    window->show();
    if (!QTest::qWaitForWindowExposed(window.get())) {
        std::fprintf(stderr, "the window did not show\n");
    }
    return window;
}

void BM_OpenFile(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto window = shownWindow();
        QString path = largestReport().path;
        state.ResumeTiming();
        window->OpenFile(path);
        state.PauseTiming();
        window.reset();
        state.ResumeTiming();
    }
}

// The floor of OpenFile: as many plain items as the report has entries, added one at a time under a
// collapsed node of a shown, bare tree.
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

void BM_ClickLargestKind(benchmark::State& state) {
    auto window = shownWindow();
    QString path = largestReport().path;
    window->OpenFile(path);
    auto* tree = window->findChild<ReportTree*>(QStringLiteral("TV"));
    auto* list = window->findChild<FileListView*>(QStringLiteral("LV"));
    QTreeWidgetItem* kind = tree->item(tree->nodes().positionOf(QStringLiteral("ID3v2")));
    tree->scrollToItem(kind);
    const QPoint point = tree->visualItemRect(kind).center();
    for (auto _ : state) {
        state.PauseTiming();
        list->clear();
        state.ResumeTiming();
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, point);
    }
    if (list->topLevelItemCount() != largestReport().largestKind) {
        state.SkipWithError("the click did not list the kind");
    }
}

// The floor of a click: as many plain items as the kind has, added one at a time to a shown, bare list
// of one column.
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

} // namespace

BENCHMARK(BM_OpenFile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TreeFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ClickLargestKind)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ListFloor)->Unit(benchmark::kMillisecond);

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
    reporter.printTimes("BM_OpenFile", "BM_TreeFloor");
    reporter.printTimes("BM_ClickLargestKind", "BM_ListFloor");
    benchmark::Shutdown();
    return 0;
}
