#include "../scan/Mp3Files.h"
#include "follow/FixFollower.h"
#include "report/FileNameForm.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <atomic>
#include <cstdio>

using namespace zentoria;
using follow::FileState;

namespace {

// What a tag editor, a file manager or a user does to a listed file, in its folder.
enum class Deed { InPlace, RenamedOver, Deleted, MovedAway, FolderRemoved, Garbled };

bool renameBytes(const QByteArray& from, const QByteArray& to) {
    return ::rename(from.constData(), to.constData()) == 0;
}

bool doTo(const QString& folder, const QByteArray& name, Deed deed, int tags) {
    const QByteArray path = QFile::encodeName(folder) + '/' + name;
    const QString shown = shownFileName(path);
    switch (deed) {
    case Deed::InPlace:
        return setTags(shown, tags);
    case Deed::RenamedOver:
        return putMp3(folder, ".saving.tmp", tags) &&
               renameBytes(QFile::encodeName(folder) + "/.saving.tmp", path);
    case Deed::Deleted:
        return ::unlink(path.constData()) == 0;
    case Deed::MovedAway:
        return renameBytes(path, QFile::encodeName(folder) + "/../moved.mp3");
    case Deed::FolderRemoved:
        removeTree(folder);
        return true;
    case Deed::Garbled:
        return writeFile(shown, "no audio at all");
    }
    return false;
}

} // namespace

class tst_Follow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatWasDoneIsSeen_data() {
        addColumns<QByteArray, int, Deed, int, FileState, int>("name", "listedTags", "deed", "tags", "state",
                                                               "kindNow");
        // Listed as lacking ID3v1 (an ID3v2 tag only), unless the row gives it other tags.
        addRow("fixed in place", QByteArray("a.mp3"), int(V2), Deed::InPlace, int(BothTags), FileState::Fixed,
               1);
        addRow("fixed, saved by rename", QByteArray("a.mp3"), int(V2), Deed::RenamedOver, int(BothTags),
               FileState::Fixed, 1);
        addRow("a name that is no UTF-8", QByteArray("caf\xE9.mp3"), int(V2), Deed::RenamedOver,
               int(BothTags), FileState::Fixed, 1);
        addRow("saved, still lacking", QByteArray("a.mp3"), int(V2), Deed::InPlace, int(V2), FileState::Still,
               1);
        addRow("lacking something else", QByteArray("a.mp3"), int(V2), Deed::InPlace, int(V1),
               FileState::OtherKind, 2);
        addRow("a tagless file tagged in part", QByteArray("a.mp3"), int(NoTag), Deed::InPlace, int(V2),
               FileState::OtherKind, 1);
        addRow("deleted", QByteArray("a.mp3"), int(V2), Deed::Deleted, 0, FileState::Gone, 1);
        addRow("moved away", QByteArray("a.mp3"), int(V2), Deed::MovedAway, 0, FileState::Gone, 1);
        addRow("its folder removed", QByteArray("a.mp3"), int(V2), Deed::FolderRemoved, 0, FileState::Gone,
               1);
        addRow("no audio any more", QByteArray("a.mp3"), int(V2), Deed::Garbled, 0, FileState::Unreadable, 1);
    }
    void whatWasDoneIsSeen() {
        QFETCH(QByteArray, name);
        QFETCH(int, listedTags);
        QFETCH(Deed, deed);
        QFETCH(int, tags);
        QFETCH(FileState, state);
        QFETCH(int, kindNow);
        QTemporaryDir home;
        const QString folder = home.filePath("Abba");
        QVERIFY(QDir().mkpath(folder) && putMp3(folder, name, listedTags) && putMp3(folder, "other.mp3", V2));
        const ProblemKind listed = listedTags == NoTag ? ProblemKind::ID3v0 : ProblemKind::ID3v1;
        follow::FixFollower follower;
        follower.follow({{shownFileName(QFile::encodeName(folder) + '/' + name), listed},
                         {QStringLiteral("C:\\Music\\not here.mp3"), ProblemKind::ID3v1},
                         {folder + "/other.mp3", ProblemKind::ID3v1}});
        QCOMPARE(follower.followedFiles(), 2);
        QSignalSpy changed(&follower, &follow::FixFollower::changed);
        QVERIFY(doTo(folder, name, deed, tags));
        QVERIFY(changed.wait(5000));
        // The file beside it, untouched, stays as listed, unless its folder went too.
        const bool both = deed == Deed::FolderRemoved;
        QCOMPARE(changed.first().first().value<QList<qsizetype>>(),
                 (both ? QList<qsizetype>{0, 2} : QList<qsizetype>{0}));
        QCOMPARE(follower.states().at(0).state, state);
        if (state == FileState::Still || state == FileState::OtherKind) {
            QCOMPARE(kindNumber(follower.states().at(0).kind), kindNow);
        }
        QCOMPARE(follower.states().at(2).state, both ? FileState::Gone : FileState::AsListed);
        QCOMPARE(follower.states().count(state), both ? 2 : 1);
    }

    // An editor writes in several steps: the file is looked at once, after the last.
    void aFileIsLookedAtOnceItIsLeftAlone() {
        QTemporaryDir home;
        const QString file = home.filePath("a.mp3");
        QVERIFY(writeMp3(file, V2));
        follow::FixFollower follower;
        std::atomic<int> looks = 0;
        follower.setProbe([&looks](const QString& local) {
            ++looks;
            return scan::probeTags(local);
        });
        follower.follow({{file, ProblemKind::ID3v1}});
        QSignalSpy changed(&follower, &follow::FixFollower::changed);
        QElapsedTimer clock;
        clock.start();
        // Each step changes the file: TagLib leaves a file alone that would not change.
        qint64 lastWrite = 0;
        for (int tags : {NoTag, V2, NoTag, BothTags}) {
            QVERIFY(setTags(file, tags));
            lastWrite = clock.elapsed();
            QTest::qWait(follow::FixFollower::kSettleMs / 3);
        }
        QVERIFY(changed.wait(5000));
        QVERIFY(clock.elapsed() >=
                lastWrite + follow::FixFollower::kSettleMs - follow::FixFollower::kSettleMs / 3);
        QCOMPARE(looks.load(), 1);
        QCOMPARE(follower.states().at(0).state, FileState::Fixed);
        // Followed afresh, what was seen goes; stopped, nothing is watched.
        follower.follow({{file, ProblemKind::ID3v1}});
        QCOMPARE(follower.states().count(FileState::AsListed), 1);
        follower.stop();
        QVERIFY(setTags(file, V2));
        QVERIFY(!changed.wait(follow::FixFollower::kSettleMs * 3));
        QCOMPARE(looks.load(), 1);
    }

    // Missing when followed, or gone while followed: a folder is waited for, and its files looked at
    // once it is there.
    void aFolderIsFollowedOnceItIsThere() {
        QTemporaryDir home;
        const QString folder = home.filePath("Later/Abba");
        follow::FixFollower follower;
        follower.follow({{folder + "/a.mp3", ProblemKind::ID3v1}});
        QCOMPARE(follower.foldersMissing(), 1);
        QSignalSpy changed(&follower, &follow::FixFollower::changed);
        QVERIFY(QDir().mkpath(folder) && writeMp3(folder + "/a.mp3", BothTags));
        QTRY_COMPARE_WITH_TIMEOUT(follower.states().at(0).state, FileState::Fixed, 5000);
        removeTree(home.filePath("Later"));
        QTRY_COMPARE_WITH_TIMEOUT(follower.states().at(0).state, FileState::Gone, 5000);
        // Back as it was listed, moved in whole.
        QVERIFY(QDir().mkpath(home.filePath("Elsewhere/Abba")) &&
                writeMp3(home.filePath("Elsewhere/Abba/a.mp3"), V2));
        QVERIFY(QDir().rename(home.filePath("Elsewhere"), home.filePath("Later")));
        QTRY_COMPARE_WITH_TIMEOUT(follower.states().at(0).state, FileState::Still, 5000);
    }

    // A share mounted on its empty folder after the report was opened: no watch on the empty folder
    // sees into it, the mount table does.
    void aShareMountedLaterIsFollowed() {
        QTemporaryDir home;
        const QString share = home.filePath("share");
        QVERIFY(QDir().mkpath(share));
        follow::FixFollower follower;
        follower.follow({{share + "/Abba/a.mp3", ProblemKind::ID3v1}});
        if (QProcess::execute("mount", {"-t", "tmpfs", "zentoria-share", share}) != 0) {
            QSKIP("no file system can be mounted here");
        }
        // Taken away however the test ends, so that its folder can go.
        const auto unmount = qScopeGuard([&share] { QProcess::execute("umount", {"-q", share}); });
        QVERIFY(QDir().mkpath(share + "/Abba") && writeMp3(share + "/Abba/a.mp3", BothTags));
        QTRY_COMPARE_WITH_TIMEOUT(follower.states().at(0).state, FileState::Fixed, 5000);
        QCOMPARE(QProcess::execute("umount", {share}), 0);
        QTRY_COMPARE_WITH_TIMEOUT(follower.states().at(0).state, FileState::Gone, 5000);
    }

    void stillToDoIsWhatARecheckWouldWrite() {
        const QList<ReportEntry> entries{{1, ProblemKind::ID3v1, "/m/a.mp3"},
                                         {2, ProblemKind::ID3v1, "/m/b.mp3"},
                                         {3, ProblemKind::ID3v2, "/m/c.mp3"},
                                         {4, ProblemKind::ID3v0, "/m/d.mp3"},
                                         {5, ProblemKind::ID3v1, "/m/e.mp3"}};
        follow::FollowStates states;
        states.reset(entries.size());
        QVERIFY(!states.anyChange());
        states.set(0, {FileState::Fixed});
        states.set(1, {FileState::Gone});
        states.set(2, {FileState::OtherKind, ProblemKind::ID3v0});
        states.set(3, {FileState::Unreadable, ProblemKind::ID3v0, scan::Obstacle::NotMpeg});
        QVERIFY(!states.set(0, {FileState::Fixed}));
        QVERIFY(states.anyChange());
        const follow::StillToDo left = follow::stillToDo(entries, states);
        QCOMPARE(left.entries, (QList<ReportEntry>{{1, ProblemKind::ID3v1, "/m/b.mp3"},
                                                   {2, ProblemKind::ID3v0, "/m/c.mp3"},
                                                   {3, ProblemKind::ID3v0, "/m/d.mp3"},
                                                   {4, ProblemKind::ID3v1, "/m/e.mp3"}}));
        QCOMPARE(left.notFound, 2);
    }
};

QTEST_GUILESS_MAIN(tst_Follow)
#include "tst_follow.moc"
