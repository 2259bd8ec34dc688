#include "TestData.h"
#include "layout/LayoutGeometry.h"
#include "layout/WrappedText.h"

#include <QFontMetricsF>

using namespace zentoria;

namespace {

LayoutInput example() {
    return {.WindowWidth = 12000,
            .WindowHeight = 7350,
            .ClientWidth = 11880,
            .AddressBarHeight = 520,
            .PathLeft = 840,
            .TreeTop = 560 /* after a first pass */,
            .StatusBarHeight = 255,
            .AboutTextWidth = 600,
            .TreeWidth = 3000,
            .SeparatorWidth = 45,
            .PanelWidth = 2895,
            .PanelHeight = 2655};
}

QStringList rowsOf(const WrappedText& wrapped) {
    QStringList rows;
    for (qsizetype row = 0; row < wrapped.rows().size(); ++row) {
        rows << wrapped.rowText(row).toString();
    }
    return rows;
}

} // namespace

class tst_Layout : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void workedExample() {
        const LayoutResult out = ComputeLayout(example());
        QCOMPARE(
            (QList<float>{out.A, out.H, out.AddressBarLeft, out.AddressBarTop, out.AddressBarWidth,
                          out.PathWidth, out.ScrollHeight, out.Playing, out.PlayingStatus, out.About,
                          out.Blank}),
            (QList<float>{460, 5835, 30, -60, 11730, 11730 - 840 - 60, 5340, 5000, 1500, 900, 4880 - 600}));
        QCOMPARE((QList<TwipsRect>{out.Tree, out.Separator, out.Borders, out.Panel, out.List}),
                 (QList<TwipsRect>{{0, 560, 3000, 5835},
                                   {3000, 460, 45, 5835},
                                   {3045, 560, 8835, 5415},
                                   {0, 0, 2895, 5955},
                                   {2855, -45, 5950, 5415}}));
        QCOMPARE((QList<int>{out.ScrollMaximum, out.ScrollLargeChange, out.ScrollSmallChange}),
                 (QList<int>{540, 54, 5}));
        QVERIFY(out.PanelVisible);
    }

    void firstPassUsesTheDesignTop() {
        LayoutInput in = example();
        in.TreeTop = 1080;
        const LayoutResult first = ComputeLayout(in);
        QCOMPARE(first.H, 5315.0f);
        // The second pass starts from the top the first one gave the tree: H = height - 2A - bar - 340.
        in.TreeTop = first.Tree.Top;
        QCOMPARE(ComputeLayout(in).H, 7350.0f - 2 * 460 - 255 - 340);
    }

    // Shown, the bar is the worked example's; hidden, the panes move up by its height.
    void hiddenAddressBar() {
        LayoutInput in = example();
        in.AddressBarVisible = false;
        const LayoutResult out = ComputeLayout(in);
        QCOMPARE((QList<double>{out.A, out.AddressBarTop, out.Tree.Top, out.Separator.Top, out.Borders.Top}),
                 (QList<double>{0, -520, 100, 0, 100}));
    }

    void narrowWindow() {
        LayoutInput in = example();
        in.WindowWidth = 6120;
        in.ClientWidth = 6000;
        const LayoutResult out = ComputeLayout(in);
        QCOMPARE(out.Blank, 6000.0f - 5000 - 900 - 1500 - 200);
        QCOMPARE(out.Borders.Width, 6120.0f - 3045 - 120);
    }

    void scrollRange_data() {
        // The scroll bar's maximum, large and small change.
        addColumns<bool, float, QList<int>>("webStyle", "panelHeight", "range");

        // In the classic view the range is |panel height - 5415|.
        addRow("web style: always 540", true, 99999.0f, QList<int>{540, 54, 5});
        addRow("classic: the panel's own height", false, 2655.0f, QList<int>{2760, 276, 28});
        addRow("panel as tall as the list", false, 5415.0f, QList<int>{0, 0, 0});
        addRow("beyond 32767", false, 5415.0f + 40000, QList<int>{32767, 3277, 328});
        addRow("tiny range: changes at least 1", false, 5418.0f, QList<int>{3, 1, 1});
        addRow("tenth 4.5 rounds to 4", false, 5415.0f + 45, QList<int>{45, 4, 1});
        addRow("tenth 5.5 rounds to 6", false, 5415.0f + 55, QList<int>{55, 6, 1});
        addRow("hundredth 2.5 rounds to 2", false, 5415.0f - 250, QList<int>{250, 25, 2});
        addRow("hundredth 3.5 rounds to 4", false, 5415.0f + 350, QList<int>{350, 35, 4});
        addRow("half a twip rounds to even", false, 5415.0f + 100.5f, QList<int>{100, 10, 1});
    }

    void scrollRange() {
        QFETCH(bool, webStyle);
        QFETCH(float, panelHeight);
        QFETCH(QList<int>, range);

        LayoutInput in = example();
        in.WebStyle = webStyle;
        in.PanelHeight = panelHeight;
        const LayoutResult out = ComputeLayout(in);
        QCOMPARE((QList<int>{out.ScrollMaximum, out.ScrollLargeChange, out.ScrollSmallChange}), range);
        // The classic view gives the panel's room to the list; the borders stay.
        QCOMPARE(out.PanelVisible, webStyle);
        QCOMPARE(out.List, (webStyle ? TwipsRect{2855, -45, 5950, 5415} : TwipsRect{-45, -45, 8880, 5415}));
        QCOMPARE(out.Borders, (TwipsRect{3045, 560, 8835, 5415}));
    }

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

QTEST_MAIN(tst_Layout)
#include "tst_layout.moc"
