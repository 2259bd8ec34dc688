#include "TestData.h"
#include "layout/WrappedText.h"

#include <QFontMetricsF>
#include <QTest>

using namespace zentoria;

namespace {

QStringList rowsOf(const WrappedText& wrapped) {
    QStringList rows;
    for (qsizetype row = 0; row < wrapped.rows().size(); ++row) {
        rows << wrapped.rowText(row).toString();
    }
    return rows;
}

} // namespace

class tst_WrappedText : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void lineBreaks_data() {
        addColumns<QString, QStringList>("text", "rows");

        addRow("carriage return, CR LF, line feed", "a\rb\r\nc\nd", QStringList{"a", "b", "c", "d"});
        addRow("empty lines", "a\r\r\rb", QStringList{"a", "", "", "b"});
        addRow("ending with a break", "a\r", QStringList{"a", ""});
        addRow("CR LF CR LF", "x\r\n\r\n", QStringList{"x", "", ""});
        addRow("empty", "", QStringList{""});
    }

    void lineBreaks() {
        QFETCH(QString, text);
        QFETCH(QStringList, rows);

        WrappedText wrapped;
        wrapped.layout(text, QFont(), 10000);
        QCOMPARE(rowsOf(wrapped), rows);
    }

    void wrapping_data() {
        // "fitting": what the width is made to hold.
        addColumns<QString, QString, QString>("line", "fitting", "firstRow");

        addRow("after a backslash", "C:\\Music\\Artist\\Track.mp3", "C:\\Music\\Artis", "C:\\Music\\");
        addRow("after a blank", "Blue Train.mp3", "Blue Tra", "Blue ");
        addRow("anywhere in a long name", "Averylongfoldername.mp3", "Averylong", "Averylong");
        addRow("a whole line that fits", "C:\\a.mp3", "C:\\a.mp3", "C:\\a.mp3");
        addRow("one character wider than the row", "WWW", "", "W");
        addRow("a surrogate pair kept whole", "\U0001D11E\U0001D11E\U0001D11E", "\U0001D11E", "\U0001D11E");
    }

    void wrapping() {
        QFETCH(QString, line);
        QFETCH(QString, fitting);
        QFETCH(QString, firstRow);

        const QFont font;
        const QFontMetricsF metrics(font);
        // Room for the fitting text's characters and less than one character more. Rows are measured
        // character by character, which never comes out narrower than the kerned text.
        qreal width = 1;
        for (char32_t c : fitting.toUcs4()) {
            width += metrics.horizontalAdvance(QString::fromUcs4(&c, 1));
        }
        WrappedText wrapped;
        wrapped.layout(line, font, width);
        const QStringList rows = rowsOf(wrapped);
        QCOMPARE(rows.first(), firstRow);
        // Nothing is lost or doubled, and no row but a single character's is wider than the width.
        QCOMPARE(rows.join(QString()), line);
        for (const QString& row : rows) {
            QVERIFY2(metrics.horizontalAdvance(row) <= width + 1 || row.toUcs4().size() == 1,
                     qPrintable(row));
            QVERIFY(!row.isEmpty() && !row.front().isLowSurrogate());
        }
    }
};

QTEST_MAIN(tst_WrappedText)
#include "tst_wrappedtext.moc"
