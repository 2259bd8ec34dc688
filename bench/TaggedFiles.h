#pragma once

#include "../tests/scan/Mp3Files.h"

#include <taglib/attachedpictureframe.h>
#include <taglib/textidentificationframe.h>

// The benches' MP3 files, as a user's collection holds them.

// One file as a collection holds it: MPEG audio and the tags a tagger writes, an ID3v2 tag (2.3 or
// 2.4) with seven text frames and a cover picture, and the tagger's padding.
inline bool writeTaggedFile(const QString& path, int tags, int major, int pictureBytes) {
    if (!writeFile(path, mpegFrames(40))) {
        return false;
    }
    TagLib::MPEG::File file(QFile::encodeName(path).constData(), false);
    if (tags & V2) {
        TagLib::ID3v2::Tag* tag = file.ID3v2Tag(true);
        tag->setTitle("Waterloo");
        tag->setArtist("ABBA");
        tag->setAlbum("Waterloo");
        tag->setYear(1974);
        tag->setTrack(1);
        tag->setGenre("Pop");
        auto* albumArtist = new TagLib::ID3v2::TextIdentificationFrame("TPE2", TagLib::String::UTF8);
        albumArtist->setText("ABBA");
        tag->addFrame(albumArtist);
        auto* cover = new TagLib::ID3v2::AttachedPictureFrame;
        cover->setMimeType("image/jpeg");
        cover->setType(TagLib::ID3v2::AttachedPictureFrame::FrontCover);
        QByteArray picture(pictureBytes, '\0');
        for (qsizetype i = 0; i < picture.size(); ++i) {
            picture[i] = char((i * 2654435761U) >> 24);
        }
        cover->setPicture(TagLib::ByteVector(picture.constData(), unsigned(picture.size())));
        tag->addFrame(cover);
    }
    if (tags & V1) {
        file.ID3v1Tag(true)->setTitle("Waterloo");
        file.ID3v1Tag()->setArtist("ABBA");
    }
    const int kinds =
        (tags & V1 ? TagLib::MPEG::File::ID3v1 : 0) | (tags & V2 ? TagLib::MPEG::File::ID3v2 : 0);
    return file.save(kinds, TagLib::File::StripOthers, major == 3 ? TagLib::ID3v2::v3 : TagLib::ID3v2::v4);
}
