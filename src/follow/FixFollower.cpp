#include "FixFollower.h"

#include "report/FileNameForm.h"

#include <QPointer>
#include <QThread>
#include <QThreadPool>
#include <QTimer>

#include <algorithm>

namespace zentoria::follow {

namespace {

// Files looked at by one task at least: a few hundred changed at once share the pool's threads, a
// single one takes one.
constexpr qsizetype kFilesPerTask = 16;

} // namespace

FixFollower::FixFollower(QObject* parent)
    : QObject(parent)
    , m_settle(new QTimer(this))
    , m_pool(std::make_unique<QThreadPool>())
    , m_probe([](const QString& local) { return scan::probeTags(local); }) {
    m_settle->setSingleShot(true);
    connect(m_settle, &QTimer::timeout, this, &FixFollower::lookAtSettled);
    connect(&m_watch, &FolderWatch::changed, this, &FixFollower::filesChanged);
    connect(&m_watch, &FolderWatch::folderGone, this, &FixFollower::lookAtFolder);
    // Its files may be there again, mended or not.
    connect(&m_watch, &FolderWatch::folderBack, this, &FixFollower::lookAtFolder);
    connect(&m_watch, &FolderWatch::overflowed, this, &FixFollower::everythingChanged);
    m_pool->setMaxThreadCount(std::max(1, QThread::idealThreadCount()));
    m_pool->setObjectName(QStringLiteral("FixFollower"));
    m_clock.start();
}

FixFollower::~FixFollower() {
    stop();
    m_pool->waitForDone();
}

void FixFollower::follow(const QList<FollowedFile>& files) {
    stop();
    m_states.reset(files.size());
    m_asks = QList<quint32>(files.size(), 0);
    watchFolders(files);
}

void FixFollower::resume(const QList<FollowedFile>& files) {
    if (files.size() != m_states.size()) {
        follow(files);
        return;
    }
    stop();
    watchFolders(files);
    // What was seen may have changed while nothing was watched: each such file is looked at again. A
    // file never seen keeps the report's word.
    for (qsizetype entry = 0; entry < files.size(); ++entry) {
        if (m_states.at(entry).state != FileState::AsListed && !files.at(entry).local.isEmpty()) {
            settleThenLook(entry);
        }
    }
}

void FixFollower::watchFolders(const QList<FollowedFile>& files) {
    m_files = files;
    m_folders.clear();
    m_entries.clear();
    m_entries.reserve(files.size());
    m_followedFiles = 0;
    QHash<QByteArray, qsizetype> folderPlaces;
    for (qsizetype i = 0; i < files.size(); ++i) {
        const QString& local = files.at(i).local;
        if (!local.startsWith(u'/')) {
            continue;
        }
        const QByteArray bytes = fileNameBytes(local);
        const qsizetype slash = bytes.lastIndexOf('/');
        const QByteArray folder = slash == 0 ? QByteArray("/") : bytes.left(slash);
        auto place = folderPlaces.constFind(folder);
        if (place == folderPlaces.cend()) {
            place = folderPlaces.insert(folder, m_folders.size());
            m_folders.append({folder, {}});
        }
        m_folders[*place].entries.append(i);
        m_entries.insert({*place, bytes.mid(slash + 1)}, i);
    }
    QList<QByteArray> paths;
    paths.reserve(m_folders.size());
    for (const Folder& folder : std::as_const(m_folders)) {
        paths.append(folder.path);
    }
    m_added = m_watch.watch(paths);
    // A folder that is not watched gives no events: its files are left out of the count followed.
    for (qsizetype f = 0; f < m_folders.size(); ++f) {
        if (m_watch.follows(f)) {
            m_followedFiles += m_folders.at(f).entries.size();
        }
    }
    m_following = true;
}

void FixFollower::stop() {
    m_following = false;
    ++m_generation;
    m_watch.clear();
    m_settle->stop();
    m_settling.clear();
    m_pool->clear();
}

void FixFollower::filesChanged(const QList<std::pair<qsizetype, QByteArray>>& files) {
    // A file the report does not list, the editor's temporary file among them, finds no entry.
    for (const auto& file : files) {
        const auto [first, last] = m_entries.equal_range(file);
        for (auto entry = first; entry != last; ++entry) {
            settleThenLook(*entry);
        }
    }
}

void FixFollower::lookAtFolder(qsizetype folder) {
    if (folder >= m_folders.size()) {
        return;
    }
    for (qsizetype entry : m_folders.at(folder).entries) {
        settleThenLook(entry);
    }
}

void FixFollower::everythingChanged() {
    for (const Folder& folder : std::as_const(m_folders)) {
        for (qsizetype entry : folder.entries) {
            settleThenLook(entry);
        }
    }
}

void FixFollower::settleThenLook(qsizetype entry) {
    m_settling.insert(entry, m_clock.elapsed());
    if (!m_settle->isActive()) {
        m_settle->start(kSettleMs);
    }
}

void FixFollower::lookAtSettled() {
    const qint64 now = m_clock.elapsed();
    QList<qsizetype> due;
    qint64 next = -1;
    for (auto it = m_settling.begin(); it != m_settling.end();) {
        const qint64 settled = it.value() + kSettleMs;
        if (settled <= now) {
            due.append(it.key());
            it = m_settling.erase(it);
        } else {
            next = next < 0 ? settled : std::min(next, settled);
            ++it;
        }
    }
    if (next >= 0) {
        m_settle->start(int(next - now));
    }
    std::sort(due.begin(), due.end());
    for (qsizetype start = 0; start < due.size();) {
        // Enough tasks for every thread, each of at least a few files.
        const qsizetype share = std::max(kFilesPerTask, due.size() / m_pool->maxThreadCount() + 1);
        QList<std::tuple<qsizetype, QString, ProblemKind>> batch;
        QList<quint32> asked;
        for (qsizetype i = start; i < std::min(due.size(), start + share); ++i) {
            const qsizetype entry = due.at(i);
            batch.append({entry, m_files.at(entry).local, m_files.at(entry).listed});
            asked.append(++m_asks[entry]);
        }
        start += batch.size();
        m_pool->start([this, self = QPointer<FixFollower>(this), generation = m_generation,
                       batch = std::move(batch), asked = std::move(asked), probe = m_probe] {
            QList<std::pair<qsizetype, Seen>> seen;
            seen.reserve(batch.size());
            for (const auto& [entry, local, listed] : batch) {
                seen.append({entry, seenIn(probe(local), listed)});
            }
            // The follower waits for its tasks before it goes, so it is there to take the answer.
            QMetaObject::invokeMethod(
                self.get(),
                [this, generation, seen = std::move(seen), asked] { looked(generation, seen, asked); },
                Qt::QueuedConnection);
        });
    }
}

void FixFollower::looked(int generation, const QList<std::pair<qsizetype, Seen>>& seen,
                         const QList<quint32>& asked) {
    if (generation != m_generation) {
        return;
    }
    QList<qsizetype> changedEntries;
    for (qsizetype i = 0; i < seen.size(); ++i) {
        const auto& [entry, state] = seen.at(i);
        if (asked.at(i) == m_asks.at(entry) && m_states.set(entry, state)) {
            changedEntries.append(entry);
        }
    }
    if (!changedEntries.isEmpty()) {
        std::sort(changedEntries.begin(), changedEntries.end());
        Q_EMIT changed(changedEntries);
    }
}

} // namespace zentoria::follow
