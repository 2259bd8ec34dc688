#include "Texts.h"

#include "LanguageCatalog.h"

namespace zentoria {

QString uiText(const TextKey& text) {
    return Translate(QLatin1StringView(text.section), QLatin1StringView(text.key), english(text));
}

} // namespace zentoria
