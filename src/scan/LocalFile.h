#pragma once

#include <QString>

namespace zentoria::scan {

// Opens a file or folder named as a report or a list shows it (see FileNameForm), however deep it
// lies: a path longer than the system takes at once is opened a folder at a time. The name has one
// reading: "caf%E9.mp3" opens the file whose name holds the byte E9 and never one named "caf%E9.mp3"
// (a report from Windows is turned into this form first, shownFileName with NameReading::AsText).
// Returns the descriptor, or -1 with errno set.
int openLocal(const QString& shownPath, int flags);

// The same, for a path's bytes as they are.
int openBytes(const QByteArray& path, int flags);
// The same, for a path's bytes under an open folder (unless absolute): one name, or several.
int openBytesAt(int folder, const QByteArray& path, int flags);

// Whether the path, named as reports show it, is a regular file here (a link to one included). Only
// an absolute path can be, and a report's Windows paths are not, so thousands of them cost no look at
// the disk.
bool isLocalFile(const QString& shownPath);

// The system's words for an error number.
QString systemError(int error);

} // namespace zentoria::scan
