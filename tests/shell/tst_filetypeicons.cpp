#include "TestData.h"
#include "shell/DrawnFileIcons.h"
#include "shell/FileTypeIcons.h"

#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>

using namespace zentoria;

namespace {

// The per-user data folder of this run: a MIME package that gives MP3 files icon names of its own, and
// three icon themes: one with the type's icon, one with only the generic one, one with neither.
QTemporaryDir& dataHome() {
    static QTemporaryDir folder;
    return folder;
}

void writeTheme(const QString& name, const QList<std::pair<QString, QColor>>& icons) {
    const QString theme = dataHome().filePath("icons/" + name);
    writeFile(theme + "/index.theme",
              "[Icon Theme]\nName=" + name.toUtf8() +
                  "\nDirectories=32x32/mimetypes\n\n[32x32/mimetypes]\nSize=32\nType=Fixed\n");
    for (const auto& [icon, colour] : icons) {
        QImage image(32, 32, QImage::Format_ARGB32);
        image.fill(colour);
        QDir().mkpath(theme + "/32x32/mimetypes");
        image.save(theme + "/32x32/mimetypes/" + icon + ".png");
    }
}

void prepareDataHome() {
    qputenv("XDG_DATA_HOME", dataHome().path().toLocal8Bit());
    QDir().mkpath(dataHome().filePath("mime/packages"));
    QFile::copy(dataFile("mime/test-audio.xml"), dataHome().filePath("mime/packages/test-audio.xml"));
    writeTheme("full", {{"test-mp3", Qt::red},
                        {"audio-x-mpegurl", Qt::blue},
                        {"test-audio", Qt::green},
                        {"audio-x-generic", Qt::green}});
    writeTheme("generic", {{"test-audio", Qt::green}, {"audio-x-generic", Qt::green}});
    writeTheme("bare", {});
}

} // namespace

class tst_FileTypeIcons : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        // Only the themes of this run, none of the machine's.
        QIcon::setThemeSearchPaths({dataHome().filePath("icons")});
        QIcon::setFallbackSearchPaths({});
    }

    void icon_data() {
        // No colour: the program draws the icon itself.
        addColumns<QString, QString, QColor>("theme", "extension", "colour");

        addRow("the type's own icon, from the user's MIME package", "full", ".mp3", QColor(Qt::red));
        addRow("MP3 in capitals", "full", ".MP3", QColor(Qt::red));
        addRow("the playlist's own icon", "full", ".m3u", QColor(Qt::blue));
        addRow("the generic icon next", "generic", ".mp3", QColor(Qt::green));
        addRow("the program's own MP3 icon", "bare", ".mp3", QColor());
        addRow("the program's own playlist icon", "bare", ".m3u", QColor());
    }

    void icon() {
        QFETCH(QString, theme);
        QFETCH(QString, extension);
        QFETCH(QColor, colour);

        QIcon::setThemeName(theme);
        const QIcon icon = fileTypeIcon(extension);
        QVERIFY(!icon.isNull());
        if (!colour.isValid()) {
            QVERIFY(IconToPicture(GetDefaultIcon(extension)).isNull());
            const DrawnFile file = extension == ".mp3" ? DrawnFile::Mp3 : DrawnFile::Playlist;
            QCOMPARE(icon.pixmap(32, 32).toImage(), drawnFileIcon(file).pixmap(32, 32).toImage());
            // Drawn for every size asked for, not scaled from one.
            for (int size : {16, 32, 48}) {
                QCOMPARE(icon.pixmap(size, size).size(), QSize(size, size));
            }
        } else {
            QCOMPARE(icon.pixmap(32, 32).toImage().pixelColor(16, 16), colour);
        }
    }
};

int main(int argc, char** argv) {
    prepareDataHome();
    QGuiApplication app(argc, argv);
    tst_FileTypeIcons test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_filetypeicons.moc"
