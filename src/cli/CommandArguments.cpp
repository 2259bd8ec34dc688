#include "CommandArguments.h"

#include "report/FileNameForm.h"

#include <QDir>
#include <QStringDecoder>

#include <climits>
#include <sys/stat.h>
#include <unistd.h>

namespace zentoria::cli {

namespace {

constexpr char16_t kFirstByteMark = 0xDC80;

// Whether the bytes name a folder (a link to one included); `exists` says whether they name anything.
bool isFolder(const QByteArray& bytes, bool* exists) {
    struct stat status = {};
    if (::stat(bytes.constData(), &status) != 0) {
        return false;
    }
    *exists = true;
    return S_ISDIR(status.st_mode);
}

} // namespace

QStringList argumentsFromBytes(int count, const char* const* words) {
    QStringList arguments;
    for (int i = 0; i < count; ++i) {
        const QByteArrayView bytes(words[i]);
        QStringDecoder strict(QStringConverter::Utf8,
                              QStringConverter::Flag::ConvertInitialBom | QStringConverter::Flag::Stateless);
        QString text = strict.decode(bytes);
        if (!strict.hasError()) {
            arguments << text;
            continue;
        }
        // Not UTF-8: each byte from 0x80 up stands for itself, as Python's surrogate escapes do.
        text.clear();
        for (const char c : bytes) {
            const auto byte = static_cast<unsigned char>(c);
            text += byte < 0x80 ? QChar(char16_t(byte)) : QChar(char16_t(kFirstByteMark + byte - 0x80));
        }
        arguments << text;
    }
    return arguments;
}

QByteArray argumentBytes(const QString& word) {
    bool marked = false;
    for (const QChar c : word) {
        marked = marked || (c.unicode() >= kFirstByteMark && c.unicode() <= kFirstByteMark + 0x7F);
    }
    if (!marked) {
        return word.toUtf8();
    }
    QByteArray bytes;
    for (const QChar c : word) {
        bytes += c.unicode() >= kFirstByteMark && c.unicode() <= kFirstByteMark + 0x7F
                     ? QByteArray(1, char(c.unicode() - kFirstByteMark + 0x80))
                     : QString(c).toUtf8();
    }
    return bytes;
}

std::optional<QString> commandLineFolder(const QString& word, bool* exists) {
    *exists = false;
    QByteArray bytes = argumentBytes(word);
    if (!isFolder(bytes, exists)) {
        // Only a word that is text can be a "%XX" form; one given as bytes was its own name.
        const QByteArray escaped = fileNameBytes(word);
        if (bytes != word.toUtf8() || escaped == bytes || !isFolder(escaped, exists)) {
            return std::nullopt;
        }
        bytes = escaped;
    }
    if (!bytes.startsWith('/')) {
        char here[PATH_MAX];
        if (!::getcwd(here, sizeof here)) {
            return std::nullopt;
        }
        bytes = QByteArray(here) + '/' + bytes;
    }
    return QDir::cleanPath(shownFileName(bytes));
}

} // namespace zentoria::cli
