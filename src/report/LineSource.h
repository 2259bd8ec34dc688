#pragma once

#include "Utf8Validator.h"

#include <QByteArray>
#include <QByteArrayView>

#include <memory>
#include <optional>

class QIODevice;

namespace zentoria {

// The longest path a Windows program can write, in UTF-16 code units: a report holds none longer.
inline constexpr qsizetype kMaxPathLength = 32767;
// The longest line a report can hold: such a path in UTF-8, three bytes a code unit at most. A longer
// line is outside the format: only its first kMaxLineLength bytes are handed on, and the rest is skipped
// without being kept in memory.
inline constexpr qsizetype kMaxLineLength = 3 * kMaxPathLength;

struct SourceLine {
    // The line without its terminator; valid until the next call of next().
    QByteArrayView bytes;
    // The line was longer than kMaxLineLength and bytes holds only its beginning.
    bool overlong = false;
};

// Yields the lines of a report one at a time, in order. Lines end in CR LF, LF or a lone CR; the last
// one may have no terminator. A UTF-8 byte order mark at the very start is not part of the first line.
class LineSource {
public:
    virtual ~LineSource() = default;
    // False once the input is exhausted.
    virtual bool next(SourceLine& line) = 0;
    // Whether the whole input, including what was not read yet, is valid UTF-8 (the byte order mark
    // aside). Memory and files that can seek answer at any time; other sources may read the rest of the
    // input to answer, so ask them after the last next().
    virtual bool isUtf8() = 0;
    // The size of the whole input in bytes, when known beforehand; otherwise -1.
    virtual qint64 sizeHint() const { return -1; }
};

// Splits a window of bytes into lines; subclasses decide where the bytes come from.
class LineSplitter : public LineSource {
public:
    bool next(SourceLine& line) override;

protected:
    // Makes more input available: may move the unread bytes [m_pos, m_end) and must keep them in order.
    // False at the end of the input.
    virtual bool refill() = 0;
    void skipByteOrderMark();

    const char* m_pos = nullptr;
    const char* m_end = nullptr;

private:
    bool m_skippingOverlong = false;
    bool m_afterCarriageReturn = false; // an LF right here belongs to the previous line's CR
};

// Lines of bytes already in memory, without copying them.
class MemoryLineSource final : public LineSplitter {
public:
    explicit MemoryLineSource(QByteArrayView data);
    bool isUtf8() override;
    qint64 sizeHint() const override { return m_data.size(); }

protected:
    bool refill() override { return false; }

private:
    QByteArrayView m_data;
};

// Lines of an open device, read in chunks: memory stays bounded whatever the size of the input.
class DeviceLineSource final : public LineSplitter {
public:
    explicit DeviceLineSource(QIODevice& device);
    ~DeviceLineSource() override;
    bool isUtf8() override;
    qint64 sizeHint() const override;
    // True when reading the device failed; the source then ended where the failure happened.
    bool hadReadError() const { return m_readError; }

protected:
    bool refill() override;

private:
    QIODevice& m_device;
    std::unique_ptr<char[]> m_buffer;
    Utf8Validator m_validator;
    bool m_started = false;
    bool m_atEnd = false;
    bool m_readError = false;
    std::optional<bool> m_utf8Ahead; // answered by reading ahead, before the end
};

} // namespace zentoria
