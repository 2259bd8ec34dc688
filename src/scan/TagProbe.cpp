#include "TagProbe.h"

#include "LocalFile.h"
#include "ReadOnlyStream.h"
#include "TagBytes.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>
#include <taglib/id3v2tag.h>
#include <taglib/tdebuglistener.h>
#include <taglib/tfile.h>
#include <unistd.h>

namespace zentoria::scan {

using namespace tagbytes;

namespace {

// The first read: the ID3v2 header, a small tag and its first frames, or a whole small file.
constexpr qint64 kHeadBlock = 4 * 1024;
// The end of a file, read once: the ID3v1 and APE tags, and the last audio frames before them.
constexpr qint64 kLastBlock = 4 * 1024;
// Enough of a tag's frame data for its extended header and its first frame's header.
constexpr qint64 kTagStart = 1024;
// Where audio is looked for: first a little (it mostly starts right after the tag), then in large
// steps, so that 64 MB of something else named ".mp3" costs 64 reads.
constexpr qint64 kFirstSearch = 1024;
constexpr qint64 kSearchStep = 1024 * 1024;
// Past a frame's start, what its check reads: the longest frame TagLib computes (MPEG 2.5 layer II,
// 160 kbit/s at 8 kHz, padded: 2,881 bytes) and the next header's four bytes.
constexpr qint64 kLookahead = 2881 + 4;

// A regular file of known length, read by offset. Its first block is kept, and the last other block
// read, since a probe asks several small questions in one place (where the tag ends, the three ends of
// an ID3v1 tag): each place costs one read.
class FileBytes {
public:
    explicit FileBytes(ReadOnlyStream& stream)
        : m_stream(stream)
        , m_length(stream.length()) {
        fill(m_head, 0, std::min(m_length, kHeadBlock));
    }

    qint64 length() const { return m_length; }
    // Whether a read failed or the file ended early: what was not read is not there to look at.
    bool failed() const { return m_stream.error() != 0 || m_stream.cutShort(); }

    // Up to `count` bytes from `offset`, fewer at the end of the file; valid until the next read.
    QByteArrayView read(qint64 offset, qint64 count) {
        count = std::clamp<qint64>(m_length - offset, 0, count);
        if (count == 0) {
            return {};
        }
        if (offset + count <= m_head.size()) {
            return QByteArrayView(m_head).sliced(offset, count);
        }
        if (offset < m_windowStart || offset + count > m_windowStart + m_window.size()) {
            // A small read near the end (the ID3v1 and APE tags) takes the rest of the file with it.
            const bool tail = offset + count > m_length - kTail;
            m_windowStart = tail ? std::max<qint64>(0, std::min(offset, m_length - kTail)) : offset;
            fill(m_window, m_windowStart, std::max(count, tail ? kTail : kWindow));
        }
        // A file that ended early gave fewer bytes than asked for, maybe none from here on.
        const qint64 at = std::min<qint64>(offset - m_windowStart, m_window.size());
        return QByteArrayView(m_window).sliced(at, std::min<qint64>(count, m_window.size() - at));
    }

private:
    static constexpr qint64 kWindow = 4 * 1024;
    static constexpr qint64 kTail = kLastBlock;

    void fill(QByteArray& into, qint64 offset, qint64 count) {
        into.resize(std::clamp<qint64>(m_length - offset, 0, count));
        into.resize(m_stream.read(into.data(), into.size(), offset));
    }

    ReadOnlyStream& m_stream;
    qint64 m_length;
    QByteArray m_head;
    QByteArray m_window;
    qint64 m_windowStart = -1;
};

// Whether an MPEG frame TagLib accepts starts at `at`: a valid header, and one of the same stream
// right after the frame. `block` holds the file's bytes from `blockStart` on.
bool frameAt(FileBytes& file, QByteArrayView block, qint64 blockStart, qint64 at) {
    const qint64 inBlock = at - blockStart;
    const QByteArray header =
        (inBlock + 4 <= block.size() ? block.sliced(inBlock, 4) : file.read(at, 4)).toByteArray();
    const int length = mpegFrameLength(header);
    return length > 0 &&
           sameMpegStream(header, inBlock + length + 4 <= block.size() ? block.sliced(inBlock + length, 4)
                                                                       : file.read(at + length, 4));
}

// From `from` on, where the first MPEG frame starts, or (asked for, as TagLib looks for an ID3v2 tag
// that junk hides) an "ID3" that comes first: {frame, -1}, {-1, tag} or {-1, -1}.
std::pair<qint64, qint64> scanFrom(FileBytes& file, qint64 from, bool lookForTag) {
    qint64 step = kFirstSearch;
    for (qint64 start = from; start < file.length(); start += step, step = kSearchStep) {
        // Kept whole: a frame's check may read elsewhere.
        const QByteArray block = file.read(start, step + kLookahead).toByteArray();
        const qint64 scanned = std::min<qint64>(step, block.size());
        for (qint64 i = 0; i < scanned; ++i) {
            if (block[i] == '\xFF') {
                if (frameAt(file, block, start, start + i)) {
                    return {start + i, -1};
                }
            } else if (lookForTag && block[i] == 'I' && block.sliced(i).startsWith("ID3")) {
                return {-1, start + i};
            }
        }
        if (file.failed()) {
            break;
        }
    }
    return {-1, -1};
}

// TagLib's messages about odd tags would reach standard error from any thread; the probe says what
// matters in its result.
class QuietListener : public TagLib::DebugListener {
public:
    void printMessage(const TagLib::String&) override {}
};

void silenceTagLib() {
    static QuietListener listener;
    static std::once_flag once;
    std::call_once(once, [] { TagLib::setDebugListener(&listener); });
}

// A file that TagLib reads one ID3v2 tag of, and nothing else.
class TagOnlyFile : public TagLib::File {
public:
    explicit TagOnlyFile(TagLib::IOStream* stream)
        : TagLib::File(stream) {}
    TagLib::Tag* tag() const override { return nullptr; }
    TagLib::AudioProperties* audioProperties() const override { return nullptr; }
    bool save() override { return false; }
};

// The tags the fixed bytes cannot settle (a 2.2 tag, a 2.3 tag unsynchronised as a whole), read by
// TagLib itself, read-only; what fails while it reads stays in the stream.
bool taglibHasFrame(ReadOnlyStream& stream, qint64 at) {
    silenceTagLib();
    TagOnlyFile file(&stream);
    const TagLib::ID3v2::Tag tag(&file, long(at));
    return !tag.frameList().isEmpty();
}

TagProbe failed(TagProbe::Outcome outcome, Obstacle obstacle, int error = 0) {
    TagProbe probe;
    probe.outcome = outcome;
    probe.obstacle = obstacle;
    probe.error = error;
    return probe;
}

// Whether the ID3v2 tag at `at` lists a frame; where the tag ends goes to `end`.
bool id3v2Frames(FileBytes& file, ReadOnlyStream& stream, qint64 at, qint64* end) {
    const Id3v2Header header = id3v2Header(file.read(at, 10)).value_or(Id3v2Header{});
    const qint64 dataStart = at + 10;
    const qint64 dataLength = std::clamp<qint64>(file.length() - dataStart, 0, header.tagSize);
    std::optional<bool> frames =
        id3v2HasFrame(header, file.read(dataStart, std::min<qint64>(dataLength, kTagStart)), dataLength);
    *end = at + header.completeSize();
    return frames ? *frames : taglibHasFrame(stream, at);
}

// Whether MPEG audio follows the tag that ends at `tagEnd`. First in the file's last block, which the
// ID3v1 tag is read with: two frames of one stream there are audio, wherever the search from the tag
// would meet it first, and the file's middle is not read at all. Else from the tag on, past the tags
// written again right after it, which TagLib counts as one.
bool audioAfter(FileBytes& file, qint64 tagEnd) {
    const qint64 start = std::max(tagEnd, file.length() - kLastBlock);
    const QByteArray last = file.read(start, kLastBlock).toByteArray();
    for (qint64 i = 0; i + 4 <= last.size(); ++i) {
        const int length = last[i] == '\xFF' ? mpegFrameLength(QByteArrayView(last).sliced(i, 4)) : 0;
        if (length > 0 && i + length + 4 <= last.size() &&
            sameMpegStream(QByteArrayView(last).sliced(i, 4), QByteArrayView(last).sliced(i + length, 4))) {
            return true;
        }
    }
    qint64 audio = tagEnd;
    while (const std::optional<Id3v2Header> next = id3v2Header(file.read(audio, 10))) {
        audio += next->completeSize();
    }
    return scanFrom(file, audio, false).first >= 0;
}

} // namespace

TagProbe probeStream(ReadOnlyStream& stream) {
    FileBytes file(stream);
    const qint64 length = file.length();
    TagProbe probe;
    bool audio = false;
    if (id3v2Header(file.read(0, 10))) {
        qint64 end = 0;
        probe.hasID3v2 = id3v2Frames(file, stream, 0, &end);
        audio = audioAfter(file, end);
    } else {
        // As TagLib, an ID3v2 tag is looked for until the first frame.
        const auto [frame, tag] = scanFrom(file, 0, true);
        audio = frame >= 0;
        if (tag >= 0) {
            qint64 end = 0;
            probe.hasID3v2 = id3v2Frames(file, stream, tag, &end);
            audio = audioAfter(file, end);
        }
    }
    // ID3v1 is the last 128 bytes, unless they end an APE tag's footer that happens to read "TAG".
    if (length >= 128 && file.read(length - 128, 3) == "TAG" &&
        !(length >= 131 && file.read(length - 131, 8) == "APETAGEX")) {
        probe.hasID3v1 = id3v1TellsSomething(file.read(length - 128, 128));
    }
    if (stream.error() != 0) {
        return failed(TagProbe::Outcome::Unreadable, Obstacle::CannotRead, stream.error());
    }
    if (stream.cutShort()) {
        return failed(TagProbe::Outcome::Unreadable, Obstacle::CutShort);
    }
    if (!audio) {
        return failed(TagProbe::Outcome::NotMpeg, Obstacle::NotMpeg);
    }
    probe.outcome = TagProbe::Outcome::Probed;
    return probe;
}

namespace {

// Probes the open file and closes it.
TagProbe probeDescriptor(int descriptor) {
    struct stat status = {};
    TagProbe probe;
    if (::fstat(descriptor, &status) != 0) {
        probe = failed(TagProbe::Outcome::Unreadable, Obstacle::CannotRead, errno);
    } else if (!S_ISREG(status.st_mode)) {
        // A device or a named pipe named ".mp3" holds no file to check: /dev/zero would read forever.
        probe = failed(TagProbe::Outcome::Unreadable, Obstacle::NotRegularFile);
    } else {
        ReadOnlyStream stream(descriptor, qint64(status.st_size));
        probe = probeStream(stream);
    }
    ::close(descriptor);
    return probe;
}

TagProbe openFailed(int error) {
    return error == ENOENT ? failed(TagProbe::Outcome::Unreadable, Obstacle::NoSuchFile)
                           : failed(TagProbe::Outcome::Unreadable, Obstacle::CannotRead, error);
}

// Not blocking: a named pipe called "x.mp3" would otherwise wait for a writer forever.
constexpr int kProbeFlags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

} // namespace

TagProbe probeTags(const QString& path) {
    const int descriptor = openLocal(path, kProbeFlags);
    return descriptor < 0 ? openFailed(errno) : probeDescriptor(descriptor);
}

TagProbe probeTagsAt(int folder, const QByteArray& name) {
    const int descriptor = openBytesAt(folder, name, kProbeFlags);
    return descriptor < 0 ? openFailed(errno) : probeDescriptor(descriptor);
}

std::optional<ProblemKind> problemKindOf(const TagProbe& probe) {
    if (probe.outcome != TagProbe::Outcome::Probed || (probe.hasID3v1 && probe.hasID3v2)) {
        return std::nullopt;
    }
    if (probe.hasID3v2) {
        return ProblemKind::ID3v1;
    }
    return probe.hasID3v1 ? ProblemKind::ID3v2 : ProblemKind::ID3v0;
}

} // namespace zentoria::scan
