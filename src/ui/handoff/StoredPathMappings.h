#pragma once

#include "export/PathMapping.h"
#include "settings/Preferences.h"

namespace zentoria {

// Where the user said the report's folders are; none when nothing was said or it cannot be read.
inline PathMappings storedPathMappings() {
    return PathMappings::parse(readPathText(settings::PathMap)).value_or(PathMappings{});
}

} // namespace zentoria
