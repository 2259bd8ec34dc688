#include "CollectionCheck.h"

#include "CheckProgress.h"
#include "Version.h"
#include "settings/LanguageCatalog.h"
#include "settings/Preferences.h"
#include "ui/common/CommonDialog.h"
#include "ui/common/MenuItems.h"
#include "ui/common/PathQuestion.h"
#include "ui/document/ReportDocument.h"
#include "ui/views/NodeCollection.h"

#include <QAction>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QStandardPaths>
#include <QThread>

namespace zentoria {

namespace {

// Files that could not be checked are named in the message, up to this many.
constexpr int kNamedFailures = 10;

QString text(const char* key, const char* english) {
    return Translate(QStringLiteral("Dialogs"), QLatin1StringView(key), QString::fromUtf8(english));
}

scan::ReportOrigin madeHere(const QStringList& checked) {
    return {QStringLiteral("Zentoria"), QStringLiteral(ZENTORIA_VERSION), checked};
}

// The first few of the files named in the message itself, all of them in its details.
void nameFailures(QStringList& lines, QString& details, const QList<scan::Failure>& failures) {
    QStringList all;
    for (const scan::Failure& failure : failures) {
        all << failure.path + QStringLiteral(": ") + failure.why;
    }
    lines << all.first(std::min<qsizetype>(kNamedFailures, all.size()));
    if (all.size() > kNamedFailures) {
        lines << text("AndMore", "… and %1 more.").arg(all.size() - kNamedFailures);
    }
    details = all.join(u'\n');
}

} // namespace

CollectionCheck::CollectionCheck(Window window, QObject* parent)
    : QObject(parent)
    , m_window(std::move(window))
    , m_progress(new CheckProgress(m_window.widget))
    , submnuCheckFolder(namedAction(this, "submnuCheckFolder", QStringLiteral("Check &Folder…")))
    , submnuRecheck(namedAction(this, "submnuRecheck", QStringLiteral("Check &Listed Files Again")))
    , submnuSaveAs(namedAction(this, "submnuSaveAs", QStringLiteral("Save Report &As…"),
                               Qt::CTRL | Qt::SHIFT | Qt::Key_S)) {
    connect(submnuCheckFolder, &QAction::triggered, this, &CollectionCheck::submnuCheckFolder_Click);
    connect(submnuRecheck, &QAction::triggered, this, &CollectionCheck::submnuRecheck_Click);
    connect(submnuSaveAs, &QAction::triggered, this, &CollectionCheck::submnuSaveAs_Click);
    connect(m_progress, &CheckProgress::cancelRequested, this, [this] {
        if (m_scanner) {
            m_scanner->cancel();
        }
    });
    // Every report shown passes through the document's title.
    connect(m_window.document, &ReportDocument::titleChanged, this, &CollectionCheck::updateActions);
    m_window.widget->installEventFilter(this);
    updateActions();
}

CollectionCheck::~CollectionCheck() {
    cancelAndWait();
}

bool CollectionCheck::eventFilter(QObject* watched, QEvent* event) {
    // Closing the window ends the check first: its threads must not outlive what they report to.
    if (watched == m_window.widget && event->type() == QEvent::Close) {
        cancelAndWait();
    }
    return false;
}

void CollectionCheck::submnuCheckFolder_Click() {
    if (isRunning()) {
        return;
    }
    CommonDialog& dialog = *m_window.dialog;
    dialog.DialogTitle = text("CheckFolderTitle", "Check the MP3 files of a folder");
    const QString last = read(settings::LastCheckedFolder);
    const QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    dialog.InitDir = QFileInfo(last).isDir() ? last : QFileInfo(music).isDir() ? music : QDir::homePath();
    if (!dialog.ShowFolder(m_window.widget)) {
        return;
    }
    const QString folder = QDir::cleanPath(QFileInfo(dialog.FileName).absoluteFilePath());
    if (!QFileInfo(folder).isDir()) {
        m_window.tell(text("NoSuchFolder", "The folder \"%1\" is not on this computer.").arg(folder));
        return;
    }
    write(settings::LastCheckedFolder, folder);
    auto result = std::make_shared<scan::ScanResult>();
    run(
        [result, folder](scan::Scanner& scanner, const scan::Scanner::Progress& progress) {
            *result = scanner.scanFolders({folder}, progress);
        },
        [this, result, folder] { folderChecked(*result, {folder}); });
}

void CollectionCheck::submnuRecheck_Click() {
    const QList<ReportEntry>& listed = m_window.files.nodes().entries();
    if (isRunning() || listed.isEmpty()) {
        return;
    }
    QStringList paths;
    paths.reserve(listed.size());
    for (const ReportEntry& entry : listed) {
        paths << entry.Path;
    }
    const std::optional<PathMappings> mapping =
        pathMappingsFor(paths, *m_window.dialog, m_window.widget, m_window.tell);
    if (!mapping) {
        return;
    }
    const QString report = m_window.document->path().isEmpty() ? m_origin.folders.join(QStringLiteral("; "))
                                                               : m_window.document->path();
    const QString name = m_window.document->path().isEmpty() ? m_resultName : QFileInfo(report).fileName();
    auto result = std::make_shared<scan::RecheckResult>();
    run(
        [result, entries = listed, mapping = *mapping](scan::Scanner& scanner,
                                                       const scan::Scanner::Progress& progress) {
            *result = scan::recheckEntries(
                entries, [&mapping](const QString& path) { return mapping.map(path); }, scanner, progress);
        },
        [this, result, report, name, listed = listed.size()] {
            scan::ReportOrigin made = madeHere({report});
            made.recheck = true;
            made.notChecked = result->notFound.size();
            showResult(result->now, text("RecheckName", "%1, checked again").arg(name), std::move(made));
            rechecked(*result, listed);
        });
}

void CollectionCheck::submnuSaveAs_Click() {
    if (!m_resultShown) {
        return;
    }
    CommonDialog& dialog = *m_window.dialog;
    dialog.Filter = QStringLiteral("Melvadex Integrity Report (*.vzt)|*.vzt");
    dialog.FilterIndex = 1;
    dialog.DialogTitle = text("SaveReportTitle", "Save the report as");
    // Beside the reports the user opens (not in the music folder), named after what was checked: "Music.vzt",
    // or "music now.vzt" for the files of music.vzt checked again.
    const QStringList recent = m_window.document->recentReports();
    const QString folder = recent.isEmpty() ? QDir::homePath() : QFileInfo(recent.first()).absolutePath();
    QString checked = m_origin.folders.value(0).section(u'/', -1).section(u'\\', -1);
    if (checked.endsWith(QStringLiteral(".vzt"), Qt::CaseInsensitive) ||
        checked.endsWith(QStringLiteral(".txt"), Qt::CaseInsensitive)) {
        checked = checked.chopped(4) + QStringLiteral(" now");
    }
    dialog.InitDir = QDir(folder).filePath((checked.isEmpty() ? QStringLiteral("check") : checked) +
                                           QStringLiteral(".vzt"));
    if (!dialog.ShowSave(m_window.widget)) {
        return;
    }
    QString file = dialog.FileName;
    if (QFileInfo(file).suffix().isEmpty()) {
        file += QStringLiteral(".vzt");
    }
    const QByteArray report = scan::reportBytes(m_origin, m_window.files.nodes().entries());
    if (QString error; !scan::saveReport(file, report, &error)) {
        m_window.tell(text("SaveFailed", "The report could not be saved as \"%1\": %2.").arg(file, error));
        return;
    }
    m_resultShown = false;
    m_window.document->opened(file);
}

void CollectionCheck::run(Work work, std::function<void()> done) {
    m_scanner = std::make_unique<scan::Scanner>();
    m_done = std::move(done);
    // Counts reach the window a few times a second, by queued calls: never a signal per file.
    CheckProgress* progress = m_progress;
    const scan::Scanner::Progress tellProgress = [progress](const scan::ScanCounts& counts) {
        QMetaObject::invokeMethod(
            progress, [progress, counts] { progress->showCounts(counts); }, Qt::QueuedConnection);
    };
    scan::Scanner* scanner = m_scanner.get();
    m_thread =
        QThread::create([work = std::move(work), scanner, tellProgress] { work(*scanner, tellProgress); });
    m_thread->setObjectName(QStringLiteral("CollectionCheck"));
    connect(m_thread, &QThread::finished, this, [this, generation = ++m_generation] {
        if (generation == m_generation) {
            cleanUp();
        }
    });
    m_progress->start();
    updateActions();
    m_thread->start();
}

void CollectionCheck::cleanUp() {
    if (!m_thread) {
        return;
    }
    m_thread->wait();
    delete m_thread;
    m_thread = nullptr;
    const bool cancelled = m_scanner->isCancelled();
    m_scanner.reset();
    m_progress->hide();
    const std::function<void()> done = std::exchange(m_done, {});
    updateActions();
    if (!cancelled && done) {
        done();
    }
}

void CollectionCheck::cancelAndWait() {
    if (!m_thread) {
        return;
    }
    m_scanner->cancel();
    m_done = {};
    ++m_generation;
    cleanUp();
}

void CollectionCheck::folderChecked(const scan::ScanResult& result, const QStringList& folders) {
    // Written as the user's Windows folders would name them, where Preferences says where those are.
    const PathMappings mapping = storedPathMappings();
    QList<scan::Failure> failures = result.failures;
    const qsizetype leftOut = result.leftOut;
    QList<ReportEntry> entries = scan::reportEntries(
        result.problems, [&mapping](const QString& path) { return mapping.reversibleWindowsPath(path); },
        &failures);
    const qsizetype shown = entries.size();
    QStringList checked;
    for (const QString& folder : folders) {
        checked << mapping.windowsPath(folder);
    }
    scan::ReportOrigin made = madeHere(checked);
    made.leftOut = leftOut;
    made.notChecked = failures.size();
    showResult(std::move(entries), text("CheckName", "Check of %1").arg(checked.join(QStringLiteral("; "))),
               std::move(made));

    QStringList lines;
    if (result.counts.found == 0 && failures.isEmpty()) {
        lines << text("NoMp3Found", "No MP3 file was found in \"%1\".")
                     .arg(folders.join(QStringLiteral("\", \"")));
    } else if (shown == 0 && failures.isEmpty()) {
        lines << text("NoneLacking", "%1 MP3 files checked: none lacks a tag.").arg(result.counts.probed);
    }
    if (leftOut > 0) {
        lines << text("LeftOut",
                      "%1 files lack a tag, but a report holds %2: the last %3 in list order are not "
                      "shown. Check fewer folders at a time.")
                     .arg(shown + leftOut)
                     .arg(shown)
                     .arg(leftOut);
    }
    QString details;
    if (!failures.isEmpty()) {
        lines << text("NotChecked", "%1 files or folders could not be checked, so the check cannot say "
                                    "whether they lack a tag:")
                     .arg(failures.size());
        nameFailures(lines, details, failures);
    }
    if (!lines.isEmpty()) {
        m_window.tellInDetail(lines.join(u'\n'), details);
    }
}

void CollectionCheck::rechecked(const scan::RecheckResult& result, qsizetype listed) {
    QStringList lines{text("RecheckDone", "%1 fixed, %2 still, %3 not found, %4 changed kind")
                          .arg(result.fixed.size())
                          .arg(result.still.size())
                          .arg(result.notFound.size())
                          .arg(result.changed.size())};
    if (result.notFound.isEmpty()) {
        m_window.tell(lines.first());
        return;
    }
    // Not seen is not fixed: a wrong folder mapping must not pass for a collection put right.
    if (result.notFound.size() == listed) {
        lines << text("NoneFound", "None of the report's files was found on this computer: the folder "
                                   "where the report's files are is probably set wrong. They are listed "
                                   "with their earlier kind.")
              << text("OfferPreferences", "Open Tools > Preferences to correct it?");
        if (m_window.ask(lines.join(u'\n')) && m_window.preferences) {
            m_window.preferences->trigger();
        }
        return;
    }
    lines << text("NotFoundKept", "These files were not found; they are listed with their earlier kind:");
    QString details;
    nameFailures(lines, details, result.notFound);
    m_window.tellInDetail(lines.join(u'\n'), details);
}

void CollectionCheck::showResult(QList<ReportEntry> entries, const QString& name, scan::ReportOrigin origin) {
    m_window.show(std::move(entries));
    m_origin = std::move(origin);
    m_resultName = name;
    m_resultShown = true;
    m_window.document->shownUnsaved(name);
}

void CollectionCheck::updateActions() {
    const bool running = isRunning();
    submnuCheckFolder->setEnabled(!running);
    submnuRecheck->setEnabled(!running && m_window.files.nodes().entryCount() > 0);
    // A report read from a file is no longer the result: it has a file of its own.
    if (!m_window.document->path().isEmpty()) {
        m_resultShown = false;
    }
    submnuSaveAs->setEnabled(m_resultShown);
}

} // namespace zentoria
