#include "ReportDocument.h"

#include "RecentReports.h"
#include "RecoveryFile.h"
#include "export/PathMapping.h"
#include "report/ReportFile.h"
#include "settings/Texts.h"
#include "ui/common/CommonDialog.h"
#include "ui/common/MenuItems.h"
#include "ui/common/MessageBoxes.h"
#include "ui/views/FileListView.h"
#include "ui/views/ListedFiles.h"
#include "ui/views/ReportTreeModel.h"

#include <QAction>
#include <QCloseEvent>
#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QMimeData>
#include <QSet>
#include <QUrl>

namespace zentoria {

namespace {

const QString kTitle = QStringLiteral("Melvadex's Zentoria");

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

ReportDocument::ReportDocument(QObject* parent)
    : QObject(parent)
    , m_model(new ReportTreeModel(this))
    , m_watcher(new QFileSystemWatcher(this))
    , submnuReload(namedAction(this, "submnuReload", QStringLiteral("Re&load"), Qt::Key_F5))
    , submnuSaveAs(namedAction(this, "submnuSaveAs", QStringLiteral("Save Report &As…"),
                               Qt::CTRL | Qt::SHIFT | Qt::Key_S)) {
    setObjectName(QStringLiteral("ReportDocument"));
    submnuReload->setEnabled(false);
    submnuSaveAs->setEnabled(false);
    connect(submnuReload, &QAction::triggered, this, &ReportDocument::reload);
    connect(submnuSaveAs, &QAction::triggered, this, &ReportDocument::saveAs);
    connect(m_watcher, &QFileSystemWatcher::fileChanged, this, &ReportDocument::fileChanged);
}

void ReportDocument::attach(Window window) {
    m_window = std::move(window);
    m_recent = new RecentReports(
        m_window.widget, [this](const QString& report) { open(report); },
        [this](const QString& text) { tell(text); }, this);
    // Every activation lists another node: the address bar names it.
    connect(m_window.list->listModel(), &QAbstractItemModel::modelReset, this,
            &ReportDocument::updateTitleAndAddress);
    m_window.widget->setAcceptDrops(true);
    m_window.widget->installEventFilter(this);
}

const NodeCollection& ReportDocument::nodes() const {
    return m_model->nodes();
}

const QList<ReportEntry>& ReportDocument::entries() const {
    return m_model->nodes().entries();
}

QString ReportDocument::name() const {
    return m_path.isEmpty() ? m_resultName : QFileInfo(m_path).fileName();
}

QMenu* ReportDocument::recentMenu() const {
    return m_recent->menu();
}

QStringList ReportDocument::recentReports() const {
    return m_recent->reports();
}

void ReportDocument::showRecentReports() {
    m_recent->show();
}

void ReportDocument::tell(const QString& text) {
    m_window.messages->show(m_window.widget, text);
}

void ReportDocument::tellAbout(const QString& file, const QString& text) {
    // Titled with the file: at start-up, with no window behind it yet, the text alone may not say which.
    m_window.messages->showTitled(m_window.widget, QFileInfo(file).fileName() + QStringLiteral(" — Zentoria"),
                                  text);
}

void ReportDocument::open(const QString& file) {
    ReportFile read = readReportFile(file);
    switch (read.failure) {
    case ReportFailure::CannotOpen:
        tellAbout(file, uiText(txt::CannotOpen).arg(file, read.reason));
        return;
    case ReportFailure::Empty:
        tellAbout(file, uiText(txt::EmptyFile).arg(file));
        return;
    case ReportFailure::NotAReport:
        tellAbout(file, uiText(txt::Corrupted));
        return;
    case ReportFailure::None:
    case ReportFailure::ReadFailed:
        break;
    }
    // Asked only now: a file that is no report replaces nothing.
    if (!maySetAside()) {
        return;
    }
    const ReportReadResult& result = read.result;
    // Said after the report is shown, counting the files it read.
    const QString problems = result.describeProblems(ProblemWording(uiText));
    // What the report lacks goes with it into a re-check of its files.
    const MissingRecords missing = result.missing();
    show(std::move(read.result.Entries), result.CreationDate);
    // Of where a report came from, only what it lacks: what a reader of the file finds in its header.
    ReportOrigin origin;
    origin.carry(missing);
    origin.names = result.Names;
    setSource(Source::File, QFileInfo(file).absoluteFilePath(), {}, std::move(origin));
    if (result.Outcome == Outcome::NoProblems) {
        tellAbout(file, uiText(txt::NoProblemFiles));
    }
    if (!problems.isEmpty()) {
        tellAbout(file, uiText(txt::NotReadCompletely).arg(file) + QStringLiteral("\n\n") + problems);
    }
    if (read.failure == ReportFailure::ReadFailed) {
        tellAbout(file, uiText(txt::ReadFailed).arg(file, read.reason));
    }
}

void ReportDocument::showResult(QList<ReportEntry> entries, const QString& name, ReportOrigin origin,
                                Source source) {
    show(std::move(entries), {});
    setSource(source, {}, name, std::move(origin));
}

void ReportDocument::clear() {
    show({}, {});
    setSource(Source::None, {}, {}, {});
}

void ReportDocument::show(QList<ReportEntry> entries, const QString& creationDate) {
    // The root, the kinds in their order, then every entry under its kind.
    m_model->clear();
    const QString root = QStringLiteral("Integrity");
    m_model->addNode({}, root, QStringLiteral("Integrity Report"));
    for (ProblemKind kind : {ProblemKind::ID3v1, ProblemKind::ID3v2, ProblemKind::ID3v0}) {
        m_model->addNode(root, kindCode(kind), kindCaption(kind));
    }
    {
        // Views learn of the entries once they are all there.
        const ReportTreeModel::EntryBatch batch(*m_model, entries.size());
        for (ReportEntry& entry : entries) {
            AddEntryNode(std::move(entry));
        }
    }
    m_model->setCreationDate(creationDate);
    Q_EMIT shown();
}

void ReportDocument::AddEntryNode(ReportEntry entry) {
    // Every entry key starts with "ID3v1", whatever the entry's kind: the kind is the parent's. The
    // collection derives keys and parents from the entry itself.
    m_model->addEntry(std::move(entry));
}

void ReportDocument::setSource(Source source, const QString& path, const QString& name, ReportOrigin origin) {
    m_source = source;
    m_path = path;
    m_resultName = name;
    m_origin = std::move(origin);
    if (!path.isEmpty()) {
        m_reloadFrom = path;
    } else if (source != Source::Recheck) {
        m_reloadFrom.clear();
    }
    m_changedOnDisk = false;
    if (!m_watcher->files().isEmpty()) {
        m_watcher->removePaths(m_watcher->files());
    }
    // A report with a file of its own is one of the reports opened lately.
    if (!m_path.isEmpty()) {
        m_watcher->addPath(m_path);
        m_recent->add(m_path);
    }
    submnuReload->setEnabled(!m_reloadFrom.isEmpty());
    updateSaveAs();
    updateTitleAndAddress();
}

bool ReportDocument::maySetAside() {
    // A check that found nothing loses nothing.
    if (isSaved() || m_ending || entries().isEmpty()) {
        return true;
    }
    const QString question = uiText(txt::SaveCheckQuestion) + QStringLiteral("\n\n") +
                             uiText(txt::SaveCheckDetail).arg(m_resultName);
    switch (m_window.messages->askToSave(m_window.widget, question)) {
    case QMessageBox::Save:
        return saveAs();
    case QMessageBox::Discard:
        // Gone from the screen as well: a check cancelled after this must not leave it shown as if kept.
        clear();
        return true;
    default:
        return false;
    }
}

void ReportDocument::keepForRecovery() {
    if (!isSaved()) {
        zentoria::keepForRecovery(reportBytes(m_origin, entries()));
    }
    m_ending = true;
}

void ReportDocument::tellOfRecovery() {
    const QString recovered = takeRecoveredReport();
    if (!recovered.isEmpty()) {
        m_recent->add(recovered);
        tell(uiText(txt::Recovered).arg(recovered));
    }
}

void ReportDocument::updateTitleAndAddress() {
    const QString shown = m_path.isEmpty() ? m_resultName : m_path;
    if (shown.isEmpty()) {
        Q_EMIT titleChanged(kTitle);
        Q_EMIT addressChanged({});
        return;
    }
    // The program's name ends the title: the desktop adds it again to a title that does not end with it.
    QString title = isSaved() ? name() : QStringLiteral("%1 (%2)").arg(name(), uiText(txt::NotSaved));
    if (m_changedOnDisk) {
        title += QStringLiteral(" (%1)").arg(uiText(txt::ChangedOnDisk));
    }
    title += QStringLiteral(" — ") + kTitle;
    Q_EMIT titleChanged(title);
    const int activated = ListedFiles(&nodes(), m_window.list).activatedPosition();
    Q_EMIT addressChanged(activated > 0 ? shown + u'\\' + nodes().fullPath(activated) : shown);
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

void ReportDocument::reload() {
    if (m_reloadFrom.isEmpty()) {
        return;
    }
    // What the user was looking at: the kind, and the selected files by path.
    const ListedFiles files(&nodes(), m_window.list);
    const QString activatedKey = m_window.list->listModel()->parentKey();
    QSet<QString> selected;
    for (const ReportEntry* file : files.selected()) {
        selected.insert(windowsPathKey(file->Path));
    }

    const QString path = m_reloadFrom;
    open(path);
    if (m_path != path) {
        return;
    }
    const int kind = activatedKey.isEmpty() ? 0 : nodes().positionOf(activatedKey);
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
        m_window.list->selectRows(keep);
    }
}

bool ReportDocument::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_window.widget) {
        return false;
    }
    switch (event->type()) {
    case QEvent::Close:
        // Nothing unsaved goes without a question; the rest of the program hears of the closing only
        // once it is sure.
        if (!maySetAside()) {
            event->ignore();
            return true;
        }
        Q_EMIT closing();
        return false;
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
            tell(uiText(txt::OnlyReportsDrop));
            return true;
        }
        drop->setDropAction(Qt::CopyAction);
        drop->accept();
        open(report);
        return true;
    }
    default:
        return false;
    }
}

} // namespace zentoria
