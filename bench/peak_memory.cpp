#include "LargestReport.h"
#include "PeakResident.h"
#include "app/Startup.h"
#include "ui/main/frmMain.h"
#include "ui/views/ReportTree.h"

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace zentoria;

namespace {

constexpr char kShowMode[] = "--show-and-measure";

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kAddressSanitizer = true;
#elif defined(__has_feature)
constexpr bool kAddressSanitizer = __has_feature(address_sanitizer);
#else
constexpr bool kAddressSanitizer = false;
#endif

// The child: starts the program as its executable does, with the command line given, lists the largest
// kind when there is a report, lets the window settle and prints its peak resident memory and how many
// files it lists.
int showAndMeasure(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zentoria"));
    QStringList arguments{QStringLiteral("zentoria")};
    arguments += QApplication::arguments().mid(2);
    const std::unique_ptr<frmMain> window = Main(arguments);
    // The main window shows when the splash closes.
    if (!QTest::qWaitFor([&] { return window->isVisible(); }, 5000)) {
        return 1;
    }
    auto* tree = window->findChild<ReportTree*>(QStringLiteral("TV"));
    if (tree->nodes().entryCount() > 0) {
        const QModelIndex kind = tree->indexOf(tree->nodes().positionOf(u"ID3v2"));
        tree->scrollTo(kind);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(kind).center());
    }
    QTest::qWait(300);
    auto* list = window->findChild<QAbstractItemView*>(QStringLiteral("LV"));
    std::printf("%lld %d\n", peakResidentKb(), list->model()->rowCount());
    return 0;
}

} // namespace

class PeakMemory : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void largestReportCostsLittle();

private:
    struct Shown {
        qint64 peakKb = -1;
        int listed = -1;
    };
    static Shown showInAChild(const QStringList& commandLine);
};

PeakMemory::Shown PeakMemory::showInAChild(const QStringList& commandLine) {
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    child.setProcessEnvironment(environment);
    child.start(QCoreApplication::applicationFilePath(), QStringList{kShowMode} + commandLine);
    if (!child.waitForFinished(60000) || child.exitCode() != 0) {
        qWarning() << child.readAllStandardError();
        return {};
    }
    const QList<QByteArray> figures = child.readAllStandardOutput().simplified().split(' ');
    return {figures.value(0).toLongLong(), figures.value(1).toInt()};
}

void PeakMemory::largestReportCostsLittle() {
    if (kAddressSanitizer) {
        QSKIP(
            "the address sanitizer pads and holds back every allocation: its figures are not the program's");
    }
    if (!QFile::exists(QStringLiteral("/proc/self/status"))) {
        QSKIP("no /proc: the kernel's peak memory count is not available here");
    }
    QTemporaryDir dir;
    QFile report(dir.filePath(QStringLiteral("largest.vzt")));
    QVERIFY(report.open(QIODevice::WriteOnly));
    report.write(largestReportBytes());
    report.close();

    const Shown empty = showInAChild({});
    const Shown largest = showInAChild({report.fileName()});
    QVERIFY(empty.peakKb > 0);
    QCOMPARE(largest.listed, kLargestKindFiles);
    const qint64 cost = largest.peakKb - empty.peakKb;
    qInfo("peak resident memory: %lld kB without a report, %lld kB with the largest one (+%lld kB)",
          empty.peakKb, largest.peakKb, cost);
    QVERIFY2(cost <= 12 * 1024, "showing the largest report costs more than 12 MB");
}

int main(int argc, char** argv) {
    if (argc >= 2 && qstrcmp(argv[1], kShowMode) == 0) {
        return showAndMeasure(argc, argv);
    }
    QCoreApplication app(argc, argv);
    PeakMemory test;
    return QTest::qExec(&test, argc, argv);
}

#include "peak_memory.moc"
