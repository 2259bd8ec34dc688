#pragma once

#include <QByteArrayList>
#include <QString>

namespace zentoria {

// Starts a program that outlives this one, as QProcess::startDetached does, but with its arguments
// as bytes: a file whose name is no UTF-8 reaches the program under its real name, which no QString
// argument can carry. The program is looked up on PATH unless it names a path. False when it could
// not be started.
bool startDetached(const QString& program, const QByteArrayList& arguments);

} // namespace zentoria
