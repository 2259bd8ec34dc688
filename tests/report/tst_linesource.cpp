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

        addRow("empty", QByteArray(), QList<QByteArray>());
        addRow("CR LF", QByteArray("a\r\nb\r\n"), QList<QByteArray>{"a", "b"});
        addRow("LF", QByteArray("a\nb\n"), QList<QByteArray>{"a", "b"});
        addRow("lone CR", QByteArray("a\rb\r"), QList<QByteArray>{"a", "b"});
        addRow("LF CR is two terminators", QByteArray("a\n\rb"), QList<QByteArray>{"a", "", "b"});
        addRow("no final terminator", QByteArray("a\r\nb"), QList<QByteArray>{"a", "b"});
        addRow("byte order mark",
               QByteArray("\xEF\xBB\xBF"
                          "a\r\n"),
               QList<QByteArray>{"a"});
        addRow("part of a byte order mark", QByteArray("\xEF\xBB"), QList<QByteArray>{"\xEF\xBB"});
        addRow("byte order mark only at the start",
               QByteArray("a\n\xEF\xBB\xBF"
                          "b"),
               QList<QByteArray>{"a", "\xEF\xBB\xBF"
                                      "b"});
        // A CR as the last byte of one chunk and its LF as the first of the next.
        const QByteArray straddling = QByteArray(64 * 1024 - 1, 'x') + "\r\nnext\r\n";
        addRow("CR LF across chunks", straddling, QList<QByteArray>{QByteArray(64 * 1024 - 1, 'x'), "next"});
        addRow("overlong line cut", QByteArray(QByteArray(kMaxLineLength + 10, 'x') + "\r\nafter"),
               QList<QByteArray>{QByteArray(kMaxLineLength, 'x'), "after"});
        addRow("overlong line over several chunks, lone CR",
               QByteArray(QByteArray(5 * kMaxLineLength, 'x') + "\r\r\nafter"),
               QList<QByteArray>{QByteArray(kMaxLineLength, 'x'), "", "after"});
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

        addRow("ASCII", QByteArray("plain text, long enough for the fast path"), true);
        addRow("two bytes", QByteArray("\xC3\xB6"), true);
        addRow("three bytes", QByteArray("\xE2\x82\xAC"), true);
        addRow("four bytes", QByteArray("\xF0\x9F\x8E\xB5"), true);
        addRow("highest code point", QByteArray("\xF4\x8F\xBF\xBF"), true);
        addRow("lone continuation", QByteArray("a\x80"), false);
        addRow("overlong two bytes", QByteArray("\xC0\x80"), false);
        addRow("surrogate", QByteArray("\xED\xA0\x80"), false);
        addRow("above U+10FFFF", QByteArray("\xF4\x90\x80\x80"), false);
        addRow("cut short at the end", QByteArray("abc\xE2\x82"), false);
        addRow("Windows-1252 text", QByteArray("Mot\xF6rhead"), false);
        addRow("non-ASCII after eight ASCII bytes", QByteArray("12345678\xC3\xB6"), true);
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
        addRow("UTF-8 stands as it is", QByteArray("Björk/Jóga 100% pure.mp3"), "Björk/Jóga 100% pure.mp3");
        addRow("a Latin-1 byte", QByteArray("caf\xE9.mp3"), "caf%E9.mp3");
        addRow("each part on its own", QByteArray("Bj\xF6rk/caf\xC3\xA9.mp3"), "Bj%F6rk/café.mp3");
        addRow("a percent beside a bad byte", QByteArray("100%\xE9"), "100%25%E9");
        addRow("a percent code that is UTF-8", QByteArray("100%20.mp3"), "100%20.mp3");
        addRow("UTF-8 that reads as the form", QByteArray("caf%E9.mp3"), "caf%25E9.mp3");
        addRow("a written percent sign", QByteArray("50%25.mp3"), "50%2525.mp3");
        addRow("a sequence cut short", QByteArray("\xC3.mp3"), "%C3.mp3");
        addRow("a leading byte order mark", QByteArray("\xEF\xBB\xBFsong.mp3"),
               QStringLiteral("\uFEFFsong.mp3"));
        addRow("one after a bad byte", QByteArray("\xE9\xEF\xBB\xBF.mp3"), QStringLiteral("%E9\uFEFF.mp3"));
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
