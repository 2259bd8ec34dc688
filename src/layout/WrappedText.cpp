#include "WrappedText.h"

#include <QFontMetricsF>

namespace zentoria {

namespace {

// Where a row may end: after a blank, or after the separators that divide a path into its folders.
bool breaksAfter(char32_t c) {
    return c == U' ' || c == U'\t' || c == U'\\' || c == U'/';
}

} // namespace

qreal WrappedText::advance(char32_t c, const QFontMetricsF& metrics) {
    if (c < 256) {
        if (!m_latinKnown[c]) {
            m_latin[c] = metrics.horizontalAdvance(QChar(c));
            m_latinKnown[c] = true;
        }
        return m_latin[c];
    }
    // Marks sit on the character before them and take no room of their own.
    if (QChar::isMark(c)) {
        return 0;
    }
    auto known = m_others.constFind(c);
    if (known == m_others.cend()) {
        known = m_others.insert(c, metrics.horizontalAdvance(QString::fromUcs4(&c, 1)));
    }
    return *known;
}

void WrappedText::layout(const QString& text, const QFont& font, qreal width) {
    if (font != m_font) {
        m_font = font;
        std::fill(std::begin(m_latinKnown), std::end(m_latinKnown), false);
        m_others.clear();
    }
    const QFontMetricsF metrics(font);
    m_text = text;
    m_rows.clear();
    const char16_t* chars = QStringView(text).utf16();
    const qsizetype size = text.size();

    qsizetype lineStart = 0;
    while (lineStart <= size) {
        qsizetype lineEnd = lineStart;
        while (lineEnd < size && chars[lineEnd] != u'\r' && chars[lineEnd] != u'\n') {
            ++lineEnd;
        }
        // The line's rows: as many characters as fit, back to the last place a row may end.
        qsizetype rowStart = lineStart;
        do {
            qreal used = 0;
            qsizetype lastBreak = -1;
            qsizetype i = rowStart;
            while (i < lineEnd) {
                const bool pair = QChar::isHighSurrogate(chars[i]) && i + 1 < lineEnd &&
                                  QChar::isLowSurrogate(chars[i + 1]);
                const char32_t c = pair ? QChar::surrogateToUcs4(chars[i], chars[i + 1]) : chars[i];
                const qreal a = advance(c, metrics);
                if (used + a > width && i > rowStart && a > 0) {
                    break;
                }
                used += a;
                i += pair ? 2 : 1;
                if (breaksAfter(c)) {
                    lastBreak = i;
                }
            }
            const qsizetype rowEnd = i < lineEnd && lastBreak > rowStart ? lastBreak : i;
            m_rows.append({rowStart, rowEnd - rowStart});
            rowStart = rowEnd;
        } while (rowStart < lineEnd);

        if (lineEnd >= size) {
            break;
        }
        lineStart =
            lineEnd + (chars[lineEnd] == u'\r' && lineEnd + 1 < size && chars[lineEnd + 1] == u'\n' ? 2 : 1);
    }
}

} // namespace zentoria
