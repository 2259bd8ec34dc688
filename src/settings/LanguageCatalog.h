#pragma once

#include <QString>

#include <optional>

namespace zentoria {

// The translated texts of the user interface come from the language file Melvadex's user chose
// (Globals::LanguageFile); each lookup carries the English text as its default and reads the file anew.

// The raw value of the key (blanks kept), or its default; an empty text when nothing was copied.
QString ReadIniValue(const QString& section, const QString& key, const QString& defaultValue);

// The text up to and including its last character that is not NUL.
QString TrimNulls(const QString& text);

// The language file for Melvadex's "Language" setting, a file name relative to this program's folder:
// found there first (a program run from its folder or its build), else by its file name among the
// language files an installed program keeps in $XDG_DATA_DIRS/zentoria/languages. Where neither has
// it, the path beside the program, which every lookup then answers with its default.
QString languageFileFor(const QString& languageSetting);

// The value of the key with leading and trailing blanks removed.
QString Translate(const QString& section, const QString& key, const QString& defaultValue);

// Where a menu item's caption is looked up: "submnu" names give section "OptionMenus" and the rest of
// the name as key, "mnu" names give "Menus" (both prefixes compared exactly); other names nothing.
struct CatalogEntry {
    QString section;
    QString key;
};
std::optional<CatalogEntry> menuCatalogEntry(const QString& menuItemName);

} // namespace zentoria
