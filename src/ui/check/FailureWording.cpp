#include "FailureWording.h"

#include "settings/Texts.h"

#include <cerrno>

namespace zentoria {

scan::FailureWording failureWording() {
    using scan::Obstacle;
    const std::pair<Obstacle, TextKey> texts[] = {
        {Obstacle::NoSuchFile, txt::NoSuchFile},
        {Obstacle::CannotRead, txt::CannotRead},
        {Obstacle::NotMpeg, txt::NotMpeg},
        {Obstacle::CutShort, txt::CutShort},
        {Obstacle::NotRegularFile, txt::NotRegularFile},
        {Obstacle::DanglingLink, txt::DanglingLink},
        {Obstacle::Vanished, txt::Vanished},
        {Obstacle::CannotEnter, txt::CannotEnter},
        {Obstacle::CannotList, txt::CannotList},
        {Obstacle::CannotListToEnd, txt::CannotListToEnd},
        {Obstacle::CannotCheck, txt::CannotCheck},
        {Obstacle::NameHasBackslash, txt::NameHasBackslash},
        {Obstacle::NameBreaksReport, txt::NameBreaksReport},
        {Obstacle::NameTooLong, txt::NameTooLong},
    };
    static_assert(std::size(texts) == scan::kObstacles, "every obstacle has its words");
    scan::FailureWording wording;
    for (const auto& [obstacle, text] : texts) {
        wording.obstacles.at(std::size_t(obstacle)) = uiText(text);
    }
    wording.errors = {
        {EACCES, uiText(txt::PermissionDenied)},
        {EIO, uiText(txt::InputOutputError)},
        {ELOOP, uiText(txt::TooManyLinks)},
        {EMFILE, uiText(txt::TooManyOpenFiles)},
    };
    return wording;
}

} // namespace zentoria
