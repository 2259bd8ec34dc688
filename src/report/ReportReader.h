#pragma once

#include "LineSource.h"
#include "ReportReadResult.h"

#include <functional>

namespace zentoria {

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

// Reads one report from its lines. Never looks back, never looks ahead, and stops at the closing line.
// Paths are decoded as UTF-8 when the whole input is valid UTF-8, otherwise as Windows-1252.
ReportReadResult ReadReport(LineSource& source);

// Receives the entries of a report one by one, in file order.
using EntrySink = std::function<void(ReportEntry&& entry)>;

// Reads like the above but hands each entry on as soon as its record is read and keeps none, so memory
// stays bounded however many entries the report holds; the result's Entries stay empty. The source is
// asked for its encoding at the first path that is not ASCII, before its end: it must be one that can
// answer then (memory, or a file that can seek).
ReportReadResult ReadReport(LineSource& source, const EntrySink& onEntry);

} // namespace zentoria
