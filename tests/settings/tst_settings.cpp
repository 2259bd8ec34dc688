#include "TestData.h"
#include "settings/Conversions.h"
#include "settings/Globals.h"
#include "settings/IniReader.h"
#include "settings/LanguageCatalog.h"
#include "settings/Preferences.h"
#include "settings/SettingsStore.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace zentoria;

Q_DECLARE_METATYPE(std::optional<qint32>)
Q_DECLARE_METATYPE(std::optional<bool>)
Q_DECLARE_METATYPE(std::optional<float>)

namespace {

const Setting* const kTable[] = {
    &settings::Language,   &settings::InitialTVWidth, &settings::WebStyle, &settings::Left,
    &settings::Top,        &settings::Width,          &settings::Height,   &settings::SafeWidth,
    &settings::SafeHeight, &settings::SafeTop,        &settings::SafeLeft, &settings::SafeInitialTVWidth};

} // namespace

class tst_Settings : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void firstRun();
    void settingsTable_data();
    void settingsTable();
    void everyReadGoesToTheStore();
    void writesLeaveNoPartialFiles();
    void toInt32_data();
    void toInt32();
    void toBoolean_data();
    void toBoolean();
    void toSingle_data();
    void toSingle();
    void unreadableValuesGiveTheDefault();
    void lastSafeConfiguration();
    void repairIsBounded_data();
    void repairIsBounded();
    void iniSemantics_data();
    void iniSemantics();
    void catalogLookups_data();
    void catalogLookups();
    void catalogWithoutLanguageFile();
    void languageFileOfAnInstalledProgram_data();
    void languageFileOfAnInstalledProgram();
    void trimNulls_data();
    void trimNulls();
    void menuCatalogEntries_data();
    void menuCatalogEntries();
    void melvadexLanguageIsPlainText_data();
    void melvadexLanguageIsPlainText();
    void languageFileThatIsNoFile();
    void cutKeepsCharactersWhole_data();
    void cutKeepsCharactersWhole();
    void damagedFileKeepsWhatCanBeRead();
    void unwritableFolder();
    void pathTextKeepsBackslashes_data();
    void pathTextKeepsBackslashes();

private:
    std::unique_ptr<QTemporaryDir> m_home;
};

void tst_Settings::init() {
    // A fresh per-user folder for every test: each starts as a first run, and none sees the real home.
    m_home = std::make_unique<QTemporaryDir>();
    qputenv("XDG_CONFIG_HOME", m_home->path().toLocal8Bit());
}

void tst_Settings::cleanup() {
    m_home.reset();
}

void tst_Settings::firstRun() {
    QCOMPARE(readInt32(settings::InitialTVWidth), 3000);
    QCOMPARE(readBoolean(settings::WebStyle), true);
    QCOMPARE(readPlacement(), (WindowPlacement{45, 465, 12000, 7350}));
    QCOMPARE(read(settings::Language), QString());
    QCOMPARE(lastSafeTreeWidth(), 3000);
    // Never written, the last safe configuration matches the preferences' defaults.
    QCOMPARE(read(settings::SafeWidth), read(settings::Width));
    QCOMPARE(read(settings::SafeHeight), read(settings::Height));
    QCOMPARE(read(settings::SafeTop), read(settings::Top));
    QCOMPARE(read(settings::SafeLeft), read(settings::Left));
    QVERIFY(QDir(m_home->path()).isEmpty()); // reading creates nothing
}

void tst_Settings::settingsTable_data() {
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("defaultValue");
    QTest::addColumn<QString>("file");

    const QString own = thisProgram() + ".conf";
    const QStringList defaults{"",     "3000",  "1",    "45",  "465", "12000",
                               "7350", "12000", "7350", "465", "45",  "3000"};
    for (int row = 0; row < int(std::size(kTable)); ++row) {
        const Setting& setting = *kTable[row];
        QTest::addRow("%s / %s", qPrintable(setting.section), qPrintable(setting.key))
            << row << defaults[row] << (row == 0 ? QStringLiteral("Melvadex/Melvadex.conf") : own);
    }
}

void tst_Settings::settingsTable() {
    QFETCH(int, row);
    QFETCH(QString, defaultValue);
    QFETCH(QString, file);

    const Setting& setting = *kTable[row];
    QCOMPARE(read(setting), defaultValue);
    write(setting, "value of row " + QString::number(row));
    QCOMPARE(read(setting), "value of row " + QString::number(row));

    // The value sits in the application's own file, in the section's group, under the key.
    QSettings stored(m_home->filePath(file), QSettings::IniFormat);
    stored.beginGroup(setting.section);
    QCOMPARE(stored.value(setting.key).toString(), "value of row " + QString::number(row));
    // Writing one setting leaves the others at their defaults.
    for (const Setting* other : kTable) {
        if (other != &setting && !(other->section == setting.section && other->key == setting.key &&
                                   other->application == setting.application)) {
            QCOMPARE(read(*other), other->defaultValue);
        }
    }
}

void tst_Settings::everyReadGoesToTheStore() {
    write(settings::InitialTVWidth, "2000");
    QCOMPARE(readInt32(settings::InitialTVWidth), 2000);
    // Another program (or the user) changes the file behind our back.
    QFile file(settingsFilePath(thisProgram()));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("[Preferences]\nInitial%20TV%20Width=2750\nWebStyle=0\n");
    file.close();
    QCOMPARE(readInt32(settings::InitialTVWidth), 2750);
    QCOMPARE(readBoolean(settings::WebStyle), false);
}

void tst_Settings::writesLeaveNoPartialFiles() {
    for (int i = 0; i < 20; ++i) {
        write(settings::Width, QString::number(10000 + i));
    }
    QCOMPARE(QDir(m_home->path()).entryList(QDir::Files | QDir::Hidden),
             QStringList{thisProgram() + ".conf"});
    QCOMPARE(read(settings::Width), QStringLiteral("10019"));
}

void tst_Settings::toInt32_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<std::optional<qint32>>("value");

    QTest::newRow("integer") << "3000" << std::optional<qint32>(3000);
    QTest::newRow("blanks around") << "  3000 " << std::optional<qint32>(3000);
    QTest::newRow("half to even, down") << "2500.5" << std::optional<qint32>(2500);
    QTest::newRow("half to even, up") << "2501.5" << std::optional<qint32>(2502);
    QTest::newRow("below half") << "2500.49" << std::optional<qint32>(2500);
    QTest::newRow("negative half") << "-2.5" << std::optional<qint32>(-2);
    QTest::newRow("largest") << "2147483647" << std::optional<qint32>(2147483647);
    QTest::newRow("smallest") << "-2147483648" << std::optional<qint32>(std::numeric_limits<qint32>::min());
    QTest::newRow("too large") << "2147483648" << std::optional<qint32>();
    QTest::newRow("exponent") << "3e3" << std::optional<qint32>(3000);
    QTest::newRow("no number") << "wide" << std::optional<qint32>();
    QTest::newRow("empty") << "" << std::optional<qint32>();
    QTest::newRow("comma decimal") << "2500,5" << std::optional<qint32>();
    QTest::newRow("infinity") << "inf" << std::optional<qint32>();
}

void tst_Settings::toInt32() {
    QFETCH(QString, text);
    QFETCH(std::optional<qint32>, value);
    QCOMPARE(zentoria::toInt32(text), value);
}

void tst_Settings::toBoolean_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<std::optional<bool>>("value");

    QTest::newRow("0") << "0" << std::optional<bool>(false);
    QTest::newRow("1") << "1" << std::optional<bool>(true);
    QTest::newRow("-1") << "-1" << std::optional<bool>(true);
    QTest::newRow("fraction") << "0.5" << std::optional<bool>(true);
    QTest::newRow("True") << "True" << std::optional<bool>(true);
    QTest::newRow("False") << "False" << std::optional<bool>(false);
    QTest::newRow("small letters") << "true" << std::optional<bool>(true);
    QTest::newRow("yes") << "yes" << std::optional<bool>();
    QTest::newRow("empty") << "" << std::optional<bool>();
}

void tst_Settings::toBoolean() {
    QFETCH(QString, text);
    QFETCH(std::optional<bool>, value);
    QCOMPARE(zentoria::toBoolean(text), value);
}

void tst_Settings::toSingle_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<std::optional<float>>("value");

    QTest::newRow("whole") << "12000" << std::optional<float>(12000.0f);
    QTest::newRow("fraction") << "45.25" << std::optional<float>(45.25f);
    QTest::newRow("negative") << "-120" << std::optional<float>(-120.0f);
    QTest::newRow("beyond single") << "1e39" << std::optional<float>();
    QTest::newRow("no number") << "left" << std::optional<float>();
}

void tst_Settings::toSingle() {
    QFETCH(QString, text);
    QFETCH(std::optional<float>, value);
    QCOMPARE(zentoria::toSingle(text), value);
    if (value) {
        QCOMPARE(zentoria::toSingle(fromSingle(*value)), value); // what we write reads back
    }
}

void tst_Settings::unreadableValuesGiveTheDefault() {
    write(settings::InitialTVWidth, "wide");
    write(settings::WebStyle, "maybe");
    write(settings::Width, "big");
    write(settings::Left, "-300");
    QCOMPARE(readInt32(settings::InitialTVWidth), 3000);
    QCOMPARE(readBoolean(settings::WebStyle), true);
    QCOMPARE(readPlacement(), (WindowPlacement{-300, 465, 12000, 7350}));
    write(settings::WebStyle, "0");
    QCOMPARE(readBoolean(settings::WebStyle), false);
}

void tst_Settings::lastSafeConfiguration() {
    saveLastSafeConfiguration(2800, WindowPlacement{10, 20, 9000.5f, 6000});
    QCOMPARE(read(settings::InitialTVWidth), QStringLiteral("2800"));
    QCOMPARE(read(settings::SafeInitialTVWidth), QStringLiteral("2800"));
    QCOMPARE(read(settings::SafeWidth), QStringLiteral("9000.5"));
    QCOMPARE(read(settings::SafeHeight), QStringLiteral("6000"));
    QCOMPARE(read(settings::SafeTop), QStringLiteral("20"));
    QCOMPARE(read(settings::SafeLeft), QStringLiteral("10"));
    QCOMPARE(lastSafeTreeWidth(), 2800);
    // The preferences' placement is not part of a layout save.
    QCOMPARE(readPlacement(), WindowPlacement());

    writePlacement(WindowPlacement{1, 2, -500, 4});
    restorePlacementFromLastSafe();
    QCOMPARE(readPlacement(), (WindowPlacement{10, 20, 9000.5f, 6000}));

    // The same configuration again leaves the file as it is: a layout pass runs at every click.
    QFile file(settingsFilePath(thisProgram()));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime(QDate(2001, 1, 1), QTime(0, 0)), QFileDevice::FileModificationTime));
    file.close();
    saveLastSafeConfiguration(2800, WindowPlacement{10, 20, 9000.5f, 6000});
    QCOMPARE(QFileInfo(file).lastModified().date().year(), 2001);
    saveLastSafeConfiguration(2801, WindowPlacement{10, 20, 9000.5f, 6000});
    QVERIFY(QFileInfo(file).lastModified().date().year() > 2001);
    QCOMPARE(read(settings::SafeInitialTVWidth), QStringLiteral("2801"));
}

void tst_Settings::repairIsBounded_data() {
    QTest::addColumn<QList<StepResult>>("results");
    QTest::addColumn<bool>("repairOffers");
    QTest::addColumn<int>("steps");
    QTest::addColumn<int>("repairs");
    QTest::addColumn<StepResult>("outcome");

    using R = StepResult;
    QTest::newRow("works at once") << QList<R>{R::Done} << true << 1 << 0 << R::Done;
    QTest::newRow("repaired") << QList<R>{R::InvalidArgument, R::Done} << true << 2 << 1 << R::Done;
    QTest::newRow("fails again: no loop")
        << QList<R>{R::InvalidArgument, R::InvalidArgument, R::Done} << true << 2 << 1 << R::InvalidArgument;
    QTest::newRow("nothing to offer")
        << QList<R>{R::InvalidArgument, R::Done} << false << 1 << 1 << R::InvalidArgument;
    QTest::newRow("other failure: no repair") << QList<R>{R::Failed, R::Done} << true << 1 << 0 << R::Failed;
}

void tst_Settings::repairIsBounded() {
    QFETCH(QList<StepResult>, results);
    QFETCH(bool, repairOffers);
    QFETCH(int, steps);
    QFETCH(int, repairs);
    QFETCH(StepResult, outcome);

    int stepCalls = 0;
    int repairCalls = 0;
    const StepResult result = runRepairing([&] { return results.value(stepCalls++, StepResult::Done); },
                                           [&] {
                                               ++repairCalls;
                                               return repairOffers;
                                           });
    QCOMPARE(stepCalls, steps);
    QCOMPARE(repairCalls, repairs);
    QCOMPARE(result, outcome);
}

void tst_Settings::iniSemantics_data() {
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");

    QTest::newRow("plain") << "Menus"
                           << "File"
                           << "&Datei";
    QTest::newRow("section and key in other case") << "menus"
                                                   << "FILE"
                                                   << "&Datei";
    QTest::newRow("blanks around key and value") << "Menus"
                                                 << "Tools"
                                                 << "&Extras";
    QTest::newRow("tabs around key and value") << "Menus"
                                               << "Help"
                                               << "&Hilfe";
    QTest::newRow("key looked up with blanks") << "Menus"
                                               << " Help "
                                               << "&Hilfe";
    QTest::newRow("double quotes removed, blanks inside kept") << "Menus"
                                                               << "Quoted"
                                                               << "  quoted value  ";
    QTest::newRow("single quotes removed") << "Menus"
                                           << "Single"
                                           << "single";
    QTest::newRow("mismatched quotes kept") << "Menus"
                                            << "Mismatched"
                                            << "\"half'";
    QTest::newRow("a lone quote kept") << "Menus"
                                       << "OnlyOpen"
                                       << "\"";
    QTest::newRow("empty value") << "Menus"
                                 << "Empty"
                                 << "";
    QTest::newRow("blank value") << "Menus"
                                 << "Blank"
                                 << "";
    QTest::newRow("line without equals sign") << "Menus"
                                              << "No equals sign here"
                                              << "<default>";
    QTest::newRow("commented key") << "Menus"
                                   << ";Commented"
                                   << "<default>";
    QTest::newRow("no inline comments") << "Menus"
                                        << "Inline"
                                        << "value ; not a comment";
    QTest::newRow("second equals sign in the value") << "Menus"
                                                     << "Equals"
                                                     << "a=b";
    QTest::newRow("first duplicate key wins") << "Menus"
                                              << "File"
                                              << "&Datei";
    QTest::newRow("first duplicate section wins") << "Menus"
                                                  << "Extra"
                                                  << "<default>";
    QTest::newRow("blanks inside brackets ignored") << "OptionMenus"
                                                    << "Open"
                                                    << "Ö&ffnen";
    QTest::newRow("key outside any section") << ""
                                             << "key outside"
                                             << "<default>";
    QTest::newRow("missing key") << "Menus"
                                 << "Nothing"
                                 << "<default>";
    QTest::newRow("missing section") << "Splash"
                                     << "OkButton"
                                     << "<default>";
    QTest::newRow("cut at 199 characters") << "Menus"
                                           << "Long" << QString(199, u'x');
}

void tst_Settings::iniSemantics() {
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QCOMPARE(readIniString(dataFile("tricky.ini"), section, key, "<default>"), value);
}

void tst_Settings::catalogLookups_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("raw");
    QTest::addColumn<QString>("translated");

    QTest::newRow("quoted value with blanks") << "tricky.ini"
                                              << "Status"
                                              << "PluralSelected"
                                              << "  Dateien ausgewählt.  "
                                              << "Dateien ausgewählt.";
    QTest::newRow("present but empty: no default") << "tricky.ini"
                                                   << "Menus"
                                                   << "Empty"
                                                   << ""
                                                   << "";
    QTest::newRow("missing: the default") << "tricky.ini"
                                          << "Menus"
                                          << "Missing"
                                          << "  &Default "
                                          << "&Default";
    QTest::newRow("250 characters") << "tricky.ini"
                                    << "Menus"
                                    << "Long" << QString(199, u'x') << QString(199, u'x');
    QTest::newRow("Windows-1252 file") << "cp1252.ini"
                                       << "OptionMenus"
                                       << "Exit"
                                       << "Schließen"
                                       << "Schließen";
    QTest::newRow("missing file") << "nothing.ini"
                                  << "Menus"
                                  << "File"
                                  << "  &Default "
                                  << "&Default";
}

void tst_Settings::catalogLookups() {
    QFETCH(QString, file);
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, raw);
    QFETCH(QString, translated);

    globals().LanguageFile = dataFile(file.toLatin1().constData());
    QCOMPARE(ReadIniValue(section, key, "  &Default "), raw);
    QCOMPARE(Translate(section, key, "  &Default "), translated);
}

void tst_Settings::languageFileOfAnInstalledProgram_data() {
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QString>("found"); // "beside", "installed", or "missing"

    QTest::newRow("a name the data folders have") << "Zentoria-Test-Language.ini"
                                                  << "installed";
    QTest::newRow("a relative name: its file name counts") << "languages/Zentoria-Test-Language.ini"
                                                           << "installed";
    QTest::newRow("beside the program first") << "TestData-Beside.ini"
                                              << "beside";
    QTest::newRow("nowhere") << "Klingon.ini"
                             << "missing";
    QTest::newRow("no setting") << ""
                                << "beside";
}

void tst_Settings::languageFileOfAnInstalledProgram() {
    QFETCH(QString, setting);
    QFETCH(QString, found);

    QTemporaryDir data;
    QDir().mkpath(data.filePath("zentoria/languages"));
    QFile installed(data.filePath("zentoria/languages/Zentoria-Test-Language.ini"));
    QVERIFY(installed.open(QIODevice::WriteOnly));
    installed.close();
    QFile beside(GetAppPath() + "/TestData-Beside.ini");
    QVERIFY(beside.open(QIODevice::WriteOnly));
    beside.close();
    qputenv("XDG_DATA_DIRS", data.path().toLocal8Bit() + ":/usr/share");

    const QString file = languageFileFor(setting);
    beside.remove();
    if (found == "installed") {
        QCOMPARE(file, installed.fileName());
    } else {
        QCOMPARE(file, GetAppPath() + '/' + setting);
    }
}

void tst_Settings::catalogWithoutLanguageFile() {
    // An empty "Language" makes the language file the program's folder: every text keeps its default.
    globals().LanguageFile = GetAppPath() + u'/' + read(settings::Language);
    QVERIFY(QFileInfo(globals().LanguageFile).isDir());
    QCOMPARE(Translate("Menus", "File", "&File"), QStringLiteral("&File"));
    QCOMPARE(Translate("TranslationInfo", "TranslatedBy", ""), QString());
}

void tst_Settings::trimNulls_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("trimmed");

    QTest::newRow("trailing NULs") << QString::fromUtf16(u"ab\0\0", 4) << "ab";
    QTest::newRow("NUL inside kept") << QString::fromUtf16(u"a\0b\0", 4) << QString::fromUtf16(u"a\0b", 3);
    QTest::newRow("only NULs") << QString::fromUtf16(u"\0\0\0", 3) << "";
    QTest::newRow("none") << "abc"
                          << "abc";
    QTest::newRow("empty") << ""
                           << "";
}

void tst_Settings::trimNulls() {
    QFETCH(QString, text);
    QFETCH(QString, trimmed);
    QCOMPARE(TrimNulls(text), trimmed);
}

void tst_Settings::menuCatalogEntries_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");

    QTest::newRow("submnu") << "submnuOpen"
                            << "OptionMenus"
                            << "Open";
    QTest::newRow("mnu") << "mnuFile"
                         << "Menus"
                         << "File";
    QTest::newRow("submnu in other case") << "SubmnuOpen"
                                          << ""
                                          << "";
    QTest::newRow("mnu in other case") << "MnuFile"
                                       << ""
                                       << "";
    QTest::newRow("other name") << "Separator"
                                << ""
                                << "";
}

void tst_Settings::menuCatalogEntries() {
    QFETCH(QString, name);
    QFETCH(QString, section);
    QFETCH(QString, key);

    const std::optional<CatalogEntry> entry = menuCatalogEntry(name);
    QCOMPARE(entry.has_value(), !section.isEmpty());
    if (entry) {
        QCOMPARE(entry->section, section);
        QCOMPARE(entry->key, key);
    }
}

namespace {

void writeFile(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

QByteArray contentsOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Bytes of every value, NULs and line breaks included, the same on every run.
QByteArray junk(int size) {
    QRandomGenerator generator(13);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char& byte : bytes) {
        byte = char(generator.bounded(256));
    }
    return bytes;
}

} // namespace

void tst_Settings::melvadexLanguageIsPlainText_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("language");

    // Qt's own dialect would make a list of the first two and cut the third at the semicolon.
    QTest::newRow("comma") << QByteArray("Language=Deutsch, neu.ini") << "Deutsch, neu.ini";
    QTest::newRow("commas") << QByteArray("Language=a,b,c.ini") << "a,b,c.ini";
    QTest::newRow("semicolon") << QByteArray("Language=Deutsch;2.ini") << "Deutsch;2.ini";
    QTest::newRow("backslashes") << QByteArray("Language=Languages\\Deutsch.ini") << "Languages\\Deutsch.ini";
    QTest::newRow("percent") << QByteArray("Language=100%20.ini") << "100%20.ini";
    QTest::newRow("blanks around") << QByteArray("Language =  English.ini  ") << "English.ini";
    QTest::newRow("non-ASCII") << QByteArray("Language=Fran\xC3\xA7"
                                             "ais.ini")
                               << QStringLiteral("Fran\u00E7ais.ini");
}

void tst_Settings::melvadexLanguageIsPlainText() {
    QFETCH(QByteArray, line);
    QFETCH(QString, language);

    writeFile(settingsFilePath("Melvadex"), "[Preferences]\r\n" + line + "\r\n");
    QCOMPARE(read(settings::Language), language);
}

void tst_Settings::languageFileThatIsNoFile() {
    // Reading a named pipe that nobody writes to would wait for ever.
    const QString pipe = m_home->filePath("Deutsch.ini");
    QVERIFY(::mkfifo(QFile::encodeName(pipe).constData(), 0600) == 0);
    QCOMPARE(readIniString(pipe, "Menus", "File", "&File"), QStringLiteral("&File"));
    QCOMPARE(readIniString("/dev/zero", "Menus", "File", "&File"), QStringLiteral("&File"));
}

void tst_Settings::cutKeepsCharactersWhole_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("read");

    const QString note = QStringLiteral("\U0001F3B5"); // two UTF-16 code units
    QTest::newRow("pair across the cut goes whole") << QString(198, u'a') + note << QString(198, u'a');
    QTest::newRow("pair at the end stays whole") << QString(197, u'a') + note << QString(197, u'a') + note;
    QTest::newRow("pair after the cut") << QString(199, u'a') + note << QString(199, u'a');
    QTest::newRow("only pairs") << note.repeated(150) << note.repeated(99);
}

void tst_Settings::cutKeepsCharactersWhole() {
    QFETCH(QString, value);
    QFETCH(QString, read);

    const QString path = m_home->filePath("Language.ini");
    writeFile(path, "[Menus]\r\nFile=" + value.toUtf8() + "\r\n");
    const QString got = readIniString(path, "Menus", "File", {});
    QCOMPARE(got, read);
    QVERIFY(got.isValidUtf16());
}

void tst_Settings::damagedFileKeepsWhatCanBeRead() {
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

void tst_Settings::unwritableFolder() {
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

void tst_Settings::pathTextKeepsBackslashes_data() {
    QTest::addColumn<QByteArray>("line"); // empty: written by the program
    QTest::addColumn<QString>("value");

    QTest::newRow("written by the program") << QByteArray() << "C:\\Music=/media/music";
    QTest::newRow("typed by hand") << QByteArray("PathMap=C:\\Music=/media/music")
                                   << "C:\\Music=/media/music";
    QTest::newRow("typed by hand, doubled") << QByteArray("PathMap=C:\\\\Music=/m") << "C:\\Music=/m";
    QTest::newRow("typed by hand, quoted") << QByteArray("PathMap=\"D:\\=/mnt/d\"") << "D:\\=/mnt/d";
    QTest::newRow("empty") << QByteArray("PathMap=") << "";
}

void tst_Settings::pathTextKeepsBackslashes() {
    QFETCH(QByteArray, line);
    QFETCH(QString, value);
    if (line.isEmpty()) {
        write(settings::PathMap, value);
    } else {
        QVERIFY(QDir().mkpath(QFileInfo(settingsFilePath(thisProgram())).path()));
        writeFile(settingsFilePath(thisProgram()), "[Preferences]\n" + line + "\n");
    }
    QCOMPARE(readPathText(settings::PathMap), value);
    QVERIFY(isStored(settings::PathMap));
}

QTEST_GUILESS_MAIN(tst_Settings)
#include "tst_settings.moc"
