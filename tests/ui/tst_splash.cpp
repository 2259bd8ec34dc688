#include "TestData.h"
#include "Version.h"
#include "app/Startup.h"
#include "settings/Globals.h"
#include "settings/SettingsStore.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/Twips.h"
#include "ui/main/frmMain.h"

#include <QApplication>
#include <QDir>
#include <QGroupBox>
#include <QMap>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace zentoria;

namespace {

// The program as started, with its splash up, in a per-user folder of its own. The placements are
// Width, Height, Top, Left in "Preferences" and "Last Safe Configuration"; language is a language file.
struct Started {
    QTemporaryDir home;
    std::unique_ptr<frmMain> window;
    QPointer<QWidget> splash;

    explicit Started(const QStringList& placement = {}, const QStringList& safe = {},
                     const QByteArray& language = {}) {
        qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
        const char* keys[] = {"Width", "Height", "Top", "Left"};
        for (const auto& [section, values] :
             {std::pair{"Preferences", placement}, {"Last Safe Configuration", safe}}) {
            for (qsizetype i = 0; i < values.size(); ++i) {
                writeSetting(thisProgram(), section, keys[i], values[i]);
            }
        }
        if (!language.isEmpty()) {
            QVERIFY(writeFile(home.filePath("Test.ini"), language));
            writeSetting("Melvadex", "Preferences", "Language",
                         QDir(GetAppPath()).relativeFilePath(home.filePath("Test.ini")));
        }
        window = Main({"zentoria"});
        splash = window->findChild<QWidget*>("frmSplash");
        QVERIFY(splash);
    }
    // The main window's outer rectangle once the splash has shown it, in twips.
    QRectF shownPlacement() const {
        if (!QTest::qWaitFor([this] { return window->isVisible(); })) {
            return {};
        }
        const QRect frame = window->frameGeometry();
        const double dpi = logicalDpi(window.get());
        return {pixelsToTwips(frame.x(), dpi), pixelsToTwips(frame.y(), dpi),
                pixelsToTwips(frame.width(), dpi), pixelsToTwips(frame.height(), dpi)};
    }
    QString stored(const char* section, const char* key) const {
        return readSetting(thisProgram(), section, key, {});
    }
};

} // namespace

class tst_Splash : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { globals().LanguageFile.clear(); }

    void showsThenCloses_data() {
        // How it closes (0: by its timer); a language file, and what it makes of the Ok button and the
        // translator's box.
        addColumns<int, QByteArray, QString, bool>("key", "language", "okCaption", "translationShown");

        addRow("the timer", 0, QByteArray(), "&Ok", false);
        addRow("Escape", int(Qt::Key_Escape), QByteArray(), "&Ok", false);
        addRow("Enter, on the Ok button, translated", int(Qt::Key_Return),
               QByteArray("[Splash]\nOkButton=&Gut\n[TranslationInfo]\nTranslatedBy=Übersetzt von\n"), "&Gut",
               true);
    }

    void showsThenCloses() {
        QFETCH(int, key);
        QFETCH(QByteArray, language);
        QFETCH(QString, okCaption);
        QFETCH(bool, translationShown);

        Started s({}, {}, language);
        QCOMPARE((QList<bool>{s.splash->isVisible(), s.window->isVisible()}), (QList<bool>{true, false}));
        // Centred on the 800 x 600 screen, at 15 twips a pixel.
        QCOMPARE(geometryTwips(s.splash), (TwipsRect{2257.5, 2010, 7485, 4980}));
        QVERIFY(s.splash->windowFlags() & Qt::FramelessWindowHint);
        const QString version = QStringLiteral("Ver.:%1.%2.%3")
                                    .arg(ZENTORIA_VERSION_MAJOR)
                                    .arg(ZENTORIA_VERSION_MINOR)
                                    .arg(ZENTORIA_VERSION_PATCH);
        // The version twice: orange (index 0), and black over it.
        QMap<int, CaptionLabel*> labels;
        for (auto* label : s.splash->findChildren<CaptionLabel*>("LabVers")) {
            labels[label->property("index").toInt()] = label;
        }
        QCOMPARE(labels.keys(), (QList<int>{0, 1}));
        const CaptionLabel *orange = labels[0], *black = labels[1];
        QCOMPARE((QStringList{orange->caption(), black->caption()}), QStringList(2, version));
        QCOMPARE(geometryTwips(black).Left - geometryTwips(orange).Left, 35.0);
        QCOMPARE(geometryTwips(black).Top - geometryTwips(orange).Top, 10.0);
        QVERIFY(s.splash->findChild<QTimer*>("CloseIt")->isActive());
        QCOMPARE(s.splash->findChild<QPushButton*>("cmdOk")->text(), okCaption);
        QCOMPARE(s.splash->findChild<QGroupBox*>("frmTranslation")->isVisibleTo(s.splash), translationShown);

        if (key != 0) {
            QWidget* target = s.splash->focusWidget();
            if (key != Qt::Key_Escape) {
                // The Ok button has the keyboard, though it lies below the splash's visible part.
                QCOMPARE(target, s.splash->findChild<QPushButton*>("cmdOk"));
            }
            QTest::keyClick(target ? target : s.splash.data(), Qt::Key(key));
            QVERIFY(s.window->isVisible());
        } else {
            QTRY_VERIFY_WITH_TIMEOUT(s.window->isVisible(), 2000);
        }
        QTRY_VERIFY(!s.splash);
    }

    void placement_data() {
        addColumns<QStringList, QStringList, QRectF, QString>("placement", "safe", "shown", "storedWidth");

        // The defaults (45, 465, 12000, 7350) on this 12000-twip-wide screen: moved to its left edge.
        const QRectF defaults(0, 465, 12000, 7350);
        addRow("first run", QStringList{}, QStringList{}, defaults, "");
        addRow("stored", QStringList{"9000", "6000", "300", "150"}, QStringList{},
               QRectF(150, 300, 9000, 6000), "9000");
        addRow("rejected, repaired from the last safe one", QStringList{"-500", "6000", "300", "150"},
               QStringList{"10500", "7005", "600", "300"}, QRectF(300, 600, 10500, 7005), "10500");
        addRow("rejected, and the last safe one too: the defaults", QStringList{"-500", "6000", "300", "150"},
               QStringList{"-300", "7000", "600", "300"}, defaults, "-300");
    }

    void placement() {
        QFETCH(QStringList, placement);
        QFETCH(QStringList, safe);
        QFETCH(QRectF, shown);
        QFETCH(QString, storedWidth);

        Started s(placement, safe);
        s.splash->close();
        QCOMPARE(s.shownPlacement(), shown);
        // A repair copies the last safe placement into "Preferences".
        QCOMPARE(s.stored("Preferences", "Width"), storedWidth);
    }
};

int main(int argc, char** argv) {
    // An 800 x 600 screen at 96 dpi: 15 twips a pixel.
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + dataFile("screens/800x600.json").toLocal8Bit());
    QApplication app(argc, argv);
    tst_Splash test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_splash.moc"
