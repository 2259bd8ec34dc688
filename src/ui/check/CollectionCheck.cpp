#include "CollectionCheck.h"

#include "CheckProgress.h"
#include "FailureWording.h"
#include "Version.h"
#include "settings/Preferences.h"
#include "settings/Texts.h"
#include "ui/common/CommonDialog.h"
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

// The first few of the files named in the message itself, all of them in its details.
void nameFailures(QStringList& lines, QString& details, const QList<scan::Failure>& failures) {
    const scan::FailureWording wording = failureWording();
    QStringList all;
    for (const scan::Failure& failure : failures) {
        all << failure.path + QStringLiteral(": ") + describe(failure, wording);
    }
    lines << all.first(std::min<qsizetype>(kNamedFailures, all.size()));
    if (all.size() > kNamedFailures) {
        lines << uiText(txt::AndMore).arg(all.size() - kNamedFailures);
    }
    details = all.join(u'\n');
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
    auto result = std::make_shared<scan::ScanResult>();
    run(
        [result, folder](scan::Scanner& scanner, const scan::Scanner::Progress& progress) {
            *result = scanner.scanFolders({folder}, progress);
        },
        [this, result, folder] { folderChecked(*result, {folder}); });
}

void CollectionCheck::submnuRecheck_Click() {
    const QList<ReportEntry>& listed = m_window.document->entries();
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
    const ReportDocument& document = *m_window.document;
    const QString report =
        document.path().isEmpty() ? document.origin().folders.join(QStringLiteral("; ")) : document.path();
    const QString name = document.name();
    auto result = std::make_shared<scan::RecheckResult>();
    run(
        [result, entries = listed, mapping = *mapping](scan::Scanner& scanner,
                                                       const scan::Scanner::Progress& progress) {
            *result = scan::recheckEntries(
                entries, [&mapping](const QString& path) { return mapping.map(path); }, scanner, progress);
        },
        [this, result, report, name, listed = listed.size()] {
            ReportOrigin made = madeHere({report});
            made.recheck = true;
            made.notChecked = result->notFound.size();
            m_window.document->showResult(result->now, uiText(txt::RecheckName).arg(name), std::move(made),
                                          ReportDocument::Source::Recheck);
            rechecked(*result, listed);
        });
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

void CollectionCheck::folderChecked(const scan::ScanResult& result, const QStringList& folders) {
    // Written as the user's Windows folders would name them, where Preferences says where those are.
    const PathMappings mapping = storedPathMappings();
    QStringList checked;
    for (const QString& folder : folders) {
        checked << mapping.windowsPath(folder);
    }
    scan::ScanReport made = scan::reportOf(
        result, [&mapping](const QString& path) { return mapping.reversibleWindowsPath(path); },
        madeHere(checked));
    const qsizetype shown = made.entries.size();
    const qsizetype leftOut = made.origin.leftOut;
    const QList<scan::Failure> failures = made.failures;
    m_window.document->showResult(std::move(made.entries),
                                  uiText(txt::CheckName).arg(checked.join(QStringLiteral("; "))),
                                  std::move(made.origin), ReportDocument::Source::Check);

    QStringList lines;
    if (result.counts.found == 0 && failures.isEmpty()) {
        lines << uiText(txt::NoMp3Found).arg(folders.join(QStringLiteral("\", \"")));
    } else if (shown == 0 && failures.isEmpty()) {
        lines << uiText(txt::NoneLacking).arg(result.counts.probed);
    }
    if (leftOut > 0) {
        lines << uiText(txt::LeftOut).arg(shown + leftOut).arg(shown).arg(leftOut);
    }
    QString details;
    if (!failures.isEmpty()) {
        lines << uiText(txt::NotChecked).arg(failures.size());
        nameFailures(lines, details, failures);
    }
    if (!lines.isEmpty()) {
        m_window.tellInDetail(lines.join(u'\n'), details);
    }
}

void CollectionCheck::rechecked(const scan::RecheckResult& result, qsizetype listed) {
    QStringList lines{uiText(txt::RecheckDone)
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
        lines << uiText(txt::NoneFound) << uiText(txt::OfferPreferences);
        if (m_window.ask(lines.join(u'\n')) && m_window.preferences) {
            m_window.preferences->trigger();
        }
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
