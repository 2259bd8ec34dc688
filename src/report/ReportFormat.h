#pragma once

#include <QByteArrayView>
#include <QtGlobal>

namespace zentoria {

// The fixed lines of a report, which the reader expects and the writer writes.

// The first line of every report, compared exactly.
inline constexpr QByteArrayView kBanner = "   This file was created with Melvadex (By Orsolt)";
// Any line that contains this where a path or detail line is expected closes the report.
inline constexpr QByteArrayView kClosingMarker = "Date of creation:";
inline constexpr QByteArrayView kDetailID3v1 = "  Melvadex could not get the ID3v1 information";
inline constexpr QByteArrayView kDetailID3v2 = "  Melvadex could not get the ID3v2 information";
inline constexpr QByteArrayView kDetailID3v0 = "  Melvadex could not get any information for this file.";
// The header line by which this program's reports say who wrote them: "  Written by zentoria-report scan
// 0.1.0 on Linux". A report whose third line starts and ends so names files in FileNameForm's form.
inline constexpr QByteArrayView kWrittenByStart = "  Written by ";
inline constexpr QByteArrayView kWrittenByEnd = " on Linux";
// Records are numbered by a 16-bit counter that cannot pass 32,767.
inline constexpr qint16 kMaxRecords = 32766;

} // namespace zentoria
