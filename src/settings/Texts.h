#pragma once

#include "report/TextTable.h"

namespace zentoria {

// The text in the user's language: the language file's wording, else the English one.
QString uiText(const TextKey& text);

} // namespace zentoria
