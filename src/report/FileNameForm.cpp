#include "FileNameForm.h"

#include "Utf8Validator.h"

#include <QStringDecoder>

#include <optional>

namespace zentoria {

namespace {

int hexValue(QChar c) {
    if (c >= u'0' && c <= u'9') {
        return c.unicode() - u'0';
    }
    if (c >= u'A' && c <= u'F') {
        return c.unicode() - u'A' + 10;
    }
    if (c >= u'a' && c <= u'f') {
        return c.unicode() - u'a' + 10;
    }
    return -1;
}

// QString::fromUtf8 drops a leading byte order mark, which in a file name is one of its characters.
QString utf8Text(QByteArrayView bytes) {
    return QStringDecoder(QStringConverter::Utf8, QStringConverter::Flag::ConvertInitialBom).decode(bytes);
}

bool isValidUtf8(QByteArrayView bytes) {
    Utf8Validator validator;
    validator.feed(bytes.data(), bytes.size());
    return validator.isValid();
}

// How long the UTF-8 sequence starting at `at` is when it is well-formed; 0 when it is not.
qsizetype sequenceLength(QByteArrayView bytes, qsizetype at) {
    const auto lead = static_cast<unsigned char>(bytes.at(at));
    const qsizetype length = lead < 0x80                    ? 1
                             : lead >= 0xC2 && lead <= 0xDF ? 2
                             : lead >= 0xE0 && lead <= 0xEF ? 3
                             : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                            : 0;
    if (length == 0 || at + length > bytes.size()) {
        return 0;
    }
    return isValidUtf8(bytes.sliced(at, length)) ? length : 0;
}

QString escapedPart(QByteArrayView bytes) {
    QString shown;
    shown.reserve(bytes.size() + 8);
    for (qsizetype at = 0; at < bytes.size();) {
        const qsizetype length = sequenceLength(bytes, at);
        // A "%" is a byte written as a code too: "%25".
        if (length == 0 || bytes.at(at) == '%') {
            shown += QStringLiteral("%%1")
                         .arg(static_cast<unsigned char>(bytes.at(at)), 2, 16, QChar(u'0'))
                         .toUpper();
            at += 1;
        } else {
            shown += utf8Text(bytes.sliced(at, length));
            at += length;
        }
    }
    return shown;
}

QString shownPart(QByteArrayView bytes) {
    if (isValidUtf8(bytes)) {
        QString text = utf8Text(bytes);
        if (!isEscapedFileName(text)) {
            return text;
        }
    }
    return escapedPart(bytes);
}

// The bytes of a part whose every "%" starts "%XX"; none for any other part.
std::optional<QByteArray> percentDecoded(QStringView part) {
    QByteArray bytes;
    bytes.reserve(part.size());
    qsizetype plain = 0;
    for (qsizetype at = part.indexOf(u'%'); at >= 0; at = part.indexOf(u'%', plain)) {
        if (at + 2 >= part.size() || hexValue(part.at(at + 1)) < 0 || hexValue(part.at(at + 2)) < 0) {
            return std::nullopt;
        }
        bytes += part.sliced(plain, at - plain).toUtf8();
        bytes += char(hexValue(part.at(at + 1)) * 16 + hexValue(part.at(at + 2)));
        plain = at + 3;
    }
    bytes += part.sliced(plain).toUtf8();
    return bytes;
}

QByteArray partBytes(QStringView part) {
    if (isEscapedFileName(part)) {
        return *percentDecoded(part);
    }
    return part.toUtf8();
}

} // namespace

bool isEscapedFileName(QStringView part) {
    if (!part.contains(u'%')) {
        return false;
    }
    // Only what shownFileName writes: bytes that are no UTF-8, or a name that held "%" itself. A
    // report from Windows naming "100%20.mp3" names just that.
    const std::optional<QByteArray> bytes = percentDecoded(part);
    return bytes && (!isValidUtf8(*bytes) || bytes->contains('%'));
}

QString shownFileName(QByteArrayView bytes) {
    QString shown;
    qsizetype start = 0;
    for (;;) {
        const qsizetype slash = bytes.indexOf('/', start);
        const qsizetype end = slash < 0 ? bytes.size() : slash;
        shown += shownPart(bytes.sliced(start, end - start));
        if (slash < 0) {
            return shown;
        }
        shown += u'/';
        start = slash + 1;
    }
}

QByteArray fileNameBytes(QStringView shown) {
    QByteArray bytes;
    bytes.reserve(shown.size());
    qsizetype start = 0;
    for (;;) {
        const qsizetype slash = shown.indexOf(u'/', start);
        const qsizetype end = slash < 0 ? shown.size() : slash;
        bytes += partBytes(shown.sliced(start, end - start));
        if (slash < 0) {
            return bytes;
        }
        bytes += '/';
        start = slash + 1;
    }
}

QString shownFileName(const QString& reportName, NameReading reading) {
    return reading == NameReading::Escaped ? reportName : shownFileName(reportName.toUtf8());
}

QUrl localFileUrl(const QString& shownPath) {
    // Percent-encoded bytes that are no UTF-8 stay as they are in a URL: QUrl keeps them.
    return QUrl::fromEncoded("file://" + fileNameBytes(shownPath).toPercentEncoding("/"), QUrl::StrictMode);
}

} // namespace zentoria
