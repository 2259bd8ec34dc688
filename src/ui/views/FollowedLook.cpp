#include "FollowedLook.h"

#include "settings/Texts.h"
#include "ui/common/FailureWording.h"
#include "ui/common/FullTextDelegate.h"

#include <QLocale>

namespace zentoria {

namespace {

using follow::FileState;

QString note(const follow::Seen& seen) {
    switch (seen.state) {
    case FileState::AsListed:
        break;
    case FileState::Fixed:
        return uiText(txt::NoteFixed);
    case FileState::Still:
        return uiText(txt::NoteStill);
    case FileState::OtherKind:
        return uiText(txt::NoteOtherKind).arg(kindCaption(seen.kind));
    case FileState::Gone:
        return uiText(txt::NoteGone);
    case FileState::Unreadable:
        return uiText(txt::NoteUnreadable);
    }
    return {};
}

QString sentence(const follow::Seen& seen) {
    switch (seen.state) {
    case FileState::AsListed:
        break;
    case FileState::Fixed:
        return uiText(txt::StateFixed);
    case FileState::Still:
        return uiText(txt::StateStill);
    case FileState::OtherKind:
        return uiText(txt::StateOtherKind).arg(kindCaption(seen.kind));
    case FileState::Gone:
        return uiText(txt::StateGone);
    case FileState::Unreadable:
        return uiText(txt::StateUnreadable)
            .arg(scan::describe({QString(), seen.obstacle, seen.error}, failureWording()));
    }
    return {};
}

TextMark mark(FileState state) {
    return state == FileState::Fixed  ? TextMark::Done
           : state == FileState::Gone ? TextMark::Gone
                                      : TextMark::None;
}

} // namespace

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
