#include "BenchmarkRatio.h"
#include "cli/ReportCommand.h"
#include "report/ReportReader.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>

#include <cstring>

using namespace zentoria;

namespace {

// The largest report there can be: 32,766 records of realistic paths, most kinds mixed, some records
// empty, CR LF endings.
const QByteArray& largestReport() {
    static const QByteArray bytes = [] {
        QByteArray out;
        const auto line = [&out](QByteArrayView text) {
            out += text;
            out += "\r\n";
        };
        line(kBanner);
        for (int i = 0; i < 6; ++i) {
            line(i == 1 ? QByteArrayView("  Integrity check of C:\\Music") : QByteArrayView(""));
        }
        const QByteArrayView details[] = {kDetailID3v1, kDetailID3v2, kDetailID3v0, ""};
        for (int i = 1; i <= kMaxRecords; ++i) {
            line(QByteArray("C:\\Music\\Artist ") + QByteArray::number(i % 700) + "\\Album " +
                 QByteArray::number(i % 37) + "\\" + QByteArray::number(i % 20 + 1) + " - Track title " +
                 QByteArray::number(i) + ".mp3");
            line(details[i % 7 == 0 ? 3 : i % 3]);
            line("");
        }
        line("Date of creation: 23.11.2026 21:14");
        return out;
    }();
    return bytes;
}

void BM_ReadReport(benchmark::State& state) {
    const QByteArray& bytes = largestReport();
    for (auto _ : state) {
        MemoryLineSource source(bytes);
        ReportReadResult result = ReadReport(source);
        benchmark::DoNotOptimize(result);
    }
    state.SetBytesProcessed(state.iterations() * bytes.size());
}

void BM_MemchrFloor(benchmark::State& state) {
    const QByteArray& bytes = largestReport();
    for (auto _ : state) {
        const char* p = bytes.constData();
        const char* const end = p + bytes.size();
        qsizetype lines = 0;
        while (const void* lf = std::memchr(p, '\n', static_cast<size_t>(end - p))) {
            p = static_cast<const char*>(lf) + 1;
            ++lines;
        }
        benchmark::DoNotOptimize(lines);
    }
    state.SetBytesProcessed(state.iterations() * bytes.size());
}

void BM_ReadReportFromFile(benchmark::State& state) {
    const QByteArray& bytes = largestReport();
    QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("largest.vzt")));
    if (!file.open(QIODevice::ReadWrite) || file.write(bytes) != bytes.size()) {
        state.SkipWithError("cannot write the report");
        return;
    }
    for (auto _ : state) {
        file.seek(0);
        DeviceLineSource source(file);
        ReportReadResult result = ReadReport(source);
        benchmark::DoNotOptimize(result);
    }
    state.SetBytesProcessed(state.iterations() * bytes.size());
}

// "zentoria-report diff" on two of the largest reports: the newer one has every path in capitals (so
// every file matches only without regard to case), a third of the files fixed and as many new ones.
void BM_DiffLargestReports(benchmark::State& state) {
    QTemporaryDir dir;
    const QString oldFile = dir.filePath(QStringLiteral("old.vzt"));
    const QString newFile = dir.filePath(QStringLiteral("new.vzt"));
    QByteArray newer = largestReport();
    newer.replace("C:\\Music\\Artist", "c:\\MUSIC\\ARTIST");
    newer.replace("Track title 1", "Another title 1"); // about a third of the paths change
    for (const auto& [name, bytes] : {std::pair{oldFile, largestReport()}, std::pair{newFile, newer}}) {
        QFile file(name);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            state.SkipWithError("cannot write the reports");
            return;
        }
    }
    int status = 0;
    QBuffer out;
    for (auto _ : state) {
        QBuffer err;
        out.setData({});
        out.open(QIODevice::WriteOnly);
        err.open(QIODevice::WriteOnly);
        status = cli::writeDiff(oldFile, newFile, true, out, err);
        out.close();
    }
    // Something is new, and the files whose paths only changed case are still there.
    if (status != cli::kExitDamaged || !out.data().contains("\"still\":[{")) {
        state.SkipWithError("the comparison did not find what changed");
    }
}

} // namespace

BENCHMARK(BM_DiffLargestReports)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadReport)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ReadReportFromFile)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_MemchrFloor)->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    std::printf("report: %lld bytes, %d records\n", static_cast<long long>(largestReport().size()),
                int(kMaxRecords));
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRates("BM_ReadReport", "BM_MemchrFloor");
    reporter.printRates("BM_ReadReportFromFile", "BM_MemchrFloor");
    benchmark::Shutdown();
    return 0;
}
