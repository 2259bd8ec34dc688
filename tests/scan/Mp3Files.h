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

// Moves the file into the open folder under a name given as bytes, which need not be UTF-8; through
// the folder's descriptor, so no path length limits it.
inline bool moveToBytes(const QString& from, int folder, const QByteArray& name) {
    return ::renameat(AT_FDCWD, QFile::encodeName(from).constData(), folder, name.constData()) == 0;
}

// Nests folders of 200-byte names under root until the path is longer than the system takes at once;
// returns the innermost one open (the caller closes it) and its path in `path`.
inline int makeDeepFolders(const QString& root, QString* path) {
    QDir().mkpath(root);
    int folder = ::open(QFile::encodeName(root).constData(), O_RDONLY | O_DIRECTORY);
    *path = root;
    const QByteArray name(200, 'd');
    while (folder >= 0 && path->size() <= PATH_MAX) {
        ::mkdirat(folder, name.constData(), 0755);
        const int inner = ::openat(folder, name.constData(), O_RDONLY | O_DIRECTORY);
        ::close(folder);
        folder = inner;
        *path += u'/' + QString::fromLatin1(name);
    }
    return folder;
}
