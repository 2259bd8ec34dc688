#include "Texts.h"

#include "LanguageCatalog.h"

namespace zentoria {

QString uiText(const TextKey& text) {
    return Translate(QLatin1StringView(text.section), QLatin1StringView(text.key),
                     QString::fromUtf8(text.english));
}

QList<TextKey> allTexts() {
    return {
#define ZENTORIA_TEXT(section, key, english) txt::key,
#include "Texts.def"
#undef ZENTORIA_TEXT
    };
}

} // namespace zentoria
