#include "ReportReadResult.h"

#include "ReportFormat.h"

#include <QStringList>

namespace zentoria {

QString outcomeName(Outcome outcome) {
    switch (outcome) {
    case Outcome::Loaded:
        return QStringLiteral("Loaded");
    case Outcome::Corrupted:
        return QStringLiteral("Corrupted");
    case Outcome::NoProblems:
        return QStringLiteral("NoProblems");
    case Outcome::EndedEarly:
        return QStringLiteral("EndedEarly");
    case Outcome::TooManyRecords:
        return QStringLiteral("TooManyRecords");
    }
    return {};
}

namespace {

QString lineList(const QList<qint64>& lines, const ProblemWording& wording) {
    // A damaged report can have thousands; the first few are enough to find the place.
    constexpr qsizetype shown = 10;
    QStringList numbers;
    for (qsizetype i = 0; i < lines.size() && i < shown; ++i) {
        numbers << QString::number(lines[i]);
    }
    const QString text = numbers.join(QStringLiteral(", "));
    return lines.size() > shown ? wording.andMore.arg(text).arg(lines.size() - shown) : text;
}

} // namespace

MissingRecords ReportReadResult::missing() const {
    return {UnreadRecords + Written.notRead, Outcome == zentoria::Outcome::EndedEarly || Written.endedEarly,
            Written.leftOut};
}

ProblemWording::ProblemWording(QString (*words)(const TextKey&))
    : endedEarly(words(txt::ReportEndedEarly))
    , oneFileRead(words(txt::OneFileReadBefore))
    , filesRead(words(txt::FilesReadBefore))
    , tooManyRecords(words(txt::TooManyRecords))
    , oneSkipped(words(txt::OneLineSkipped))
    , manySkipped(words(txt::LinesSkipped))
    , andMore(words(txt::AndMoreLines)) {}

QString ReportReadResult::describeProblems(const ProblemWording& wording) const {
    return describeProblems(Entries.size(), wording);
}

QString ReportReadResult::describeProblems(qsizetype entriesRead, const ProblemWording& wording) const {
    QStringList parts;
    if (Outcome == zentoria::Outcome::EndedEarly) {
        parts << wording.endedEarly.arg(StopLine).arg(entriesRead == 1 ? wording.oneFileRead
                                                                       : wording.filesRead.arg(entriesRead));
    } else if (Outcome == zentoria::Outcome::TooManyRecords) {
        parts << wording.tooManyRecords.arg(kMaxRecords).arg(StopLine);
    }
    if (SkippedLines.size() == 1) {
        parts << wording.oneSkipped.arg(SkippedLines.first());
    } else if (!SkippedLines.isEmpty()) {
        parts << wording.manySkipped.arg(SkippedLines.size()).arg(lineList(SkippedLines, wording));
    }
    return parts.join(QStringLiteral("\n\n"));
}

} // namespace zentoria
