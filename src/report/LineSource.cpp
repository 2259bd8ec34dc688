#include "LineSource.h"

#include "TextDecoding.h"

#include <QIODevice>

#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zentoria {

namespace {

constexpr qsizetype kChunkSize = 512 * 1024;
// Room for a whole maximal line plus one chunk read behind it.
constexpr qsizetype kBufferSize = kMaxLineLength + 1 + kChunkSize;

#if defined(__SSE2__)
// The first CR or LF, sixteen bytes at a time: one pass, where two memchr calls would scan each line twice.
Q_ALWAYS_INLINE const char* findTerminator(const char* from, const char* to) {
    const __m128i lf = _mm_set1_epi8('\n');
    const __m128i cr = _mm_set1_epi8('\r');
    const auto hitsAt = [lf, cr](const char* at) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        return static_cast<unsigned>(
            _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(bytes, lf), _mm_cmpeq_epi8(bytes, cr))));
    };
    const char* p = from;
    for (; to - p >= 32; p += 32) {
        const unsigned low = hitsAt(p);
        const unsigned high = hitsAt(p + 16);
        if (low | high) {
            return p + __builtin_ctz(low | (high << 16));
        }
    }
    for (; to - p >= 16; p += 16) {
        if (const unsigned hits = hitsAt(p)) {
            return p + __builtin_ctz(hits);
        }
    }
    for (; p < to; ++p) {
        if (*p == '\n' || *p == '\r') {
            return p;
        }
    }
    return nullptr;
}
#else
Q_ALWAYS_INLINE const char* findTerminator(const char* from, const char* to) {
    const auto* lf = static_cast<const char*>(std::memchr(from, '\n', static_cast<size_t>(to - from)));
    const char* const limit = lf ? lf : to;
    const auto* cr = static_cast<const char*>(std::memchr(from, '\r', static_cast<size_t>(limit - from)));
    return cr ? cr : lf;
}
#endif

} // namespace

void LineSplitter::skipByteOrderMark() {
    if (QByteArrayView(m_pos, m_end - m_pos).startsWith(kByteOrderMark)) {
        m_pos += kByteOrderMark.size();
    }
}

bool LineSplitter::next(SourceLine& line) {
    // Finish the overlong line handed out last time: its rest is dropped as it streams past.
    while (m_skippingOverlong) {
        if (const char* term = findTerminator(m_pos, m_end)) {
            m_afterCarriageReturn = *term == '\r';
            m_pos = term + 1;
            m_skippingOverlong = false;
        } else {
            m_pos = m_end;
            if (!refill()) {
                return false;
            }
        }
    }
    if (m_afterCarriageReturn) {
        if (m_pos == m_end && !refill()) {
            return false;
        }
        if (*m_pos == '\n') {
            ++m_pos;
        }
        m_afterCarriageReturn = false;
    }

    qsizetype scanned = 0; // bytes of this line already known to hold no terminator
    for (;;) {
        if (const char* term = findTerminator(m_pos + scanned, m_end)) {
            const qsizetype length = term - m_pos;
            line.overlong = length > kMaxLineLength;
            line.bytes = QByteArrayView(m_pos, line.overlong ? kMaxLineLength : length);
            m_pos = term + 1;
            if (*term == '\r') {
                // The LF of a CR LF is mostly right here; only at the end of the buffer must it wait.
                if (m_pos < m_end) {
                    m_pos += *m_pos == '\n';
                } else {
                    m_afterCarriageReturn = true;
                }
            }
            return true;
        }
        scanned = m_end - m_pos;
        if (scanned > kMaxLineLength) {
            line.overlong = true;
            line.bytes = QByteArrayView(m_pos, kMaxLineLength);
            m_pos += kMaxLineLength;
            m_skippingOverlong = true;
            return true;
        }
        if (!refill()) {
            if (m_pos == m_end) {
                return false;
            }
            line.overlong = false;
            line.bytes = QByteArrayView(m_pos, m_end - m_pos);
            m_pos = m_end;
            return true;
        }
    }
}

MemoryLineSource::MemoryLineSource(QByteArrayView data)
    : m_data(data) {
    m_pos = data.data();
    m_end = data.data() + data.size();
    skipByteOrderMark();
}

bool MemoryLineSource::isUtf8() {
    return detectEncoding(m_data) == TextEncoding::Utf8;
}

DeviceLineSource::DeviceLineSource(QIODevice& device)
    : m_device(device)
    , m_buffer(std::make_unique_for_overwrite<char[]>(kBufferSize)) {
    m_pos = m_end = m_buffer.get();
    if (refill()) {
        skipByteOrderMark();
    }
}

DeviceLineSource::~DeviceLineSource() = default;

qint64 DeviceLineSource::sizeHint() const {
    return m_device.isSequential() ? -1 : m_device.size();
}

bool DeviceLineSource::refill() {
    if (m_atEnd) {
        return false;
    }
    const qsizetype unread = m_end - m_pos;
    if (m_pos != m_buffer.get()) {
        std::memmove(m_buffer.get(), m_pos, static_cast<size_t>(unread));
        m_pos = m_buffer.get();
        m_end = m_pos + unread;
    }
    const qint64 got = m_device.read(m_buffer.get() + unread, kBufferSize - unread);
    if (got <= 0) {
        m_readError = got < 0;
        m_atEnd = true;
        return false;
    }
    qsizetype content = 0;
    qint64 total = got;
    if (!m_started) {
        // A device may hand out its first bytes one by one: the byte order mark is judged whole. It is no
        // content, so it must not reach the validator either.
        m_started = true;
        while (total < kByteOrderMark.size()) {
            const qint64 more = m_device.read(m_buffer.get() + unread + total, kBufferSize - unread - total);
            if (more <= 0) {
                m_readError = more < 0;
                break;
            }
            total += more;
        }
        if (QByteArrayView(m_end, total).startsWith(kByteOrderMark)) {
            content = kByteOrderMark.size();
        }
    }
    m_validator.feed(m_end + content, total - content);
    m_end += total;
    return true;
}

bool DeviceLineSource::isUtf8() {
    if (m_utf8Ahead) {
        return *m_utf8Ahead;
    }
    if (!m_validator.stillPossible() || m_atEnd) {
        return m_validator.isValid();
    }
    if (!m_device.isSequential()) {
        // A file can be read on ahead and then taken up again where the lines stopped: a reader that
        // streams its entries asks in the middle of the input.
        const qint64 resumeAt = m_device.pos();
        Utf8Validator ahead = m_validator;
        const auto chunk = std::make_unique_for_overwrite<char[]>(kChunkSize);
        qint64 got = 0;
        while (ahead.stillPossible() && (got = m_device.read(chunk.get(), kChunkSize)) > 0) {
            ahead.feed(chunk.get(), got);
        }
        if (!m_device.seek(resumeAt)) {
            m_readError = true;
            m_atEnd = true;
        }
        // Bytes that cannot be read are no UTF-8 either; reading them again will say what is wrong.
        m_utf8Ahead = got >= 0 && ahead.isValid();
        return *m_utf8Ahead;
    }
    // Validation runs as chunks arrive; read the rest only if the answer is still open.
    while (m_validator.stillPossible() && !m_atEnd) {
        m_pos = m_end;
        refill();
    }
    return m_validator.isValid();
}

} // namespace zentoria
