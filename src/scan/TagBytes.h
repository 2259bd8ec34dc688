#pragma once

#include <QByteArrayView>
#include <QtGlobal>

#include <optional>

// The few fixed bytes that say whether an MP3 file's tags tell something and where its audio starts,
// read as TagLib reads them, so that a plain file needs no TagLib object at all. Where TagLib 1.13
// misreads a well-formed tag, these read it as tag editors do (noted at each place).
namespace zentoria::scan::tagbytes {

// An integer of ID3v2 that should be synch-safe (7 bits a byte); one whose bytes are not is read as a
// plain big-endian integer, as the programs that write such tags meant it.
quint32 synchSafe(QByteArrayView fourBytes);

// The ten bytes that open an ID3v2 tag ("ID3", version, flags, size).
struct Id3v2Header {
    int major = 4;
    bool unsynchronised = false;
    bool extended = false;
    bool footer = false;
    // The frames' bytes, without this header and the footer; 0 when the size bytes are damaged.
    quint32 tagSize = 0;
    // The whole tag on disk.
    qint64 completeSize() const { return 10 + qint64(tagSize) + (footer ? 10 : 0); }
};
// None unless the bytes start with "ID3" and there are ten of them.
std::optional<Id3v2Header> id3v2Header(QByteArrayView bytes);

// Whether the tag lists at least one frame, from the first bytes of its frame data (`data`, which may
// be shorter than the tag's frame data, `dataLength`). None when that takes more than these rules: a
// tag of another version than 2.3 or 2.4, a 2.3 tag unsynchronised as a whole, or too few bytes.
// Two well-formed kinds of tag that TagLib 1.13 reads as frameless are read as tag editors read them:
// a 2.3 extended header is skipped by its real size (4 bytes more than TagLib skips), and a 2.4 footer
// is not taken off the frame data a second time (TagLib loses a frame that starts in the last 20 bytes),
// nor is a 2.4 extended header (TagLib loses the frame that ends a tag without padding).
std::optional<bool> id3v2HasFrame(const Id3v2Header& header, QByteArrayView data, qint64 dataLength);

// Whether the 128 bytes of an ID3v1 tag ("TAG" ...) tell something: a text field with more than blanks
// and NULs (a field ends at its first NUL), a year that is a number other than 0, a track, or a genre
// with a name. TagLib 1.13 counts a comment of blanks as information; tag editors show nothing.
bool id3v1TellsSomething(QByteArrayView tag);

// The length of the MPEG audio frame whose header the four bytes are, as TagLib computes it; 0 when
// they are no valid header.
int mpegFrameLength(QByteArrayView header);
// Whether a header that follows another belongs to the same stream (MPEG version, layer, sample
// rate): TagLib takes a frame for audio only when the next one is of its kind.
bool sameMpegStream(QByteArrayView header, QByteArrayView next);

} // namespace zentoria::scan::tagbytes
