// "zentoria-report recheck --follow": a line for each change to the report's files while they are
// mended, then the re-check.
#include "ReportCommand.h"
#include "StopSignals.h"
#include "follow/FixFollower.h"
#include "report/ReportReader.h"
#include "scan/Failure.h"

#include <QEventLoop>
#include <QFileDevice>
#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>

namespace zentoria::cli {

namespace {

using follow::FileState;
using follow::Seen;

QString counted(qsizetype count, const char* what) {
    return QStringLiteral("%1 %2%3").arg(count).arg(QLatin1StringView(what), count == 1 ? u"" : u"s");
}

void tell(QIODevice& err, const QString& message) {
    err.write("zentoria-report: " + message.toUtf8() + '\n');
}

// The line for a file's new state; empty for a state that is no change.
QByteArray changeLine(const Seen& seen, const QString& path, const QString& local, bool json) {
    QString word;
    QString detail;
    switch (seen.state) {
    case FileState::AsListed:
        return {};
    case FileState::Fixed:
        word = QStringLiteral("fixed");
        break;
    case FileState::Still:
        word = QStringLiteral("still");
        break;
    case FileState::OtherKind:
        word = QStringLiteral("changed");
        detail = kindCode(seen.kind);
        break;
    case FileState::Gone:
        word = QStringLiteral("gone");
        break;
    case FileState::Unreadable:
        word = QStringLiteral("unreadable");
        detail = scan::describe({local, seen.obstacle, seen.error});
        break;
    }
    if (!json) {
        // The state and the path alone, so that a script splits each line at its one tab; the kind and
        // the reason are in the JSON.
        return (word + u'\t' + path).toUtf8() + '\n';
    }
    QJsonObject object{{QStringLiteral("state"), word}, {QStringLiteral("path"), path}};
    if (seen.state == FileState::Still || seen.state == FileState::OtherKind) {
        object.insert(QStringLiteral("kind"), kindCode(seen.kind));
    } else if (seen.state == FileState::Unreadable) {
        object.insert(QStringLiteral("reason"), detail);
    }
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

// Written and flushed at once: a script reads each change as it happens, not when a buffer fills.
bool writeNow(QIODevice& out, const QByteArray& bytes) {
    auto* file = qobject_cast<QFileDevice*>(&out);
    return out.write(bytes) == bytes.size() && (!file || file->flush());
}

// Says why nothing can be followed; an empty text when something can.
QString nothingToFollow(const follow::FixFollower& follower, qsizetype entries, qsizetype local) {
    if (entries == 0) {
        return QStringLiteral("it lists no files");
    }
    if (local == 0) {
        return QStringLiteral("none of its files is on this computer (is --map right?)");
    }
    // Every folder missing is more likely a wrong --map than a share not mounted yet.
    if (follower.followedFolders() > follower.foldersMissing()) {
        return {};
    }
    QStringList why;
    if (follower.foldersMissing() > 0) {
        why << QStringLiteral("%1 missing").arg(counted(follower.foldersMissing(), "folder"));
    }
    if (follower.foldersRefused() > 0) {
        why << QStringLiteral("%1 not watchable").arg(counted(follower.foldersRefused(), "folder"));
    }
    if (follower.foldersOverLimit() > 0) {
        why << QStringLiteral("%1 past the system's limit of watches (fs.inotify.max_user_watches)")
                   .arg(counted(follower.foldersOverLimit(), "folder"));
    }
    return QStringLiteral("none of the folders of its files can be watched: %1").arg(why.join(u", "));
}

// What is not followed although the report lists it, a line each.
void tellNotFollowed(QIODevice& err, const follow::FixFollower& follower, qsizetype notLocal) {
    if (notLocal > 0) {
        tell(err, QStringLiteral("%1 not followed: not on this computer (is --map right?)")
                      .arg(counted(notLocal, "file")));
    }
    if (follower.foldersMissing() > 0) {
        tell(err, QStringLiteral("%1 missing: their files are followed once they are there")
                      .arg(counted(follower.foldersMissing(), "folder")));
    }
    if (follower.foldersRefused() > 0) {
        tell(err, QStringLiteral("%1 not followed: cannot be watched")
                      .arg(counted(follower.foldersRefused(), "folder")));
    }
    if (follower.foldersOverLimit() > 0) {
        tell(err, QStringLiteral("%1 not followed: the system's limit of watches is reached (raise it with "
                                 "sysctl fs.inotify.max_user_watches)")
                      .arg(counted(follower.foldersOverLimit(), "folder")));
    }
}

} // namespace

int followRecheck(const RecheckRequest& request, QIODevice& out, QIODevice& err) {
    ReportReadResult report;
    if (const std::optional<int> failed = readWholeReport(request.report, report, err)) {
        return *failed;
    }
    const QList<ReportEntry>& entries = report.Entries;
    QList<follow::FollowedFile> files;
    files.reserve(entries.size());
    // A file the report names twice is told once, by its first entry, as the re-check counts it.
    QHash<QString, qsizetype> firstNamed;
    qsizetype local = 0;
    for (qsizetype i = 0; i < entries.size(); ++i) {
        QString here = localPath(request.mapping, report.Names, entries.at(i).Path);
        if (here.startsWith(u'/')) {
            ++local;
            firstNamed.insert(here, firstNamed.value(here, i));
        } else {
            here.clear();
        }
        files.append({here, entries.at(i).Kind});
    }
    follow::FixFollower follower;
    follower.follow(files);
    if (const QString nothing = nothingToFollow(follower, entries.size(), local); !nothing.isEmpty()) {
        tell(err, request.report + QStringLiteral(": ") + nothing + QStringLiteral("; nothing to follow"));
        return kExitUnreadable;
    }
    QEventLoop loop;
    bool outputFailed = false;
    QObject::connect(&follower, &follow::FixFollower::changed, &loop, [&](const QList<qsizetype>& changed) {
        QByteArray lines;
        for (qsizetype entry : changed) {
            const QString& here = files.at(entry).local;
            if (firstNamed.value(here) == entry) {
                lines += changeLine(follower.states().at(entry), entries.at(entry).Path, here, request.json);
            }
        }
        if (!outputFailed && !lines.isEmpty() && !writeNow(out, lines)) {
            // The reader went away: nobody is told of the changes any more.
            outputFailed = true;
            tellOutputFailed(out, err);
            loop.quit();
        }
    });
    {
        const StopSignals stop([&loop] { loop.quit(); });
        if (!stop.isListening()) {
            tell(err, QStringLiteral("cannot wait for Ctrl+C here; nothing to follow"));
            return kExitUnreadable;
        }
        tellNotFollowed(err, follower, entries.size() - local);
        tell(err, QStringLiteral("following %1 in %2; Ctrl+C ends")
                      .arg(counted(follower.followedFiles(), "file"),
                           counted(follower.followedFolders(), "folder")));
        loop.exec();
    }
    follower.stop();
    if (outputFailed) {
        return kExitUnreadable;
    }
    return recheckRead(request, report, out, err);
}

} // namespace zentoria::cli
