#pragma once

#include <QIcon>
#include <QString>

namespace zentoria {

// Where the desktop keeps the icon of a file type: the names its icon theme files the type's own icon
// and its generic icon under. Both empty when the desktop knows no type for the extension.
struct FileTypeIcon {
    QString iconName;
    QString genericIconName;

    bool isEmpty() const { return iconName.isEmpty() && genericIconName.isEmpty(); }
};

// The icon names of the MIME type of an extension with its dot (".mp3"). ".m3u" is asked for as
// "audio/x-mpegurl" by name: the extension also matches Apple's HTTP live-streaming playlists.
FileTypeIcon GetDefaultIcon(const QString& extension);

// The type's icon from the desktop's icon theme: its own icon, else its generic one; a null icon when
// the theme has neither.
QIcon IconToPicture(const FileTypeIcon& icon);

// The image-list key of an extension's icon: the extension without its dot, in capitals (".mp3" gives
// "MP3").
QString fileTypeIconKey(const QString& extension);

// The program's own icon, at every size it comes in.
QIcon programIcon();

// The icon the program shows for files of the extension: the desktop's, else one of its own for ".mp3"
// and ".m3u" (null for other extensions the desktop has no icon for).
QIcon fileTypeIcon(const QString& extension);

} // namespace zentoria
