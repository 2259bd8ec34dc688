#pragma once

#include <QFont>

namespace zentoria {

// The bold "MS Sans Serif" of the windows' design, at a point size. It is no Linux font: the family
// falls back to the desktop's sans serif.
QFont designBoldFont(double pointSize);

} // namespace zentoria
