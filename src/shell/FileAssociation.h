#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace zentoria {

// A file type the program opens, as the desktop's MIME database knows it.
struct FileType {
    // The extension with its dot: ".vzt".
    QString extension;
    QString mimeType;
    QString description;
    // The icon theme's name of the type's icon.
    QString iconName;
};

// The program that opens it: its desktop id and the absolute path of its executable.
struct OpeningProgram {
    QString appId;
    QString executable;
};

// The shared-mime-info package declaring the type, its extension claimed with the greatest weight.
QByteArray mimePackage(const FileType& type);

// The desktop entry that opens files of the type with the program.
QByteArray desktopEntry(const FileType& type, const OpeningProgram& program);

// One argument of a desktop entry's Exec key, written so that the desktop passes exactly this text:
// quoted, with '"', '`', '$' and '\' escaped inside the quotes, '%' doubled, and then escaped as any
// string value of a desktop entry is.
QString desktopExecArgument(const QString& argument);

// The text of a mimeapps.list with the type's default application set to the desktop file, every other
// line kept byte for byte.
QByteArray withDefaultApplication(const QByteArray& mimeapps, const QString& mimeType,
                                  const QString& desktopFile);

// What a registration did.
struct AssociationResult {
    // The files it wrote; nothing when everything was in place already.
    QStringList written;
    // The desktop's update tools it started.
    QStringList toolsStarted;
};

// Registers the type for the running copy of the program in the per-user XDG folders: the MIME package
// under $XDG_DATA_HOME/mime/packages, the desktop entry under $XDG_DATA_HOME/applications, the type's
// default application in $XDG_CONFIG_HOME/mimeapps.list, and the program's and the type's icons in the
// hicolor theme under $XDG_DATA_HOME/icons. Writes only what differs from what is there, and then starts
// update-mime-database, update-desktop-database and gtk-update-icon-cache (those present) for what it
// wrote, without waiting for them. Never fails and never blocks: a folder that cannot be written or a
// missing tool leaves the rest as it is.
AssociationResult SetAssociation(const FileType& type, const OpeningProgram& program);

} // namespace zentoria
