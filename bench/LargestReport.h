#pragma once

#include "report/ReportReader.h"

#include <QByteArray>

// The largest report there can be: 32,766 entries with paths like a collection's. The largest kind,
// ID3v2, comes first with 16,383 files, so that a click lists all of them (the walk over the tree stops
// at position 32,767); then 8,192 of kind ID3v1 and 8,191 of kind ID3v0.
inline constexpr int kLargestKindFiles = 16383;

inline QByteArray largestReportBytes() {
    using namespace zentoria;
    QByteArray bytes = QByteArray(kBanner.data(), kBanner.size()) + "\r\n\r\n\r\n\r\n\r\n\r\n\r\n";
    for (int i = 1; i <= kMaxRecords; ++i) {
        const QByteArrayView detail =
            i <= kLargestKindFiles ? kDetailID3v2 : (i % 2 == 0 ? kDetailID3v1 : kDetailID3v0);
        bytes += "C:\\Music\\Artist " + QByteArray::number(i % 700) + "\\" + QByteArray::number(i) +
                 " - Track.mp3\r\n" + detail.toByteArray() + "\r\n\r\n";
    }
    return bytes + "Date of creation: 23.11.2026\r\n";
}
