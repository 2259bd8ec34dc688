#include "FollowedLook.h"

#include "report/NodeCollection.h"
#include "settings/Texts.h"
#include "ui/common/FailureWording.h"
#include "ui/common/FullTextDelegate.h"

#include <QLocale>

namespace zentoria {

namespace {

using follow::FileState;

// The words of each state after AsListed, in the order of FileState: the short note and the sentence.
// Another kind names the kind in both; an unreadable file's sentence says why.
struct StateWords {
    TextKey note;
    TextKey sentence;
};
constexpr StateWords kWords[follow::kFileStates - 1] = {
    {txt::NoteFixed, txt::StateFixed},           {txt::NoteStill, txt::StateStill},
    {txt::NoteOtherKind, txt::StateOtherKind},   {txt::NoteGone, txt::StateGone},
    {txt::NoteUnreadable, txt::StateUnreadable},
};

const StateWords& wordsOf(FileState state) {
    return kWords[int(state) - 1];
}

QString note(const follow::Seen& seen) {
    const QString words = uiText(wordsOf(seen.state).note);
    return seen.state == FileState::OtherKind ? words.arg(kindCaption(seen.kind)) : words;
}

QString sentence(const follow::Seen& seen) {
    const QString words = uiText(wordsOf(seen.state).sentence);
    switch (seen.state) {
    case FileState::OtherKind:
        return words.arg(kindCaption(seen.kind));
    case FileState::Unreadable:
        return words.arg(scan::describe({QString(), seen.obstacle, seen.error}, failureWording()));
    default:
        return words;
    }
}

TextMark mark(FileState state) {
    return state == FileState::Fixed  ? TextMark::Done
           : state == FileState::Gone ? TextMark::Gone
                                      : TextMark::None;
}

} // namespace

const follow::Seen* seenAt(const follow::FollowStates* states, const NodeCollection& nodes, int position) {
    if (!states || !nodes.isEntry(position) || nodes.entryIndex(position) >= states->size()) {
        return nullptr;
    }
    return &states->at(nodes.entryIndex(position));
}

QVariant followedData(const follow::Seen& seen, int role, const QString& name) {
    if (seen.state == FileState::AsListed) {
        return {};
    }
    switch (role) {
    case kNoteRole:
        return note(seen);
    case kMarkRole:
        return int(mark(seen.state));
    case Qt::ToolTipRole:
        return sentence(seen);
    case Qt::AccessibleTextRole:
        return name + QStringLiteral(", ") + note(seen);
    default:
        return {};
    }
}

QString fixedAmong(qsizetype fixed, qsizetype listed) {
    return uiText(txt::FixedSinceOpened).arg(QLocale().toString(fixed), QLocale().toString(listed));
}

QString followedLine(const follow::FollowStates& states, qsizetype foldersOverLimit) {
    const QLocale locale;
    QStringList parts;
    // First, so that a narrow status bar still says it.
    if (foldersOverLimit > 0) {
        parts << (foldersOverLimit == 1
                      ? uiText(txt::OneFolderOverLimit)
                      : uiText(txt::FoldersOverLimit).arg(locale.toString(foldersOverLimit)));
    }
    // The report's word stands until something was seen.
    if (states.count(FileState::AsListed) == states.size()) {
        return parts.join(QString());
    }
    QStringList counts{fixedAmong(states.count(FileState::Fixed), states.size())};
    if (const qsizetype other = states.count(FileState::OtherKind); other > 0) {
        counts << uiText(txt::OtherKindSinceOpened).arg(locale.toString(other));
    }
    if (const qsizetype gone = states.count(FileState::Gone); gone > 0) {
        counts << uiText(txt::GoneSinceOpened).arg(locale.toString(gone));
    }
    if (const qsizetype unreadable = states.count(FileState::Unreadable); unreadable > 0) {
        counts << uiText(txt::UnreadableSinceOpened).arg(locale.toString(unreadable));
    }
    parts << counts.join(QStringLiteral(", "));
    return parts.join(QStringLiteral("; "));
}

} // namespace zentoria
