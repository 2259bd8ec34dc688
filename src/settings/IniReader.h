#pragma once

#include <QString>

#include <optional>

namespace zentoria {

// Looks a key up in INI text the way Windows' profile functions do: sections and keys match without
// regard to letter case; blanks and tabs around keys and values are dropped, and so is one pair of
// matching quotes (' or ") around a value; a line whose key starts with ';' never matches; there are
// no inline comments; a line without '=' holds no key; the first of duplicate sections and of duplicate
// keys wins; blanks inside a section's brackets do not count. Nothing for a missing section or key; a
// present key with nothing after '=' gives an empty text.
std::optional<QString> lookUpIniValue(const QString& text, const QString& section, const QString& key);

// Reads one value from an INI file, as GetPrivateProfileString does: the default when the file, the
// section or the key is missing, and never more than maxLength UTF-16 code units of either; the cut never
// splits a character. The file is read
// anew on every call and decoded as UTF-8 when it is valid UTF-8, otherwise as Windows-1252.
QString readIniString(const QString& path, const QString& section, const QString& key,
                      const QString& defaultValue, int maxLength = 199);

} // namespace zentoria
