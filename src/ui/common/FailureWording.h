#pragma once

#include "scan/Failure.h"

namespace zentoria {

// Why a file could not be checked, in the language file's words: a German check names its obstacles
// in German, the system's most common errors included.
scan::FailureWording failureWording();

} // namespace zentoria
