#include "ReportDocument.h"

#include "export/PathMapping.h"
#include "settings/LanguageCatalog.h"
#include "settings/SettingsStore.h"
#include "ui/common/Ampersands.h"
#include "ui/common/MenuItems.h"
#include "ui/views/FileListView.h"
#include "ui/views/NodeCollection.h"

#include <QAction>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QFileSystemWatcher>
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

ReportDocument::ReportDocument(Window window, QObject* parent)
    : QObject(parent)
    , m_window(std::move(window))
    , m_watcher(new QFileSystemWatcher(this))
    , mnuRecent(new QMenu(QStringLiteral("&Recent"), m_window.widget))
    , submnuReload(namedAction(m_window.widget, "submnuReload", QStringLiteral("&Reload"), Qt::Key_F5)) {
    setObjectName(QStringLiteral("ReportDocument"));
    mnuRecent->setObjectName(QStringLiteral("mnuRecent"));
    mnuRecent->menuAction()->setObjectName(QStringLiteral("mnuRecent"));
    submnuReload->setEnabled(false);
    connect(submnuReload, &QAction::triggered, this, &ReportDocument::submnuReload_Click);
    connect(m_watcher, &QFileSystemWatcher::fileChanged, this, &ReportDocument::fileChanged);
    // Every activation lists another node: the address bar names it.
    connect(m_window.files.list()->listModel(), &QAbstractItemModel::modelReset, this,
            &ReportDocument::updateTitleAndAddress);
    m_window.widget->setAcceptDrops(true);
    m_window.widget->installEventFilter(this);
}

QStringList ReportDocument::recentReports() const {
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

void ReportDocument::showRecentReports() {
    updateRecentMenu(recentReports());
}

void ReportDocument::writeRecentReports(const QStringList& reports) {
    QList<SettingValue> values;
    for (int number = 1; number <= kRecentCount; ++number) {
        values.append({kRecentSection, recentKey(number), reports.value(number - 1)});
    }
    writeSettings(thisProgram(), values);
    updateRecentMenu(reports);
}

void ReportDocument::updateRecentMenu(const QStringList& reports) {
    mnuRecent->clear();
    int number = 0;
    for (const QString& report : reports) {
        QAction* item = mnuRecent->addAction(doubleAmpersands(report));
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

void ReportDocument::openRecent(const QString& report) {
    if (!QFileInfo(report).isFile()) {
        QStringList reports = recentReports();
        reports.removeAll(report);
        writeRecentReports(reports);
        m_window.tell(
            QStringLiteral("The report \"%1\" no longer exists; it was removed from the recent reports.")
                .arg(report));
        return;
    }
    m_window.open(report);
}

void ReportDocument::opened(const QString& file) {
    m_path = QFileInfo(file).absoluteFilePath();
    m_unsavedName.clear();
    m_changedOnDisk = false;
    if (!m_watcher->files().isEmpty()) {
        m_watcher->removePaths(m_watcher->files());
    }
    m_watcher->addPath(m_path);
    QStringList reports = recentReports();
    reports.removeAll(m_path);
    reports.prepend(m_path);
    writeRecentReports(reports.mid(0, kRecentCount));
    submnuReload->setEnabled(true);
    updateTitleAndAddress();
}

void ReportDocument::shownUnsaved(const QString& name) {
    m_path.clear();
    m_unsavedName = name;
    m_changedOnDisk = false;
    if (!m_watcher->files().isEmpty()) {
        m_watcher->removePaths(m_watcher->files());
    }
    submnuReload->setEnabled(false);
    updateTitleAndAddress();
}

void ReportDocument::updateTitleAndAddress() {
    const QString shown = m_path.isEmpty() ? m_unsavedName : m_path;
    if (shown.isEmpty()) {
        Q_EMIT titleChanged(kTitle);
        return;
    }
    // The program's name ends the title: the desktop adds it again to a title that does not end with it.
    QString title = m_path.isEmpty()
                        ? QStringLiteral("%1 (%2)").arg(m_unsavedName, Translate(QStringLiteral("Status"),
                                                                                 QStringLiteral("NotSaved"),
                                                                                 QStringLiteral("not saved")))
                        : QFileInfo(m_path).fileName();
    if (m_changedOnDisk) {
        title += QStringLiteral(" (changed on disk — F5 to reload)");
    }
    title += QStringLiteral(" — ") + kTitle;
    Q_EMIT titleChanged(title);
    const int activated = m_window.files.activatedPosition();
    Q_EMIT addressChanged(activated > 0 ? shown + u'\\' + m_window.files.nodes().fullPath(activated) : shown);
}

void ReportDocument::fileChanged(const QString& path) {
    if (path != m_path) {
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

void ReportDocument::submnuReload_Click() {
    if (m_path.isEmpty()) {
        return;
    }
    // What the user was looking at: the kind, and the selected files by path.
    const ListedFiles& files = m_window.files;
    const QString activatedKey = files.list()->listModel()->parentKey();
    QSet<QString> selected;
    for (const ReportEntry* file : files.selected()) {
        selected.insert(windowsPathKey(file->Path));
    }

    m_window.open(m_path);
    const int kind = activatedKey.isEmpty() ? 0 : files.nodes().positionOf(activatedKey);
    if (kind == 0) {
        return;
    }
    // Activated again as a click on it would: the list shows the kind, sorted as before.
    m_window.activate(kind);
    if (selected.isEmpty()) {
        return;
    }
    const QItemSelection keep = files.rowsWhere(
        [&selected](const ReportEntry& file) { return selected.contains(windowsPathKey(file.Path)); });
    if (!keep.isEmpty()) {
        files.list()->selectRows(keep);
    }
}

bool ReportDocument::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_window.widget) {
        return false;
    }
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove: {
        // Every drag is heard, so that a drop can say what was expected; only a report gets a drop
        // action, and anything else shows the cursor that says it will not be taken. What is dragged
        // stays the same while it moves: the disk is asked once, when it enters.
        auto* drag = static_cast<QDropEvent*>(event);
        if (event->type() == QEvent::DragEnter) {
            m_dragIsReport = !droppedReport(drag->mimeData()).isEmpty();
        }
        drag->accept();
        drag->setDropAction(m_dragIsReport ? Qt::CopyAction : Qt::IgnoreAction);
        return true;
    }
    case QEvent::Drop: {
        auto* drop = static_cast<QDropEvent*>(event);
        const QString report = droppedReport(drop->mimeData());
        if (report.isEmpty()) {
            drop->setDropAction(Qt::IgnoreAction);
            m_window.tell(
                QStringLiteral("Only a Melvadex report can be dropped here: one .vzt or .txt file."));
            return true;
        }
        drop->setDropAction(Qt::CopyAction);
        drop->accept();
        m_window.open(report);
        return true;
    }
    default:
        return false;
    }
}

} // namespace zentoria
