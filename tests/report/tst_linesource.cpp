#include "ShortReadDevice.h"
#include "TestData.h"
#include "report/FileNameForm.h"
#include "report/LineSource.h"
#include "report/TextDecoding.h"
#include "report/Utf8Validator.h"

#include <QBuffer>
#include <QTest>

using namespace zentoria;

namespace {

QList<QByteArray> allLines(LineSource& source) {
    QList<QByteArray> lines;
    SourceLine line;
    while (source.next(line)) {
        lines << line.bytes.toByteArray();
    }
    return lines;
}

} // namespace

class tst_LineSource : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void splitting_data() {
        addColumns<QByteArray, QList<QByteArray>>("bytes", "lines");
        const auto row = [](const char* name, const QByteArray& bytes, const QList<QByteArray>& lines) {
            addRow(name, bytes, lines);
        };
        const QByteArray bom = "\xEF\xBB\xBF";
        row("empty", "", {});
        row("CR LF", "a\r\nb\r\n", {"a", "b"});
        row("LF", "a\nb\n", {"a", "b"});
        row("lone CR", "a\rb\r", {"a", "b"});
        row("LF CR is two terminators", "a\n\rb", {"a", "", "b"});
        row("no final terminator", "a\r\nb", {"a", "b"});
        row("byte order mark", bom + "a\r\n", {"a"});
        row("part of a byte order mark", "\xEF\xBB", {"\xEF\xBB"});
        row("byte order mark only at the start", "a\n" + bom + "b", {"a", bom + "b"});
        // A CR as the last byte of one chunk and its LF as the first of the next.
        const QByteArray chunk(64 * 1024 - 1, 'x');
        row("CR LF across chunks", chunk + "\r\nnext\r\n", {chunk, "next"});
        const QByteArray longest(kMaxLineLength, 'x');
        row("overlong line cut", longest + "xxxxxxxxxx\r\nafter", {longest, "after"});
        row("overlong line over several chunks, lone CR", longest.repeated(5) + "\r\r\nafter",
            {longest, "", "after"});
    }

    void splitting() {
        QFETCH(QByteArray, bytes);
        QFETCH(QList<QByteArray>, lines);

        MemoryLineSource memory(bytes);
        QCOMPARE(allLines(memory), lines);

        QBuffer buffer(&bytes);
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        DeviceLineSource device(buffer);
        QCOMPARE(allLines(device), lines);

        // A device that hands out a byte or two at a time splits the byte order mark too.
        if (bytes.size() < 1000) {
            for (qint64 step : {1, 2, 5}) {
                ShortReadDevice trickle(bytes, step);
                DeviceLineSource trickling(trickle);
                QCOMPARE(allLines(trickling), lines);
            }
        }
    }

    void utf8Validity_data() {
        addColumns<QByteArray, bool>("bytes", "valid");
        for (const char* valid : {"plain text, long enough for the fast path", "\xC3\xB6", "\xE2\x82\xAC",
                                  "\xF0\x9F\x8E\xB5", "\xF4\x8F\xBF\xBF", "12345678\xC3\xB6"}) {
            QTest::addRow("valid %s", valid) << QByteArray(valid) << true;
        }
        // A lone continuation, an overlong form, a surrogate, above U+10FFFF, cut short, Windows-1252.
        for (const char* invalid :
             {"a\x80", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "abc\xE2\x82", "Mot\xF6rhead"}) {
            QTest::addRow("invalid %s", QByteArray(invalid).toHex(' ').constData())
                << QByteArray(invalid) << false;
        }
    }

    void utf8Validity() {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, valid);

        // Every split into two pieces must agree with the whole, so sequences may straddle feeds.
        for (qsizetype split = 0; split <= bytes.size(); ++split) {
            Utf8Validator validator;
            validator.feed(bytes.constData(), split);
            validator.feed(bytes.constData() + split, bytes.size() - split);
            QVERIFY2(validator.isValid() == valid, qPrintable(QStringLiteral("split at %1").arg(split)));
        }
        QCOMPARE(detectEncoding(bytes) == TextEncoding::Utf8, valid);
    }

    void nameForm_data() {
        addColumns<QByteArray, QString>("bytes", "shown");
        const auto row = [](const char* name, const QByteArray& bytes, const QString& shown) {
            addRow(name, bytes, shown);
        };
        row("UTF-8 stands as it is", "Björk/Jóga 100% pure.mp3", "Björk/Jóga 100% pure.mp3");
        row("a Latin-1 byte", "caf\xE9.mp3", "caf%E9.mp3");
        row("each part on its own", "Bj\xF6rk/caf\xC3\xA9.mp3", "Bj%F6rk/café.mp3");
        row("a percent beside a bad byte", "100%\xE9", "100%25%E9");
        row("a percent code that is UTF-8", "100%20.mp3", "100%20.mp3");
        row("UTF-8 that reads as the form", "caf%E9.mp3", "caf%25E9.mp3");
        row("a written percent sign", "50%25.mp3", "50%2525.mp3");
        row("a sequence cut short", "\xC3.mp3", "%C3.mp3");
        row("a leading byte order mark", "\xEF\xBB\xBFsong.mp3", QStringLiteral("\uFEFFsong.mp3"));
        row("one after a bad byte", "\xE9\xEF\xBB\xBF.mp3", QStringLiteral("%E9\uFEFF.mp3"));
    }

    void nameForm() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, shown);
        QCOMPARE(shownFileName(bytes), shown);
        QCOMPARE(fileNameBytes(shown), bytes);
        // The clipboard's URL carries the real bytes.
        QCOMPARE(localFileUrl("/m/" + shown).toEncoded(), "file:///m/" + bytes.toPercentEncoding("/"));
    }
};

QTEST_GUILESS_MAIN(tst_LineSource)
#include "tst_linesource.moc"
