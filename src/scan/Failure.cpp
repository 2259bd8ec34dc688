#include "Failure.h"

#include "LocalFile.h"

namespace zentoria::scan {

FailureWording::FailureWording(QString (*words)(const TextKey&)) {
    // In the order of Obstacle.
    const TextKey texts[] = {
        txt::NoSuchFile,       txt::CannotRead,      txt::NotMpeg,     txt::CutShort,
        txt::NotRegularFile,   txt::DanglingLink,    txt::Vanished,    txt::CannotEnter,
        txt::CannotList,       txt::CannotListToEnd, txt::CannotCheck, txt::NameHasBackslash,
        txt::NameBreaksReport, txt::NameTooLong,
    };
    static_assert(std::size(texts) == kObstacles, "every obstacle has its words");
    for (std::size_t i = 0; i < std::size(texts); ++i) {
        obstacles.at(i) = words(texts[i]);
    }
}

QString describe(const Failure& failure, const FailureWording& wording) {
    const QString& words = wording.obstacles.at(std::size_t(failure.obstacle));
    if (!words.contains(QLatin1String("%1"))) {
        return words;
    }
    return words.arg(wording.errors.value(failure.error, systemError(failure.error)));
}

} // namespace zentoria::scan
