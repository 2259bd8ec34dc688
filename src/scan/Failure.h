#pragma once

#include <QHash>
#include <QString>

#include <array>

namespace zentoria::scan {

// Why a file or folder could not be checked. A reason, not words: the window tells it in the
// language file's language, the tool in English.
enum class Obstacle {
    NoSuchFile,
    CannotRead,     // with the system's error
    NotMpeg,        // no MPEG audio after the tag: another format, or cut short
    CutShort,       // it ended before the length it had when opened
    NotRegularFile, // a device or a named pipe named ".mp3"
    DanglingLink,
    Vanished,        // gone between being listed and being looked at
    CannotEnter,     // a folder, with the system's error
    CannotList,      // a folder, with the system's error
    CannotListToEnd, // a folder, with the system's error
    CannotCheck,     // a folder entry, with the system's error
    NameHasBackslash,
    NameBreaksReport,
    NameTooLong, // longer than a report's path line holds
};
inline constexpr int kObstacles = int(Obstacle::NameTooLong) + 1;

// A file or folder that could not be looked at, and why: a check names each one, so that no file it
// did not see passes for one that is fine.
struct Failure {
    QString path;
    Obstacle obstacle = Obstacle::CannotRead;
    // The system's error number, where it gave one; 0 otherwise.
    int error = 0;
    friend bool operator==(const Failure&, const Failure&) = default;
};

// The words for each obstacle, English unless the window gives its language's: "%1" stands for the
// system's words for the error.
struct FailureWording {
    std::array<QString, kObstacles> obstacles = {
        QStringLiteral("no such file"),
        QStringLiteral("cannot be read: %1"),
        QStringLiteral("no MPEG audio found: not an MP3 file, or cut short"),
        QStringLiteral("cut short while it was read: it holds fewer bytes than its size says"),
        QStringLiteral("not a regular file"),
        QStringLiteral("a link that leads nowhere"),
        QStringLiteral("vanished before it could be checked"),
        QStringLiteral("cannot be entered: %1"),
        QStringLiteral("cannot be listed: %1"),
        QStringLiteral("cannot be listed to its end: %1"),
        QStringLiteral("cannot be checked: %1"),
        QStringLiteral("a report cannot name it so that it leads back here: its name holds a backslash, "
                       "which Windows reads as a folder"),
        QStringLiteral("a report cannot name it: its name holds a line break or the report's closing words"),
        QStringLiteral("a report cannot name it: its path is too long for a report, which holds 32,767 "
                       "characters a line"),
    };
    // The errors a check meets most, in the window's language; any other in the system's words.
    QHash<int, QString> errors;
};

// Why the failure's file or folder could not be checked, for a person to read.
QString describe(const Failure& failure, const FailureWording& wording = {});

} // namespace zentoria::scan
