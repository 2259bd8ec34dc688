#pragma once

#include "Failure.h"
#include "report/ProblemKind.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace zentoria::scan {

class ReadOnlyStream;

// What one look at a file's tags found.
struct TagProbe {
    enum class Outcome {
        Probed,     // the file is MPEG audio and its tags were read
        Unreadable, // it could not be opened or read
        NotMpeg,    // it holds no MPEG audio frame after its ID3v2 tag (another format, or cut short)
    };
    Outcome outcome = Outcome::Unreadable;
    // Whether a tag that carries information is on disk: an ID3v2 tag with at least one frame, an
    // ID3v1 tag with a field of more than blanks and NULs, a track or a genre. An empty tag tells a
    // user nothing more than a missing one, so a report says it "could not get" that information
    // either way.
    bool hasID3v1 = false;
    bool hasID3v2 = false;
    // Why the file was not probed, with the system's error where there is one.
    Obstacle obstacle = Obstacle::CannotRead;
    int error = 0;
};

// Looks at one file's tags as TagLib reads them (TagBytes says where the answer differs), read-only:
// a file opened for writing wakes every music library that watches its folder when it is closed. A
// plain file costs two small reads, its first and its last 4 KB; audio not found there is looked for
// from the tag to the end of the file, as TagLib looks. The path is named as reports show it (see
// FileNameForm); a device or a named pipe is "not a regular file".
TagProbe probeTags(const QString& path);
// The same for the file of this name in an open folder, as a walk finds it: no path to build, however
// deep the folder lies. The name may lead through folders below it.
TagProbe probeTagsAt(int folder, const QByteArray& name);

// The same for a regular file's bytes, as the stream gives them: a read that fails, or a file that ends
// before its length, fails the probe, wherever it happens (TagLib's reads included).
TagProbe probeStream(ReadOnlyStream& stream);

// The kind a report files the probed file under: only an ID3v2 tag lacks ID3v1 (kind 1), only an
// ID3v1 tag lacks ID3v2 (kind 2), neither lacks any information (kind 0); none for a file with both,
// or one that was not probed.
std::optional<ProblemKind> problemKindOf(const TagProbe& probe);

} // namespace zentoria::scan
