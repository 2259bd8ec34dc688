#pragma once

#include "report/TextTable.h"

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

// The words for each obstacle, taken from the table of texts: in English unless the window gives
// its language's; "%1" stands for the system's words for the error.
struct FailureWording {
    FailureWording(QString (*words)(const TextKey&) = english);
    std::array<QString, kObstacles> obstacles;
    // The errors a check meets most, in the window's language; any other in the system's words.
    QHash<int, QString> errors;
};

// Why the failure's file or folder could not be checked, for a person to read.
QString describe(const Failure& failure, const FailureWording& wording = {});

} // namespace zentoria::scan
