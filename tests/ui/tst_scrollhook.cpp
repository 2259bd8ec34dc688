#include "MainWindowFixture.h"
#include "shell/ListScrollHook.h"
#include "ui/views/FileListView.h"
#include "ui/views/ReportTree.h"

#include <QScrollBar>
#include <QTemporaryDir>
#include <QWheelEvent>

using namespace zentoria;

namespace {

// A window whose list shows a report's largest kind, long enough to scroll.
struct Hooked : MainWindowFixture {
    QTemporaryDir dir;
    QWidget* panel = child<QWidget>("pctWeb");
    QWidget* scroll = child<QWidget>("vsbBack");

    Hooked() {
        show();
        open(writeGeneratedReport(dir.filePath("report.vzt"), 200));
        clickIndex(child<ReportTree>("TV"), indexOfKey(child<ReportTree>("TV"), "ID3v1"));
        window.resize(window.width(), window.minimumSizeHint().height());
    }
    bool panelAboveList() const {
        const QObjectList order = list->parentWidget()->children();
        return order.indexOf(list) < order.indexOf(panel) && order.indexOf(panel) < order.indexOf(scroll);
    }
};

void wheel(QWidget* target, QPoint angle) {
    const QPointF at(target->width() / 2.0, target->height() / 2.0);
    QWheelEvent event(at, target->mapToGlobal(at), {}, angle, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(target, &event);
}

} // namespace

class tst_ScrollHook : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reordersBeforeTheListScrolls_data();
    void reordersBeforeTheListScrolls();
};

void tst_ScrollHook::reordersBeforeTheListScrolls_data() {
    addColumns<QString, bool>("action", "reorders");

    addRow("wheel over the list", "wheel", true);
    addRow("wheel over its scroll bar", "wheel on the bar", true);
    addRow("a press on its scroll bar", "press on the bar", true);
    addRow("Page Down", "page down", true);
    addRow("sideways wheel", "sideways wheel", false);
    addRow("a press on the sideways scroll bar", "press on the sideways bar", false);
    addRow("a letter", "letter", false);
}

void tst_ScrollHook::reordersBeforeTheListScrolls() {
    QFETCH(QString, action);
    QFETCH(bool, reorders);

    Hooked h;
    QVERIFY(isHooked(h.list));
    h.list->raise(); // as other code may leave it
    QVERIFY(!h.panelAboveList());
    if (action == "wheel") {
        wheel(h.list->viewport(), QPoint(0, -120));
    } else if (action == "wheel on the bar") {
        wheel(h.list->verticalScrollBar(), QPoint(0, -120));
    } else if (action == "press on the bar") {
        QTest::mouseClick(h.list->verticalScrollBar(), Qt::LeftButton, {}, QPoint(2, 2));
    } else if (action == "page down") {
        QTest::keyClick(h.list, Qt::Key_PageDown);
    } else if (action == "sideways wheel") {
        wheel(h.list->viewport(), QPoint(-120, 0));
    } else if (action == "press on the sideways bar") {
        QTest::mouseClick(h.list->horizontalScrollBar(), Qt::LeftButton, {}, QPoint(2, 2));
    } else {
        QTest::keyClick(h.list, Qt::Key_W);
    }
    QCOMPARE(h.panelAboveList(), reorders);
}

QTEST_MAIN(tst_ScrollHook)
#include "tst_scrollhook.moc"
