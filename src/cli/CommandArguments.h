#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace zentoria::cli {

// The command line's words as text that keeps their bytes. A word that is UTF-8 is its text; a byte
// that is no UTF-8 becomes one of the code points U+DC80 to U+DCFF, which no UTF-8 word can hold, so a
// folder named by its bytes ("caf\xE9") stays apart from its twin named "caf%E9".
QStringList argumentsFromBytes(int count, const char* const* words);

// The bytes a word of argumentsFromBytes stands for.
QByteArray argumentBytes(const QString& word);

// The folder a word names, absolute and clean, in FileNameForm's form: the folder of the word's bytes
// as given, or else, when no folder has that name, the one its "%XX" form stands for. None when neither
// is a folder; `exists` then says whether something else has that name.
std::optional<QString> commandLineFolder(const QString& word, bool* exists);

} // namespace zentoria::cli
