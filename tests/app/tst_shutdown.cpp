#include "TestData.h"
#include "app/Startup.h"
#include "settings/Globals.h"
#include "settings/SettingsStore.h"
#include "shell/ListScrollHook.h"
#include "ui/common/Twips.h"
#include "ui/main/frmMain.h"

#include <QAbstractScrollArea>
#include <QAction>
#include <QTemporaryDir>
#include <QTest>

using namespace zentoria;

namespace {

// Starts the program and closes its splash, which shows the main window.
std::unique_ptr<frmMain> start() {
    std::unique_ptr<frmMain> window = Main({"zentoria"});
    if (auto* splash = window->findChild<QWidget*>("frmSplash")) {
        splash->close();
    }
    return window;
}

QString stored(const char* key) {
    return readSetting(thisProgram(), "Preferences", key, {});
}

QString twips(int pixels, const QWidget* window) {
    return QString::number(float(pixelsToTwips(pixels, logicalDpi(window))));
}

} // namespace

class tst_ShutDown : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void closingKeepsTheWindow_data();
    void closingKeepsTheWindow();
    void maximizedKeepsItsNormalPlace();

private:
    std::unique_ptr<QTemporaryDir> m_home;
};

void tst_ShutDown::init() {
    m_home = std::make_unique<QTemporaryDir>();
    qputenv("XDG_CONFIG_HOME", m_home->path().toLocal8Bit());
}

void tst_ShutDown::closingKeepsTheWindow_data() {
    QTest::addColumn<bool>("quit");

    addRow("File > Quit", true);
    addRow("the close box", false);
}

void tst_ShutDown::closingKeepsTheWindow() {
    QFETCH(bool, quit);

    QRect frame;
    {
        const std::unique_ptr<frmMain> window = start();
        QVERIFY(window->isVisible());
        window->move(70, 40);
        window->resize(700, 430);
        globals().InitialTVWidth = 2610;
        QTRY_COMPARE(window->size(), QSize(700, 430));
        frame = window->frameGeometry();
        auto* list = window->findChild<QAbstractScrollArea*>("LV");
        QVERIFY(isHooked(list));
        if (quit) {
            window->findChild<QAction*>("submnuExit")->trigger();
        } else {
            window->close();
        }
        QVERIFY(!window->isVisible());
        QVERIFY(!isHooked(list));
        QCOMPARE(stored("Initial TV Width"), QStringLiteral("2610"));
        QCOMPARE(stored("Width"), twips(frame.width(), window.get()));
        QCOMPARE(stored("Height"), twips(frame.height(), window.get()));
        QCOMPARE(stored("Top"), twips(frame.y(), window.get()));
        QCOMPARE(stored("Left"), twips(frame.x(), window.get()));
        QCOMPARE(stored("Maximized"), QStringLiteral("0"));
    }

    // The next start puts the window where it was, the tree as wide as it was.
    const std::unique_ptr<frmMain> again = start();
    QCOMPARE(again->frameGeometry(), frame);
    QCOMPARE(globals().InitialTVWidth, 2610);
}

void tst_ShutDown::maximizedKeepsItsNormalPlace() {
    const std::unique_ptr<frmMain> window = start();
    const QRect normal = window->frameGeometry();
    window->showMaximized();
    QTRY_VERIFY(window->isMaximized());
    window->close();
    QCOMPARE(stored("Maximized"), QStringLiteral("1"));
    QCOMPARE(stored("Width"), twips(normal.width(), window.get()));
    QCOMPARE(stored("Left"), twips(normal.x(), window.get()));
    // The next start shows it maximized again.
    const std::unique_ptr<frmMain> again = start();
    QTRY_VERIFY(again->isMaximized());
}

QTEST_MAIN(tst_ShutDown)
#include "tst_shutdown.moc"
