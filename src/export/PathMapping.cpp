#include "PathMapping.h"

#include <QSet>

#include <algorithm>

namespace zentoria {

namespace {

QString windowsSeparators(QString folder) {
    folder.replace(u'/', u'\\');
    while (folder.size() > 1 && folder.endsWith(u'\\') && !folder.endsWith(u":\\")) {
        folder.chop(1);
    }
    // "C:\" keeps its backslash only while it names the drive's root; the prefix test adds it back.
    if (folder.endsWith(u":\\")) {
        folder.chop(1);
    }
    return folder;
}

// Whether the local path is the folder or lies in it; file names are case-sensitive here.
bool holdsLocal(const QString& folder, const QString& path) {
    if (folder == u"/") {
        return path.startsWith(u'/');
    }
    return path.startsWith(folder) && (path.size() == folder.size() || path.at(folder.size()) == u'/');
}

constexpr QLatin1StringView kEscapedForm("%|");

QString escaped(const QString& folder) {
    return QString(folder)
        .replace(u'%', QStringLiteral("%25"))
        .replace(u'|', QStringLiteral("%7C"))
        .replace(u'=', QStringLiteral("%3D"));
}

QString unescaped(const QString& text) {
    return QString::fromUtf8(QByteArray::fromPercentEncoding(text.toUtf8()));
}

} // namespace

std::optional<PathMapping> PathMapping::fromFolders(const QString& windowsFolder,
                                                    const QString& localFolder) {
    PathMapping mapping;
    mapping.windowsFolder = windowsSeparators(windowsFolder);
    mapping.localFolder = localFolder;
    while (mapping.localFolder.size() > 1 && mapping.localFolder.endsWith(u'/')) {
        mapping.localFolder.chop(1);
    }
    if (mapping.windowsFolder.isEmpty() || mapping.windowsFolder == u"\\" ||
        !mapping.localFolder.startsWith(u'/')) {
        return std::nullopt;
    }
    return mapping;
}

std::optional<PathMapping> PathMapping::parse(const QString& text) {
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty()) {
        return PathMapping{};
    }
    const qsizetype split = trimmed.indexOf(QStringLiteral("=/"));
    if (split <= 0) {
        return std::nullopt;
    }
    return fromFolders(trimmed.left(split).trimmed(), trimmed.mid(split + 1));
}

QString PathMapping::toText() const {
    return isEmpty() ? QString() : windowsFolder + u'=' + localFolder;
}

bool PathMapping::covers(const QString& path) const {
    // Blanks around a report's path are no part of a Windows path: it cannot start before its drive
    // letter nor end in a blank.
    const QStringView p = QStringView(path).trimmed();
    if (isEmpty() || !p.startsWith(windowsFolder, Qt::CaseInsensitive)) {
        return false;
    }
    // "C:\Music" covers "C:\Music\a.mp3", not "C:\Musical\a.mp3".
    return p.size() == windowsFolder.size() || p.at(windowsFolder.size()) == u'\\' ||
           p.at(windowsFolder.size()) == u'/';
}

QString PathMapping::map(const QString& path) const {
    if (!covers(path)) {
        return path;
    }
    QString rest = QStringView(path).trimmed().sliced(windowsFolder.size()).toString();
    rest.replace(u'\\', u'/');
    if (rest.isEmpty()) {
        return localFolder;
    }
    return localFolder == u"/" ? rest : localFolder + rest;
}

QString PathMapping::windowsPath(const QString& localPath) const {
    if (isEmpty() || !holdsLocal(localFolder, localPath)) {
        return localPath;
    }
    QString rest = localFolder == u"/" ? localPath : localPath.sliced(localFolder.size());
    rest.replace(u'/', u'\\');
    return windowsFolder + rest;
}

bool PathMappings::covers(const QString& path) const {
    return std::any_of(list.cbegin(), list.cend(),
                       [&path](const PathMapping& one) { return one.covers(path); });
}

const PathMapping* PathMappings::mappingFor(const QString& path) const {
    const PathMapping* longest = nullptr;
    for (const PathMapping& one : list) {
        if (one.covers(path) && (!longest || one.windowsFolder.size() > longest->windowsFolder.size())) {
            longest = &one;
        }
    }
    return longest;
}

QString PathMappings::map(const QString& path) const {
    const PathMapping* longest = mappingFor(path);
    return longest ? longest->map(path) : path;
}

QString PathMappings::windowsPath(const QString& localPath) const {
    const PathMapping* longest = nullptr;
    for (const PathMapping& one : list) {
        if (holdsLocal(one.localFolder, localPath) &&
            (!longest || one.localFolder.size() > longest->localFolder.size())) {
            longest = &one;
        }
    }
    return longest ? longest->windowsPath(localPath) : localPath;
}

std::optional<QString> PathMappings::reversibleWindowsPath(const QString& localPath) const {
    QString path = windowsPath(localPath);
    if (path != localPath && map(path) != localPath) {
        return std::nullopt;
    }
    return path;
}

std::optional<PathMappings> PathMappings::parse(const QString& text) {
    PathMappings mappings;
    if (text.startsWith(kEscapedForm)) {
        for (const QString& part : text.sliced(kEscapedForm.size()).split(u'|', Qt::SkipEmptyParts)) {
            const QStringList folders = part.split(u'=');
            const std::optional<PathMapping> one =
                folders.size() == 2 ? PathMapping::fromFolders(unescaped(folders[0]), unescaped(folders[1]))
                                    : std::nullopt;
            if (!one) {
                return std::nullopt;
            }
            mappings.list << *one;
        }
        return mappings;
    }
    for (const QString& part : text.split(u'|')) {
        const std::optional<PathMapping> one = PathMapping::parse(part);
        if (!one) {
            return std::nullopt;
        }
        if (!one->isEmpty()) {
            mappings.list << *one;
        }
    }
    return mappings;
}

QString PathMappings::toText() const {
    QStringList texts;
    QStringList escapedTexts;
    for (const PathMapping& one : list) {
        texts << one.toText();
        escapedTexts << escaped(one.windowsFolder) + u'=' + escaped(one.localFolder);
    }
    // The plain form while it reads back the same: older versions read it, and people edit it by hand.
    const QString plain = texts.join(u'|');
    if (const std::optional<PathMappings> back = parse(plain); back && back->list == list) {
        return plain;
    }
    return kEscapedForm + escapedTexts.join(u'|');
}

QString windowsPathKey(const QString& path) {
    return path.trimmed().toCaseFolded();
}

QStringList distinctWindowsPaths(const QStringList& paths) {
    QSet<QString> seen;
    QStringList distinct;
    for (const QString& path : paths) {
        const qsizetype before = seen.size();
        seen.insert(windowsPathKey(path));
        if (seen.size() > before) {
            distinct << path;
        }
    }
    return distinct;
}

bool isWindowsPath(const QString& path) {
    const QString p = path.trimmed();
    const bool drive = p.size() >= 2 && p.at(0).isLetter() && p.at(1) == u':';
    return drive || p.startsWith(QStringLiteral("\\\\"));
}

QString commonWindowsFolder(const QStringList& paths) {
    if (paths.isEmpty()) {
        return {};
    }
    QString common = paths.first().trimmed();
    common.truncate(common.lastIndexOf(u'\\') + 1);
    // Files on other drives or shares than the first have their own folder: the guess is the first's.
    const QString drive = common.left(2);
    for (const QString& path : paths) {
        const QString p = path.trimmed();
        if (p.left(2).compare(drive, Qt::CaseInsensitive) != 0) {
            continue;
        }
        qsizetype same = 0;
        while (same < common.size() && same < p.size() && common.at(same).toLower() == p.at(same).toLower()) {
            ++same;
        }
        common.truncate(same);
        common.truncate(common.lastIndexOf(u'\\') + 1);
        if (common.isEmpty()) {
            return {};
        }
    }
    common.chop(1);
    // A drive's root keeps its backslash: "C:" alone is the drive's working folder.
    return common.endsWith(u':') ? common + u'\\' : common;
}

} // namespace zentoria
