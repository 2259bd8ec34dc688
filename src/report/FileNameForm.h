#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

namespace zentoria {

// File names on Linux are bytes; reports, lists and messages hold text. A name that is valid UTF-8 is
// shown as it stands. A name that is not ("caf\xE9.mp3", copied from an old disk) is shown with each
// byte that is no UTF-8 written "%XX" and each "%" written "%25": "caf%E9.mp3". So that the form leads
// back to one name, a UTF-8 name that would read as such a form ("caf%E9.mp3" itself) is written that
// way too ("caf%25E9.mp3"); "100%20.mp3" reads as no such form and stands as it is. Every
// "/"-separated part of a path is treated on its own.

// The name or path as a person reads it, from its bytes on disk.
QString shownFileName(QByteArrayView bytes);

// The bytes a shown name or path stands for: a part in the escaped form is decoded, any other part is
// its UTF-8. The inverse of shownFileName.
QByteArray fileNameBytes(QStringView shown);

// Whether the part of a path is in the escaped form: every "%" starts "%XX", and the bytes they stand
// for are no UTF-8 or hold a "%".
bool isEscapedFileName(QStringView part);

// How a report's names lead back to files. Reports this program writes say so in their header and
// write names in the form above; any other report (Melvadex's, from Windows) names files by their text,
// so its "caf%E9.mp3" is a file named just that.
enum class NameReading {
    AsText,  // the name's UTF-8 is its bytes
    Escaped, // the form above
};

// The name or path in the form above, from a name a report of that reading gives.
QString shownFileName(const QString& reportName, NameReading reading);

// A file URL that carries the file's real bytes ("file:///music/caf%E9.mp3"), for the clipboard and
// for programs that take URLs.
QUrl localFileUrl(const QString& shownPath);

} // namespace zentoria
