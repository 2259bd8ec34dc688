#include "PathQuestion.h"

#include "CommonDialog.h"
#include "settings/Preferences.h"
#include "settings/Texts.h"

#include <QFileInfo>

namespace zentoria {

PathMappings storedPathMappings() {
    return PathMappings::parse(readPathText(settings::PathMap)).value_or(PathMappings{});
}

std::optional<PathMappings> pathMappingsFor(const QStringList& paths, CommonDialog& dialog, QWidget* parent,
                                            const std::function<void(const QString&)>& tell) {
    // Once the user has said where a folder is, the answers are kept and managed in Preferences.
    PathMappings stored = storedPathMappings();
    if (!stored.isEmpty()) {
        return stored;
    }
    QStringList windowsPaths;
    for (const QString& path : paths) {
        if (isWindowsPath(path)) {
            windowsPaths << path;
        }
    }
    if (windowsPaths.isEmpty()) {
        return stored;
    }
    const std::optional<PathMapping> answer =
        dialog.ShowPathMap(parent, {}, commonWindowsFolder(windowsPaths));
    if (!answer) {
        return std::nullopt;
    }
    if (!answer->isEmpty() && !QFileInfo(answer->localFolder).isDir()) {
        tell(uiText(txt::FolderMissing).arg(answer->localFolder));
        return stored;
    }
    if (!answer->isEmpty()) {
        write(settings::PathMap, answer->toText());
    }
    return PathMappings(*answer);
}

} // namespace zentoria
