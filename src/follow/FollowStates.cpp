#include "FollowStates.h"

namespace zentoria::follow {

Seen seenIn(const scan::TagProbe& probe, ProblemKind listed) {
    if (probe.outcome != scan::TagProbe::Outcome::Probed) {
        const bool gone = probe.obstacle == scan::Obstacle::NoSuchFile ||
                          probe.obstacle == scan::Obstacle::Vanished ||
                          probe.obstacle == scan::Obstacle::DanglingLink;
        return {gone ? FileState::Gone : FileState::Unreadable, listed, probe.obstacle, probe.error};
    }
    const std::optional<ProblemKind> kind = scan::problemKindOf(probe);
    if (!kind) {
        return {FileState::Fixed, listed};
    }
    return {*kind == listed ? FileState::Still : FileState::OtherKind, *kind};
}

void FollowStates::reset(qsizetype entries) {
    m_seen = QList<Seen>(entries, Seen{});
    std::fill(std::begin(m_counts), std::end(m_counts), 0);
    m_counts[int(FileState::AsListed)] = entries;
}

bool FollowStates::set(qsizetype index, const Seen& seen) {
    Seen& now = m_seen[index];
    if (now == seen) {
        return false;
    }
    --m_counts[int(now.state)];
    ++m_counts[int(seen.state)];
    now = seen;
    return true;
}

StillToDo stillToDo(const QList<ReportEntry>& entries, const FollowStates& states) {
    StillToDo left;
    for (qsizetype i = 0; i < entries.size(); ++i) {
        const ReportEntry& entry = entries.at(i);
        const Seen& seen = i < states.size() ? states.at(i) : Seen{};
        if (seen.state == FileState::Fixed) {
            continue;
        }
        const bool notSeen = seen.state == FileState::Gone || seen.state == FileState::Unreadable;
        left.notFound += notSeen ? 1 : 0;
        const ProblemKind kind =
            seen.state == FileState::Still || seen.state == FileState::OtherKind ? seen.kind : entry.Kind;
        left.entries.append({qint16(left.entries.size() + 1), kind, entry.Path});
    }
    return left;
}

} // namespace zentoria::follow
