#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QList>
#include <QString>

namespace zentoria {

// A text broken into the rows a label of a given width shows. Each line of the text (ended by a
// carriage return, a line feed, or both) starts a new row and wraps at the width: after a blank or a
// path separator where one falls in the row, and anywhere in a name too long for a row, so a path is
// never cut at the label's edge. Widths come from a table of character advances, so the sixteen
// thousand names of a large selection are laid out in a few milliseconds; rows are drawn one by one,
// so what is measured is what is drawn.
class WrappedText {
public:
    struct Row {
        qsizetype start = 0;
        qsizetype length = 0;

        friend bool operator==(const Row&, const Row&) = default;
    };

    // Lays the text out in rows of at most width pixels in the font (at least one character a row).
    void layout(const QString& text, const QFont& font, qreal width);

    const QString& text() const { return m_text; }
    const QList<Row>& rows() const { return m_rows; }
    QStringView rowText(qsizetype row) const {
        return QStringView(m_text).sliced(m_rows[row].start, m_rows[row].length);
    }

private:
    qreal advance(char32_t c, const QFontMetricsF& metrics);

    QString m_text;
    QList<Row> m_rows;
    // Advances of the characters met so far, for the font they were measured in.
    QFont m_font;
    qreal m_latin[256] = {};
    bool m_latinKnown[256] = {};
    QHash<char32_t, qreal> m_others;
};

} // namespace zentoria
