#pragma once

#include "export/PathMapping.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <optional>

class QWidget;

namespace zentoria {

class CommonDialog;

// Where the user said the report's folders are; none when nothing was said or it cannot be read.
PathMappings storedPathMappings();

// Stores where the report's folders are, as the question below or Preferences heard it, and tells
// whoever finds files through them (PathMappingStore::changed).
void storePathMappings(const PathMappings& mappings);

// Tells when storePathMappings stored other mappings than before, whichever dialog asked.
class PathMappingStore : public QObject {
    Q_OBJECT

public:
    static PathMappingStore& instance();

Q_SIGNALS:
    void changed();
};

// The path mappings to use for these paths of the report: the stored ones, and the user's answer for
// each Windows folder of them that no mapping covers yet. The first guess at that folder is the one
// the report's files not yet mapped share on that file's drive (its common root, "C:\Music", not one
// album's folder). Only an answer that names a folder here is kept; a slip is told and asked about
// again next time. None when the user cancelled.
std::optional<PathMappings> pathMappingsFor(const QStringList& paths, const QStringList& reportPaths,
                                            CommonDialog& dialog, QWidget* parent,
                                            const std::function<void(const QString&)>& tell);

} // namespace zentoria
