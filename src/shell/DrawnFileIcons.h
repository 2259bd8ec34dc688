#pragma once

#include <QIcon>

namespace zentoria {

enum class DrawnFile { Mp3, Playlist };

// The program's own icons for MP3 files and playlists, for desktops without an icon theme: a page with
// a folded corner and a note (a playlist adds the lines of a list), drawn at whatever size and scale is
// asked for, so they are crisp at 16, 32 and 48 pixels and on high-density screens alike.
QIcon drawnFileIcon(DrawnFile file);

} // namespace zentoria
