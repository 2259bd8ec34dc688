#pragma once

#include <QCollator>
#include <QList>
#include <QStringView>

#include <optional>

namespace zentoria {

// The order of the file list, and of the reports a check writes: by the collation of the program's
// locale, letter case aside, so that "Édith" stands among the E's and "Sébastien" before "Specials".
// Under the C locale, which collates by code point, letter case is set aside as well.
class ListOrder {
public:
    ListOrder();

    // Negative, zero or positive, as a comparison does.
    int compare(QStringView a, QStringView b) const;
    // The permutation that sorts the texts in either direction; texts that compare equal keep the
    // order of their tie numbers (ascending in both directions). Each text is turned into its
    // collation key once, so that sorting thousands of paths stays quick.
    QList<int> sorted(const QList<QStringView>& texts, const QList<int>& ties, Qt::SortOrder order) const;

private:
    bool m_byCodePoint;
    // Made only where the locale collates: a collator costs its making on every thread of a check.
    std::optional<QCollator> m_collator;
};

} // namespace zentoria
