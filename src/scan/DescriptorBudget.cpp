#include "DescriptorBudget.h"

#include <algorithm>
#include <dirent.h>
#include <fcntl.h>
#include <sys/resource.h>

namespace zentoria::scan {

namespace {

// Left for the rest of the program while a check runs: the window, a report being saved.
constexpr qint64 kReserve = 8;
// A probe's file (TagLib reads it through the probe's descriptor).
constexpr qint64 kPerProbe = 1;
// The walk's folder being opened and its listing, besides the folders it keeps.
constexpr qint64 kWalking = 2;
// More open folders gain a walk nothing: they only spare it reopening by longer names.
constexpr qint64 kMostFolders = 256;

qint64 openDescriptors(qint64 limit) {
    if (DIR* listing = ::opendir("/proc/self/fd")) {
        qint64 count = 0;
        while (const dirent* entry = ::readdir(listing)) {
            count += entry->d_name[0] != '.';
        }
        ::closedir(listing);
        return count - 1; // the listing's own
    }
    qint64 count = 0;
    for (int descriptor = 0; descriptor < std::min<qint64>(limit, 1 << 16); ++descriptor) {
        count += ::fcntl(descriptor, F_GETFD) >= 0;
    }
    return count;
}

} // namespace

DescriptorBudget descriptorBudget(qint64 limit, qint64 inUse, int jobs) {
    const qint64 free = limit - inUse - kReserve - kWalking;
    DescriptorBudget budget;
    budget.jobs = int(std::clamp<qint64>((free - 1) / kPerProbe, 1, std::max(1, jobs)));
    budget.folders = int(std::clamp<qint64>(free - kPerProbe * budget.jobs, 1, kMostFolders));
    return budget;
}

DescriptorBudget descriptorBudgetHere(int jobs) {
    rlimit limit = {};
    const qint64 most = ::getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY
                            ? qint64(1) << 20
                            : qint64(limit.rlim_cur);
    return descriptorBudget(most, openDescriptors(most), jobs);
}

} // namespace zentoria::scan
