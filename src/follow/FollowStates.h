#pragma once

#include "report/ProblemKind.h"
#include "report/ReportEntry.h"
#include "scan/TagProbe.h"

#include <QList>

namespace zentoria::follow {

// What following has seen of a listed file since the report was opened.
enum class FileState : quint8 {
    AsListed,   // not looked at: nothing changed it, so the report's word stands
    Fixed,      // looked at again after a change, and both tags carry information now
    Still,      // looked at again, and it lacks what the report says
    OtherKind,  // looked at again, and it lacks something else now
    Gone,       // deleted or moved away
    Unreadable, // there, but it could not be read (or holds no MPEG audio now)
};
inline constexpr int kFileStates = int(FileState::Unreadable) + 1;

// One listed file's state, with what was seen.
struct Seen {
    FileState state = FileState::AsListed;
    // The kind it has now, for Still and OtherKind.
    ProblemKind kind = ProblemKind::ID3v0;
    // Why it could not be read, for Unreadable.
    scan::Obstacle obstacle = scan::Obstacle::CannotRead;
    int error = 0;
    friend bool operator==(const Seen&, const Seen&) = default;
};

// What a fresh look at a file listed under `listed` says of it.
Seen seenIn(const scan::TagProbe& probe, ProblemKind listed);

// The states of a report's entries, by the entry's index, with a count per state kept as they change.
class FollowStates {
public:
    // Every entry as listed.
    void reset(qsizetype entries);
    qsizetype size() const { return m_seen.size(); }
    const Seen& at(qsizetype index) const { return m_seen.at(index); }
    // False when the entry had this state already.
    bool set(qsizetype index, const Seen& seen);
    qsizetype count(FileState state) const { return m_counts[int(state)]; }
    // Whether anything was seen that the report does not say.
    bool anyChange() const { return size() > count(FileState::AsListed) + count(FileState::Still); }

private:
    QList<Seen> m_seen;
    qsizetype m_counts[kFileStates] = {};
};

// What is still to do, as a re-check would write it: the entries not fixed, with the kind they have
// now where it was seen, numbered anew; a file gone or unreadable keeps its earlier kind and is counted
// in `notFound`, since it was not seen to be fixed.
struct StillToDo {
    QList<ReportEntry> entries;
    qsizetype notFound = 0;
};
StillToDo stillToDo(const QList<ReportEntry>& entries, const FollowStates& states);

} // namespace zentoria::follow
