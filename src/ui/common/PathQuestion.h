#pragma once

#include "export/PathMapping.h"

#include <QStringList>

#include <functional>
#include <optional>

class QWidget;

namespace zentoria {

class CommonDialog;

// Where the user said the report's folders are; none when nothing was said or it cannot be read.
PathMappings storedPathMappings();

// The path mappings to use for these report paths: the stored ones, or the user's answer when none is
// stored and some path is a Windows path. Only an answer that names a folder here is kept; a slip is
// told and asked about again next time. None when the user cancelled.
std::optional<PathMappings> pathMappingsFor(const QStringList& paths, CommonDialog& dialog, QWidget* parent,
                                            const std::function<void(const QString&)>& tell);

} // namespace zentoria
