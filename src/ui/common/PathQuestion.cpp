#include "PathQuestion.h"

#include "CommonDialog.h"
#include "settings/Preferences.h"
#include "settings/Texts.h"

#include <QFileInfo>

namespace zentoria {

PathMappings storedPathMappings() {
    return PathMappings::parse(readPathText(settings::PathMap)).value_or(PathMappings{});
}

void storePathMappings(const PathMappings& mappings) {
    const QString text = mappings.toText();
    const bool changed = text != storedPathMappings().toText();
    // Written even when the same: a stored value, even an empty one, says the user was asked.
    write(settings::PathMap, text);
    if (changed) {
        Q_EMIT PathMappingStore::instance().changed();
    }
}

PathMappingStore& PathMappingStore::instance() {
    static PathMappingStore store;
    return store;
}

std::optional<PathMappings> pathMappingsFor(const QStringList& paths, const QStringList& reportPaths,
                                            CommonDialog& dialog, QWidget* parent,
                                            const std::function<void(const QString&)>& tell) {
    PathMappings mappings = storedPathMappings();
    const auto unmapped = [&mappings](const QStringList& from) {
        QStringList left;
        for (const QString& path : from) {
            if (isWindowsPath(path) && !mappings.covers(path)) {
                left << path;
            }
        }
        return left;
    };
    // A file no mapping covers is asked about, never taken for missing: each answer may cover some of
    // them, and an answer that covers none ends the questions for now.
    for (QStringList asked = unmapped(paths); !asked.isEmpty();) {
        const std::optional<PathMapping> answer = dialog.ShowPathMap(
            parent, {}, commonWindowsFolder(QStringList{asked.first()} + unmapped(reportPaths)));
        if (!answer) {
            return std::nullopt;
        }
        if (answer->isEmpty()) {
            break;
        }
        if (!QFileInfo(answer->localFolder).isDir()) {
            tell(uiText(txt::FolderMissing).arg(answer->localFolder));
            break;
        }
        mappings.list << *answer;
        storePathMappings(mappings);
        const QStringList left = unmapped(asked);
        if (left.size() == asked.size()) {
            break;
        }
        asked = left;
    }
    return mappings;
}

} // namespace zentoria
