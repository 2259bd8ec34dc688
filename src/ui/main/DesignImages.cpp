#include "DesignImages.h"

#include "ui/common/Icons.h"
#include "ui/common/ImageList.h"

namespace zentoria {

void fillDesignImages(ImageList& tree, ImageList& menu) {
    const auto add = [](ImageList& list, const char* key, const QStringList& names,
                        QStyle::StandardPixmap fallback) {
        list.add(QLatin1StringView(key), themeIcon(names, fallback));
    };
    add(tree, "open", {QStringLiteral("folder-open")}, QStyle::SP_DirOpenIcon);
    add(tree, "closed", {QStringLiteral("folder")}, QStyle::SP_DirClosedIcon);
    add(tree, "leaf", {QStringLiteral("text-x-generic")}, QStyle::SP_FileIcon);
    add(tree, "floppy", {QStringLiteral("media-floppy")}, QStyle::SP_DriveFDIcon);
    add(tree, "hard", {QStringLiteral("drive-harddisk")}, QStyle::SP_DriveHDIcon);
    add(tree, "cdrom", {QStringLiteral("media-optical")}, QStyle::SP_DriveCDIcon);
    add(tree, "net", {QStringLiteral("network-workgroup")}, QStyle::SP_DriveNetIcon);
    add(tree, "desk", {QStringLiteral("user-desktop")}, QStyle::SP_DesktopIcon);

    add(menu, "MP3", {QStringLiteral("audio-x-generic"), QStringLiteral("audio-mpeg")},
        QStyle::SP_MediaVolume);
    add(menu, "Help", {QStringLiteral("help-contents"), QStringLiteral("help-browser")},
        QStyle::SP_DialogHelpButton);
    add(menu, "Exit", {QStringLiteral("application-exit")}, QStyle::SP_DialogCloseButton);
}

} // namespace zentoria
