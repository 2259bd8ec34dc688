#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringDecoder>

namespace zentoria {

// Reports and language files come from Windows programs: UTF-8 when their bytes say so, otherwise the
// Western ANSI code page.
enum class TextEncoding { Utf8, Windows1252 };

// Decodes whole pieces of text (lines, values) in one encoding.
class TextDecoder {
public:
    explicit TextDecoder(TextEncoding encoding);
    QString operator()(QByteArrayView bytes) const;

private:
    TextEncoding m_encoding;
};

// A UTF-8 byte order mark: it marks the encoding and is no part of the text.
inline constexpr QByteArrayView kByteOrderMark = "\xEF\xBB\xBF";

// The bytes without a leading byte order mark.
QByteArrayView withoutByteOrderMark(QByteArrayView bytes);

// UTF-8 when the bytes (a byte order mark aside) are valid UTF-8, otherwise Windows-1252.
TextEncoding detectEncoding(QByteArrayView bytes);

// Decodes a whole file's bytes: a UTF-8 byte order mark is dropped.
QString decodeText(QByteArrayView bytes);

} // namespace zentoria
