#include "TagProbe.h"

#include "LocalFile.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <limits>
#include <mutex>
#include <optional>
#include <sys/stat.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2header.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <taglib/tdebuglistener.h>
#include <taglib/tfilestream.h>
#include <unistd.h>

namespace zentoria::scan {

namespace {

// How far past the start (or past the ID3v2 tag) a probe looks for the first audio frame, and how much
// of the end it reads for the ID3v1 and APE tags.
constexpr long kFrameWindow = 64 * 1024;
constexpr long kTailWindow = 4 * 1024;
// What a probe reads at once from the start: the ID3v2 header, a small tag and the first frames.
constexpr long kHeadBlock = 20 * 1024;

// A read-only file that answers "end of file" to reads in its middle, beyond a limit that grows once
// the ID3v2 tag's size is known. TagLib searches a file that starts with neither a tag nor a frame
// to its end, a byte at a time; this keeps that search to the window where a frame can start.
// The start and the end of the file are read once, with one system call each, and TagLib's many small
// reads and seeks there are answered from them; a read-only TagLib::FileStream over the descriptor
// serves whatever lies elsewhere (a large tag), made only when it is needed. Through the stream alone,
// its seeks and length queries cost some fifteen system calls per file, three times what reading
// the two ends costs.
class BoundedStream : public TagLib::IOStream {
public:
    // The caller has made sure the descriptor is a regular file of this length.
    BoundedStream(int descriptor, long length)
        : m_descriptor(descriptor)
        , m_length(length) {
        m_head = readAt(0, std::min(m_length, kHeadBlock));
        if (m_error == 0 && m_length > kHeadBlock) {
            m_tailStart = std::max(kHeadBlock, m_length - kTailWindow);
            m_tail = readAt(m_tailStart, m_length - m_tailStart);
        }
    }
    ~BoundedStream() override {
        if (!m_file) {
            ::close(m_descriptor);
        }
    }
    BoundedStream(const BoundedStream&) = delete;
    BoundedStream& operator=(const BoundedStream&) = delete;

    void allowReadsBefore(long offset) { m_headLimit = offset; }
    // The error of the first read that failed; 0 when none did.
    int error() const { return m_error; }

    TagLib::FileName name() const override { return ""; }
    TagLib::ByteVector readBlock(unsigned long length) override {
        const long at = m_position;
        const long end = std::min<long>(at + long(length), m_length);
        if (at >= end) {
            return {};
        }
        if (end <= long(m_head.size())) {
            m_position = end;
            return m_head.mid(static_cast<unsigned int>(at), static_cast<unsigned int>(end - at));
        }
        if (!m_tail.isEmpty() && at >= m_tailStart) {
            m_position = end;
            return m_tail.mid(static_cast<unsigned int>(at - m_tailStart),
                              static_cast<unsigned int>(end - at));
        }
        if (at >= m_headLimit && at < m_tailStart) {
            return {};
        }
        if (!m_file) {
            m_file.emplace(m_descriptor, true);
        }
        m_file->seek(at);
        TagLib::ByteVector data = m_file->readBlock(length);
        m_position = at + long(data.size());
        return data;
    }
    // Never written: the probe only reads.
    void writeBlock(const TagLib::ByteVector&) override {}
    void insert(const TagLib::ByteVector&, unsigned long, unsigned long) override {}
    void removeBlock(unsigned long, unsigned long) override {}
    void truncate(long) override {}
    bool readOnly() const override { return true; }
    bool isOpen() const override { return m_error == 0 && (!m_file || m_file->isOpen()); }
    void seek(long offset, Position p) override {
        const long from = p == Beginning ? 0 : p == Current ? m_position : m_length;
        m_position = std::max(0L, from + offset);
    }
    void clear() override {}
    long tell() const override { return m_position; }
    long length() override { return m_length; }

private:
    TagLib::ByteVector readAt(long offset, long length) {
        char buffer[kHeadBlock];
        const ssize_t got = ::pread(m_descriptor, buffer, std::size_t(std::min(length, kHeadBlock)), offset);
        if (got < 0) {
            m_error = errno;
            return {};
        }
        return {buffer, static_cast<unsigned int>(got)};
    }

    int m_descriptor;
    long m_length;
    long m_position = 0;
    long m_headLimit = kFrameWindow;
    int m_error = 0;
    TagLib::ByteVector m_head;
    TagLib::ByteVector m_tail;
    long m_tailStart = std::numeric_limits<long>::max();
    // Closes the descriptor once it is made.
    std::optional<TagLib::FileStream> m_file;
};

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

TagProbe failed(TagProbe::Outcome outcome, QString error) {
    TagProbe probe;
    probe.outcome = outcome;
    probe.error = std::move(error);
    return probe;
}

// Probes the open file and closes it.
TagProbe probeDescriptor(int descriptor) {
    silenceTagLib();
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0) {
        const int error = errno;
        ::close(descriptor);
        return failed(TagProbe::Outcome::Unreadable, QStringLiteral("cannot be read: ") + systemError(error));
    }
    // A device or a named pipe named ".mp3" holds no file to check: /dev/zero would read forever.
    if (!S_ISREG(status.st_mode)) {
        ::close(descriptor);
        return failed(TagProbe::Outcome::Unreadable, QStringLiteral("not a regular file"));
    }
    // The stream closes the descriptor.
    BoundedStream stream(descriptor, long(status.st_size));
    if (const int error = stream.error(); error != 0) {
        return failed(TagProbe::Outcome::Unreadable, QStringLiteral("cannot be read: ") + systemError(error));
    }
    TagLib::MPEG::File file(&stream, TagLib::ID3v2::FrameFactory::instance(), false);
    if (!file.isValid()) {
        return failed(TagProbe::Outcome::Unreadable, QStringLiteral("cannot be read"));
    }
    TagProbe probe;
    probe.outcome = TagProbe::Outcome::Probed;
    if (file.hasID3v2Tag()) {
        probe.hasID3v2 = !file.ID3v2Tag()->frameList().isEmpty();
        // The tag may stand after leading junk, no further in than the first window.
        stream.allowReadsBefore(2 * kFrameWindow + long(file.ID3v2Tag()->header()->completeTagSize()));
    }
    probe.hasID3v1 = file.hasID3v1Tag() && !file.ID3v1Tag()->isEmpty();
    if (file.firstFrameOffset() < 0) {
        return failed(TagProbe::Outcome::NotMpeg,
                      QStringLiteral("no MPEG audio found: not an MP3 file, or cut short"));
    }
    return probe;
}

TagProbe openFailed(int error) {
    return failed(TagProbe::Outcome::Unreadable,
                  error == ENOENT ? QStringLiteral("no such file")
                                  : QStringLiteral("cannot be read: ") + systemError(error));
}

// Not blocking: a named pipe called "x.mp3" would otherwise wait for a writer forever.
constexpr int kProbeFlags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

} // namespace

TagProbe probeTags(const QString& path) {
    const int descriptor = openLocal(path, kProbeFlags);
    return descriptor < 0 ? openFailed(errno) : probeDescriptor(descriptor);
}

TagProbe probeTagsAt(int folder, const QByteArray& name) {
    const int descriptor = ::openat(folder, name.constData(), kProbeFlags);
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
