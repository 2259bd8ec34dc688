#include "TagEditorCommand.h"

#include "report/FileNameForm.h"

#include <QStandardPaths>

namespace zentoria {

namespace {

// Splits an Exec-style line into words; none when a quote is left open.
std::optional<QStringList> splitWords(const QString& command) {
    QStringList words;
    QString word;
    bool inWord = false;
    bool quoted = false;
    for (qsizetype i = 0; i < command.size(); ++i) {
        const QChar c = command.at(i);
        if (quoted) {
            if (c == u'\\' && i + 1 < command.size()) {
                word += command.at(++i);
            } else if (c == u'"') {
                quoted = false;
            } else {
                word += c;
            }
        } else if (c == u'"') {
            quoted = true;
            inWord = true;
        } else if (c == u' ' || c == u'\t') {
            if (inWord) {
                words << word;
                word.clear();
                inWord = false;
            }
        } else {
            word += c;
            inWord = true;
        }
    }
    if (quoted) {
        return std::nullopt;
    }
    if (inWord) {
        words << word;
    }
    return words;
}

QString fileUrl(const QString& file) {
    return QString::fromLatin1(localFileUrl(file).toEncoded());
}

// One word with its field codes put in; a word that is only %F or %U becomes one word per file.
QStringList expandWord(const QString& word, const QStringList& files, const QString& single) {
    if (word == u"%F") {
        return files;
    }
    if (word == u"%U") {
        QStringList urls;
        for (const QString& file : files) {
            urls << fileUrl(file);
        }
        return urls;
    }
    QString expanded;
    for (qsizetype i = 0; i < word.size(); ++i) {
        if (word.at(i) != u'%' || i + 1 == word.size()) {
            expanded += word.at(i);
            continue;
        }
        const QChar code = word.at(++i);
        if (code == u'%') {
            expanded += u'%';
        } else if (code == u'f') {
            expanded += single;
        } else if (code == u'u') {
            expanded += fileUrl(single);
        }
    }
    return expanded.isEmpty() && word.startsWith(u'%') ? QStringList() : QStringList{expanded};
}

bool hasField(const QStringList& words, QStringView field) {
    for (const QString& word : words) {
        if (word.contains(field)) {
            return true;
        }
    }
    return false;
}

} // namespace

std::optional<QList<ProgramStart>> tagEditorStarts(const QString& command, const QStringList& files,
                                                   QString* error) {
    const std::optional<QStringList> words = splitWords(command);
    if (!words) {
        if (error) {
            *error = QStringLiteral("a double quote is not closed");
        }
        return std::nullopt;
    }
    if (words->isEmpty() || words->first().startsWith(u'%')) {
        if (error) {
            *error = QStringLiteral("it names no program");
        }
        return std::nullopt;
    }
    const bool perFile = hasField(*words, u"%f") || hasField(*words, u"%u");
    const bool allFiles = hasField(*words, u"%F") || hasField(*words, u"%U");

    auto startFor = [&](const QString& single) {
        ProgramStart start{words->first(), {}};
        for (const QString& word : words->mid(1)) {
            start.arguments << expandWord(word, files, single);
        }
        if (!perFile && !allFiles) {
            start.arguments << files;
        }
        return start;
    };
    QList<ProgramStart> starts;
    if (perFile && !allFiles) {
        for (const QString& file : files) {
            starts << startFor(file);
        }
    } else {
        starts << startFor(files.value(0));
    }
    return starts;
}

QStringList knownTagEditors() {
    return {QStringLiteral("kid3"), QStringLiteral("kid3-qt"), QStringLiteral("picard"),
            QStringLiteral("puddletag"), QStringLiteral("easytag")};
}

QString findTagEditorCommand() {
    for (const QString& editor : knownTagEditors()) {
        if (!QStandardPaths::findExecutable(editor).isEmpty()) {
            return editor + QStringLiteral(" %F");
        }
    }
    return {};
}

} // namespace zentoria
