#pragma once

#include <QString>

namespace zentoria {

// The few values the whole program shares. Start-up sets them before the main window loads; the layout
// and the separator change the tree width; shut-down saves it.
struct Globals {
    // Where the help contents are looked up (the program folder and "/Brantwell.hlp").
    QString HelpFile;
    // The language file chosen in Melvadex, as a full path.
    QString LanguageFile;
    // Width of the report tree in twips.
    qint32 InitialTVWidth = 3000;
};

Globals& globals();

// The folder of the running executable without a trailing separator, so that callers can always append
// "/" and a file name (for a program in "/" this is the empty text).
QString GetAppPath();

// Removes one trailing "/" from a folder path.
QString withoutTrailingSeparator(const QString& folder);

// The executable's file name without its extension: the name this program keeps its settings under.
QString executableName();

} // namespace zentoria
