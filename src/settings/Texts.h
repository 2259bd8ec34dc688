#pragma once

#include <QList>
#include <QString>

namespace zentoria {

// A text of the program's own, where the language file keeps it and what it says in English.
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

// The text in the user's language: the language file's wording, else the English one.
QString uiText(const TextKey& text);

// Every text uiText can be asked for, in the order they are declared.
QList<TextKey> allTexts();

} // namespace zentoria
