#include "MainWindowFixture.h"
#include "settings/Globals.h"
#include "settings/Preferences.h"
#include "settings/SettingsStore.h"
#include "shell/ListScrollHook.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/CommonDialog.h"
#include "ui/common/FullTextDelegate.h"
#include "ui/common/MessageBoxes.h"
#include "ui/common/PictureBox.h"
#include "ui/common/ScreenFit.h"
#include "ui/common/Twips.h"
#include "ui/views/FileListView.h"
#include "ui/views/ReportTree.h"

#include <QDialog>
#include <QFile>
#include <QHelpEvent>
#include <QImage>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QResizeEvent>
#include <QScreen>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolTip>
#include <QWheelEvent>

using namespace zentoria;

namespace {

// A shown main window of 12000 x 7350 twips in a per-user folder of its own.
struct Frame : MainWindowFixture {
    QTemporaryDir home;
    PictureBox* separator = child<PictureBox>("Separator");
    PictureBox* panel = child<PictureBox>("pctWeb");
    QScrollBar* scroll = child<QScrollBar>("vsbBack");

    Frame() {
        qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
        globals().InitialTVWidth = 3000;
        show();
        resizeTwips(12000, 7350);
    }
    void resizeTwips(double width, double height) {
        const double dpi = logicalDpi(&window);
        window.resize(twipsToPixels(width, dpi), twipsToPixels(height, dpi));
    }
    // The window gets a resize event for the size it has, as when the system repeats one.
    void resizeEventAgain() {
        QResizeEvent again(window.size(), window.size());
        QCoreApplication::sendEvent(&window, &again);
    }
    bool settingsWritten() const { return QFile::exists(settingsFilePath(thisProgram())); }
    void forgetSettings() { QFile::remove(settingsFilePath(thisProgram())); }
    // The panel and its scroll bar stacked above the list, as they are drawn after a scroll.
    bool panelAboveList() const {
        const QObjectList order = list->parentWidget()->children();
        return order.indexOf(list) < order.indexOf(panel) && order.indexOf(panel) < order.indexOf(scroll);
    }
};

} // namespace

class tst_Frame : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void passesPlaceThePanes() {
        Frame f;
        // The worked example's panes, from a real window (no frame offscreen: client = window width).
        QCOMPARE(geometryTwips(f.tree).Width, 3000.0);
        QCOMPARE(geometryTwips(f.list).Left, 2855.0);
        QVERIFY(f.panel->isVisible());
        // The panes fill the client area: the list ends 30 twips short of the right pane's edge, and the
        // tree ends where the status bar begins.
        const double client = pixelsToTwips(f.window.centralWidget()->width(), logicalDpi(&f.window));
        QCOMPARE(geometryTwips(f.child<QWidget>("pctBorders")).Width, client - 3045);
        const TwipsRect tree = geometryTwips(f.tree);
        QCOMPARE(tree.Top + tree.Height, geometryTwips(f.child<QWidget>("SB")).Top);
        // The placement saved is the window's own, frame included.
        const QString savedWidth =
            QString::number(pixelsToTwips(f.window.frameGeometry().width(), logicalDpi(&f.window)));
        QCOMPARE(read(settings::SafeWidth), savedWidth);

        // A longer address caption moves the path box along.
        auto* address = f.child<CaptionLabel>("lblAddress");
        address->setCaption("A much longer address caption");
        const TwipsRect addressRect = geometryTwips(address);
        QCOMPARE(geometryTwips(f.child<CaptionLabel>("WEPath")).Left,
                 addressRect.Left + addressRect.Width + 200);

        // Tools > WebStyle, twice: the classic view and back.
        QAction* item = f.child<QAction>("submnuWebStyle");
        QVERIFY(item->isChecked());
        for (const bool on : {false, true}) {
            f.trigger("submnuWebStyle");
            QCOMPARE(item->isChecked(), on);
            QCOMPARE(f.window.WebStyle, on);
            QCOMPARE(read(settings::WebStyle), on ? QStringLiteral("1") : QStringLiteral("0"));
            QCOMPARE(f.panel->isVisible(), on);
            QCOMPARE(geometryTwips(f.list).Left, on ? 2855.0 : -45.0);
        }

        // Minimized, the window moves nothing and saves nothing; restored, it runs a full pass again.
        f.forgetSettings();
        f.window.setWindowState(Qt::WindowMinimized);
        const auto panes = [&f] { return QList<QRect>{f.tree->geometry(), f.list->geometry()}; };
        const QList<QRect> before = panes();
        f.resizeTwips(9000, 6000);
        QCOMPARE(panes(), before);
        QVERIFY(!f.settingsWritten());
        f.window.setWindowState(Qt::WindowNoState);
        QTRY_VERIFY(f.settingsWritten());
        QCOMPARE(read(settings::SafeWidth),
                 QString::number(pixelsToTwips(f.window.frameGeometry().width(), logicalDpi(&f.window))));

        // A panel whose content ends 2000 twips below the list's height gets its scroll bar.
        auto* info = f.child<CaptionLabel>("lblInfo");
        const double listHeight = geometryTwips(f.list).Height;
        const TwipsRect infoRect = geometryTwips(info);
        setGeometryTwips(info, infoRect.Left, listHeight + 2000 - infoRect.Height, infoRect.Width,
                         infoRect.Height);
        f.resizeEventAgain();
        QVERIFY(f.scroll->isVisible());
        QCOMPARE((QList<int>{f.scroll->maximum(), f.scroll->pageStep(), f.scroll->singleStep()}),
                 (QList<int>{2000, 200, 20}));
        QCOMPARE(geometryTwips(f.panel).Height, listHeight + 2000);
        QCOMPARE(geometryTwips(f.scroll).Left, geometryTwips(f.panel).Width);

        // Dragging the thumb moves the panel along; the value at the end of the drag keeps it there.
        f.scroll->setSliderDown(true);
        f.scroll->setSliderPosition(1000);
        QCOMPARE(geometryTwips(f.panel).Top, -1000.0);
        f.scroll->setSliderPosition(f.scroll->maximum());
        QCOMPARE(geometryTwips(f.panel).Top, -2000.0);
        f.scroll->setSliderDown(false);
        QCOMPARE(f.scroll->value(), 2000);
        QCOMPARE(geometryTwips(f.panel).Top, -2000.0);
        QVERIFY(f.list->hasFocus());

        // Content that ends above the panel's edge hides the scroll bar and fits the panel to the list.
        setGeometryTwips(info, infoRect.Left, 100, infoRect.Width, infoRect.Height);
        f.resizeEventAgain();
        QVERIFY(!f.scroll->isVisible());
    }

    // The tree's width, from a drag of the separator with a button (to a point of the client area, in twips
    // from its left edge: the window is 12000 twips wide and has no frame offscreen) or from the settings.
    void treeWidth_data() {
        addColumns<int, bool, int, int, QString, int>("button", "webStyle", "to", "stored", "safe", "width");

        addRow("drag past the left edge", int(Qt::LeftButton), true, -600, 0, "", 0);
        addRow("drag beyond the client width", int(Qt::LeftButton), false, 12600, 0, "", 12000 - 45);
        addRow("drag to 3990 twips", int(Qt::LeftButton), true, 3990, 0, "", 3990);
        addRow("the right button drags too", int(Qt::RightButton), true, 3990, 0, "", 3990);
        // A width the window cannot take gives way to the last safe one (3000 from the start here), and if
        // that is no better, to the default. In web style the panel needs room beside the tree: a list of
        // negative width is refused.
        addRow("drag beyond the client width, web style", int(Qt::LeftButton), true, 12600, 0, "", 3000);
        addRow("stored wider than any screen", 0, true, 0, 100000, "2500", 2500);
        addRow("stored, no safe configuration yet", 0, true, 0, -500, "", 3000);
        addRow("stored, the last safe one no better", 0, true, 0, 100000, "-20", 3000);
        addRow("stored too wide for this window", 0, true, 0, 9000, "2500", 2500);
    }

    void treeWidth() {
        QFETCH(int, button);
        QFETCH(bool, webStyle);
        QFETCH(int, to);
        QFETCH(int, stored);
        QFETCH(QString, safe);
        QFETCH(int, width);

        Frame f;
        if (!webStyle) {
            f.trigger("submnuWebStyle");
        }
        const int y = f.separator->height() / 2;
        if (button != 0) {
            const QPoint end(twipsToPixels(to, logicalDpi(&f.window)) - f.separator->x(), y);
            QTest::mousePress(f.separator, Qt::MouseButton(button), {}, QPoint(1, y));
            QTest::mouseMove(f.separator, end);
            QTest::mouseRelease(f.separator, Qt::MouseButton(button), {}, end);
        } else {
            f.forgetSettings();
            if (!safe.isEmpty()) {
                write(settings::SafeInitialTVWidth, safe);
            }
            globals().InitialTVWidth = stored;
            f.resizeTwips(11000, 7000);
        }

        QCOMPARE(globals().InitialTVWidth, width);
        QCOMPARE(read(settings::InitialTVWidth), QString::number(width));
        QCOMPARE(read(settings::SafeInitialTVWidth), QString::number(width));
        // The step that failed and every later one use the width taken instead.
        QCOMPARE(geometryTwips(f.child<QWidget>("pctBorders")).Left, double(width + 45));
        f.resizeEventAgain();
        QCOMPARE(geometryTwips(f.tree).Width, double(width));
        QCOMPARE(geometryTwips(f.separator).Left, double(width));

        // Without a button held, moving over the separator drags nothing.
        QTest::mouseMove(f.separator, QPoint(2, y));
        QCOMPARE(globals().InitialTVWidth, width);
    }

    // The file names get the room there is (at least the design's 6500 twips, and the list's width),
    // and a sideways scroll shows what a fresh paint of the same state shows, in the list and the tree.
    void smallScreen() {
        // At 1×, and at 2× as tst_frame_2x: the window fills the screen, and the list shows a file's
        // whole name beside the panel or, where both do not fit, in its place; the tree, wider than its
        // captions need, gives it room and still shows them whole.
        Frame f;
        globals().InitialTVWidth = 4000;
        const QRect screen = f.window.screen()->availableGeometry();
        f.window.resize(screen.size() * 2);
        fitToScreen(&f.window);
        f.open(dataFile("mixed.vzt"));
        f.activate("ID3v1");
        for (const QModelIndex& node :
             {f.tree->model()->index(0, 0), indexOfKey(f.tree, QStringLiteral("ID3v1"))}) {
            QTRY_VERIFY2(f.tree->visualRect(node).left() + f.tree->sizeHintForIndex(node).width() <=
                             f.tree->viewport()->width(),
                         qPrintable(node.data().toString()));
        }
        const QModelIndex first = f.list->model()->index(0, 0);
        const QString path = first.data().toString();
        QRect shown;
        QString drawn;
        QTRY_VERIFY2((shown = f.list->visualRect(first).intersected(f.list->viewport()->rect()),
                      drawn = elidePath(path, f.list->fontMetrics(), shown.width()),
                      drawn.endsWith(path.section(u'\\', -1)) && drawn.startsWith("C:\\") &&
                          f.list->fontMetrics().horizontalAdvance(drawn) <= shown.width()),
                     qPrintable(drawn));
        if (drawn != path) {
            QHelpEvent help(QEvent::ToolTip, shown.center(), f.list->viewport()->mapToGlobal(shown.center()));
            QCoreApplication::sendEvent(f.list->viewport(), &help);
            QTRY_COMPARE(QToolTip::text(), path);
        }
        QVERIFY(!f.panel->isVisible() || f.panel->geometry().right() < f.list->x() + f.list->viewport()->x());
        QVERIFY(screen.contains(f.window.frameGeometry()));
        const auto* about = f.child<QLabel>("About");
        QVERIFY(about->parentWidget()->rect().contains(about->geometry()));
    }

    // Every dialog, the program's and Qt's, opens inside the screen with its buttons on it, at 1× and at
    // 2× (tst_frame_2x) on an 800 × 600 screen, a message box taller than the screen too. Export asks
    // with the dialog Save Report As does.
    void dialogsFitTheScreen() {
        Frame f;
        f.open(dataFile("mixed.vzt"));
        f.activate("ID3v1");
        f.trigger("submnuSelectAll");
        f.child<CommonDialog>("CMDlg")->setChooser({});
        for (const char* action : {"submnuCheckFolder", "submnuPreferences", "submnuExport", "submnuOpen",
                                   "submnuSelectMatching", "a message of many lines"}) {
            QString outside = QStringLiteral("no dialog");
            QTimer::singleShot(200, [&outside] {
                auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
                // A message box is looked at with its details shown, as it grows then.
                if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
                    for (QAbstractButton* button : box->buttons()) {
                        if (box->buttonRole(button) == QMessageBox::ActionRole) {
                            button->click();
                        }
                    }
                }
                QTimer::singleShot(100, [&outside, dialog] {
                    const QRect area = dialog->screen()->availableGeometry();
                    outside =
                        area.contains(dialog->frameGeometry()) ? QString() : QStringLiteral("the dialog");
                    for (const QPushButton* button : dialog->findChildren<QPushButton*>()) {
                        if (button->isVisibleTo(dialog) &&
                            !area.contains(QRect(button->mapToGlobal(QPoint()), button->size()))) {
                            outside = button->text();
                        }
                    }
                    dialog->reject();
                });
            });
            if (action[0] == 'a') {
                MessageBoxes().show(&f.window, QString("A line\n").repeated(80),
                                    QString("A file: why\n").repeated(400));
            } else {
                f.trigger(action);
            }
            QVERIFY2(outside.isEmpty(), qPrintable(action + (": " + outside)));
        }
    }

    void listColumnAndSidewaysScroll() {
        Frame f;
        // A name too long for any list to show whole: the list scrolls sideways, its scroll bar starting
        // where the rows do, clear of the panel and its scroll bar.
        f.open(writeGeneratedReport(f.home.filePath("long.vzt"), 3, QByteArray(200, 'x') + ".mp3"));
        for (const double width : {7500.0, 6000.0}) {
            f.resizeTwips(width, 7350);
            f.activate("ID3v1");
            QTRY_VERIFY2(f.list->horizontalScrollBar()->maximum() > 0, qPrintable(QString::number(width)));
            QCOMPARE(f.list->horizontalScrollBar()->mapTo(f.list, QPoint()).x(), f.list->viewport()->x());
        }
        // The tree's long paths in view, as the user opens the kind.
        f.tree->expandAll();
        for (auto* view : QList<QTreeView*>{f.list, f.tree}) {
            QScrollBar* bar = view->horizontalScrollBar();
            QTRY_VERIFY2(bar->maximum() > 0, qPrintable(view->objectName()));
            bar->setValue(0);
            QCoreApplication::processEvents();
            const QImage start = view->viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
            for (const int value : {qMin(40, bar->maximum()), bar->maximum()}) {
                bar->setValue(value);
                QCoreApplication::processEvents();
                // What the window shows, against the viewport painted anew.
                const QRect seen = view->viewport()->visibleRegion().boundingRect();
                const QRect at(view->viewport()->mapTo(&f.window, seen.topLeft()), seen.size());
                const QImage shown =
                    f.window.screen()
                        ->grabWindow(f.window.winId(), at.x(), at.y(), at.width(), at.height())
                        .toImage()
                        .convertToFormat(QImage::Format_RGB32);
                QCOMPARE(shown, view->viewport()->grab(seen).toImage().convertToFormat(QImage::Format_RGB32));
                // The rows moved as far as the header did.
                QCOMPARE(view->header()->offset(), value);
                if (value == bar->maximum()) {
                    continue;
                }
                const QRect kept(0, 0, at.width() - value, at.height());
                QCOMPARE(shown.copy(kept), start.copy(kept.translated(seen.left() + value, seen.top())));
            }
        }
        // Short names show their file's whole name in a list narrower than the column's design width:
        // nothing to scroll to.
        f.open(dataFile("mixed.vzt"));
        f.activate("ID3v1");
        QVERIFY(f.list->viewport()->width() < twipsToPixels(6500, logicalDpi(f.list)));
        QTRY_COMPARE(f.list->horizontalScrollBar()->maximum(), 0);
    }

    // Whatever scrolls the list up or down puts the panel back above it first; other input does not.
    void reordersBeforeTheListScrolls_data() {
        addColumns<QString, QPoint, int, bool>("on", "wheel", "key", "reorders");

        addRow("wheel over the list", "list", QPoint(0, -120), 0, true);
        addRow("wheel over its scroll bar", "bar", QPoint(0, -120), 0, true);
        addRow("a press on its scroll bar", "bar", QPoint(), 0, true);
        addRow("Page Down", "list", QPoint(), int(Qt::Key_PageDown), true);
        addRow("sideways wheel", "list", QPoint(-120, 0), 0, false);
        addRow("a press on the sideways scroll bar", "sideways bar", QPoint(), 0, false);
        addRow("a letter", "list", QPoint(), int(Qt::Key_W), false);
    }

    void reordersBeforeTheListScrolls() {
        QFETCH(QString, on);
        QFETCH(QPoint, wheel);
        QFETCH(int, key);
        QFETCH(bool, reorders);

        // The list shows a kind long enough to scroll.
        Frame f;
        f.open(writeGeneratedReport(f.home.filePath("report.vzt"), 200));
        f.activate("ID3v1");
        f.window.resize(f.window.width(), f.window.minimumSizeHint().height());
        QVERIFY(isHooked(f.list));
        f.list->raise(); // as other code may leave it
        QVERIFY(!f.panelAboveList());
        QWidget* target = on == "bar"            ? f.list->verticalScrollBar()
                          : on == "sideways bar" ? f.list->horizontalScrollBar()
                                                 : f.list->viewport();
        if (!wheel.isNull()) {
            const QPointF at(target->width() / 2.0, target->height() / 2.0);
            QWheelEvent event(at, target->mapToGlobal(at), {}, wheel, Qt::NoButton, {}, Qt::NoScrollPhase,
                              false);
            QApplication::sendEvent(target, &event);
        } else if (key != 0) {
            QTest::keyClick(f.list, Qt::Key(key));
        } else {
            QTest::mouseClick(target, Qt::LeftButton, {}, QPoint(2, 2));
        }
        QCOMPARE(f.panelAboveList(), reorders);
    }
};

QTEST_MAIN(tst_Frame)
#include "tst_frame.moc"
