#include "ReportReader.h"

#include "TextDecoding.h"

#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

namespace zentoria {

namespace {

constexpr std::string_view kMarker(kClosingMarker.data(), size_t(kClosingMarker.size()));

enum class Detail { Kind, Empty, Outside };

Detail classify(const SourceLine& line, ProblemKind& kind) {
    if (line.overlong) {
        return Detail::Outside;
    }
    if (line.bytes.isEmpty()) {
        return Detail::Empty;
    }
    if (line.bytes == kDetailID3v1) {
        kind = ProblemKind::ID3v1;
    } else if (line.bytes == kDetailID3v2) {
        kind = ProblemKind::ID3v2;
    } else if (line.bytes == kDetailID3v0) {
        kind = ProblemKind::ID3v0;
    } else {
        return Detail::Outside;
    }
    return Detail::Kind;
}

// An overlong line is outside the format, so it cannot close the report either.
bool isClosingLine(const SourceLine& line) {
    // A plain search: the marker is short and lines are short, where Qt's search first builds a table.
    return !line.overlong && std::string_view(line.bytes.data(), size_t(line.bytes.size())).find(kMarker) !=
                                 std::string_view::npos;
}

// How many UTF-16 code units a path line becomes: one a byte in Windows-1252, one a character in
// UTF-8 (two for those beyond the BMP). Which one the file has is known only at its end; a line that is
// valid UTF-8 counts as UTF-8.
qsizetype utf16Length(QByteArrayView bytes) {
    Utf8Validator validator;
    validator.feed(bytes.data(), bytes.size());
    if (!validator.isValid()) {
        return bytes.size();
    }
    qsizetype units = 0;
    for (char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        units += (byte & 0xC0) != 0x80; // not a continuation byte
        units += byte >= 0xF0;          // four bytes: a surrogate pair
    }
    return units;
}

bool isAscii(QByteArrayView bytes) {
    const char* p = bytes.data();
    const char* const end = p + bytes.size();
    for (; end - p >= 8; p += 8) {
        std::uint64_t word;
        std::memcpy(&word, p, sizeof word);
        if (word & 0x8080808080808080ULL) {
            return false;
        }
    }
    for (; p < end; ++p) {
        if (static_cast<unsigned char>(*p) >= 0x80) {
            return false;
        }
    }
    return true;
}

class Reader {
public:
    Reader(LineSource& source, const EntrySink* sink)
        : m_source(source)
        , m_sink(sink) {}

    ReportReadResult run() {
        // An empty file holds no banner either: it is no report.
        if (!read() || m_line.overlong || m_line.bytes != kBanner) {
            m_result.Outcome = Outcome::Corrupted;
            return std::move(m_result);
        }
        for (int header = 0; header < 6; ++header) {
            if (!read()) {
                return endedEarly();
            }
            if (!m_line.overlong) {
                if (header == 1 && m_line.bytes.startsWith(kWrittenByStart) &&
                    m_line.bytes.endsWith(kWrittenByEnd)) {
                    m_result.Names = NameReading::Escaped;
                }
                readHeaderLine(m_line.bytes, m_result.Written);
            }
        }
        // Every entry needs a detail line of at least 46 bytes, which bounds their number.
        if (const qint64 size = m_source.sizeHint(); size > 0 && !m_sink) {
            m_result.Entries.reserve(qMin<qint64>(size / qint64(kDetailID3v1.size() + 1), kMaxRecords));
        }
        m_result.Outcome = readRecords();
        decodeNonAsciiPaths();
        return std::move(m_result);
    }

private:
    void keepCreationDate() {
        const std::string_view line(m_line.bytes.data(), size_t(m_line.bytes.size()));
        const std::string_view date = line.substr(line.find(kMarker) + kMarker.size());
        const QByteArrayView bytes(date.data(), qsizetype(date.size()));
        // A date is digits and dots; whatever else a closing line holds is decoded as the paths are.
        m_result.CreationDate = (isAscii(bytes) ? QString::fromLatin1(bytes) : decoder()(bytes)).trimmed();
    }

    Outcome readRecords() {
        for (int record = 1;; ++record) {
            if (!read()) {
                return stopEarly();
            }
            if (isClosingLine(m_line)) {
                keepCreationDate();
                return Outcome::Loaded;
            }
            if (record > kMaxRecords) {
                m_result.StopLine = m_lineNumber;
                countRecordsLeft();
                return Outcome::TooManyRecords;
            }
            const bool pathFits =
                !m_line.overlong &&
                (isAscii(m_line.bytes) ? m_line.bytes.size() : utf16Length(m_line.bytes)) <= kMaxPathLength;
            if (!pathFits) {
                m_result.SkippedLines.append(m_lineNumber);
            }
            keepPath(m_line.bytes);

            if (!read()) {
                ++m_result.UnreadRecords; // a path without its detail line
                return stopEarly();
            }
            // A line that is exactly a detail line cannot hold the marker, so it is classified first.
            ProblemKind kind{};
            const Detail detail = classify(m_line, kind);
            const bool closing = detail != Detail::Kind && isClosingLine(m_line);
            if (!pathFits || (detail == Detail::Outside && !closing)) {
                ++m_result.UnreadRecords;
            }
            if (closing) {
                keepCreationDate();
                return Outcome::NoProblems;
            }
            if (detail == Detail::Outside) {
                m_result.SkippedLines.append(m_lineNumber);
            }
            if (detail == Detail::Kind && pathFits) {
                addEntry(static_cast<qint16>(record), kind);
            }

            // The separator line is never examined; at the end of the file the next path read says so.
            read();
        }
    }

    // The records after the last one a report can number are counted, not read: whoever reads the
    // report can say how many files it did not see.
    void countRecordsLeft() {
        qint64 lines = 1; // the path line of the first of them, already read
        while (read() && !isClosingLine(m_line)) {
            ++lines;
        }
        m_result.UnreadRecords += (lines + 2) / 3;
    }

    // The path must be kept before the next line replaces it. ASCII reads the same in both encodings the
    // file may have, so only other paths wait, as bytes, until the encoding of the whole file is known.
    void keepPath(QByteArrayView path) {
        m_pathAscii = isAscii(path);
        if (m_pathAscii) {
            m_pathText = QString::fromLatin1(path);
        } else {
            m_pathBytes = path.toByteArray();
        }
    }

    void addEntry(qint16 ordinal, ProblemKind kind) {
        if (m_sink) {
            (*m_sink)({ordinal, kind, m_pathAscii ? std::move(m_pathText) : decoder()(m_pathBytes)});
        } else if (m_pathAscii) {
            m_result.Entries.append({ordinal, kind, std::move(m_pathText)});
        } else {
            m_pending.append({m_result.Entries.size(), std::move(m_pathBytes)});
            m_result.Entries.append({ordinal, kind, {}});
        }
    }

    void decodeNonAsciiPaths() {
        if (m_pending.isEmpty()) {
            return;
        }
        for (const PendingPath& pending : std::as_const(m_pending)) {
            m_result.Entries[pending.entry].Path = decoder()(pending.bytes);
        }
    }

    // Asked for at the first path that is not ASCII: a file of ASCII paths is never read twice.
    const TextDecoder& decoder() {
        if (!m_decoder) {
            m_decoder.emplace(m_source.isUtf8() ? TextEncoding::Utf8 : TextEncoding::Windows1252);
        }
        return *m_decoder;
    }

    bool read() {
        if (!m_source.next(m_line)) {
            return false;
        }
        ++m_lineNumber;
        return true;
    }

    Outcome stopEarly() {
        m_result.StopLine = m_lineNumber + 1;
        return Outcome::EndedEarly;
    }

    ReportReadResult endedEarly() {
        m_result.Outcome = stopEarly();
        return std::move(m_result);
    }

    struct PendingPath {
        qsizetype entry;
        QByteArray bytes;
    };

    LineSource& m_source;
    const EntrySink* m_sink;
    std::optional<TextDecoder> m_decoder;
    SourceLine m_line;
    bool m_pathAscii = true;
    QString m_pathText;
    QByteArray m_pathBytes;
    qint64 m_lineNumber = 0;
    ReportReadResult m_result;
    QList<PendingPath> m_pending;
};

} // namespace

ReportReadResult ReadReport(LineSource& source) {
    return Reader(source, nullptr).run();
}

ReportReadResult ReadReport(LineSource& source, const EntrySink& onEntry) {
    return Reader(source, &onEntry).run();
}

} // namespace zentoria
