#include "ReportCommand.h"

#include "Version.h"
#include "report/ReportReader.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace zentoria::cli {

namespace {

constexpr int kExitRead = 0;
constexpr int kExitDamaged = 1;
constexpr int kExitUsage = 2;

const char kUsage[] = "Usage: zentoria-report list [--json] REPORT\n"
                      "       zentoria-report check REPORT\n"
                      "\n"
                      "Reads a Melvadex integrity report (.vzt or .txt).\n"
                      "\n"
                      "  list     one line per problem file: ORDINAL<TAB>CODE<TAB>PATH\n"
                      "  --json   list as one JSON object instead\n"
                      "  check    one summary line: outcome, files per problem, skipped records\n"
                      "\n"
                      "Exit status: 0 report read to its closing line, 1 report damaged or cut short,\n"
                      "2 usage error or unreadable file.\n";

CommandOutput usageError(const QString& message) {
    return {kExitUsage, {}, "zentoria-report: " + message.toUtf8() + "\nTry 'zentoria-report --help'.\n"};
}

QByteArray listPlain(const ReportReadResult& result) {
    QByteArray out;
    for (const ReportEntry& entry : result.Entries) {
        out += QByteArray::number(entry.Ordinal) + '\t' + kindCode(entry.Kind).toUtf8() + '\t' +
               entry.Path.toUtf8() + '\n';
    }
    return out;
}

QByteArray listJson(const ReportReadResult& result) {
    QJsonArray entries;
    for (const ReportEntry& entry : result.Entries) {
        entries.append(QJsonObject{{QStringLiteral("ordinal"), entry.Ordinal},
                                   {QStringLiteral("kind"), kindNumber(entry.Kind)},
                                   {QStringLiteral("code"), kindCode(entry.Kind)},
                                   {QStringLiteral("path"), entry.Path}});
    }
    QJsonArray skipped;
    for (qint64 line : result.SkippedLines) {
        skipped.append(line);
    }
    QJsonObject root{{QStringLiteral("outcome"), outcomeName(result.Outcome)},
                     {QStringLiteral("entries"), entries},
                     {QStringLiteral("skippedLines"), skipped}};
    if (result.StopLine > 0) {
        root.insert(QStringLiteral("stopLine"), result.StopLine);
    }
    return QJsonDocument(root).toJson(QJsonDocument::Compact) + '\n';
}

QByteArray summary(const ReportReadResult& result) {
    int perKind[3] = {0, 0, 0};
    for (const ReportEntry& entry : result.Entries) {
        ++perKind[kindNumber(entry.Kind)];
    }
    QString line =
        QStringLiteral("%1: %2 (ID3v1 %3, ID3v2 %4, ID3v0 %5), skipped records: %6")
            .arg(outcomeName(result.Outcome))
            .arg(result.Entries.size() == 1 ? QStringLiteral("1 file")
                                            : QStringLiteral("%1 files").arg(result.Entries.size()))
            .arg(perKind[1])
            .arg(perKind[2])
            .arg(perKind[0])
            .arg(result.SkippedLines.size());
    if (result.Outcome == Outcome::EndedEarly) {
        line += QStringLiteral(", ended before line %1").arg(result.StopLine);
    } else if (result.Outcome == Outcome::TooManyRecords) {
        line += QStringLiteral(", stopped at line %1").arg(result.StopLine);
    }
    return line.toUtf8() + '\n';
}

} // namespace

CommandOutput runReportCommand(const QStringList& arguments) {
    if (arguments.contains(QStringLiteral("--help")) || arguments.contains(QStringLiteral("-h"))) {
        return {kExitRead, kUsage, {}};
    }
    if (arguments.contains(QStringLiteral("--version"))) {
        return {kExitRead, QByteArray("zentoria-report ") + ZENTORIA_VERSION + '\n', {}};
    }
    if (arguments.isEmpty()) {
        return usageError(QStringLiteral("missing command (list or check)"));
    }
    const QString command = arguments.first();
    bool json = false;
    QStringList files;
    for (const QString& argument : arguments.mid(1)) {
        if (argument == QStringLiteral("--json") && command == QStringLiteral("list")) {
            json = true;
        } else if (argument.startsWith(u'-') && argument.size() > 1) {
            return usageError(QStringLiteral("unknown option '%1'").arg(argument));
        } else {
            files << argument;
        }
    }
    if (command != QStringLiteral("list") && command != QStringLiteral("check")) {
        return usageError(QStringLiteral("unknown command '%1'").arg(command));
    }
    if (files.size() != 1) {
        return usageError(QStringLiteral("name exactly one report"));
    }

    QFile file(files.first());
    if (!file.open(QIODevice::ReadOnly)) {
        return {kExitUsage,
                {},
                QStringLiteral("zentoria-report: cannot open \"%1\": %2\n")
                    .arg(file.fileName(), file.errorString())
                    .toUtf8()};
    }
    DeviceLineSource source(file);
    const ReportReadResult result = ReadReport(source);
    if (source.hadReadError()) {
        return {kExitUsage,
                {},
                QStringLiteral("zentoria-report: reading \"%1\" failed: %2\n")
                    .arg(file.fileName(), file.errorString())
                    .toUtf8()};
    }

    CommandOutput output;
    if (command == QStringLiteral("check")) {
        output.standardOutput = summary(result);
    } else {
        output.standardOutput = json ? listJson(result) : listPlain(result);
    }
    const bool complete = result.Outcome == Outcome::Loaded || result.Outcome == Outcome::NoProblems;
    // Skipped records do not change the status: they are in the output and on standard error.
    output.exitCode = complete ? kExitRead : kExitDamaged;
    if (result.Outcome == Outcome::Corrupted) {
        output.standardError = "zentoria-report: " + file.fileName().toUtf8() + ": not a Melvadex report\n";
    } else if (const QString problems = result.describeProblems(); !problems.isEmpty()) {
        output.standardError =
            "zentoria-report: " + file.fileName().toUtf8() + ": " + problems.toUtf8() + '\n';
    }
    return output;
}

} // namespace zentoria::cli
