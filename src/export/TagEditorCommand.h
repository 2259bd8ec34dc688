#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace zentoria {

// One program start: what to run and with which arguments.
struct ProgramStart {
    QString program;
    QStringList arguments;

    friend bool operator==(const ProgramStart&, const ProgramStart&) = default;
};

// The starts a tag-editor command asks for, given the files to edit. The command is written like a
// desktop entry's Exec line: words split at blanks, double quotes around a word with blanks (inside
// them a backslash keeps the next character as it is), and field codes: %F all files, %U all files as
// file:// URLs, %f and %u one start per file, %% a percent sign; other field codes are dropped. A
// command without a file field gets the files at its end. None for a command that names no program or
// leaves a quote open; `error` then says what is wrong.
std::optional<QList<ProgramStart>> tagEditorStarts(const QString& command, const QStringList& files,
                                                   QString* error = nullptr);

// The tag editors looked for on PATH when none is set, in this order.
QStringList knownTagEditors();
// The command of the first of them found on PATH ("kid3 %F"); empty when none is installed.
QString findTagEditorCommand();

} // namespace zentoria
