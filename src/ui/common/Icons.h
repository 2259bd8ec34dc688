#pragma once

#include <QIcon>
#include <QStringList>
#include <QStyle>

namespace zentoria {

// The first of the named icons the desktop theme has; the style's own icon when it has none of them,
// so the program looks right with or without an icon theme.
QIcon themeIcon(const QStringList& names, QStyle::StandardPixmap fallback);

} // namespace zentoria
