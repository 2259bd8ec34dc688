#include "FileAssociation.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>

namespace zentoria {

namespace {

// Writes the bytes to the file unless it holds them already; replaces it whole, never half-written.
// False when nothing was written, because nothing differed or because the folder cannot be written.
bool writeIfChanged(const QString& path, const QByteArray& bytes) {
    QFile existing(path);
    if (existing.open(QIODevice::ReadOnly) && existing.size() == bytes.size() &&
        existing.readAll() == bytes) {
        return false;
    }
    existing.close();
    if (!QDir().mkpath(QFileInfo(path).path())) {
        return false;
    }
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

QByteArray resourceBytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The icons the registration places in the hicolor theme: the program's under its desktop id and the
// type's under its icon name, from the copies built into the program.
QList<std::pair<QString, QByteArray>> themeIcons(const FileType& type, const OpeningProgram& program) {
    QList<std::pair<QString, QByteArray>> icons;
    const std::pair<QString, QString> kinds[] = {{QStringLiteral("apps"), program.appId},
                                                 {QStringLiteral("mimetypes"), type.iconName}};
    for (const auto& [context, name] : kinds) {
        for (int size : {16, 32, 48, 64, 128, 256}) {
            const QString file = QStringLiteral("hicolor/%1x%1/%2/%3.png").arg(size).arg(context, name);
            icons.append({file, resourceBytes(QStringLiteral(":/zentoria-theme-icons/") + file)});
        }
        icons.append({QStringLiteral("hicolor/scalable/%1/%2.svg").arg(context, name),
                      resourceBytes(QStringLiteral(":/zentoria-theme-icons/%1.svg").arg(name))});
    }
    return icons;
}

void startDetached(const QString& tool, const QStringList& arguments, AssociationResult& result) {
    const QString found = QStandardPaths::findExecutable(tool);
    if (!found.isEmpty() && QProcess::startDetached(found, arguments)) {
        result.toolsStarted << tool;
    }
}

} // namespace

QByteArray mimePackage(const FileType& type) {
    // The greatest weight a glob can have: the extension is ours whoever else claims it.
    return QStringLiteral(R"(<?xml version="1.0" encoding="UTF-8"?>
<mime-info xmlns="http://www.freedesktop.org/standards/shared-mime-info">
  <mime-type type="%1">
    <comment>%2</comment>
    <sub-class-of type="text/plain"/>
    <icon name="%3"/>
    <glob pattern="*%4" weight="100"/>
  </mime-type>
</mime-info>
)")
        .arg(type.mimeType, type.description.toHtmlEscaped(), type.iconName, type.extension)
        .toUtf8();
}

QByteArray desktopEntry(const FileType& type, const OpeningProgram& program) {
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=Zentoria\n"
                          "GenericName=Integrity Report Viewer\n"
                          "Comment=View the integrity reports of the Melvadex MP3 collection manager\n"
                          "Exec=%1 %f\n"
                          "Icon=%2\n"
                          "Terminal=false\n"
                          "Categories=AudioVideo;Audio;Qt;\n"
                          "MimeType=%3;\n")
        .arg(desktopExecArgument(program.executable), program.appId, type.mimeType)
        .toUtf8();
}

QString desktopExecArgument(const QString& argument) {
    QString quoted;
    quoted.reserve(argument.size() + 8);
    for (QChar c : argument) {
        if (c == u'"' || c == u'`' || c == u'$' || c == u'\\') {
            quoted += u'\\';
        } else if (c == u'%') {
            quoted += u'%'; // a literal percent sign, not a field code
        }
        quoted += c;
    }
    quoted = u'"' + quoted + u'"';
    // Then the escapes of every string value: a backslash doubled, control characters spelled out.
    QString value;
    value.reserve(quoted.size() + 8);
    for (QChar c : std::as_const(quoted)) {
        switch (c.unicode()) {
        case u'\\':
            value += QStringLiteral("\\\\");
            break;
        case u'\n':
            value += QStringLiteral("\\n");
            break;
        case u'\t':
            value += QStringLiteral("\\t");
            break;
        case u'\r':
            value += QStringLiteral("\\r");
            break;
        default:
            value += c;
        }
    }
    return value;
}

QByteArray withDefaultApplication(const QByteArray& mimeapps, const QString& mimeType,
                                  const QString& desktopFile) {
    const QByteArray entry = (mimeType + u'=' + desktopFile + u';').toUtf8();
    QList<QByteArray> lines = mimeapps.split('\n');
    const auto header = [](const QByteArray& line) { return line.trimmed().startsWith('['); };
    qsizetype section = -1;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (lines[i].trimmed() == "[Default Applications]") {
            section = i;
            break;
        }
    }
    if (section < 0) {
        QByteArray text = mimeapps;
        if (!text.isEmpty() && !text.endsWith('\n')) {
            text += '\n';
        }
        return text + "[Default Applications]\n" + entry + '\n';
    }
    for (qsizetype i = section + 1; i < lines.size() && !header(lines[i]); ++i) {
        const qsizetype equals = lines[i].indexOf('=');
        if (equals > 0 && lines[i].left(equals).trimmed() == mimeType.toUtf8()) {
            // Keep a CR at the line's end where the file has them.
            lines[i] = entry + (lines[i].endsWith('\r') ? "\r" : "");
            return lines.join('\n');
        }
    }
    lines.insert(section + 1, entry + (lines[section].endsWith('\r') ? "\r" : ""));
    return lines.join('\n');
}

AssociationResult SetAssociation(const FileType& type, const OpeningProgram& program) {
    AssociationResult result;
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    const auto write = [&result](const QString& path, const QByteArray& bytes) {
        const bool wrote = writeIfChanged(path, bytes);
        if (wrote) {
            result.written << path;
        }
        return wrote;
    };

    const bool typeChanged =
        write(data + QStringLiteral("/mime/packages/%1.xml").arg(program.appId), mimePackage(type));
    const QString desktopFile = program.appId + QStringLiteral(".desktop");
    const bool entryChanged =
        write(data + QStringLiteral("/applications/") + desktopFile, desktopEntry(type, program));

    const QString mimeappsPath = config + QStringLiteral("/mimeapps.list");
    QFile mimeapps(mimeappsPath);
    const QByteArray current = mimeapps.open(QIODevice::ReadOnly) ? mimeapps.readAll() : QByteArray();
    write(mimeappsPath, withDefaultApplication(current, type.mimeType, desktopFile));

    bool iconsChanged = false;
    for (const auto& [file, bytes] : themeIcons(type, program)) {
        if (!bytes.isEmpty()) {
            iconsChanged |= write(data + QStringLiteral("/icons/") + file, bytes);
        }
    }

    if (typeChanged) {
        startDetached(QStringLiteral("update-mime-database"), {data + QStringLiteral("/mime")}, result);
    }
    if (entryChanged) {
        startDetached(QStringLiteral("update-desktop-database"), {data + QStringLiteral("/applications")},
                      result);
    }
    // Without its cache a theme folder is searched file by file at every icon lookup, by every program
    // of the user: the folder gets one, as installers do. (The user's folder has no index of its own.)
    const QString theme = data + QStringLiteral("/icons/hicolor");
    if (iconsChanged ||
        (QFileInfo::exists(theme) && !QFileInfo::exists(theme + QStringLiteral("/icon-theme.cache")))) {
        startDetached(QStringLiteral("gtk-update-icon-cache"),
                      {QStringLiteral("-q"), QStringLiteral("-t"), QStringLiteral("-f"), theme}, result);
    }
    return result;
}

} // namespace zentoria
