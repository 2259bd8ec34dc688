#include "ReportWriter.h"

#include "LineSource.h"
#include "ReportFormat.h"
#include "ReportHeader.h"

namespace zentoria {

namespace {

QByteArrayView detailLine(ProblemKind kind) {
    switch (kind) {
    case ProblemKind::ID3v1:
        return kDetailID3v1;
    case ProblemKind::ID3v2:
        return kDetailID3v2;
    case ProblemKind::ID3v0:
        break;
    }
    return kDetailID3v0;
}

// Header lines are free text, but one line each: a line break in a folder's name would shift the records.
QByteArray oneLine(const QString& text) {
    QString line = text;
    line.replace(u'\r', u' ').replace(u'\n', u' ');
    return line.toUtf8();
}

} // namespace

QByteArray reportBytes(const ReportOrigin& origin, const QList<ReportEntry>& entries) {
    Q_ASSERT(entries.size() <= kMaxRecords);
    QByteArray out;
    out.reserve(512 + entries.size() * 120);
    const auto line = [&out](QByteArrayView text) {
        out += text;
        out += "\r\n";
    };
    line(kBanner);
    line({});
    // Only the exact ending marks names in this program's form (kWrittenByEnd).
    line(kWrittenByStart.toByteArray() + oneLine(origin.program) + ' ' + oneLine(origin.version) +
         kWrittenByEnd.toByteArray() +
         (origin.names == NameReading::AsText ? ", names as Windows wrote them" : ""));
    line("  Checked: " + oneLine(origin.folders.join(QStringLiteral("; "))) +
         (origin.followedSince.isValid()
              ? ", followed since it was opened on " +
                    origin.followedSince.toString(QStringLiteral("dd.MM.yyyy HH:mm:ss")).toUtf8()
              : QByteArray()));
    line(problemFilesLine(entries.size(), origin.missing()));
    if (origin.recheck) {
        const QByteArray kept = " (listed with their earlier kind)";
        line("  Not found: " + QByteArray::number(origin.notChecked) + (origin.notChecked > 0 ? kept : "") +
             (origin.unreachable > 0 ? "; unreachable: " + QByteArray::number(origin.unreachable) + kept
                                     : QByteArray()) +
             notReadClause({origin.notRead, origin.endedEarly, 0}));
    } else {
        line("  Not checked: " + QByteArray::number(origin.notChecked) + " files or folders");
    }
    line({});
    for (const ReportEntry& entry : entries) {
        line(entry.Path.toUtf8());
        line(detailLine(entry.Kind));
        line({});
    }
    // The closing line right after the last record: read back as complete, even with no records.
    line(kClosingMarker.toByteArray() + ' ' +
         origin.created.toString(QStringLiteral("dd.MM.yyyy HH:mm:ss")).toUtf8());
    return out;
}

bool fitsReport(const QString& path) {
    // Written as UTF-8, a path is read back as that many UTF-16 units.
    return path.size() <= kMaxPathLength && !path.contains(u'\n') && !path.contains(u'\r') &&
           !path.contains(QLatin1StringView(kClosingMarker.data(), kClosingMarker.size()));
}

} // namespace zentoria
