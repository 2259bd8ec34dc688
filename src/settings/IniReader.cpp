#include "IniReader.h"

#include "report/RegularFile.h"
#include "report/TextDecoding.h"

#include <QFile>
#include <QStringView>

namespace zentoria {

namespace {

bool isBlank(QChar c) {
    return c == u' ' || c == u'\t';
}

QStringView trimBlanks(QStringView text) {
    qsizetype start = 0;
    qsizetype end = text.size();
    while (start < end && isBlank(text[start])) {
        ++start;
    }
    while (end > start && isBlank(text[end - 1])) {
        --end;
    }
    return text.sliced(start, end - start);
}

QString withoutBlanks(QStringView text) {
    QString out;
    for (QChar c : text) {
        if (!isBlank(c)) {
            out += c;
        }
    }
    return out;
}

QStringView withoutQuotes(QStringView value) {
    if (value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
        value.back() == value.front()) {
        return value.sliced(1, value.size() - 2);
    }
    return value;
}

} // namespace

std::optional<QString> lookUpIniValue(const QString& text, const QString& section, const QString& key) {
    const QString wantedSection = withoutBlanks(section);
    const QStringView wantedKey = trimBlanks(key);
    bool inSection = false;
    for (QStringView rawLine : QStringView(text).tokenize(u'\n')) {
        QStringView line = trimBlanks(rawLine);
        if (line.endsWith(u'\r')) {
            line = trimBlanks(line.chopped(1));
        }
        if (line.startsWith(u'[')) {
            if (inSection) {
                return std::nullopt; // only the first section of that name counts
            }
            const qsizetype close = line.indexOf(u']');
            const QStringView name = close < 0 ? line.sliced(1) : line.sliced(1, close - 1);
            inSection = withoutBlanks(name).compare(wantedSection, Qt::CaseInsensitive) == 0;
            continue;
        }
        if (!inSection) {
            continue;
        }
        const qsizetype equals = line.indexOf(u'=');
        if (equals < 0) {
            continue;
        }
        const QStringView lineKey = trimBlanks(line.first(equals));
        if (lineKey.startsWith(u';') || lineKey.compare(wantedKey, Qt::CaseInsensitive) != 0) {
            continue;
        }
        return withoutQuotes(trimBlanks(line.sliced(equals + 1))).toString();
    }
    return std::nullopt;
}

QString readIniString(const QString& path, const QString& section, const QString& key,
                      const QString& defaultValue, int maxLength) {
    std::optional<QString> value;
    QFile file(path);
    // A language file chosen by hand may be anything: a named pipe must not hold up the program.
    if (QString why; !path.isEmpty() && openRegularFile(file, why)) {
        value = lookUpIniValue(decodeText(file.readAll()), section, key);
    }
    QString text = value.value_or(defaultValue).left(maxLength);
    // A character outside the BMP is two code units: one alone would be no character at all.
    if (!text.isEmpty() && text.back().isHighSurrogate()) {
        text.chop(1);
    }
    return text;
}

} // namespace zentoria
