#include "FileTypeIcons.h"

#include "DrawnFileIcons.h"

#include <QMimeDatabase>

namespace zentoria {

FileTypeIcon GetDefaultIcon(const QString& extension) {
    const QMimeDatabase types;
    const QMimeType type =
        extension.compare(QLatin1StringView(".m3u"), Qt::CaseInsensitive) == 0
            ? types.mimeTypeForName(QStringLiteral("audio/x-mpegurl"))
            : types.mimeTypeForFile(QStringLiteral("file") + extension, QMimeDatabase::MatchExtension);
    if (!type.isValid() || type.isDefault()) {
        return {};
    }
    return {type.iconName(), type.genericIconName()};
}

QIcon IconToPicture(const FileTypeIcon& icon) {
    for (const QString& name : {icon.iconName, icon.genericIconName}) {
        if (!name.isEmpty() && QIcon::hasThemeIcon(name)) {
            return QIcon::fromTheme(name);
        }
    }
    return {};
}

QIcon programIcon() {
    QIcon icon;
    for (int size : {16, 32, 48, 64, 128, 256}) {
        icon.addFile(
            QStringLiteral(":/zentoria-theme-icons/hicolor/%1x%1/apps/org.melvadex.Zentoria.png").arg(size),
            QSize(size, size));
    }
    return icon;
}

QString fileTypeIconKey(const QString& extension) {
    return (extension.startsWith(u'.') ? extension.mid(1) : extension).toUpper();
}

QIcon fileTypeIcon(const QString& extension) {
    const QIcon desktops = IconToPicture(GetDefaultIcon(extension));
    if (!desktops.isNull()) {
        return desktops;
    }
    const QString key = fileTypeIconKey(extension);
    if (key == QLatin1StringView("MP3")) {
        return drawnFileIcon(DrawnFile::Mp3);
    }
    if (key == QLatin1StringView("M3U")) {
        return drawnFileIcon(DrawnFile::Playlist);
    }
    return {};
}

} // namespace zentoria
