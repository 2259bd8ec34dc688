#include "ReportCommand.h"

#include "Version.h"
#include "export/ExportWriter.h"
#include "report/ReportReader.h"

#include <QCommandLineParser>
#include <QHash>
#include <QIODevice>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <optional>

namespace zentoria::cli {

namespace {

int usageError(QIODevice& err, const QString& message) {
    err.write("zentoria-report: " + message.toUtf8() + "\nTry 'zentoria-report --help'.\n");
    return kExitUnreadable;
}

QJsonObject entryObject(const ReportEntry& entry) {
    return {{QStringLiteral("ordinal"), entry.Ordinal},
            {QStringLiteral("kind"), kindNumber(entry.Kind)},
            {QStringLiteral("code"), kindCode(entry.Kind)},
            {QStringLiteral("path"), entry.Path}};
}

QJsonArray lineArray(const QList<qint64>& lines) {
    QJsonArray array;
    for (qint64 line : lines) {
        array.append(line);
    }
    return array;
}

QByteArray compact(const QJsonObject& object) {
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

// The JSON object is written as the entries arrive: its "entries" array first, the fields known only at
// the end after it. Keys stay in the sorted order a whole document would have.
class JsonWriter {
public:
    explicit JsonWriter(QIODevice& out)
        : m_out(out) {
        m_out.write("{\"entries\":[");
    }
    void entry(const ReportEntry& entry) {
        if (m_count++ > 0) {
            m_out.write(",");
        }
        m_out.write(compact(entryObject(entry)));
    }
    void finish(const QJsonObject& rest) {
        m_out.write("],");
        m_out.write(compact(rest).sliced(1)); // the rest's own opening brace is the one written first
        m_out.write("\n");
    }

private:
    QIODevice& m_out;
    qsizetype m_count = 0;
};

QByteArray summary(const ReportReadResult& result, const KindCounts<qsizetype>& perKind) {
    const qsizetype files = perKind.total();
    QString line = QStringLiteral("%1: %2 (ID3v1 %3, ID3v2 %4, ID3v0 %5), skipped records: %6")
                       .arg(outcomeName(result.Outcome))
                       .arg(files == 1 ? QStringLiteral("1 file") : QStringLiteral("%1 files").arg(files))
                       .arg(perKind.of(ProblemKind::ID3v1))
                       .arg(perKind.of(ProblemKind::ID3v2))
                       .arg(perKind.of(ProblemKind::ID3v0))
                       .arg(result.SkippedLines.size());
    if (result.Outcome == Outcome::EndedEarly) {
        line += QStringLiteral(", ended before line %1").arg(result.StopLine);
    } else if (result.Outcome == Outcome::TooManyRecords) {
        line += QStringLiteral(", stopped at line %1").arg(result.StopLine);
    }
    // What its header says its records lack: files its check left out, records a re-check could not read.
    const MissingRecords& written = result.Written;
    if (written.leftOut > 0) {
        line += QStringLiteral(", left out: %1").arg(written.leftOut);
    }
    if (written.notRead > 0 || written.endedEarly) {
        line += QStringLiteral(", not read by the re-check that wrote it: %1 records%2")
                    .arg(written.notRead)
                    .arg(written.endedEarly ? QStringLiteral(" (its report ended early)") : QString());
    }
    return line.toUtf8() + '\n';
}

QJsonObject unreadable(const QString& error) {
    return {{QStringLiteral("outcome"), QStringLiteral("Unreadable")}, {QStringLiteral("error"), error}};
}

// Says on err what is wrong with a report, naming it; its exit status.
int reportOutcome(const ReportFile& report, const QString& name, QIODevice& err) {
    QString problem = describeFailure(report, name);
    if (problem.isEmpty() && !(problem = report.result.describeProblems(report.entriesRead)).isEmpty()) {
        problem = name + QStringLiteral(": ") + problem;
    }
    if (!problem.isEmpty()) {
        err.write("zentoria-report: " + problem.toUtf8() + '\n');
    }
    if (report.failure != ReportFailure::None) {
        return failureStatus(report.failure);
    }
    return report.complete() ? kExitRead : kExitDamaged;
}

// Names an unknown option as it was typed: "-x", "--x" or "--x=value".
QString unknownOption(const QStringList& arguments, const QString& name) {
    for (const QString& argument : arguments) {
        if (argument == u"--") {
            break;
        }
        const QString typed = argument.section(u'=', 0, 0);
        if (typed == u'-' + name || typed == QStringLiteral("--") + name) {
            return QStringLiteral("unknown option '%1'").arg(typed);
        }
    }
    return QStringLiteral("unknown option '%1'").arg(name);
}

} // namespace

int failureStatus(ReportFailure failure) {
    switch (failure) {
    case ReportFailure::None:
        return kExitRead;
    case ReportFailure::Empty:
    case ReportFailure::NotAReport:
        return kExitDamaged;
    case ReportFailure::CannotOpen:
    case ReportFailure::ReadFailed:
        break;
    }
    return kExitUnreadable;
}

ReportSource reportAt(const QString& path) {
    return [path](const EntrySink& onEntry) { return readReportFile(path, onEntry); };
}

int writeListing(Listing listing, const ReportSource& report, const QString& name, QIODevice& out,
                 QIODevice& err) {
    // Begun with the first entry or at the end, so that a file that cannot be opened gets an object of
    // its own.
    std::optional<JsonWriter> json;
    KindCounts<qsizetype> perKind;
    const ReportFile read = report([&](ReportEntry&& entry) {
        perKind.add(entry.Kind);
        if (listing == Listing::Json) {
            if (!json) {
                json.emplace(out);
            }
            json->entry(entry);
        } else if (listing == Listing::Plain) {
            out.write(QByteArray::number(entry.Ordinal) + '\t' + kindCode(entry.Kind).toUtf8() + '\t' +
                      entry.Path.toUtf8() + '\n');
        }
    });
    const ReportReadResult& result = read.result;
    const int status = reportOutcome(read, name, err);
    if (read.failure == ReportFailure::CannotOpen) {
        // A script reading the JSON gets an object in every case.
        if (listing == Listing::Json) {
            out.write(compact(unreadable(describeFailure(read, name))) + '\n');
        }
        return status;
    }
    if (listing == Listing::Json) {
        QJsonObject rest{{QStringLiteral("outcome"), outcomeName(result.Outcome)},
                         {QStringLiteral("skippedLines"), lineArray(result.SkippedLines)}};
        if (result.StopLine > 0) {
            rest.insert(QStringLiteral("stopLine"), result.StopLine);
        }
        // Files the report does not list although its check found them, records that could not be read
        // (now, or by the re-check that wrote it): a script must not take the entries for all there is.
        const MissingRecords missing = result.missing();
        if (missing.leftOut > 0) {
            rest.insert(QStringLiteral("leftOut"), missing.leftOut);
        }
        if (missing.notRead > 0 || missing.endedEarly) {
            rest.insert(QStringLiteral("notRead"), missing.notRead);
        }
        if (missing.endedEarly) {
            rest.insert(QStringLiteral("endedEarly"), true);
        }
        if (read.failure == ReportFailure::ReadFailed) {
            // What was printed stays; the outcome says it is not the whole report.
            rest.insert(QStringLiteral("outcome"), QStringLiteral("Unreadable"));
            rest.insert(QStringLiteral("error"), describeFailure(read, name));
        }
        if (!json) {
            json.emplace(out);
        }
        json->finish(rest);
    } else if (listing == Listing::Summary && read.failure != ReportFailure::ReadFailed) {
        out.write(summary(result, perKind));
    }
    // A check is for finding damage, and a skipped record is damage; a listing shows them in its output.
    if (status == kExitRead && listing == Listing::Summary && !result.SkippedLines.isEmpty()) {
        return kExitDamaged;
    }
    return status;
}

int writeExport(const ReportSource& report, const QString& name, const ExportRequest& request, QIODevice& out,
                QIODevice& err) {
    // Where a playlist leads depends on how the report's names read, which its header says: the report
    // is read for that first, as entries go by, so memory stays bounded.
    const NameReading names = request.format == ExportFormat::M3u8 ? report([](ReportEntry&&) {}).result.Names
                                                                   : NameReading::Escaped;
    ExportWriter writer(out, request.format, request.mapping, names);
    // Begun once the file is open: a file that cannot be opened gets no playlist at all.
    bool begun = false;
    const ReportFile read = report([&](ReportEntry&& entry) {
        if (!std::exchange(begun, true)) {
            writer.begin();
        }
        if (!request.kind || entry.Kind == *request.kind) {
            writer.add(entry);
        }
    });
    if (!begun && read.failure != ReportFailure::CannotOpen) {
        writer.begin();
    }
    return reportOutcome(read, name, err);
}

int runReportCommand(const QStringList& arguments, QIODevice& out, QIODevice& err) {
    QCommandLineParser parser;
    // "-mixed.vzt" is one unknown option, not the options m, i, x and so on.
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    const QCommandLineOption helpOption(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    const QCommandLineOption versionOption(QStringLiteral("version"));
    const QCommandLineOption jsonOption(QStringLiteral("json"));
    const QCommandLineOption followOption(QStringLiteral("follow"));
    const QCommandLineOption kindOption(QStringLiteral("kind"), {}, QStringLiteral("KIND"));
    const QCommandLineOption formatOption(QStringLiteral("format"), {}, QStringLiteral("FORMAT"));
    const QCommandLineOption mapOption(QStringLiteral("map"), {}, QStringLiteral("WINDOWS=LOCAL"));
    const QCommandLineOption asOption(QStringLiteral("as"), {}, QStringLiteral("WINDOWS-FOLDER"));
    const QCommandLineOption jobsOption(QStringLiteral("jobs"), {}, QStringLiteral("N"));
    const QCommandLineOption outputOption(QStringList{QStringLiteral("o"), QStringLiteral("output")}, {},
                                          QStringLiteral("FILE"));
    parser.addOptions({helpOption, versionOption, jsonOption, followOption, kindOption, formatOption,
                       mapOption, asOption, jobsOption, outputOption});
    if (!parser.parse(QStringList{QStringLiteral("zentoria-report")} + arguments)) {
        if (!parser.unknownOptionNames().isEmpty()) {
            return usageError(err, unknownOption(arguments, parser.unknownOptionNames().first()));
        }
        return usageError(err, parser.errorText());
    }
    const bool help = parser.isSet(helpOption);
    const bool version = parser.isSet(versionOption);
    const bool json = parser.isSet(jsonOption);
    QString unknown;
    QString badValue;
    ExportRequest request;
    if (parser.isSet(kindOption)) {
        request.kind = problemKindNamed(parser.value(kindOption));
        if (!request.kind) {
            badValue =
                QStringLiteral("unknown kind '%1' (ID3v1, ID3v2 or ID3v0)").arg(parser.value(kindOption));
        }
    }
    if (parser.isSet(formatOption)) {
        if (const std::optional<ExportFormat> format = formatNamed(parser.value(formatOption))) {
            request.format = *format;
        } else {
            badValue =
                QStringLiteral("unknown format '%1' (m3u8, csv or txt)").arg(parser.value(formatOption));
        }
    }
    // Each --map adds a folder.
    for (const QString& value : parser.values(mapOption)) {
        if (const std::optional<PathMapping> mapping = PathMapping::parse(value)) {
            request.mapping.list << PathMappings(*mapping).list;
        } else {
            badValue = QStringLiteral("'%1' is no mapping: write WINDOWS-FOLDER=/LOCAL/FOLDER").arg(value);
        }
    }
    int jobs = 0;
    if (parser.isSet(jobsOption)) {
        bool number = false;
        jobs = parser.value(jobsOption).toInt(&number);
        if (!number || jobs < 1 || jobs > 64) {
            badValue = QStringLiteral("'%1' is no number of jobs (1 to 64)").arg(parser.value(jobsOption));
        }
    }
    QStringList words = parser.positionalArguments();
    if (help) {
        out.write(kUsage);
        return kExitRead;
    }
    if (version) {
        out.write(QByteArray("zentoria-report ") + ZENTORIA_VERSION + '\n');
        return kExitRead;
    }
    if (words.isEmpty()) {
        return usageError(err,
                          QStringLiteral("missing command (list, check, diff, export, scan or recheck)"));
    }
    const QString command = words.takeFirst();
    // Each command with the options it takes.
    const QHash<QString, QStringList> commandOptions{
        {QStringLiteral("list"), {QStringLiteral("json")}},
        {QStringLiteral("check"), {}},
        {QStringLiteral("diff"), {QStringLiteral("json")}},
        {QStringLiteral("export"), {QStringLiteral("kind"), QStringLiteral("format"), QStringLiteral("map")}},
        {QStringLiteral("scan"), {QStringLiteral("as"), QStringLiteral("jobs"), QStringLiteral("o")}},
        {QStringLiteral("recheck"),
         {QStringLiteral("json"), QStringLiteral("follow"), QStringLiteral("map"), QStringLiteral("jobs"),
          QStringLiteral("o")}}};
    if (!commandOptions.contains(command)) {
        return usageError(err, QStringLiteral("unknown command '%1'").arg(command));
    }
    for (const QCommandLineOption& option : {jsonOption, followOption, kindOption, formatOption, mapOption,
                                             asOption, jobsOption, outputOption}) {
        const QString optionName = option.names().first();
        if (unknown.isEmpty() && parser.isSet(option) &&
            !commandOptions.value(command).contains(optionName)) {
            unknown = (optionName.size() == 1 ? QStringLiteral("-") : QStringLiteral("--")) + optionName;
        }
    }
    if (!unknown.isEmpty()) {
        return usageError(err, QStringLiteral("unknown option '%1'").arg(unknown));
    }
    if (!badValue.isEmpty()) {
        return usageError(err, badValue);
    }
    if (command == QStringLiteral("diff")) {
        if (words.size() != 2) {
            return usageError(err, QStringLiteral("name two reports, the old one first"));
        }
        return writeDiff(words.at(0), words.at(1), json, out, err);
    }
    if (command == QStringLiteral("scan")) {
        const QStringList windowsFolders = parser.values(asOption);
        if (words.isEmpty()) {
            return usageError(err, QStringLiteral("name one or more folders to check"));
        }
        if (!windowsFolders.isEmpty() && windowsFolders.size() != words.size()) {
            return usageError(err, QStringLiteral("give --as once for every folder, or not at all"));
        }
        return runScan({words, windowsFolders, jobs, parser.value(outputOption)}, out, err);
    }
    if (words.size() != 1) {
        return usageError(err, QStringLiteral("name exactly one report"));
    }

    // Messages name the report as it was typed.
    const QString name = words.first();
    if (command == QStringLiteral("export")) {
        return writeExport(reportAt(name), name, request, out, err);
    }
    if (command == QStringLiteral("recheck")) {
        const RecheckRequest recheck{
            name, request.mapping, json, jobs, parser.value(outputOption), parser.isSet(followOption)};
        return recheck.follow ? followRecheck(recheck, out, err) : runRecheck(recheck, out, err);
    }
    const Listing listing = command == QStringLiteral("check") ? Listing::Summary
                            : json                             ? Listing::Json
                                                               : Listing::Plain;
    return writeListing(listing, reportAt(name), name, out, err);
}

} // namespace zentoria::cli
