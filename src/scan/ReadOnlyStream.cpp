#include "ReadOnlyStream.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace zentoria::scan {

ReadOnlyStream::ReadOnlyStream(int descriptor, qint64 length)
    : m_descriptor(descriptor)
    , m_length(length) {}

qint64 ReadOnlyStream::read(char* into, qint64 count, qint64 offset) {
    count = std::clamp<qint64>(m_length - offset, 0, count);
    qint64 done = 0;
    // After a failure the rest of the file is not asked for: its answer would not be trusted either.
    while (done < count && m_error == 0 && !m_cutShort) {
        const ssize_t got = readAt(into + done, std::size_t(count - done), offset + done);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            m_error = errno;
        } else if (got == 0) {
            m_cutShort = true;
        } else {
            done += got;
        }
    }
    return done;
}

ssize_t ReadOnlyStream::readAt(char* into, std::size_t count, qint64 offset) {
    return ::pread(m_descriptor, into, count, off_t(offset));
}

TagLib::ByteVector ReadOnlyStream::readBlock(unsigned long length) {
    TagLib::ByteVector bytes(uint(std::clamp<qint64>(m_length - m_position, 0, qint64(length))), '\0');
    const qint64 got = read(bytes.data(), bytes.size(), m_position);
    bytes.resize(uint(got));
    m_position += got;
    return bytes;
}

void ReadOnlyStream::seek(long offset, Position from) {
    const qint64 base = from == Beginning ? 0 : from == Current ? m_position : m_length;
    m_position = std::max<qint64>(0, base + offset);
}

} // namespace zentoria::scan
