#include "Icons.h"

#include <QApplication>

namespace zentoria {

QIcon themeIcon(const QStringList& names, QStyle::StandardPixmap fallback) {
    for (const QString& name : names) {
        if (QIcon::hasThemeIcon(name)) {
            return QIcon::fromTheme(name);
        }
    }
    return QApplication::style()->standardIcon(fallback);
}

} // namespace zentoria
