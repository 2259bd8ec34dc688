#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace zentoria {

// Where the files a report names are on this computer: reports name them as Melvadex saw them on
// Windows ("C:\Music\Band\Song.mp3"), the tags are fixed here ("/media/music/Band/Song.mp3"). One
// Windows folder maps to one local folder; paths outside it are used as they stand.
struct PathMapping {
    // Without trailing separators, backslashes only: "C:\Music". Empty: no mapping.
    QString windowsFolder;
    // Absolute, without a trailing slash: "/media/music" ("/" for the root).
    QString localFolder;

    bool isEmpty() const { return windowsFolder.isEmpty(); }

    // "WINDOWS=LOCAL", as the settings and the command line write it: "C:\Music=/media/music". The text
    // is split at the first "=" followed by "/", since the local folder must be absolute and Windows
    // folder names may hold "=" too. An empty text is no mapping; anything else that does not split
    // that way, or names no Windows folder, is refused.
    static std::optional<PathMapping> parse(const QString& text);
    QString toText() const;
    // The mapping of a Windows folder to a local one, given apart (as Preferences' table has them), so
    // that neither needs to be told from the other in one text; none when it is no mapping.
    static std::optional<PathMapping> fromFolders(const QString& windowsFolder, const QString& localFolder);

    friend bool operator==(const PathMapping&, const PathMapping&) = default;

    // The path on this computer: the Windows folder, compared without regard to letter case, replaced by
    // the local folder, and the backslashes of the rest made slashes; blanks around the path are left out.
    // A path outside the Windows folder comes back as it stands.
    QString map(const QString& path) const;
    // Whether map() changes the path.
    bool covers(const QString& path) const;
    // The other way: a path on this computer as Windows would name it, the local folder replaced by the
    // Windows folder and slashes made backslashes; a path outside the local folder as it stands. What
    // a check made here writes, so its report compares line by line with Melvadex's.
    QString windowsPath(const QString& localPath) const;
};

// Several Windows folders, each where it is on this computer. A path takes the mapping of the longest
// Windows folder that holds it, and stands as it is outside them all.
struct PathMappings {
    QList<PathMapping> list;

    PathMappings() = default;
    // One mapping, or none for an empty one.
    PathMappings(const PathMapping& one) { // NOLINT(google-explicit-constructor): one is a list of one
        if (!one.isEmpty()) {
            list << one;
        }
    }

    bool isEmpty() const { return list.isEmpty(); }
    QString map(const QString& path) const;
    bool covers(const QString& path) const;
    // The mapping map() takes for the path; none outside them all.
    const PathMapping* mappingFor(const QString& path) const;
    // Through the mapping of the longest local folder that holds the path.
    QString windowsPath(const QString& localPath) const;
    // The same, but none where a name under a mapped folder holds a backslash: the Windows path would
    // take it for a folder, and map() would never lead back to the file.
    std::optional<QString> reversibleWindowsPath(const QString& localPath) const;

    // The mappings' texts joined by "|": "C:\Music=/media/music|D:\=/mnt/d". Empty texts between are
    // passed over; a part that is no mapping refuses the whole. Where a folder's name would not read
    // back from that (a "|" in a local folder, blanks at its ends), the text starts with "%|" and each
    // folder has its "%", "|" and "=" written as "%25", "%7C" and "%3D"; no text of the plain form
    // starts so, since "%" alone is no mapping.
    static std::optional<PathMappings> parse(const QString& text);
    QString toText() const;
};

// A report's path as Windows compares paths: letter case aside, without the blanks a report may keep
// around it. Two paths name one file when their keys are equal.
QString windowsPathKey(const QString& path);

// The paths without those that name a file named before them (letter case aside), in their order.
QStringList distinctWindowsPaths(const QStringList& paths);

// Whether a report's path names a Windows location (a drive letter or a network share), which a
// mapping may be needed for to find it here.
bool isWindowsPath(const QString& path);

// The folder the paths on the first path's drive have in common ("C:\Music" for "C:\Music\A\a.mp3",
// "C:\Music\B\b.mp3" and "D:\c.mp3"), up to the last backslash they share; empty when there is none.
QString commonWindowsFolder(const QStringList& paths);

} // namespace zentoria
