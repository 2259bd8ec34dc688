#pragma once

#include "TestData.h"

#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <unistd.h>

// Which tags a test file carries.
enum Tags { NoTag = 0, V1 = 1, V2 = 2, BothTags = V1 | V2 };

// MPEG-1 Layer III frames at 128 kbit/s and 44.1 kHz (417 bytes each) of silence: audio TagLib finds.
inline QByteArray mpegFrames(int count = 12) {
    QByteArray frame("\xFF\xFB\x90\x00", 4);
    frame.append(417 - 4, '\0');
    return frame.repeated(count);
}

// Gives the file these tags, each with a title, through TagLib; tags not named are stripped.
inline bool setTags(const QString& path, int tags) {
    TagLib::MPEG::File file(QFile::encodeName(path).constData(), false);
    if (!file.isValid()) {
        return false;
    }
    if (tags & V1) {
        file.ID3v1Tag(true)->setTitle("Waterloo");
    }
    if (tags & V2) {
        file.ID3v2Tag(true)->setTitle("Waterloo");
    }
    const int kinds =
        (tags & V1 ? TagLib::MPEG::File::ID3v1 : 0) | (tags & V2 ? TagLib::MPEG::File::ID3v2 : 0);
    return file.save(kinds, TagLib::File::StripOthers, TagLib::ID3v2::v4, TagLib::File::DoNotDuplicate);
}

// A real MP3 file with these tags.
inline bool writeMp3(const QString& path, int tags) {
    return writeFile(path, mpegFrames()) && setTags(path, tags);
}

// Writes an MP3 file with these tags under the open folder, by a name given as bytes (which need not be
// UTF-8) whose one parent folder is made when missing; through the folder's descriptor, so no path
// length limits it.
inline bool putMp3(int folder, const QByteArray& name, int tags) {
    if (const qsizetype slash = name.lastIndexOf('/'); slash > 0) {
        ::mkdirat(folder, name.left(slash).constData(), 0755);
    }
    return writeMp3(QStringLiteral("/proc/self/fd/%1/new.mp3").arg(folder), tags) &&
           ::renameat(folder, "new.mp3", folder, name.constData()) == 0;
}

inline bool putMp3(const QString& root, const QByteArray& name, int tags) {
    const int folder = ::open(QFile::encodeName(root).constData(), O_RDONLY | O_DIRECTORY);
    const bool put = folder >= 0 && putMp3(folder, name, tags);
    ::close(folder);
    return put;
}

// Gives the file `count` more names in `folder`, the pattern (as QString::asprintf) numbering them: as
// many files to check as wanted, at no disk space.
inline bool linkMany(const QString& file, const QString& folder, int count, const char* pattern) {
    for (int i = 0; i < count; ++i) {
        if (::link(QFile::encodeName(file).constData(),
                   QFile::encodeName(folder + u'/' + QString::asprintf(pattern, i)).constData()) != 0) {
            return false;
        }
    }
    return true;
}

// Nests folders of 200-byte names under root until the path is longer than `longerThan` (by default
// longer than the system takes at once); returns the innermost one open (the caller closes it) and its
// path in `path`.
inline int makeDeepFolders(const QString& root, QString* path, qsizetype longerThan = PATH_MAX) {
    QDir().mkpath(root);
    int folder = ::open(QFile::encodeName(root).constData(), O_RDONLY | O_DIRECTORY);
    *path = root;
    const QByteArray name(200, 'd');
    while (folder >= 0 && path->size() <= longerThan) {
        ::mkdirat(folder, name.constData(), 0755);
        const int inner = ::openat(folder, name.constData(), O_RDONLY | O_DIRECTORY);
        ::close(folder);
        folder = inner;
        *path += u'/' + QString::fromLatin1(name);
    }
    return folder;
}
