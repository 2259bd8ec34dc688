#include "Failure.h"

#include "LocalFile.h"

namespace zentoria::scan {

QString describe(const Failure& failure, const FailureWording& wording) {
    const QString& words = wording.obstacles.at(std::size_t(failure.obstacle));
    if (!words.contains(QLatin1String("%1"))) {
        return words;
    }
    return words.arg(wording.errors.value(failure.error, systemError(failure.error)));
}

} // namespace zentoria::scan
