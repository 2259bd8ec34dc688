#pragma once

#include <QString>

namespace zentoria {

// Labels and menu items read "&" as an access-key mark: text that is data keeps each "&" by doubling it.
inline QString doubleAmpersands(const QString& text) {
    return text.contains(u'&') ? QString(text).replace(u'&', QStringLiteral("&&")) : text;
}

} // namespace zentoria
