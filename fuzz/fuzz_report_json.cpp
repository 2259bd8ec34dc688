// "zentoria-report list --json" on any bytes prints one JSON object, listing exactly what ReadReport
// reads from them, with the same outcome and skipped lines.
#include "FuzzCheck.h"
#include "cli/ReportCommand.h"
#include "report/ReportReader.h"

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdint>

using namespace zentoria;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
    MemoryLineSource lines(bytes);
    const ReportReadResult expected = ReadReport(lines);

    QBuffer report;
    report.setData(bytes);
    report.open(QIODevice::ReadOnly);
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    QBuffer err;
    err.open(QIODevice::WriteOnly);
    const cli::ReportSource source = [&report](const EntrySink& onEntry) {
        return readReport(report, onEntry);
    };
    const int status = cli::writeListing(cli::Listing::Json, source, QStringLiteral("fuzz.vzt"), out, err);

    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(out.data(), &error);
    FUZZ_CHECK(error.error == QJsonParseError::NoError);
    FUZZ_CHECK(document.isObject());
    const QJsonObject root = document.object();
    FUZZ_CHECK(root.value(QStringLiteral("outcome")).toString() == outcomeName(expected.Outcome));
    const bool complete = expected.Outcome == Outcome::Loaded || expected.Outcome == Outcome::NoProblems;
    FUZZ_CHECK(status == (complete ? cli::kExitRead : cli::kExitDamaged));

    const QJsonArray entries = root.value(QStringLiteral("entries")).toArray();
    FUZZ_CHECK(entries.size() == expected.Entries.size());
    for (qsizetype i = 0; i < entries.size(); ++i) {
        const QJsonObject entry = entries[i].toObject();
        const ReportEntry& wanted = expected.Entries[i];
        FUZZ_CHECK(entry.value(QStringLiteral("ordinal")).toInt() == wanted.Ordinal);
        FUZZ_CHECK(entry.value(QStringLiteral("kind")).toInt() == kindNumber(wanted.Kind));
        FUZZ_CHECK(entry.value(QStringLiteral("code")).toString() == kindCode(wanted.Kind));
        FUZZ_CHECK(entry.value(QStringLiteral("path")).toString() == wanted.Path);
    }
    const QJsonArray skipped = root.value(QStringLiteral("skippedLines")).toArray();
    FUZZ_CHECK(skipped.size() == expected.SkippedLines.size());
    for (qsizetype i = 0; i < skipped.size(); ++i) {
        FUZZ_CHECK(qint64(skipped[i].toDouble()) == expected.SkippedLines[i]);
    }
    FUZZ_CHECK(qint64(root.value(QStringLiteral("stopLine")).toDouble()) == expected.StopLine);
    return 0;
}
