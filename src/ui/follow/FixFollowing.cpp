#include "FixFollowing.h"

#include "Version.h"
#include "follow/FixFollower.h"
#include "settings/Preferences.h"
#include "settings/Texts.h"
#include "ui/common/MenuItems.h"
#include "ui/common/PathQuestion.h"
#include "ui/document/ReportDocument.h"
#include "ui/views/FileListModel.h"
#include "ui/views/FollowedLook.h"
#include "ui/views/ReportTreeModel.h"

#include <QAction>

namespace zentoria {

FixFollowing::FixFollowing(Window window, QObject* parent)
    : QObject(parent)
    , m_window(window)
    , m_document(window.document)
    , m_list(window.list)
    , m_follower(new follow::FixFollower(this))
    , submnuFollowFixes(namedAction(this, "submnuFollowFixes", QStringLiteral("&Follow Fixes"))) {
    submnuFollowFixes->setCheckable(true);
    submnuFollowFixes->setChecked(readBoolean(settings::FollowFixes));
    connect(submnuFollowFixes, &QAction::toggled, this, &FixFollowing::submnuFollowFixes_Click);
    // What was seen of the last report goes with it at once; the new one is followed once the document
    // says who made it, which tells how its names lead to files.
    connect(m_window.document, &ReportDocument::shown, this, [this] {
        forget();
        m_afresh = true;
    });
    connect(m_window.document, &ReportDocument::shown, this, &FixFollowing::restart, Qt::QueuedConnection);
    connect(m_follower, &follow::FixFollower::changed, this, &FixFollowing::changed);
    // A Windows report is followed once its files can be found here, whichever dialog said where.
    connect(&PathMappingStore::instance(), &PathMappingStore::changed, this, [this] {
        if (m_follower->isFollowing() && storedPathMappings().toText() != m_mappings) {
            restart();
        }
    });
    // What is still to do, as a re-check would write it, once following saw anything the report does
    // not say.
    m_window.document->setRewriter(
        {[this] { return m_follower->isFollowing() && m_follower->states().anyChange(); },
         [this] { return stillToDo(); }});
    restart();
}

FixFollowing::~FixFollowing() {
    // The views must not ask for states that go with the follower, where they outlive it.
    if (m_list) {
        m_list->setFollowStates(nullptr);
    }
    if (m_document) {
        m_document->model()->setFollowStates(nullptr);
        m_document->setRewriter({});
    }
}

ReportDocument::Rewrite FixFollowing::stillToDo() const {
    const ReportDocument& document = *m_window.document;
    const follow::StillToDo left = follow::stillToDo(document.entries(), m_follower->states());
    const ReportOrigin& before = document.origin();
    ReportOrigin made{QStringLiteral("Zentoria"), QStringLiteral(ZENTORIA_VERSION),
                      document.path().isEmpty() ? before.folders : QStringList{document.path()}};
    made.recheck = true;
    made.followedSince = m_since;
    made.notChecked = left.notFound;
    made.carry(before.missing());
    made.names = before.names;
    return {left.entries, made};
}

void FixFollowing::setWatchLimit(qsizetype folders) {
    m_follower->setWatchLimit(folders);
    restart();
}

void FixFollowing::submnuFollowFixes_Click(bool on) {
    write(settings::FollowFixes, on ? QStringLiteral("1") : QStringLiteral("0"));
    restart();
}

void FixFollowing::forget() {
    m_follower->stop();
    m_window.list->setFollowStates(nullptr);
    m_window.document->model()->setFollowStates(nullptr);
    m_window.status({});
}

void FixFollowing::restart() {
    forget();
    const QList<ReportEntry>& entries = m_window.document->entries();
    if (!submnuFollowFixes->isChecked() || entries.isEmpty()) {
        m_window.document->updateSaveAs();
        return;
    }
    // Where each file is here, as a re-check finds it: Windows paths through the stored mappings, read
    // as the report's maker wrote them. A Windows path no mapping covers is not here and not followed.
    const PathMappings mapping = storedPathMappings();
    m_mappings = mapping.toText();
    const NameReading names = m_window.document->origin().names;
    QList<follow::FollowedFile> files;
    files.reserve(entries.size());
    for (const ReportEntry& entry : entries) {
        const QString local = mapping.map(entry.Path);
        files.append({local.startsWith(u'/') ? shownFileName(local, names) : QString(), entry.Kind});
    }
    // The report shown is followed from its opening; after a pause (Follow Fixes off, or another
    // folder mapping) what was seen of it stays, looked at again.
    if (std::exchange(m_afresh, false)) {
        m_follower->follow(files);
        m_since = QDateTime::currentDateTime();
        // A report none of whose files is here (a Windows report no mapping leads to) is not followed:
        // said once, in passing, rather than not at all.
        if (m_follower->followedFiles() == 0 && m_follower->foldersOverLimit() == 0) {
            m_window.note(uiText(txt::NothingHere));
        }
    } else {
        m_follower->resume(files);
    }
    m_window.list->setFollowStates(&m_follower->states());
    m_window.document->model()->setFollowStates(&m_follower->states());
    showCount();
    m_window.document->updateSaveAs();
}

void FixFollowing::changed(const QList<qsizetype>& entries) {
    m_window.list->followedChanged(entries);
    m_window.document->model()->followedChanged(entries);
    showCount();
    m_window.document->updateSaveAs();
}

void FixFollowing::showCount() {
    m_window.status(followedLine(m_follower->states(), m_follower->foldersOverLimit()));
}

} // namespace zentoria
