#include "ReportHeader.h"

#include <QRegularExpression>

namespace zentoria {

namespace {

constexpr QByteArrayView kProblemFiles = "  Problem files: ";
constexpr QByteArrayView kEndedEarly = " (it ends early: more may be missing)";

} // namespace

QByteArray problemFilesLine(qint64 files, const MissingRecords& missing) {
    QByteArrayList notes;
    if (missing.leftOut > 0) {
        notes << QByteArray::number(missing.leftOut) + " more left out";
    }
    if (missing.notRead > 0 || missing.endedEarly) {
        notes << "unknown for " + QByteArray::number(missing.notRead) + " unread records" +
                     (missing.endedEarly ? " and a lost end" : "");
    }
    return kProblemFiles.toByteArray() + QByteArray::number(files) +
           (notes.isEmpty() ? QByteArray() : " (" + notes.join("; ") + ')');
}

QByteArray notReadClause(const MissingRecords& missing) {
    if (missing.notRead == 0 && !missing.endedEarly) {
        return {};
    }
    return "; not read: " + QByteArray::number(missing.notRead) + " records of the report" +
           (missing.endedEarly ? kEndedEarly.toByteArray() : QByteArray());
}

void readHeaderLine(QByteArrayView line, MissingRecords& missing) {
    // Header lines are few and short, and only ours say this, in our words.
    static const QRegularExpression leftOut(
        QStringLiteral("^  Problem files: \\d+ \\((\\d+) more left out[;)]"));
    static const QRegularExpression notRead(
        QStringLiteral("^  Not found: \\d+.*; not read: (\\d+) records of the report( \\(it ends early)?"));
    const QString text = QString::fromLatin1(line);
    if (const QRegularExpressionMatch match = leftOut.match(text); match.hasMatch()) {
        missing.leftOut += match.captured(1).toLongLong();
    } else if (const QRegularExpressionMatch again = notRead.match(text); again.hasMatch()) {
        missing.notRead += again.captured(1).toLongLong();
        missing.endedEarly = missing.endedEarly || again.hasCaptured(2);
    }
}

} // namespace zentoria
