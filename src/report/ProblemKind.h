#pragma once

#include <QString>

#include <optional>

namespace zentoria {

// Which ID3 information Melvadex could not read for a file. The numbers are the ones in the
// kind code ("ID3v1", "ID3v2", "ID3v0"), under which the tree files an entry.
enum class ProblemKind : int { ID3v0 = 0, ID3v1 = 1, ID3v2 = 2 };

inline int kindNumber(ProblemKind kind) {
    return static_cast<int>(kind);
}

// A count per problem kind, read by kind.
template <typename Count>
class KindCounts {
public:
    Count of(ProblemKind kind) const { return m_counts[kindNumber(kind)]; }
    void add(ProblemKind kind, Count count = 1) { m_counts[kindNumber(kind)] += count; }
    Count total() const { return m_counts[0] + m_counts[1] + m_counts[2]; }

private:
    Count m_counts[3] = {0, 0, 0};
};

// "ID3v" followed by the kind number.
QString kindCode(ProblemKind kind);
// The kind whose code this is, compared without regard to letter case; none for any other text.
std::optional<ProblemKind> problemKindNamed(QStringView code);

// The caption of the kind's node in the report tree: "ID3v1 not found", "ID3v2 not found", "No ID3 tags".
QString kindCaption(ProblemKind kind);

// Describes the problem kind a key starts with (its first five characters, compared exactly); empty
// for a key that starts with no kind code. Note "ID3v2 Not found" with a capital N, unlike the caption.
QString ProblemKindText(const QString& key);

} // namespace zentoria
