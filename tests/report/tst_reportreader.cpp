#include "ReportBuilder.h"
#include "TestData.h"
#include "report/ReportReader.h"

#include <QTest>

using namespace zentoria;

class tst_ReportReader : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void formatRules_data() {
        addColumns<QByteArray, QString>("bytes", "expected");

        // A report's lines separated by "|": "#" first stands for the banner and the six header lines,
        // V1, V2 and V0 for the detail lines, D for the closing line; each line ends in CR LF (or the ending
        // given), the last too unless the script ends with "~". Expected: the outcome, each entry, the
        // skipped lines, the stop line.
        const QByteArray banner = kBanner.toByteArray();
        const auto row = [&banner](const char* name, QByteArray script, const QString& expected,
                                   const QByteArray& end = "\r\n") {
            const bool terminated = !script.endsWith('~');
            script.chop(terminated ? 0 : 1);
            if (script.startsWith('#')) {
                script.replace(0, 1, banner + "||  Checked folder: C:\\Music||||");
            }
            QList<QByteArray> lines = script.split('|');
            for (QByteArray& line : lines) {
                line = line == "V1"   ? kDetailID3v1.toByteArray()
                       : line == "V2" ? kDetailID3v2.toByteArray()
                       : line == "V0" ? kDetailID3v0.toByteArray()
                       : line == "D"  ? QByteArray("Date of creation: 23.11.2026")
                                      : line;
            }
            addRow(name, script.isEmpty() ? QByteArray() : lines.join(end) + (terminated ? end : ""),
                   expected);
        };
        row("two entries", "#|C:\\Song A.mp3|V2||C:\\Song B.mp3|V0||D",
            "Loaded [1 2 C:\\Song A.mp3] [2 0 C:\\Song B.mp3]");
        row("banner with two blanks", "  This file was created with Melvadex (By Orsolt)||||||||a|V1||D",
            "Corrupted");
        row("banner with a trailing blank", "   This file was created with Melvadex (By Orsolt) ||||||||D",
            "Corrupted");
        row("banner in other case", "   This file was created with melvadex (By Orsolt)||||||||D",
            "Corrupted");
        row("marker in header ignored", banner + "|Date of creation: 1.1.2001|x|Date of creation:||||a|V1||D",
            "Loaded [1 1 a]");
        row("closing at line 8", "#|D", "Loaded");
        // What the header of a report this program wrote says it lacks is read back.
        row("header: left out, not read, ended early",
            banner + "||  Written by zentoria-report recheck|  Checked: a.vzt|" +
                problemFilesLine(1, {4, true, 12}) + "|  Not found: 0" + notReadClause({4, true, 0}) +
                "||a|V1||D",
            "Loaded [1 1 a] written: left out 12, not read 4, ended early");
        row("header: not read only",
            banner + "|||||  Not found: 2" + notReadClause({3, false, 0}) + "||a|V1||D",
            "Loaded [1 1 a] written: left out 0, not read 3");
        row("header: look-alikes in other words",
            banner + "||||  Problem files: 1 (12 more)|  Not read: 4||a|V1||D", "Loaded [1 1 a]");
        row("closing at line 9", "#||D", "NoProblems");
        row("closing at a detail position after entries", "#|a|V1||b|D", "NoProblems [1 1 a]");
        row("detail one blank short", "#|a| Melvadex could not get the ID3v1 information||b|V2||D",
            "Loaded [2 2 b] skipped 9 unread 1");
        row("detail trailing blank, unknown detail",
            "#|a|  Melvadex could not get the ID3v2 information ||b|V0||c|??||D",
            "Loaded [2 0 b] skipped 9,15 unread 2");
        row("empty detail in record 2 of 3", "#|a|V1||b|||c|V2||D", "Loaded [1 1 a] [3 2 c]");
        row("path blanks kept", "#|  C:\\x.mp3  |V1||D", "Loaded [1 1   C:\\x.mp3  ]");
        row("marker inside a path line", "#|a|V1||Report end - Date of creation: today|b|V2||D",
            "Loaded [1 1 a]");
        row("closing on a separator is swallowed", "#|a|V1|D|b|V2||D", "Loaded [1 1 a] [2 2 b]");
        row("same file twice", "#|a|V1||a|V1||D", "Loaded [1 1 a] [2 1 a]");
        // No banner, so no report: the one on screen stays, as for any file without it.
        row("empty file", "", "Corrupted");
        row("only three lines", banner + "||", "EndedEarly stop 4");
        row("ends at a path position", "#|a|V1||b|V0|", "EndedEarly [1 1 a] [2 0 b] stop 14");
        row("ends at a detail position", "#|a|V1||b", "EndedEarly [1 1 a] stop 12 unread 1");
        row("ends at a separator position", "#|a|V2~", "EndedEarly [1 2 a] stop 10");
        row("closing swallowed as the last separator", "#|a|V1|D", "EndedEarly [1 1 a] stop 11");

        row("lone CR endings", "#|a|V1|||D", "NoProblems [1 1 a]", "\r");
        row("mixed endings, last line unterminated",
            "#|a\r" + kDetailID3v2.toByteArray() + "\r||Date of creation:~", "Loaded [1 2 a]", "\n");
        // Read as one terminator, CR CR would make the closing line a separator and the report end early.
        row("CR CR is two lines", "#|a|V1||Date of creation:~", "Loaded [1 1 a]", "\r");
        // Windows-1252 unless the whole file is UTF-8: one stray byte, even after the closing line, decides.
        row("Windows-1252", "#|C:\\Mot\xF6rhead\\\x80 \x96 \x9Cuvre.mp3|V1||D",
            "Loaded [1 1 C:\\Motörhead\\€ – œuvre.mp3]");
        row("an invalid byte after the closing line", "#|Mot\xC3\xB6rhead.mp3|V1||D|\xFF~",
            "Loaded [1 1 MotÃ¶rhead.mp3]");
        // Paths longer than a Windows path can be are skipped, counted in UTF-16 units; lines longer
        // still are cut where they are read.
        const QByteArray longest(kMaxPathLength, 'p');
        row("the longest path", "#|" + longest + "|V1||D",
            "Loaded [1 1 " + QString::fromLatin1(longest) + ']');
        row("a path one character too long", "#|" + longest + "p|V1||b|V2||D",
            "Loaded [2 2 b] skipped 8 unread 1");
        row("one three-byte character too many",
            "#|" + QByteArray("\xE2\x82\xAC").repeated(kMaxPathLength) + "p|V1||D",
            "Loaded skipped 8 unread 1");
        row("a detail line too long", "#|a|" + QByteArray(kMaxLineLength + 1, 'p') + "||b|V2||D",
            "Loaded [2 2 b] skipped 9 unread 1");
        addRow(
            "byte order mark",
            QByteArray("\xEF\xBB\xBF" + ReportBuilder().start().record("a", kDetailID3v1).closing().bytes()),
            "Loaded [1 1 a]");
        // Only the file's first bytes are its mark: a path that starts with one keeps it.
        row("a path's byte order mark",
            "#|\xEF\xBB\xBF"
            "a|V1||D",
            "Loaded [1 1 \uFEFFa]");
        // Ours say so on their third line, and name files in the escaped form; Melvadex's are read as text.
        row("written here", banner + "||  Written by zentoria-report scan 0.1.0 on Linux|||||a|V1||D",
            "Loaded [1 1 a] escaped");
        row("written here, names as Windows wrote them",
            banner + "||  Written by zentoria-report recheck 0.1.0 on Linux, names as Windows wrote "
                     "them|||||a|V1||D",
            "Loaded [1 1 a]");
        row("on another line", banner + "|||  Written by Zentoria 0.1.0 on Linux||||a|V1||D",
            "Loaded [1 1 a]");
    }

    void formatRules() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, expected);

        MemoryLineSource source(bytes);
        const ReportReadResult result = ReadReport(source);
        // "[ordinal kind path]" for each entry: one readable line when a comparison fails.
        QString got = outcomeName(result.Outcome);
        for (const ReportEntry& e : result.Entries) {
            got += QStringLiteral(" [%1 %2 %3]").arg(e.Ordinal).arg(kindNumber(e.Kind)).arg(e.Path);
        }
        for (qsizetype i = 0; i < result.SkippedLines.size(); ++i) {
            got += (i ? "," : " skipped ") + QString::number(result.SkippedLines[i]);
        }
        got += result.StopLine > 0 ? " stop " + QString::number(result.StopLine) : QString();
        got += result.UnreadRecords > 0 ? " unread " + QString::number(result.UnreadRecords) : QString();
        const MissingRecords& written = result.Written;
        if (written.any()) {
            got += QStringLiteral(" written: left out %1, not read %2%3")
                       .arg(written.leftOut)
                       .arg(written.notRead)
                       .arg(written.endedEarly ? ", ended early" : "");
        }
        got += result.Names == NameReading::Escaped ? " escaped" : "";
        QCOMPARE(got, expected);
    }

    void recordLimit_data() {
        addColumns<int, Outcome, int>("records", "outcome", "entries");

        addRow("32766 records", 32766, Outcome::Loaded, 32766);
        addRow("32767 records", 32767, Outcome::TooManyRecords, 32766);
        addRow("32800 records", 32800, Outcome::TooManyRecords, 32766);
    }

    void recordLimit() {
        QFETCH(int, records);
        QFETCH(Outcome, outcome);
        QFETCH(int, entries);

        ReportBuilder report = ReportBuilder().start();
        for (int i = 1; i <= records; ++i) {
            // Every tenth record empty: skipped records count towards the limit too.
            report.record(QByteArray("/music/") + QByteArray::number(i) + ".mp3",
                          i % 10 == 0 ? QByteArrayView("") : kDetailID3v2);
        }
        const QByteArray bytes = report.closing().bytes();
        MemoryLineSource source(bytes);
        const ReportReadResult result = ReadReport(source);

        QCOMPARE(outcomeName(result.Outcome), outcomeName(outcome));
        QCOMPARE(result.Entries.size(), entries - entries / 10);
        QCOMPARE(result.Entries.last().Ordinal, qint16(32766));
        if (outcome == Outcome::TooManyRecords) {
            QCOMPARE(result.StopLine, qint64(8 + 3 * 32766));
        }
        // Those past the last are counted, not read; the empty ones before it are no damage.
        QCOMPARE(result.UnreadRecords, qint64(records - entries));
    }

    void problemKindText_data() {
        addColumns<QString, QString>("key", "text");

        addRow("kind 1", "ID3v1", "ID3v1 not found");
        addRow("kind 2, capital N", "ID3v2", "ID3v2 Not found");
        addRow("list item key", "ID3v25", "ID3v2 Not found");
        addRow("entry node key of any kind", "ID3v1327", "ID3v1 not found");
        addRow("root", "Integrity", "");
        addRow("small letters", "id3v1", "");
        addRow("other kind number", "ID3v3", "");
    }

    void problemKindText() {
        QFETCH(QString, key);
        QFETCH(QString, text);
        QCOMPARE(ProblemKindText(key), text);
    }
};

QTEST_GUILESS_MAIN(tst_ReportReader)
#include "tst_reportreader.moc"
