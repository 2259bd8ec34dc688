#include "ReportWriter.h"

#include "ReportFormat.h"

#include <QSaveFile>

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
    line("  Written by " + oneLine(origin.program) + ' ' + oneLine(origin.version) + " on Linux");
    line("  Checked: " + oneLine(origin.folders.join(QStringLiteral("; "))));
    line(QByteArray("  Problem files: ") + QByteArray::number(entries.size()) +
         (origin.leftOut > 0 ? QByteArray(" (") + QByteArray::number(origin.leftOut) + " more left out)"
                             : QByteArray()));
    if (origin.recheck) {
        line("  Not found: " + QByteArray::number(origin.notChecked) +
             (origin.notChecked > 0 ? " (listed with their earlier kind)" : ""));
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
    return !path.contains(u'\n') && !path.contains(u'\r') &&
           !path.contains(QLatin1StringView(kClosingMarker.data(), kClosingMarker.size()));
}

bool saveReport(const QString& fileName, const QByteArray& bytes, QString* error) {
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        if (error) {
            *error = file.errorString();
        }
        return false;
    }
    return true;
}

} // namespace zentoria
