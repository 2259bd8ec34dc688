#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace zentoria {

// The command line after the program's name, as one text: the arguments joined by single blanks.
QString rawCommandLine(const QStringList& arguments);

// What to print instead of starting, when the whole command-line text asks for the usage ("--help",
// "-h") or the version ("--version") and no file of that name exists; nothing otherwise, when the text
// is a report's path as always.
std::optional<QString> commandLineAnswer(const QString& commandLine);

} // namespace zentoria
