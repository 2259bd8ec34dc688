#include "ReportReadResult.h"

#include "ReportReader.h"

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

QString filesRead(qsizetype count) {
    return count == 1 ? QStringLiteral("1 file was read before it.")
                      : QStringLiteral("%1 files were read before it.").arg(count);
}

QString lineList(const QList<qint64>& lines) {
    // A damaged report can have thousands; the first few are enough to find the place.
    constexpr qsizetype shown = 10;
    QStringList numbers;
    for (qsizetype i = 0; i < lines.size() && i < shown; ++i) {
        numbers << QString::number(lines[i]);
    }
    QString text = numbers.join(QStringLiteral(", "));
    if (lines.size() > shown) {
        text += QStringLiteral(" and %1 more").arg(lines.size() - shown);
    }
    return text;
}

} // namespace

QString ReportReadResult::describeProblems() const {
    return describeProblems(Entries.size());
}

QString ReportReadResult::describeProblems(qsizetype entriesRead) const {
    QStringList parts;
    if (Outcome == zentoria::Outcome::EndedEarly) {
        parts << QStringLiteral("The report ends too early: it should go on at line %1 up to its closing "
                                "\"Date of creation:\" line, but the file ends there. %2")
                     .arg(StopLine)
                     .arg(filesRead(entriesRead));
    } else if (Outcome == zentoria::Outcome::TooManyRecords) {
        parts << QStringLiteral("The report lists more than %1 files, more than can be shown. Reading "
                                "stopped at line %2; the files of the first %1 records were read.")
                     .arg(kMaxRecords)
                     .arg(StopLine);
    }
    if (!SkippedLines.isEmpty()) {
        const QString what = SkippedLines.size() == 1
                                 ? QStringLiteral("1 line does")
                                 : QStringLiteral("%1 lines do").arg(SkippedLines.size());
        const bool one = SkippedLines.size() == 1;
        parts << QStringLiteral("%1 not fit the report format, so %2 skipped (%3 %4).")
                     .arg(what, one ? QStringLiteral("its record was") : QStringLiteral("their records were"),
                          one ? QStringLiteral("line") : QStringLiteral("lines"), lineList(SkippedLines));
    }
    return parts.join(QStringLiteral("\n\n"));
}

} // namespace zentoria
