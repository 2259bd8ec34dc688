// "zentoria-report diff": two reports compared by path.
#include "ReportCommand.h"
#include "export/PathMapping.h"

#include <QHash>
#include <QIODevice>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace zentoria::cli {

std::optional<int> readWholeReport(const QString& fileName, ReportReadResult& result, QIODevice& err) {
    ReportFile report = readReportFile(fileName);
    if (report.failure != ReportFailure::None) {
        err.write("zentoria-report: " + describeFailure(report, fileName).toUtf8() + '\n');
        return failureStatus(report.failure);
    }
    if (const QString problems = report.result.describeProblems(); !problems.isEmpty()) {
        err.write("zentoria-report: " + fileName.toUtf8() + ": " + problems.toUtf8() + '\n');
    }
    result = std::move(report.result);
    return std::nullopt;
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
    if (const std::optional<int> failed = readWholeReport(oldFile, oldReport, err)) {
        return *failed;
    }
    if (const std::optional<int> failed = readWholeReport(newFile, newReport, err)) {
        return *failed;
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
