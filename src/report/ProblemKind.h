#pragma once

#include <QString>

namespace zentoria {

// Which ID3 information Melvadex could not read for a file. The numbers are the ones in the
// kind code ("ID3v1", "ID3v2", "ID3v0"), under which the tree files an entry.
enum class ProblemKind : int { ID3v0 = 0, ID3v1 = 1, ID3v2 = 2 };

inline int kindNumber(ProblemKind kind) {
    return static_cast<int>(kind);
}

// "ID3v" followed by the kind number.
QString kindCode(ProblemKind kind);

} // namespace zentoria
