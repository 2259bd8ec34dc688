#include "CollectionCheck.h"

#include "CheckProgress.h"
#include "Version.h"
#include "report/FileNameForm.h"
#include "report/ReportReader.h"
#include "report/ReportWriter.h"
#include "scan/LocalFile.h"
#include "settings/Preferences.h"
#include "settings/Texts.h"
#include "ui/common/CommonDialog.h"
#include "ui/common/FailureWording.h"
#include "ui/common/MenuItems.h"
#include "ui/common/PathQuestion.h"
#include "ui/document/ReportDocument.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QThread>

namespace zentoria {

namespace {

// Files that could not be checked are named in the message, up to this many.
constexpr int kNamedFailures = 10;

ReportOrigin madeHere(const QStringList& checked) {
    return {QStringLiteral("Zentoria"), QStringLiteral(ZENTORIA_VERSION), checked};
}

// The first few of the files named in the message itself, all that the check kept in its details.
void nameFailures(QStringList& lines, QString& details, const QList<scan::Failure>& failures,
                  qsizetype notKept = 0) {
    const scan::FailureWording wording = failureWording();
    QStringList all;
    for (const scan::Failure& failure : failures) {
        all << failure.path + QStringLiteral(": ") + describe(failure, wording);
    }
    lines << all.first(std::min<qsizetype>(kNamedFailures, all.size()));
    if (all.size() + notKept > kNamedFailures) {
        lines << uiText(txt::AndMore).arg(all.size() + notKept - kNamedFailures);
    }
    if (notKept > 0) {
        all << uiText(txt::AndMore).arg(notKept);
    }
    details = all.join(u'\n');
}

// Why a folder the report's files are under could not be reached, in the language file's words.
QString reachWords(const scan::FolderReach& reach) {
    switch (reach.state) {
    case scan::FolderReach::Reachable:
    case scan::FolderReach::Missing:
        break;
    case scan::FolderReach::Empty:
        return uiText(txt::ReachEmpty);
    case scan::FolderReach::CannotOpen:
        return uiText(txt::ReachCannotOpen)
            .arg(failureWording().errors.value(reach.error, scan::systemError(reach.error)));
    }
    return uiText(txt::ReachMissing);
}

// What the re-check could not look at beyond the files it looked for: folders out of reach, and what
// the report itself lacks.
QStringList notLookedAt(const scan::RecheckResult& result, const MissingRecords& missing) {
    QStringList lines;
    for (const scan::UnreachableFolder& folder : result.unreachable) {
        lines << uiText(txt::FolderUnreachable)
                     .arg(folder.folder, reachWords(folder.reach))
                     .arg(folder.files.size());
    }
    if (missing.notRead > 0) {
        lines << uiText(txt::RecordsNotRead).arg(missing.notRead);
    }
    if (missing.endedEarly) {
        lines << uiText(txt::EndedEarlyUnchecked);
    }
    if (missing.leftOut > 0) {
        lines << uiText(txt::LeftOutUnchecked).arg(missing.leftOut);
    }
    return lines;
}

} // namespace

CollectionCheck::CollectionCheck(Window window, QObject* parent)
    : QObject(parent)
    , m_window(std::move(window))
    , m_progress(new CheckProgress(m_window.widget))
    , submnuCheckFolder(namedAction(this, "submnuCheckFolder", QStringLiteral("Check &Folder…")))
    , submnuRecheck(namedAction(this, "submnuRecheck", QStringLiteral("Check &Listed Files Again"))) {
    connect(submnuCheckFolder, &QAction::triggered, this, &CollectionCheck::submnuCheckFolder_Click);
    connect(submnuRecheck, &QAction::triggered, this, &CollectionCheck::submnuRecheck_Click);
    connect(m_progress, &CheckProgress::cancelRequested, this, [this] {
        if (m_scanner) {
            m_scanner->cancel();
        }
    });
    connect(m_window.document, &ReportDocument::shown, this, &CollectionCheck::updateActions);
    // Closing the window ends the check first: its threads must not outlive what they report to.
    connect(m_window.document, &ReportDocument::closing, this, &CollectionCheck::cancelAndWait);
    updateActions();
}

CollectionCheck::~CollectionCheck() {
    cancelAndWait();
}

void CollectionCheck::submnuCheckFolder_Click() {
    // Its result replaces the report shown.
    if (isRunning() || !m_window.document->maySetAside()) {
        return;
    }
    CommonDialog& dialog = *m_window.dialog;
    dialog.DialogTitle = uiText(txt::CheckFolderTitle);
    const QString last = read(settings::LastCheckedFolder);
    const QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    dialog.InitDir = QFileInfo(last).isDir() ? last : QFileInfo(music).isDir() ? music : QDir::homePath();
    if (!dialog.ShowFolder(m_window.widget)) {
        return;
    }
    const QString folder = QDir::cleanPath(QFileInfo(dialog.FileName).absoluteFilePath());
    if (!QFileInfo(folder).isDir()) {
        m_window.tell(uiText(txt::NoSuchFolder).arg(folder));
        return;
    }
    write(settings::LastCheckedFolder, folder);
    // The dialog gives the folder's name as text: its bytes are that text's, whatever "%" it holds.
    const QString shown = shownFileName(QFile::encodeName(folder));
    const PathMappings mapping = storedPathMappings();
    const QStringList checked{mapping.windowsPath(shown)};
    auto result = std::make_shared<FolderResult>();
    // Written as the user's Windows folders would name them, where Preferences says where those are.
    run(
        [result, shown, mapping, checked](scan::Scanner& scanner, const scan::Scanner::Progress& progress) {
            // Named as the report will name them while they are found, so that the files it holds are
            // the first in its order and none it refuses takes a place.
            scanner.setReportNaming(scan::reportNaming(
                [mapping](const QString& path) { return mapping.reversibleWindowsPath(path); }));
            *result = shownAsReport(scanner.scanFolders({shown}, progress), checked);
        },
        [this, result, shown] { folderChecked(*result, {shown}); }, [result] { return result->counts; });
}

CollectionCheck::FolderResult CollectionCheck::shownAsReport(const scan::ScanResult& scanned,
                                                             const QStringList& checked) {
    FolderResult shown{scan::reportOf(scanned, madeHere(checked)), scanned.counts};
    // The scanner told a file no report can name as not checked already; the kinds count what the
    // report holds, so that the end line, the message and the kinds' tooltips say one thing.
    shown.counts.perKind = {};
    for (const ReportEntry& entry : shown.report.entries) {
        shown.counts.perKind.add(entry.Kind);
    }
    return shown;
}

void CollectionCheck::submnuRecheck_Click() {
    const ReportDocument& document = *m_window.document;
    if (isRunning() || document.entries().isEmpty()) {
        return;
    }
    // Its result replaces the report shown; what it checks is that report, saved or discarded.
    const QList<ReportEntry> listed = document.entries();
    // What the report lacks stays with its files checked again, so that no saved re-check drops it.
    const ReportOrigin& before = document.origin();
    const MissingRecords missing = before.missing();
    const NameReading names = before.names;
    QString report =
        document.path().isEmpty() ? document.origin().folders.join(QStringLiteral("; ")) : document.path();
    // A re-check's result checked again keeps its name, rather than "checked again" twice.
    QString name = document.source() == ReportDocument::Source::Recheck
                       ? document.name()
                       : uiText(txt::RecheckName).arg(document.name());
    if (!m_window.document->maySetAside()) {
        return;
    }
    if (document.source() == ReportDocument::Source::File && document.path() != report) {
        report = document.path();
        name = uiText(txt::RecheckName).arg(document.name());
    }
    QStringList paths;
    paths.reserve(listed.size());
    for (const ReportEntry& entry : listed) {
        paths << entry.Path;
    }
    const std::optional<PathMappings> mapping =
        pathMappingsFor(paths, paths, *m_window.dialog, m_window.widget, m_window.tell);
    if (!mapping) {
        return;
    }
    auto result = std::make_shared<scan::RecheckResult>();
    run(
        [result, entries = listed, mapping = *mapping, names](scan::Scanner& scanner,
                                                              const scan::Scanner::Progress& progress) {
            *result = scan::recheckEntries(
                entries,
                [&mapping, names](const QString& path) {
                    const PathMapping* one = mapping.mappingFor(path);
                    return scan::LocalPlace{shownFileName(mapping.map(path), names),
                                            one ? one->localFolder : QString()};
                },
                scanner, progress);
        },
        [this, result, report, name, missing, names] {
            ReportOrigin made = madeHere({report});
            made.recheck = true;
            made.names = names;
            made.notChecked = result->notFound.size();
            made.unreachable = result->unreachableFiles();
            made.carry(missing);
            m_window.document->showResult(result->now, name, std::move(made),
                                          ReportDocument::Source::Recheck);
            rechecked(*result, missing);
        });
}

void CollectionCheck::run(Work work, std::function<void()> done, std::function<scan::ScanCounts()> counted) {
    m_scanner = std::make_unique<scan::Scanner>();
    m_done = std::move(done);
    m_counted = std::move(counted);
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
    if (const auto counted = std::exchange(m_counted, {}); counted && !cancelled) {
        m_progress->settle(counted());
    }
    m_progress->finish(cancelled);
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

void CollectionCheck::folderChecked(FolderResult& result, const QStringList& folders) {
    scan::ScanReport& made = result.report;
    const QString name = uiText(txt::CheckName).arg(made.origin.folders.join(QStringLiteral("; ")));
    const qsizetype shown = made.entries.size();
    const qsizetype leftOut = made.origin.leftOut;
    const qsizetype notChecked = made.origin.notChecked;
    const QList<scan::Failure> failures = made.failures;
    m_window.document->showResult(std::move(made.entries), name, std::move(made.origin),
                                  ReportDocument::Source::Check);

    QStringList lines;
    if (result.counts.found == 0 && notChecked == 0) {
        lines << uiText(txt::NoMp3Found).arg(folders.join(QStringLiteral("\", \"")));
    } else if (shown == 0 && notChecked == 0) {
        lines << uiText(txt::NoneLacking).arg(result.counts.probed);
    }
    if (leftOut > 0) {
        lines << uiText(txt::LeftOut).arg(shown + leftOut).arg(kMaxRecords).arg(leftOut);
    }
    QString details;
    if (notChecked > 0) {
        lines << (notChecked == 1 ? uiText(txt::NotCheckedOne) : uiText(txt::NotChecked).arg(notChecked));
        nameFailures(lines, details, failures, made.failuresLeftOut);
    }
    if (!lines.isEmpty()) {
        m_window.tellInDetail(lines.join(u'\n'), details);
    }
}

void CollectionCheck::rechecked(const scan::RecheckResult& result, const MissingRecords& missing) {
    QStringList lines{uiText(txt::RecheckDone)
                          .arg(result.fixed.size())
                          .arg(result.still.size())
                          .arg(result.notFound.size())
                          .arg(result.changed.size())};
    lines << notLookedAt(result, missing);
    // Not seen is not fixed: a wrong folder mapping must not pass for a collection put right.
    if (result.fixed.isEmpty() && result.still.isEmpty() && result.changed.isEmpty() &&
        (!result.notFound.isEmpty() || !result.unreachable.isEmpty())) {
        if (!result.notFound.isEmpty()) {
            lines << uiText(txt::NoneFound);
        }
        lines << uiText(txt::OfferPreferences);
        // Which files were looked for, and where, is what shows the folder to be wrong.
        QStringList ignored;
        QString details;
        nameFailures(ignored, details, result.notFound);
        if (m_window.ask(lines.join(u'\n'), details) && m_window.preferences) {
            m_window.preferences->trigger();
        }
        return;
    }
    if (result.notFound.isEmpty()) {
        m_window.tell(lines.join(u'\n'));
        return;
    }
    lines << uiText(txt::NotFoundKept);
    QString details;
    nameFailures(lines, details, result.notFound);
    m_window.tellInDetail(lines.join(u'\n'), details);
}

void CollectionCheck::updateActions() {
    const bool running = isRunning();
    submnuCheckFolder->setEnabled(!running);
    submnuRecheck->setEnabled(!running && !m_window.document->entries().isEmpty());
}

} // namespace zentoria
