#include "DesignFont.h"

namespace zentoria {

QFont designBoldFont(double pointSize) {
    QFont font(QStringLiteral("MS Sans Serif"));
    font.setStyleHint(QFont::SansSerif);
    font.setPointSizeF(pointSize);
    font.setBold(true);
    return font;
}

} // namespace zentoria
