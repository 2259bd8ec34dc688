#include "ListOrder.h"

#include "CaseInsensitiveOrder.h"

#include <QCollatorSortKey>

#include <algorithm>
#include <numeric>
#include <vector>

namespace zentoria {

ListOrder::ListOrder()
    : m_byCodePoint(QLocale().language() == QLocale::C) {
    if (!m_byCodePoint) {
        m_collator.emplace();
        m_collator->setCaseSensitivity(Qt::CaseInsensitive);
    }
}

int ListOrder::compare(QStringView a, QStringView b) const {
    return m_byCodePoint ? compareCaseInsensitive(a, b) : m_collator->compare(a, b);
}

QList<int> ListOrder::sorted(const QList<QStringView>& texts, const QList<int>& ties,
                             Qt::SortOrder order) const {
    // The C locale's collation keys tell letter case apart; the code-point sort does not.
    if (m_byCodePoint) {
        return sortedCaseInsensitive(texts, ties, order);
    }
    std::vector<QCollatorSortKey> keys;
    keys.reserve(texts.size());
    for (QStringView text : texts) {
        keys.push_back(m_collator->sortKey(text.toString()));
    }
    QList<int> permutation(texts.size());
    std::iota(permutation.begin(), permutation.end(), 0);
    const bool ascending = order == Qt::AscendingOrder;
    std::sort(permutation.begin(), permutation.end(), [&](int a, int b) {
        const int c = ascending ? keys[a].compare(keys[b]) : keys[b].compare(keys[a]);
        return c != 0 ? c < 0 : ties[a] < ties[b];
    });
    return permutation;
}

} // namespace zentoria
