#include "ReportFile.h"

#include "RegularFile.h"

#include <QFile>

namespace zentoria {

bool ReportFile::complete() const {
    return failure == ReportFailure::None &&
           (result.Outcome == Outcome::Loaded || result.Outcome == Outcome::NoProblems);
}

ReportFile readReportFile(const QString& path, const EntrySink& onEntry) {
    QFile device(path);
    if (QString why; !openRegularFile(device, why)) {
        ReportFile file;
        file.failure = ReportFailure::CannotOpen;
        file.reason = why;
        return file;
    }
    return readReport(device, onEntry);
}

ReportFile readReport(QIODevice& device, const EntrySink& onEntry) {
    ReportFile file;
    DeviceLineSource source(device);
    if (onEntry) {
        file.result = ReadReport(source, [&file, &onEntry](ReportEntry&& entry) {
            ++file.entriesRead;
            onEntry(std::move(entry));
        });
    } else {
        file.result = ReadReport(source);
        file.entriesRead = file.result.Entries.size();
    }
    if (source.hadReadError()) {
        file.failure = ReportFailure::ReadFailed;
        file.reason = device.errorString();
    } else if (file.result.Outcome == Outcome::Corrupted) {
        // A file with nothing in it would send the user looking for damage that is not there.
        file.failure = device.pos() == 0 ? ReportFailure::Empty : ReportFailure::NotAReport;
    }
    return file;
}

QString describeFailure(const ReportFile& file, const QString& name) {
    switch (file.failure) {
    case ReportFailure::None:
        break;
    case ReportFailure::CannotOpen:
        return QStringLiteral("cannot open \"%1\": %2").arg(name, file.reason);
    case ReportFailure::Empty:
        return QStringLiteral("%1: the file is empty, not a Melvadex report").arg(name);
    case ReportFailure::NotAReport:
        return QStringLiteral("%1: not a Melvadex report").arg(name);
    case ReportFailure::ReadFailed:
        return QStringLiteral("reading \"%1\" failed: %2").arg(name, file.reason);
    }
    return {};
}

} // namespace zentoria
