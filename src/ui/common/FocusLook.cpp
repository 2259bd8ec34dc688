#include "FocusLook.h"

#include <QAbstractItemView>

namespace zentoria {

void showFocusClearly(QAbstractItemView* view) {
    QPalette colours = view->palette();
    const QColor strong = colours.color(QPalette::Active, QPalette::Highlight);
    const QColor base = colours.color(QPalette::Active, QPalette::Base);
    // A quarter of the highlight over the base colour.
    const QColor faint((strong.red() + 3 * base.red()) / 4, (strong.green() + 3 * base.green()) / 4,
                       (strong.blue() + 3 * base.blue()) / 4);
    colours.setColor(QPalette::Inactive, QPalette::Highlight, faint);
    colours.setColor(QPalette::Inactive, QPalette::HighlightedText,
                     colours.color(QPalette::Active, QPalette::Text));
    view->setPalette(colours);
}

} // namespace zentoria
