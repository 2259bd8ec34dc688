#pragma once

#include "follow/FollowStates.h"

#include <QVariant>

namespace zentoria {

class NodeCollection;

// What was seen of the entry at a tree position; none for a folder, or while nothing is followed.
const follow::Seen* seenAt(const follow::FollowStates* states, const NodeCollection& nodes, int position);

// What the views show of a listed file while its fixes are followed, by role: the short note after its
// name (kNoteRole), how its name is marked (kMarkRole), the sentence that the panel and the tooltip
// give (Qt::ToolTipRole) and, for a screen reader, the name with its state (Qt::AccessibleTextRole).
// Nothing for a file as the report lists it, so that such a file looks as it always did.
QVariant followedData(const follow::Seen& seen, int role, const QString& name);

// The status bar's line for what following has seen: the folders past the system's limit of watches,
// then, once anything was seen, "12 of 300 fixed since the report was opened" and what else changed;
// empty when there is nothing to say.
QString followedLine(const follow::FollowStates& states, qsizetype foldersOverLimit);

// The same count for the entries of one kind, for its tooltip.
QString fixedAmong(qsizetype fixed, qsizetype listed);

} // namespace zentoria
