#pragma once

#include "TestData.h"

#include <taglib/id3v1tag.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>

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
