#pragma once

#include "report/ReportReader.h"

#include <QByteArray>

// The largest report there can be: 32,766 entries, a quarter of kind ID3v1, half of kind ID3v2 (the
// largest kind) and a quarter of kind ID3v0, with paths like a collection's.
inline QByteArray largestReportBytes() {
    using namespace zentoria;
    QByteArray bytes = QByteArray(kBanner.data(), kBanner.size()) + "\r\n\r\n\r\n\r\n\r\n\r\n\r\n";
    const QByteArrayView details[] = {kDetailID3v1, kDetailID3v2, kDetailID3v2, kDetailID3v0};
    for (int i = 1; i <= kMaxRecords; ++i) {
        bytes += "C:\\Music\\Artist " + QByteArray::number(i % 700) + "\\" + QByteArray::number(i) +
                 " - Track.mp3\r\n";
        bytes += details[i % 4].toByteArray() + "\r\n\r\n";
    }
    return bytes + "Date of creation: 23.11.2026\r\n";
}

// How many entries of the largest kind a click lists: entry i sits at tree position 4 + i, and the
// walk of a click stops at position 32767.
inline int largestReportListedOfLargestKind() {
    int listed = 0;
    for (int i = 1; i <= zentoria::kMaxRecords && 4 + i <= 32767; ++i) {
        listed += i % 4 == 1 || i % 4 == 2;
    }
    return listed;
}
