#include "TagBytes.h"

#include <QByteArray>

#include <cstdlib>
#include <taglib/id3v1genres.h>

namespace zentoria::scan::tagbytes {

namespace {

quint32 bigEndian(QByteArrayView bytes) {
    quint32 value = 0;
    for (qsizetype i = 0; i < 4; ++i) {
        value = (value << 8) | static_cast<unsigned char>(i < bytes.size() ? bytes[i] : 0);
    }
    return value;
}

bool isFrameIdCharacter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// A text field ends at its first NUL; blanks (as TagLib strips them) tell nothing.
QByteArrayView fieldText(QByteArrayView field) {
    const qsizetype end = field.indexOf('\0');
    return end < 0 ? field : field.first(end);
}

bool fieldHasText(QByteArrayView field) {
    for (const char c : fieldText(field)) {
        if (c != ' ' && c != '\t' && c != '\n' && c != '\f' && c != '\r') {
            return true;
        }
    }
    return false;
}

} // namespace

quint32 synchSafe(QByteArrayView fourBytes) {
    quint32 value = 0;
    for (qsizetype i = 0; i < 4; ++i) {
        const auto byte = static_cast<unsigned char>(fourBytes[i]);
        if (byte & 0x80) {
            return bigEndian(fourBytes);
        }
        value = (value << 7) | byte;
    }
    return value;
}

std::optional<Id3v2Header> id3v2Header(QByteArrayView bytes) {
    if (bytes.size() < 10 || !bytes.startsWith("ID3")) {
        return std::nullopt;
    }
    Id3v2Header header;
    const QByteArrayView size = bytes.sliced(6, 4);
    // Size bytes of 128 or more make TagLib take the tag for empty, flags and version unread.
    for (const char byte : size) {
        if (static_cast<unsigned char>(byte) >= 0x80) {
            return header;
        }
    }
    const auto flags = static_cast<unsigned char>(bytes[5]);
    header.major = static_cast<unsigned char>(bytes[3]);
    header.unsynchronised = flags & 0x80;
    header.extended = flags & 0x40;
    header.footer = flags & 0x10;
    header.tagSize = synchSafe(size);
    return header;
}

std::optional<bool> id3v2HasFrame(const Id3v2Header& header, QByteArrayView data, qint64 dataLength) {
    if (header.tagSize == 0) {
        return false;
    }
    if ((header.major != 3 && header.major != 4) || (header.major == 3 && header.unsynchronised)) {
        return std::nullopt;
    }
    const auto have = [&](qint64 end) { return end <= data.size(); };
    qint64 position = 0;
    if (header.extended) {
        if (!have(4)) {
            return dataLength < 4 ? std::optional(false) : std::nullopt;
        }
        // 2.3 counts the size's own four bytes out, 2.4 in.
        const qint64 extended =
            header.major == 3 ? 4 + qint64(bigEndian(data.first(4))) : synchSafe(data.first(4));
        if (extended <= dataLength) {
            position = extended;
        }
    }
    // Room for a frame header and at least one byte of its data.
    if (position + 10 >= dataLength) {
        return false;
    }
    if (!have(position + 10)) {
        return std::nullopt;
    }
    const QByteArrayView frame = data.sliced(position, 10);
    if (frame[0] == '\0') {
        return false; // padding
    }
    const quint32 size = header.major == 3 ? bigEndian(frame.sliced(4, 4)) : synchSafe(frame.sliced(4, 4));
    const bool lengthIndicator = header.major == 4 && (frame[9] & 0x01);
    if (size <= (lengthIndicator ? 4U : 0U) || qint64(size) > dataLength - position) {
        return false;
    }
    // iTunes writes 2.2 frame names into 2.3 tags, ending them with a NUL.
    const qsizetype idLength = header.major == 3 && frame[3] == '\0' ? 3 : 4;
    for (qsizetype i = 0; i < idLength; ++i) {
        if (!isFrameIdCharacter(frame[i])) {
            return false;
        }
    }
    return true;
}

bool id3v1TellsSomething(QByteArrayView tag) {
    if (tag.size() < 128) {
        return false;
    }
    // Title, artist, album.
    for (qsizetype at : {3, 33, 63}) {
        if (fieldHasText(tag.sliced(at, 30))) {
            return true;
        }
    }
    // A year counts by the number it starts with, as TagLib reads it: "0000" is none, "1999?" is 1999.
    if (std::strtol(fieldText(tag.sliced(93, 4)).toByteArray().constData(), nullptr, 10) != 0) {
        return true;
    }
    // ID3v1.1 keeps a track in the comment's last byte, after a NUL.
    const bool track = tag[125] == '\0' && tag[126] != '\0';
    if (fieldHasText(tag.sliced(97, track ? 28 : 30)) || track) {
        return true;
    }
    return !TagLib::ID3v1::genre(static_cast<unsigned char>(tag[127])).isEmpty();
}

int mpegFrameLength(QByteArrayView header) {
    if (header.size() < 4) {
        return 0;
    }
    const auto b1 = static_cast<unsigned char>(header[1]);
    const auto b2 = static_cast<unsigned char>(header[2]);
    if (static_cast<unsigned char>(header[0]) != 0xFF || b1 == 0xFF || (b1 & 0xE0) != 0xE0) {
        return 0;
    }
    // Version: 0 is 2.5, 2 is 2, 3 is 1; layer: 1 is III, 2 is II, 3 is I.
    const int versionBits = (b1 >> 3) & 0x03;
    const int layerBits = (b1 >> 1) & 0x03;
    if (versionBits == 1 || layerBits == 0) {
        return 0;
    }
    static constexpr int kBitrates[2][3][16] = {
        {{0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448, 0},
         {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384, 0},
         {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0}},
        {{0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256, 0},
         {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0},
         {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0}}};
    static constexpr int kSampleRates[3][4] = {
        {44100, 48000, 32000, 0}, {22050, 24000, 16000, 0}, {11025, 12000, 8000, 0}};
    static constexpr int kSamplesPerFrame[3][2] = {{384, 384}, {1152, 1152}, {1152, 576}};
    static constexpr int kPadding[3] = {4, 1, 1};
    const int version = versionBits == 3 ? 0 : versionBits == 2 ? 1 : 2;
    const int layer = 3 - layerBits; // 0 for layer I
    const int bitrate = kBitrates[version == 0 ? 0 : 1][layer][(b2 >> 4) & 0x0F];
    const int sampleRate = kSampleRates[version][(b2 >> 2) & 0x03];
    if (bitrate == 0 || sampleRate == 0) {
        return 0;
    }
    return kSamplesPerFrame[layer][version == 0 ? 0 : 1] * bitrate * 125 / sampleRate +
           ((b2 & 0x02) ? kPadding[layer] : 0);
}

bool sameMpegStream(QByteArrayView header, QByteArrayView next) {
    constexpr quint32 kStreamBits = 0xFFFE0C00;
    return next.size() >= 4 && (bigEndian(header) & kStreamBits) == (bigEndian(next) & kStreamBits);
}

} // namespace zentoria::scan::tagbytes
