#include "TestData.h"
#include "settings/Globals.h"
#include "settings/IniReader.h"
#include "settings/LanguageCatalog.h"
#include "settings/Preferences.h"
#include "settings/SettingsStore.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace zentoria;

// The language file: its INI reading, the catalog's lookups, and where the file is found.
class tst_Language : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void iniSemantics_data();
    void iniSemantics();
    void catalogLookups_data();
    void catalogLookups();
    void languageFileOfAnInstalledProgram_data();
    void languageFileOfAnInstalledProgram();
    void melvadexLanguageIsPlainText_data();
    void melvadexLanguageIsPlainText();

private:
    std::unique_ptr<QTemporaryDir> m_home;
};

void tst_Language::init() {
    m_home = std::make_unique<QTemporaryDir>();
    qputenv("XDG_CONFIG_HOME", m_home->path().toLocal8Bit());
}

void tst_Language::iniSemantics_data() {
    addColumns<QString, QString, QString>("section", "key", "value");

    addRow("plain", "Menus", "File", "&Datei");
    addRow("section and key in other case", "menus", "FILE", "&Datei");
    addRow("blanks around key and value", "Menus", "Tools", "&Extras");
    addRow("tabs around key and value", "Menus", "Help", "&Hilfe");
    addRow("key looked up with blanks", "Menus", " Help ", "&Hilfe");
    addRow("double quotes removed, blanks inside kept", "Menus", "Quoted", "  quoted value  ");
    addRow("single quotes removed", "Menus", "Single", "single");
    addRow("mismatched quotes kept", "Menus", "Mismatched", "\"half'");
    addRow("a lone quote kept", "Menus", "OnlyOpen", "\"");
    addRow("empty value", "Menus", "Empty", "");
    addRow("blank value", "Menus", "Blank", "");
    addRow("line without equals sign", "Menus", "No equals sign here", "<default>");
    addRow("commented key", "Menus", ";Commented", "<default>");
    addRow("no inline comments", "Menus", "Inline", "value ; not a comment");
    addRow("second equals sign in the value", "Menus", "Equals", "a=b");
    addRow("first duplicate key wins", "Menus", "File", "&Datei");
    addRow("first duplicate section wins", "Menus", "Extra", "<default>");
    addRow("blanks inside brackets ignored", "OptionMenus", "Open", "Ö&ffnen");
    addRow("key outside any section", "", "key outside", "<default>");
    addRow("missing key", "Menus", "Nothing", "<default>");
    addRow("missing section", "Splash", "OkButton", "<default>");
    addRow("cut at 199 characters", "Menus", "Long", QString(199, u'x'));
}

void tst_Language::iniSemantics() {
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QCOMPARE(readIniString(dataFile("tricky.ini"), section, key, "<default>"), value);
}

void tst_Language::catalogLookups_data() {
    addColumns<QString, QString, QString, QString, QString>("file", "section", "key", "raw", "translated");

    addRow("quoted value with blanks", "tricky.ini", "Status", "PluralSelected", "  Dateien ausgewählt.  ",
           "Dateien ausgewählt.");
    addRow("present but empty: no default", "tricky.ini", "Menus", "Empty", "", "");
    addRow("missing: the default", "tricky.ini", "Menus", "Missing", "  &Default ", "&Default");
    addRow("250 characters", "tricky.ini", "Menus", "Long", QString(199, u'x'), QString(199, u'x'));
    addRow("Windows-1252 file", "cp1252.ini", "OptionMenus", "Exit", "Schließen", "Schließen");
    addRow("missing file", "nothing.ini", "Menus", "File", "  &Default ", "&Default");
    // No "Language" setting makes the language file the program's folder.
    addRow("a folder", "", "Menus", "File", "  &Default ", "&Default");
    // Reading a device (or a pipe nobody writes to) would never end.
    addRow("a device", "/dev/zero", "Menus", "File", "  &Default ", "&Default");
}

void tst_Language::catalogLookups() {
    QFETCH(QString, file);
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, raw);
    QFETCH(QString, translated);

    globals().LanguageFile = file.startsWith('/') ? file : dataFile(file.toLatin1().constData());
    QCOMPARE(ReadIniValue(section, key, "  &Default "), raw);
    QCOMPARE(Translate(section, key, "  &Default "), translated);
}

void tst_Language::languageFileOfAnInstalledProgram_data() {
    // "found": "beside", "installed", or "missing".
    addColumns<QString, QString>("setting", "found");

    addRow("a name the data folders have", "Zentoria-Test-Language.ini", "installed");
    addRow("a relative name: its file name counts", "languages/Zentoria-Test-Language.ini", "installed");
    addRow("beside the program first", "TestData-Beside.ini", "beside");
    addRow("nowhere", "Klingon.ini", "missing");
    addRow("no setting", "", "beside");
}

void tst_Language::languageFileOfAnInstalledProgram() {
    QFETCH(QString, setting);
    QFETCH(QString, found);

    QTemporaryDir data;
    const QString installed = data.filePath("zentoria/languages/Zentoria-Test-Language.ini");
    const QString beside = GetAppPath() + "/TestData-Beside.ini";
    QVERIFY(writeFile(installed, {}) && writeFile(beside, {}));
    qputenv("XDG_DATA_DIRS", data.path().toLocal8Bit() + ":/usr/share");

    const QString file = languageFileFor(setting);
    QFile::remove(beside);
    if (found == "installed") {
        QCOMPARE(file, installed);
    } else {
        QCOMPARE(file, GetAppPath() + '/' + setting);
    }
}

void tst_Language::melvadexLanguageIsPlainText_data() {
    addColumns<QByteArray, QString>("line", "language");

    // Qt's own dialect would make a list of the first two and cut the third at the semicolon.
    addRow("comma", QByteArray("Language=Deutsch, neu.ini"), "Deutsch, neu.ini");
    addRow("semicolon", QByteArray("Language=Deutsch;2.ini"), "Deutsch;2.ini");
    addRow("backslashes", QByteArray("Language=Languages\\Deutsch.ini"), "Languages\\Deutsch.ini");
    addRow("blanks around", QByteArray("Language =  English.ini  "), "English.ini");
    addRow("non-ASCII",
           QByteArray("Language=Fran\xC3\xA7"
                      "ais.ini"),
           QStringLiteral("Fran\u00E7ais.ini"));
}

void tst_Language::melvadexLanguageIsPlainText() {
    QFETCH(QByteArray, line);
    QFETCH(QString, language);

    QVERIFY(writeFile(settingsFilePath("Melvadex"), "[Preferences]\r\n" + line + "\r\n"));
    QCOMPARE(read(settings::Language), language);
}

QTEST_GUILESS_MAIN(tst_Language)
#include "tst_language.moc"
