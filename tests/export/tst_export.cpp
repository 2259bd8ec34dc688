#include "TestData.h"
#include "export/PathMapping.h"
#include "export/TagEditorCommand.h"

using namespace zentoria;

class tst_Export : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void parseMapping_data() {
        addColumns<QString, bool, QString, QString>("text", "valid", "windowsFolder", "localFolder");

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

    void parseMapping() {
        QFETCH(QString, text);
        QFETCH(bool, valid);
        QFETCH(QString, windowsFolder);
        QFETCH(QString, localFolder);

        const std::optional<PathMapping> mapping = PathMapping::parse(text);
        QCOMPARE(mapping, valid ? std::optional(PathMapping{windowsFolder, localFolder}) : std::nullopt);
        if (mapping) {
            // What is stored reads back the same.
            QCOMPARE(PathMapping::parse(mapping->toText()), mapping);
        }
    }

    void mapPath_data() {
        addColumns<QString, QString, QString>("mapping", "path", "mapped");

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

    void mapPath() {
        QFETCH(QString, mapping);
        QFETCH(QString, path);
        QFETCH(QString, mapped);
        const PathMapping parsed = *PathMapping::parse(mapping);
        QCOMPARE(parsed.map(path), mapped);
        // Mapped back, a file is named as Windows names it, the folder as the mapping writes it.
        if (mapped.startsWith(u'/')) {
            QCOMPARE(parsed.windowsPath(mapped).toLower(), path.trimmed().toLower());
        }
    }

    void commonFolder_data() {
        addColumns<QStringList, QString>("paths", "folder");

        addRow("one file", QStringList{"C:\\Music\\Abba\\SOS.mp3"}, "C:\\Music\\Abba");
        addRow("shared folder", QStringList{"C:\\Music\\Abba\\SOS.mp3", "c:\\music\\Queen\\x.mp3"},
               "C:\\Music");
        addRow("names that start the same", QStringList{"C:\\Music\\a.mp3", "C:\\Musical\\b.mp3"}, "C:\\");
        addRow("other drives left out",
               QStringList{"C:\\Music\\A\\a.mp3", "D:\\c.mp3", "C:\\Music\\B\\b.mp3"}, "C:\\Music");
        addRow("share", QStringList{"\\\\nas\\music\\a.mp3", "\\\\nas\\music\\b\\c.mp3"}, "\\\\nas\\music");
        addRow("no folder", QStringList{"a.mp3"}, "");
        addRow("nothing", QStringList(), "");
    }

    void commonFolder() {
        QFETCH(QStringList, paths);
        QFETCH(QString, folder);
        QCOMPARE(commonWindowsFolder(paths), folder);
    }

    void mappingsText_data() {
        // The folders, Windows and local in turn; none when the text is refused. Each text is the one
        // its mappings are stored as.
        addColumns<QString, QStringList>("text", "folders");

        addRow("plain", "C:\\Music=/m|D:=/mnt/d", QStringList{"C:\\Music", "/m", "D:", "/mnt/d"});
        addRow("escaped where a name needs it", "%|C:\\A%3DB=/a%7Cb|D:\\x=/100%25 & \"q\" ",
               QStringList{"C:\\A=B", "/a|b", "D:\\x", "/100% & \"q\" "});
        addRow("escaped, but split wrong", "%|C:\\A=/b=/c", QStringList());
    }

    void mappingsText() {
        QFETCH(QString, text);
        QFETCH(QStringList, folders);
        const PathMappings read = PathMappings::parse(text).value_or(PathMappings{});
        QStringList found;
        for (const PathMapping& one : read.list) {
            found << one.windowsFolder << one.localFolder;
        }
        QCOMPARE(found, folders);
        QCOMPARE(read.toText(), folders.isEmpty() ? QString() : text);
    }

    void distinctPaths() {
        // One file, however its paths write it, is handed on once, as first written.
        QCOMPARE(
            distinctWindowsPaths({"C:\\Music\\a.mp3", "c:\\MUSIC\\A.MP3", " C:\\Music\\a.mp3 ", "C:\\b.mp3"}),
            (QStringList{"C:\\Music\\a.mp3", "C:\\b.mp3"}));
    }

    void tagEditorStarts_data() {
        // An empty expectation means the text is refused.
        addColumns<QString, QStringList, QList<ProgramStart>>("command", "files", "starts");

        const QStringList two{"/m/a b.mp3", "/m/c%.mp3"};
        addRow("all files", "kid3 %F", two, QList<ProgramStart>{{"kid3", two}});
        addRow("files at the end without a field", "picard --stand-alone-instance", two,
               QList<ProgramStart>{{"picard", {"--stand-alone-instance", "/m/a b.mp3", "/m/c%.mp3"}}});
        addRow("one start per file", "easytag %f", two,
               QList<ProgramStart>{{"easytag", {"/m/a b.mp3"}}, {"easytag", {"/m/c%.mp3"}}});
        addRow("URLs", "tagger %U", two,
               QList<ProgramStart>{{"tagger", {"file:///m/a%20b.mp3", "file:///m/c%25.mp3"}}});
        addRow("quoted program and argument", "\"/opt/my tagger/run\" \"--title=a \\\"b\\\"\" %F",
               QStringList{"/x.mp3"},
               QList<ProgramStart>{{"/opt/my tagger/run", {"--title=a \"b\"", "/x.mp3"}}});
        addRow("percent sign and other codes dropped", "ed --ratio=50%% %i %c %F", QStringList{"/x.mp3"},
               QList<ProgramStart>{{"ed", {"--ratio=50%", "/x.mp3"}}});
        addRow("open quote", "kid3 \"%F", two, QList<ProgramStart>{});
        addRow("no program", "   ", two, QList<ProgramStart>{});
        addRow("only a field", "%F", two, QList<ProgramStart>{});
    }

    void tagEditorStarts() {
        QFETCH(QString, command);
        QFETCH(QStringList, files);
        QFETCH(QList<ProgramStart>, starts);

        QString error;
        const std::optional<QList<ProgramStart>> found = zentoria::tagEditorStarts(command, files, &error);
        QVERIFY2(found.has_value() != starts.isEmpty(), qPrintable(error));
        QVERIFY(found || !error.isEmpty());
        QCOMPARE(found.value_or(QList<ProgramStart>{}), starts);
    }
};

QTEST_GUILESS_MAIN(tst_Export)
#include "tst_export.moc"
