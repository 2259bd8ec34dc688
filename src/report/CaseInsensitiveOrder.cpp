#include "CaseInsensitiveOrder.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <numeric>

namespace zentoria {

namespace {

constexpr char16_t asciiFolded(char16_t c) {
    return c >= u'A' && c <= u'Z' ? char16_t(c + (u'a' - u'A')) : c;
}

// A text's place in a sort, with its next eight characters after the shared part folded and packed,
// first character highest, so that comparing the numbers compares those characters.
struct SortKey {
    std::uint64_t head[2] = {0, 0};
    // False when the packed characters are not all ASCII: then only the text itself can tell.
    bool headDecides = true;
    QStringView text;
    int tie = 0;
    int index = 0;
};

qsizetype sharedPrefixLength(const QList<QStringView>& texts) {
    if (texts.isEmpty()) {
        return 0;
    }
    const QStringView first = texts.first();
    qsizetype shared = first.size();
    for (QStringView text : texts) {
        const qsizetype limit = std::min(shared, text.size());
        qsizetype i = 0;
        while (i < limit && text[i] == first[i]) {
            ++i;
        }
        shared = i;
    }
    return shared;
}

SortKey makeKey(QStringView text, qsizetype shared, int tie, int index) {
    SortKey key;
    key.text = text;
    key.tie = tie;
    key.index = index;
    for (int i = 0; i < 8; ++i) {
        // Past its end a text packs zeros, which sort before any character; a tie goes to the text.
        const char16_t c = shared + i < text.size() ? text[shared + i].unicode() : 0;
        if (c >= 0x80) {
            key.headDecides = false;
            break;
        }
        key.head[i / 4] |= std::uint64_t(asciiFolded(c)) << (16 * (3 - i % 4));
    }
    return key;
}

int compareKeys(const SortKey& a, const SortKey& b) {
    if (a.headDecides && b.headDecides) {
        if (a.head[0] != b.head[0]) {
            return a.head[0] < b.head[0] ? -1 : 1;
        }
        if (a.head[1] != b.head[1]) {
            return a.head[1] < b.head[1] ? -1 : 1;
        }
    }
    return compareCaseInsensitive(a.text, b.text);
}

} // namespace

int compareCaseInsensitive(QStringView a, QStringView b) {
    const char16_t* pa = a.utf16();
    const char16_t* pb = b.utf16();
    const qsizetype common = std::min(a.size(), b.size());
    qsizetype i = 0;
    // Paths share long beginnings: pass over them four characters at a time.
    for (; i + 4 <= common; i += 4) {
        std::uint64_t x = 0;
        std::uint64_t y = 0;
        std::memcpy(&x, pa + i, sizeof x);
        std::memcpy(&y, pb + i, sizeof y);
        if (x != y) {
            break;
        }
    }
    for (; i < common; ++i) {
        if (pa[i] == pb[i]) {
            continue;
        }
        if ((pa[i] | pb[i]) < 0x80) {
            const char16_t fa = asciiFolded(pa[i]);
            const char16_t fb = asciiFolded(pb[i]);
            if (fa != fb) {
                return fa < fb ? -1 : 1;
            }
            continue;
        }
        // Qt folds the rest, starting where no surrogate pair is split (the part before is equal).
        const qsizetype from = i > 0 && QChar::isHighSurrogate(pa[i - 1]) ? i - 1 : i;
        return a.sliced(from).compare(b.sliced(from), Qt::CaseInsensitive);
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

QList<int> sortedCaseInsensitive(const QList<QStringView>& texts, const QList<int>& ties,
                                 Qt::SortOrder order) {
    const qsizetype shared = sharedPrefixLength(texts);
    std::vector<SortKey> keys;
    keys.reserve(texts.size());
    for (int i = 0; i < texts.size(); ++i) {
        keys.push_back(makeKey(texts[i], shared, ties[i], i));
    }
    const bool ascending = order == Qt::AscendingOrder;
    std::sort(keys.begin(), keys.end(), [ascending](const SortKey& a, const SortKey& b) {
        const int c = ascending ? compareKeys(a, b) : compareKeys(b, a);
        return c != 0 ? c < 0 : a.tie < b.tie;
    });
    QList<int> permutation(texts.size());
    std::transform(keys.cbegin(), keys.cend(), permutation.begin(),
                   [](const SortKey& key) { return key.index; });
    return permutation;
}

} // namespace zentoria
