#include "Scanner.h"
#include "report/ListOrder.h"

#include <algorithm>

namespace zentoria::scan {

bool listedBefore(const FoundProblem& a, const FoundProblem& b) {
    // A collator is no object for threads to share: each of the pool's threads keeps its own.
    thread_local const ListOrder order;
    const int collated = order.compare(a.path, b.path);
    return collated != 0 ? collated < 0 : a.path < b.path;
}

void sortAsListed(QList<FoundProblem>& problems) {
    std::sort(problems.begin(), problems.end(), listedBefore);
}

} // namespace zentoria::scan
