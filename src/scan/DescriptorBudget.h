#pragma once

#include <QtGlobal>

namespace zentoria::scan {

// How many descriptors a check may hold at once, so that no depth of folders and no number of
// threads runs the program out of them.
struct DescriptorBudget {
    // Probes at once: each holds its file open.
    int jobs = 1;
    // Folders the walk keeps open for what they hold.
    int folders = 1;
    friend bool operator==(const DescriptorBudget&, const DescriptorBudget&) = default;
};

// The budget under a limit of `limit` open descriptors with `inUse` open already, for `jobs` probes at
// once asked for: fewer when the limit leaves no room for them, never fewer than one of each.
DescriptorBudget descriptorBudget(qint64 limit, qint64 inUse, int jobs);

// The same under this process's limit, with the descriptors it has open now.
DescriptorBudget descriptorBudgetHere(int jobs);

} // namespace zentoria::scan
