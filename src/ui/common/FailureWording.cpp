#include "FailureWording.h"

#include "settings/Texts.h"

#include <cerrno>

namespace zentoria {

scan::FailureWording failureWording() {
    scan::FailureWording wording(uiText);
    wording.errors = {
        {EACCES, uiText(txt::PermissionDenied)},
        {EIO, uiText(txt::InputOutputError)},
        {ELOOP, uiText(txt::TooManyLinks)},
        {EMFILE, uiText(txt::TooManyOpenFiles)},
    };
    return wording;
}

} // namespace zentoria
