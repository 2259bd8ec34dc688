#include "TestData.h"
#include "settings/Conversions.h"
#include "settings/Globals.h"
#include "settings/IniReader.h"
#include "settings/LanguageCatalog.h"
#include "settings/Preferences.h"
#include "settings/SettingsStore.h"
#include "settings/Texts.h"

#include <QRandomGenerator>
#include <QSettings>
#include <QTemporaryDir>

using namespace zentoria;

namespace {

// Bytes of every value, NULs and line breaks included, the same on every run.
QByteArray junk(int size) {
    QList<quint32> words(size / 4 + 1);
    QRandomGenerator(13).fillRange(words.data(), words.size());
    return QByteArray(reinterpret_cast<const char*>(words.constData()), size);
}

} // namespace

class tst_Settings : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        // A fresh per-user folder for every test: each starts as a first run, and none sees the real home.
        m_home = std::make_unique<QTemporaryDir>();
        qputenv("XDG_CONFIG_HOME", m_home->path().toLocal8Bit());
    }

    // Reading creates nothing; a value written lands in its program's own file, in the section's group.
    void storedWhereItBelongs() {
        read(settings::Language);
        read(settings::Width);
        QVERIFY(QDir(m_home->path()).isEmpty());
        for (const auto& [setting, file] : {std::pair{&settings::Language, QString("Melvadex/Melvadex.conf")},
                                            {&settings::Width, thisProgram() + ".conf"}}) {
            write(*setting, "a value");
            QCOMPARE(read(*setting), "a value");
            QSettings stored(m_home->filePath(file), QSettings::IniFormat);
            QCOMPARE(stored.value(setting->section + u'/' + setting->key).toString(), "a value");
        }
    }

    void conversions_data() {
        // Each case "text=value"; "none" when the text does not convert.
        addColumns<QString, QString, QString>("to", "text", "value");
        const auto rows = [](const char* to, std::initializer_list<QString> cases) {
            for (const QString& textAndValue : cases) {
                const QString text = textAndValue.section(u'=', 0, 0);
                QTest::addRow("%s: \"%s\"", to, qPrintable(text))
                    << QString(to) << text << textAndValue.section(u'=', 1);
            }
        };
        rows("int32", {"3000=3000", "  3000 =3000", "2500.5=2500", "2501.5=2502", "-2.5=-2",
                       "2147483648=none", "3e3=3000", "wide=none", "=none", "inf=none"});
        rows("boolean", {"0=false", "-1=true", "0.5=true", "True=true", "False=false", "yes=none"});
        rows("single", {"45.25=45.25", "-120=-120", "1e39=none"});
    }

    void conversions() {
        QFETCH(QString, to);
        QFETCH(QString, text);
        QFETCH(QString, value);

        QString converted = "none";
        if (const auto number = toInt32(text); to == "int32" && number) {
            converted = QString::number(*number);
        } else if (const auto flag = toBoolean(text); to == "boolean" && flag) {
            converted = *flag ? "true" : "false";
        } else if (const auto single = toSingle(text); to == "single" && single) {
            converted = fromSingle(*single);
            QCOMPARE(toSingle(converted), single); // what we write reads back
        }
        QCOMPARE(converted, value);
    }

    void damagedFileKeepsWhatCanBeRead() {
        const QString path = settingsFilePath(thisProgram());
        const QByteArray damaged =
            "[Preferences]\nWebStyle=0\nInitial%20TV%20Width=" + junk(64) + "\n" + junk(4000);
        writeFile(path, damaged);

        // What can be read is read; what cannot gives the default.
        QCOMPARE(readBoolean(settings::WebStyle), false);
        QCOMPARE(readInt32(settings::InitialTVWidth), 3000);

        write(settings::Width, "9000");
        QCOMPARE(read(settings::Width), QStringLiteral("9000"));
        QCOMPARE(readBoolean(settings::WebStyle), false);
        // The damaged file stays beside the new one, byte for byte, and nothing half-written is left.
        QCOMPARE(contentsOf(path + ".damaged"), damaged);
        QCOMPARE(QDir(m_home->path()).entryList(QDir::Files | QDir::Hidden),
                 (QStringList{thisProgram() + ".conf", thisProgram() + ".conf.damaged"}));

        // The rewritten file is sound: the next write keeps no second copy.
        QFile::remove(path + ".damaged");
        write(settings::Width, "9100");
        QVERIFY(!QFile::exists(path + ".damaged"));
    }

    void unwritableFolder() {
        // A config folder that cannot be made, since a plain file stands where it would be. (A read-only
        // folder would do, but the tests may run as root, whom permissions do not stop.)
        writeFile(m_home->filePath("plain"), "not a folder");
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_home->filePath("plain/config")));

        write(settings::InitialTVWidth, "2000");
        saveClosingState(2000, {1, 2, 3, 4}, false);
        QCOMPARE(readInt32(settings::InitialTVWidth), 3000);
        QCOMPARE(readPlacement(), WindowPlacement());
        QCOMPARE(contentsOf(m_home->filePath("plain")), QByteArray("not a folder"));
    }

    // The language file: its INI reading, the catalog's lookups, and where the file is found.
    void iniSemantics_data() {
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

    void iniSemantics() {
        QFETCH(QString, section);
        QFETCH(QString, key);
        QFETCH(QString, value);
        QCOMPARE(readIniString(dataFile("tricky.ini"), section, key, "<default>"), value);
    }

    void catalogLookups_data() {
        addColumns<QString, QString, QString, QString, QString>("file", "section", "key", "raw",
                                                                "translated");

        addRow("quoted value with blanks", "tricky.ini", "Status", "PluralSelected",
               "  Dateien ausgewählt.  ", "Dateien ausgewählt.");
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

    void catalogLookups() {
        QFETCH(QString, file);
        QFETCH(QString, section);
        QFETCH(QString, key);
        QFETCH(QString, raw);
        QFETCH(QString, translated);

        globals().LanguageFile = file.startsWith('/') ? file : dataFile(file.toLatin1().constData());
        QCOMPARE(ReadIniValue(section, key, "  &Default "), raw);
        QCOMPARE(Translate(section, key, "  &Default "), translated);
    }

    // Every text of the program's own has its English wording, a German one in Deutsch.ini, and a line
    // in English.ini that says what the program says without it.
    void everyTextIsTranslated() {
        for (const TextKey& text : allTexts()) {
            const QString section = QLatin1StringView(text.section), key = QLatin1StringView(text.key);
            const QString where = section + u'/' + key;
            // The translator's credit is the one text English has none of.
            QVERIFY2(*text.english || section == u"TranslationInfo", qPrintable(where));
            globals().LanguageFile = dataFile("../../examples/languages/Deutsch.ini");
            QVERIFY2(!ReadIniValue(section, key, {}).isEmpty(), qPrintable(where));
            globals().LanguageFile = dataFile("../../examples/languages/English.ini");
            QVERIFY2(ReadIniValue(section, key, QStringLiteral("\x01")) != u"\x01", qPrintable(where));
            QCOMPARE(uiText(text), QString::fromUtf8(text.english));
        }
    }

    void languageFileOfAnInstalledProgram_data() {
        // Not installed: the file beside the program, whether there or missing.
        addColumns<QString, bool>("setting", "installed");

        addRow("a name the data folders have", "Zentoria-Test-Language.ini", true);
        addRow("a relative name: its file name counts", "languages/Zentoria-Test-Language.ini", true);
        addRow("beside the program first", "TestData-Beside.ini", false);
        addRow("nowhere", "Klingon.ini", false);
        addRow("no setting", "", false);
    }

    void languageFileOfAnInstalledProgram() {
        QFETCH(QString, setting);
        QFETCH(bool, installed);

        QTemporaryDir data;
        const QString installedFile = data.filePath("zentoria/languages/Zentoria-Test-Language.ini");
        const QString beside = GetAppPath() + "/TestData-Beside.ini";
        QVERIFY(writeFile(installedFile, {}) && writeFile(beside, {}));
        qputenv("XDG_DATA_DIRS", data.path().toLocal8Bit() + ":/usr/share");

        const QString file = languageFileFor(setting);
        QFile::remove(beside);
        QCOMPARE(file, installed ? installedFile : GetAppPath() + '/' + setting);
    }

    // Texts that hold paths are taken as typed: Qt's own dialect would undo backslashes, make a list at
    // commas and cut at semicolons. An empty line means the program writes the value itself.
    void textsAreKeptAsTyped_data() {
        addColumns<QByteArray, QString>("line", "value");
        const auto row = [](const char* name, const char* line, const char* value) {
            addRow(name, QByteArray(line), QString::fromUtf8(value));
        };
        row("path map written by the program", "", "C:\\Music=/media/music");
        row("path map typed", "PathMap=C:\\Music=/media/music", "C:\\Music=/media/music");
        row("path map typed, doubled", "PathMap=C:\\\\Music=/m", "C:\\Music=/m");
        row("path map written, quotes", "", "%|D:=/a%7Cb \"q\" ; x, y ");
        row("language, comma", "Language=Deutsch, neu.ini", "Deutsch, neu.ini");
        row("language, semicolon", "Language=Deutsch;2.ini", "Deutsch;2.ini");
        row("language, backslashes", "Language=Languages\\Deutsch.ini", "Languages\\Deutsch.ini");
        row("language, blanks around", "Language =  English.ini  ", "English.ini");
        row("language, non-ASCII", "Language=Fran\u00E7ais.ini", "Fran\u00E7ais.ini");
    }

    void textsAreKeptAsTyped() {
        QFETCH(QByteArray, line);
        QFETCH(QString, value);
        const bool language = line.startsWith("Language");

        const Setting& setting = language ? settings::Language : settings::PathMap;
        if (line.isEmpty()) {
            write(setting, value);
        } else {
            // The other program's file has Windows line ends.
            const QByteArray end = language ? "\r\n" : "\n";
            QVERIFY(writeFile(settingsFilePath(language ? "Melvadex" : thisProgram()),
                              "[Preferences]" + end + line + end));
        }
        QCOMPARE(language ? read(setting) : readPathText(setting), value);
        QVERIFY(isStored(setting));
    }

private:
    std::unique_ptr<QTemporaryDir> m_home;
};

QTEST_GUILESS_MAIN(tst_Settings)
#include "tst_settings.moc"
