// ReadReport over every kind of source must give one and the same answer for the same bytes: from
// memory, from a device that hands out a few bytes a read, and streamed from a file that can seek.
#include "FuzzCheck.h"
#include "ShortReadDevice.h"
#include "report/ReportReader.h"

#include <QBuffer>

#include <cstdint>

using namespace zentoria;

namespace {

bool sameResult(const ReportReadResult& a, const ReportReadResult& b) {
    return a.Outcome == b.Outcome && a.Entries == b.Entries && a.SkippedLines == b.SkippedLines &&
           a.StopLine == b.StopLine;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));

    MemoryLineSource memory(bytes);
    const ReportReadResult expected = ReadReport(memory);
    FUZZ_CHECK(expected.Entries.size() <= kMaxRecords);
    for (const ReportEntry& entry : expected.Entries) {
        FUZZ_CHECK(entry.Ordinal >= 1 && entry.Path.size() <= kMaxPathLength);
    }

    // The read size follows from the input, so that the fuzzer explores it too.
    ShortReadDevice trickle(bytes, qint64(1 + size % 7));
    DeviceLineSource trickling(trickle);
    FUZZ_CHECK(sameResult(ReadReport(trickling), expected));

    const auto streamed = [](LineSource& source) {
        QList<ReportEntry> entries;
        ReportReadResult result =
            ReadReport(source, [&entries](ReportEntry&& entry) { entries.append(std::move(entry)); });
        FUZZ_CHECK(result.Entries.isEmpty());
        result.Entries = std::move(entries);
        return result;
    };
    MemoryLineSource again(bytes);
    FUZZ_CHECK(sameResult(streamed(again), expected));
    QBuffer file;
    file.setData(bytes);
    file.open(QIODevice::ReadOnly);
    DeviceLineSource fromFile(file);
    FUZZ_CHECK(sameResult(streamed(fromFile), expected));
    return 0;
}
