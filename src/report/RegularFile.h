#pragma once

#include <QString>

class QFile;

namespace zentoria {

// Opens `file` (its name already set) for reading when the name leads to a regular file. Anything else
// is refused before it is opened: opening a named pipe that no program writes to waits forever, and a
// device may never end. On failure `why` tells a person what is in the way ("it is a folder, not a
// file", "No such file or directory").
bool openRegularFile(QFile& file, QString& why);

// The file a path text names, where the text may carry double quotes: the text itself when that file
// exists (a name may hold quotes), else the text without one pair of quotes around it when that one
// exists (as the desktop passes a path), else the text without any double quote.
QString reportPathFromText(const QString& text);

} // namespace zentoria
