// "zentoria-report diff": two reports compared by path.
#include "ReportCommand.h"
#include "export/PathMapping.h"
#include "report/RegularFile.h"
#include "report/ReportReader.h"

#include <QFile>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace zentoria::cli {

bool readWholeReport(const QString& fileName, ReportReadResult& result, QIODevice& err) {
    QFile report(fileName);
    QString why;
    if (!openRegularFile(report, why)) {
        err.write("zentoria-report: cannot open \"" + fileName.toUtf8() + "\": " + why.toUtf8() + '\n');
        return false;
    }
    DeviceLineSource source(report);
    result = ReadReport(source);
    if (source.hadReadError()) {
        err.write("zentoria-report: reading \"" + fileName.toUtf8() +
                  "\" failed: " + report.errorString().toUtf8() + '\n');
        return false;
    }
    if (result.Outcome == Outcome::Corrupted) {
        err.write("zentoria-report: " + fileName.toUtf8() + ": not a Melvadex report\n");
        return false;
    }
    if (const QString problems = result.describeProblems(); !problems.isEmpty()) {
        err.write("zentoria-report: " + fileName.toUtf8() + ": " + problems.toUtf8() + '\n');
    }
    return true;
}

ReportDiff compareReports(const QList<ReportEntry>& oldEntries, const QList<ReportEntry>& newEntries) {
    QHash<QString, qsizetype> inOld;
    inOld.reserve(oldEntries.size());
    for (qsizetype i = 0; i < oldEntries.size(); ++i) {
        inOld.insert(windowsPathKey(oldEntries[i].Path), i); // a later duplicate stands for both
    }
    ReportDiff diff;
    QList<bool> seen(oldEntries.size(), false);
    for (const ReportEntry& entry : newEntries) {
        const auto found = inOld.constFind(windowsPathKey(entry.Path));
        if (found == inOld.cend()) {
            diff.added << entry;
        } else {
            diff.still << entry;
            seen[*found] = true;
        }
    }
    for (qsizetype i = 0; i < oldEntries.size(); ++i) {
        if (!seen[i] && inOld.value(windowsPathKey(oldEntries[i].Path)) == i) {
            diff.fixed << oldEntries[i];
        }
    }
    return diff;
}

int writeDiff(const QString& oldFile, const QString& newFile, bool json, QIODevice& out, QIODevice& err) {
    ReportReadResult oldReport;
    ReportReadResult newReport;
    if (!readWholeReport(oldFile, oldReport, err) || !readWholeReport(newFile, newReport, err)) {
        return kExitUnreadable;
    }
    const ReportDiff diff = compareReports(oldReport.Entries, newReport.Entries);
    if (json) {
        const auto items = [](const QList<ReportEntry>& entries) {
            QJsonArray array;
            for (const ReportEntry& entry : entries) {
                array.append(QJsonObject{{QStringLiteral("path"), entry.Path},
                                         {QStringLiteral("code"), kindCode(entry.Kind)}});
            }
            return array;
        };
        const QJsonObject lists{{QStringLiteral("fixed"), items(diff.fixed)},
                                {QStringLiteral("new"), items(diff.added)},
                                {QStringLiteral("still"), items(diff.still)}};
        out.write(QJsonDocument(lists).toJson(QJsonDocument::Compact) + '\n');
    } else {
        const auto lines = [&out](const char* what, const QList<ReportEntry>& entries) {
            for (const ReportEntry& entry : entries) {
                out.write(QByteArray(what) + '\t' + kindCode(entry.Kind).toUtf8() + '\t' +
                          entry.Path.toUtf8() + '\n');
            }
        };
        lines("fixed", diff.fixed);
        lines("new", diff.added);
        lines("still", diff.still);
    }
    return diff.added.isEmpty() ? kExitRead : kExitDamaged;
}

} // namespace zentoria::cli
