#include "TagProbe.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <mutex>
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

// A read-only file that answers "end of file" to reads in its middle, beyond a limit that grows once
// the ID3v2 tag's size is known. TagLib searches a file that starts with neither a tag nor a frame
// to its end, a byte at a time; this keeps that search to the window where a frame can start.
class BoundedStream : public TagLib::IOStream {
public:
    explicit BoundedStream(int descriptor)
        : m_file(descriptor, true) {
        if (m_file.isOpen()) {
            m_length = m_file.length();
        }
    }
    void allowReadsBefore(long offset) { m_headLimit = offset; }

    TagLib::FileName name() const override { return m_file.name(); }
    TagLib::ByteVector readBlock(unsigned long length) override {
        const long at = m_file.tell();
        if (at >= m_headLimit && at < m_length - kTailWindow) {
            return {};
        }
        return m_file.readBlock(length);
    }
    // Never written: the probe only reads.
    void writeBlock(const TagLib::ByteVector&) override {}
    void insert(const TagLib::ByteVector&, unsigned long, unsigned long) override {}
    void removeBlock(unsigned long, unsigned long) override {}
    void truncate(long) override {}
    bool readOnly() const override { return true; }
    bool isOpen() const override { return m_file.isOpen(); }
    void seek(long offset, Position p) override { m_file.seek(offset, p); }
    void clear() override { m_file.clear(); }
    long tell() const override { return m_file.tell(); }
    long length() override { return m_length; }

private:
    TagLib::FileStream m_file;
    long m_length = 0;
    long m_headLimit = kFrameWindow;
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

} // namespace

TagProbe probeTags(const QString& path) {
    silenceTagLib();
    // Not blocking: a named pipe called "x.mp3" would otherwise wait for a writer forever.
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return failed(TagProbe::Outcome::Unreadable, QString::fromLocal8Bit(std::strerror(errno)));
    }
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(descriptor);
        return failed(TagProbe::Outcome::Unreadable, QStringLiteral("not a regular file"));
    }
    // The stream closes the descriptor.
    BoundedStream stream(descriptor);
    if (!stream.isOpen()) {
        ::close(descriptor);
        return failed(TagProbe::Outcome::Unreadable, QStringLiteral("cannot be opened"));
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
