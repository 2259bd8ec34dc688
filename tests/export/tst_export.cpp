#include "TestData.h"
#include "export/ExportWriter.h"
#include "export/FileMatcher.h"
#include "export/PathMapping.h"
#include "export/TagEditorCommand.h"

#include <QBuffer>
#include <QTest>

using namespace zentoria;

class tst_Export : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void parseMapping_data();
    void parseMapping();
    void mapPath_data();
    void mapPath();
    void commonFolder_data();
    void commonFolder();
    void formats_data();
    void formats();
    void formatOfFileName_data();
    void formatOfFileName();
    void matching_data();
    void matching();
    void tagEditorStarts_data();
    void tagEditorStarts();
};

void tst_Export::parseMapping_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QString>("windowsFolder");
    QTest::addColumn<QString>("localFolder");

    addRow("plain", "C:\\Music=/media/music", true, "C:\\Music", "/media/music");
    addRow("trailing separators", "C:\\Music\\=/media/music/", true, "C:\\Music", "/media/music");
    addRow("slashes in the Windows folder", "C:/Music=/media/music", true, "C:\\Music", "/media/music");
    addRow("drive root", "D:\\=/mnt/d", true, "D:", "/mnt/d");
    addRow("equals sign in the Windows folder", "C:\\A=B=/x", true, "C:\\A=B", "/x");
    addRow("local root", "C:\\Music=/", true, "C:\\Music", "/");
    addRow("empty: no mapping", "  ", true, "", "");
    addRow("relative local folder", "C:\\Music=music", false, "", "");
    addRow("no Windows folder", "=/media/music", false, "", "");
    addRow("no separator", "C:\\Music", false, "", "");
}

void tst_Export::parseMapping() {
    QFETCH(QString, text);
    QFETCH(bool, valid);
    QFETCH(QString, windowsFolder);
    QFETCH(QString, localFolder);

    const std::optional<PathMapping> mapping = PathMapping::parse(text);
    QCOMPARE(mapping.has_value(), valid);
    if (valid) {
        QCOMPARE(mapping->windowsFolder, windowsFolder);
        QCOMPARE(mapping->localFolder, localFolder);
        // What is stored reads back the same.
        QCOMPARE(PathMapping::parse(mapping->toText())->toText(), mapping->toText());
    }
}

void tst_Export::mapPath_data() {
    QTest::addColumn<QString>("mapping");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("mapped");

    addRow("inside", "C:\\Music=/media/music", "C:\\Music\\Abba\\SOS.mp3", "/media/music/Abba/SOS.mp3");
    addRow("letter case aside", "c:\\music=/media/music", "C:\\MUSIC\\Björk\\Jóga.mp3",
           "/media/music/Björk/Jóga.mp3");
    addRow("a folder that only starts the same", "C:\\Music=/media/music", "C:\\Musical\\Cats.mp3",
           "C:\\Musical\\Cats.mp3");
    addRow("another drive", "C:\\Music=/media/music", "D:\\Music\\a.mp3", "D:\\Music\\a.mp3");
    addRow("blanks around the path", "C:\\Music=/m", "  C:\\Music\\Help.mp3  ", "/m/Help.mp3");
    addRow("drive root", "D:\\=/mnt/d", "D:\\Track.mp3", "/mnt/d/Track.mp3");
    addRow("to the root", "C:\\Music=/", "C:\\Music\\a\\b.mp3", "/a/b.mp3");
    addRow("no mapping", "", "C:\\Music\\a.mp3", "C:\\Music\\a.mp3");
}

void tst_Export::mapPath() {
    QFETCH(QString, mapping);
    QFETCH(QString, path);
    QFETCH(QString, mapped);
    QCOMPARE(PathMapping::parse(mapping)->map(path), mapped);
}

void tst_Export::commonFolder_data() {
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<QString>("folder");

    addRow("one file", QStringList{"C:\\Music\\Abba\\SOS.mp3"}, "C:\\Music\\Abba");
    addRow("shared folder", QStringList{"C:\\Music\\Abba\\SOS.mp3", "c:\\music\\Queen\\x.mp3"}, "C:\\Music");
    addRow("names that start the same", QStringList{"C:\\Music\\a.mp3", "C:\\Musical\\b.mp3"}, "C:\\");
    addRow("other drives left out", QStringList{"C:\\Music\\A\\a.mp3", "D:\\c.mp3", "C:\\Music\\B\\b.mp3"},
           "C:\\Music");
    addRow("share", QStringList{"\\\\nas\\music\\a.mp3", "\\\\nas\\music\\b\\c.mp3"}, "\\\\nas\\music");
    addRow("no folder", QStringList{"a.mp3"}, "");
    addRow("nothing", QStringList(), "");
}

void tst_Export::commonFolder() {
    QFETCH(QStringList, paths);
    QFETCH(QString, folder);
    QCOMPARE(commonWindowsFolder(paths), folder);
}

namespace {

QList<ReportEntry> exportEntries() {
    return {{1, ProblemKind::ID3v2, QStringLiteral("C:\\Music\\Abba\\SOS.mp3")},
            {2, ProblemKind::ID3v1, QStringLiteral("C:\\Music\\Crosby, Stills & Nash\\Suite.mp3")},
            {4, ProblemKind::ID3v0, QStringLiteral("C:\\Music\\\"Live\"\nTake 2.mp3")},
            {7, ProblemKind::ID3v2, QStringLiteral("D:\\Björk\\Jóga.mp3")}};
}

} // namespace

void tst_Export::formats_data() {
    QTest::addColumn<ExportFormat>("format");
    QTest::addColumn<QString>("mapping");
    QTest::addColumn<QByteArray>("expected");

    addRow("playlist", ExportFormat::M3u8, "C:\\Music=/media/music",
           QByteArray("#EXTM3U\n"
                      "#EXTINF:-1,SOS.mp3\n/media/music/Abba/SOS.mp3\n"
                      "#EXTINF:-1,Suite.mp3\n/media/music/Crosby, Stills & Nash/Suite.mp3\n"
                      "#EXTINF:-1,\"Live\"\nTake 2.mp3\n/media/music/\"Live\"\nTake 2.mp3\n"
                      "#EXTINF:-1,J\xC3\xB3ga.mp3\nD:\\Bj\xC3\xB6rk\\J\xC3\xB3ga.mp3\n"));
    addRow("csv", ExportFormat::Csv, "",
           QByteArray("Ordinal,Kind,Problem,Path\r\n"
                      "1,ID3v2,ID3v2 Not found,C:\\Music\\Abba\\SOS.mp3\r\n"
                      "2,ID3v1,ID3v1 not found,\"C:\\Music\\Crosby, Stills & Nash\\Suite.mp3\"\r\n"
                      "4,ID3v0,No ID3 tags,\"C:\\Music\\\"\"Live\"\"\nTake 2.mp3\"\r\n"
                      "7,ID3v2,ID3v2 Not found,D:\\Bj\xC3\xB6rk\\J\xC3\xB3ga.mp3\r\n"));
    addRow("text", ExportFormat::Text, "D:\\=/mnt/d",
           QByteArray("C:\\Music\\Abba\\SOS.mp3\n"
                      "C:\\Music\\Crosby, Stills & Nash\\Suite.mp3\n"
                      "C:\\Music\\\"Live\"\nTake 2.mp3\n"
                      "/mnt/d/Bj\xC3\xB6rk/J\xC3\xB3ga.mp3\n"));
}

void tst_Export::formats() {
    QFETCH(ExportFormat, format);
    QFETCH(QString, mapping);
    QFETCH(QByteArray, expected);

    QBuffer out;
    QVERIFY(out.open(QIODevice::WriteOnly));
    ExportWriter writer(out, format, *PathMapping::parse(mapping));
    writer.begin();
    for (const ReportEntry& entry : exportEntries()) {
        writer.add(entry);
    }
    QCOMPARE(out.data(), expected);
}

void tst_Export::formatOfFileName_data() {
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<int>("format"); // -1: none

    addRow("m3u8", "/tmp/a.m3u8", int(ExportFormat::M3u8));
    addRow("m3u", "/tmp/a.M3U", int(ExportFormat::M3u8));
    addRow("csv", "/tmp/list.CSV", int(ExportFormat::Csv));
    addRow("txt", "/tmp/a.b.txt", int(ExportFormat::Text));
    addRow("other", "/tmp/a.pls", -1);
    addRow("none", "/tmp/list", -1);
    addRow("dot in a folder only", "/tmp/x.csv/list", -1);
}

void tst_Export::formatOfFileName() {
    QFETCH(QString, fileName);
    QFETCH(int, format);
    const std::optional<ExportFormat> found = zentoria::formatOfFileName(fileName);
    QCOMPARE(found ? int(*found) : -1, format);
}

void tst_Export::matching_data() {
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("matches");

    addRow("part, letter case aside", "abba", "C:\\Music\\ABBA\\SOS.mp3", true);
    addRow("part missing", "queen", "C:\\Music\\Abba\\SOS.mp3", false);
    addRow("non-ASCII letter case", "BJÖRK", "D:\\Björk\\Jóga.mp3", true);
    addRow("blanks around the pattern", "  sos ", "C:\\Music\\Abba\\SOS.mp3", true);
    addRow("wildcard over the path", "c:\\music\\*\\s?s.mp3", "C:\\Music\\Abba\\SOS.mp3", true);
    addRow("wildcard on the file name", "track??.mp3", "D:\\x\\Track01.mp3", true);
    addRow("wildcard: one character is one", "track?.mp3", "D:\\x\\Track01.mp3", false);
    addRow("wildcard is whole, not part", "*.mp", "D:\\x\\Track01.mp3", false);
    addRow("brackets are plain", "*[live]*", "C:\\a\\[Live] b.mp3", true);
    addRow("brackets are plain, no class", "*[lv]*", "C:\\a\\l.mp3", false);
    addRow("dot is plain", "a.b*", "C:\\axb.mp3", false);
    addRow("empty matches nothing", "", "C:\\a.mp3", false);
}

void tst_Export::matching() {
    QFETCH(QString, pattern);
    QFETCH(QString, path);
    QFETCH(bool, matches);
    QCOMPARE(FileMatcher(pattern).matches(path), matches);
}

void tst_Export::tagEditorStarts_data() {
    QTest::addColumn<QString>("command");
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QList<ProgramStart>>("starts"); // empty: refused

    const QStringList two{"/m/a b.mp3", "/m/c%.mp3"};
    addRow("all files", "kid3 %F", two, QList<ProgramStart>{{"kid3", two}});
    addRow("files at the end without a field", "picard --stand-alone-instance", two,
           QList<ProgramStart>{{"picard", {"--stand-alone-instance", "/m/a b.mp3", "/m/c%.mp3"}}});
    addRow("one start per file", "easytag %f", two,
           QList<ProgramStart>{{"easytag", {"/m/a b.mp3"}}, {"easytag", {"/m/c%.mp3"}}});
    addRow("URLs", "tagger %U", two,
           QList<ProgramStart>{{"tagger", {"file:///m/a%20b.mp3", "file:///m/c%25.mp3"}}});
    addRow("quoted program and argument", "\"/opt/my tagger/run\" \"--title=a \\\"b\\\"\" %F",
           QStringList{"/x.mp3"}, QList<ProgramStart>{{"/opt/my tagger/run", {"--title=a \"b\"", "/x.mp3"}}});
    addRow("percent sign and other codes dropped", "ed --ratio=50%% %i %c %F", QStringList{"/x.mp3"},
           QList<ProgramStart>{{"ed", {"--ratio=50%", "/x.mp3"}}});
    addRow("open quote", "kid3 \"%F", two, QList<ProgramStart>{});
    addRow("no program", "   ", two, QList<ProgramStart>{});
    addRow("only a field", "%F", two, QList<ProgramStart>{});
}

void tst_Export::tagEditorStarts() {
    QFETCH(QString, command);
    QFETCH(QStringList, files);
    QFETCH(QList<ProgramStart>, starts);

    QString error;
    const std::optional<QList<ProgramStart>> found = zentoria::tagEditorStarts(command, files, &error);
    if (starts.isEmpty()) {
        QVERIFY(!found);
        QVERIFY(!error.isEmpty());
        return;
    }
    QVERIFY2(found, qPrintable(error));
    QCOMPARE(found->size(), starts.size());
    for (qsizetype i = 0; i < starts.size(); ++i) {
        QCOMPARE(found->at(i).program, starts.at(i).program);
        QCOMPARE(found->at(i).arguments, starts.at(i).arguments);
    }
}

QTEST_GUILESS_MAIN(tst_Export)
#include "tst_export.moc"
