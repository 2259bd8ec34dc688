#pragma once

#include <QList>
#include <QString>

namespace zentoria {

// A text of the program's own, where the language file keeps it and what it says in English. The table
// sits in the lowest library so that the reader and the scanner take their English from it too, while
// the translation (settings/Texts.h) sits above them.
struct TextKey {
    const char* section;
    const char* key;
    const char* english;
};

// Each text by its key: uiText(txt::SaveFailed).
namespace txt {
#define ZENTORIA_TEXT(section, key, english) inline constexpr TextKey key{#section, #key, english};
#include "Texts.def"
#undef ZENTORIA_TEXT
} // namespace txt

// The English wording, for what is told without a language file (the tool, the defaults).
inline QString english(const TextKey& text) {
    return QString::fromUtf8(text.english);
}

// Every text of the table, in the order they are declared.
inline QList<TextKey> allTexts() {
    return {
#define ZENTORIA_TEXT(section, key, english) txt::key,
#include "Texts.def"
#undef ZENTORIA_TEXT
    };
}

} // namespace zentoria
