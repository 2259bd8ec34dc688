// frmMain: the open report as a document — its name in the title and address bar, the recent reports,
// reloading, changes on disk and reports dropped on the window.
#include "FileListView.h"
#include "ReportTree.h"
#include "export/PathMapping.h"
#include "frmMain.h"
#include "settings/LanguageCatalog.h"
#include "settings/SettingsStore.h"
#include "ui/common/CaptionLabel.h"

#include <QAction>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QItemSelectionModel>
#include <QMenu>
#include <QMimeData>
#include <QSet>
#include <QUrl>

namespace zentoria {

namespace {

const QString kTitle = QStringLiteral("Melvadex's Zentoria");
const QString kRecentSection = QStringLiteral("Recent");
constexpr int kRecentCount = 8;

QString recentKey(int number) {
    return QStringLiteral("File%1").arg(number);
}

// A report a drop can open: one local file, named as reports are.
QString droppedReport(const QMimeData* data) {
    if (!data || !data->hasUrls() || data->urls().size() != 1 || !data->urls().first().isLocalFile()) {
        return {};
    }
    const QFileInfo file(data->urls().first().toLocalFile());
    const QString suffix = file.suffix().toLower();
    return file.isFile() && (suffix == u"vzt" || suffix == u"txt") ? file.absoluteFilePath() : QString();
}

} // namespace

QStringList frmMain::recentReports() const {
    QStringList keys;
    for (int number = 1; number <= kRecentCount; ++number) {
        keys << recentKey(number);
    }
    QStringList reports;
    for (const QString& report : readSettings(thisProgram(), kRecentSection, keys)) {
        if (!report.isEmpty() && !reports.contains(report)) {
            reports << report;
        }
    }
    return reports;
}

void frmMain::writeRecentReports(const QStringList& reports) {
    QList<SettingValue> values;
    for (int number = 1; number <= kRecentCount; ++number) {
        values.append({kRecentSection, recentKey(number), reports.value(number - 1)});
    }
    writeSettings(thisProgram(), values);
    updateRecentMenu(reports);
}

void frmMain::updateRecentMenu(const QStringList& reports) {
    mnuRecent->clear();
    int number = 0;
    for (const QString& report : reports) {
        QAction* item = mnuRecent->addAction(QString(report).replace(u'&', QStringLiteral("&&")));
        item->setObjectName(QStringLiteral("submnuRecent%1").arg(++number));
        item->setData(report);
        item->setToolTip(report);
        connect(item, &QAction::triggered, this, [this, report] { openRecent(report); });
    }
    mnuRecent->addSeparator();
    QAction* clear = mnuRecent->addAction(
        Translate(QStringLiteral("OptionMenus"), QStringLiteral("ClearRecent"), QStringLiteral("&Clear")));
    clear->setObjectName(QStringLiteral("submnuClearRecent"));
    clear->setEnabled(!reports.isEmpty());
    connect(clear, &QAction::triggered, this, [this] { writeRecentReports({}); });
}

void frmMain::openRecent(const QString& report) {
    if (!QFileInfo(report).isFile()) {
        QStringList reports = recentReports();
        reports.removeAll(report);
        writeRecentReports(reports);
        showMessage(
            QStringLiteral("The report \"%1\" no longer exists; it was removed from the recent reports.")
                .arg(report));
        return;
    }
    QString file = report;
    OpenFile(file);
}

void frmMain::reportOpened(const QString& file) {
    m_reportPath = QFileInfo(file).absoluteFilePath();
    m_changedOnDisk = false;
    if (!m_watcher->files().isEmpty()) {
        m_watcher->removePaths(m_watcher->files());
    }
    m_watcher->addPath(m_reportPath);
    QStringList reports = recentReports();
    reports.removeAll(m_reportPath);
    reports.prepend(m_reportPath);
    writeRecentReports(reports.mid(0, kRecentCount));
    submnuReload->setEnabled(true);
    updateTitleAndAddress();
}

void frmMain::updateTitleAndAddress() {
    if (m_reportPath.isEmpty()) {
        setWindowTitle(kTitle);
        return;
    }
    QString title = QFileInfo(m_reportPath).fileName() + QStringLiteral(" — ") + kTitle;
    if (m_changedOnDisk) {
        title += QStringLiteral(" (changed on disk — F5 to reload)");
    }
    setWindowTitle(title);

    const NodeCollection& nodes = TV->nodes();
    const int activated = nodes.positionOf(LV->listModel()->parentKey());
    // The change handler doubles every "&", so the path shows as it is.
    WEPath->setCaption(activated > 0 ? m_reportPath + u'\\' + nodes.fullPath(activated) : m_reportPath);
}

void frmMain::reportFileChanged(const QString& path) {
    if (path != m_reportPath) {
        return;
    }
    // A program that saves by replacing the file takes the watch along with the old one.
    if (!m_watcher->files().contains(path) && QFileInfo::exists(path)) {
        m_watcher->addPath(path);
    }
    if (!m_changedOnDisk) {
        m_changedOnDisk = true;
        updateTitleAndAddress();
    }
}

void frmMain::submnuReload_Click() {
    if (m_reportPath.isEmpty()) {
        return;
    }
    // What the user was looking at: the kind, and the selected files by path.
    const QString activatedKey = LV->listModel()->parentKey();
    QSet<QString> selected;
    for (const ReportEntry* file : selectedFiles()) {
        selected.insert(windowsPathKey(file->Path));
    }

    QString file = m_reportPath;
    OpenFile(file);
    const int kind = TV->nodes().positionOf(activatedKey);
    if (kind == 0 || activatedKey.isEmpty()) {
        return;
    }
    // Activated again as a click on it would: the list shows the kind, sorted as before.
    CollapsePending = false;
    ExpandPending = false;
    TV->setCurrentIndex(TV->indexOf(kind));
    ItemClick(TV);
    if (selected.isEmpty()) {
        return;
    }
    const FileListModel* list = LV->listModel();
    QItemSelection keep;
    for (int row = 0; row < list->rowCount(); ++row) {
        const int position = list->position(row);
        if (TV->nodes().isEntry(position) &&
            selected.contains(windowsPathKey(TV->nodes().entry(position).Path))) {
            keep.select(list->index(row, 0), list->index(row, 0));
        }
    }
    if (!keep.isEmpty()) {
        selectInList(keep);
    }
}

void frmMain::dragEnterEvent(QDragEnterEvent* event) {
    acceptDrag(event);
}

void frmMain::dragMoveEvent(QDragMoveEvent* event) {
    acceptDrag(event);
}

void frmMain::acceptDrag(QDropEvent* event) {
    // Every drag is heard, so that a drop can say what was expected; only a report gets a drop action,
    // and anything else shows the cursor that says it will not be taken.
    event->accept();
    event->setDropAction(droppedReport(event->mimeData()).isEmpty() ? Qt::IgnoreAction : Qt::CopyAction);
}

void frmMain::dropEvent(QDropEvent* event) {
    QString report = droppedReport(event->mimeData());
    if (report.isEmpty()) {
        event->setDropAction(Qt::IgnoreAction);
        showMessage(QStringLiteral("Only a Melvadex report can be dropped here: one .vzt or .txt file."));
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    OpenFile(report);
}

} // namespace zentoria
