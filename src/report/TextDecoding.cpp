#include "TextDecoding.h"

#include "Utf8Validator.h"

namespace zentoria {

namespace {

QString decodeWindows1252(QByteArrayView bytes) {
    // A decoder is cheap to make and carries state, so each piece gets a fresh one.
    QStringDecoder decoder("windows-1252");
    if (decoder.isValid()) {
        return decoder.decode(bytes);
    }
    // Without ICU only Latin-1 is at hand; it agrees with Windows-1252 outside 0x80 to 0x9F.
    return QString::fromLatin1(bytes);
}

} // namespace

TextDecoder::TextDecoder(TextEncoding encoding)
    : m_encoding(encoding) {}

QString TextDecoder::operator()(QByteArrayView bytes) const {
    if (m_encoding == TextEncoding::Windows1252) {
        return decodeWindows1252(bytes);
    }
    // Only a file's first bytes can be its byte order mark (decodeText drops it); one that starts a line
    // is part of that line's text, a file's name say.
    return QStringDecoder(QStringConverter::Utf8, QStringConverter::Flag::ConvertInitialBom).decode(bytes);
}

QByteArrayView withoutByteOrderMark(QByteArrayView bytes) {
    return bytes.startsWith(kByteOrderMark) ? bytes.sliced(kByteOrderMark.size()) : bytes;
}

TextEncoding detectEncoding(QByteArrayView bytes) {
    const QByteArrayView content = withoutByteOrderMark(bytes);
    Utf8Validator validator;
    validator.feed(content.data(), content.size());
    return validator.isValid() ? TextEncoding::Utf8 : TextEncoding::Windows1252;
}

QString decodeText(QByteArrayView bytes) {
    return TextDecoder(detectEncoding(bytes))(withoutByteOrderMark(bytes));
}

} // namespace zentoria
