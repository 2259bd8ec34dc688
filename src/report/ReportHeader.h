#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace zentoria {

// What a report lacks beyond its records: what this read could not read, and what the header of a
// report this program wrote says its check or re-check could not list or read. A re-check carries it
// on into the report it writes, so that checking that one again never drops it.
struct MissingRecords {
    // Records that gave no entry because they could not be read.
    qint64 notRead = 0;
    // The report ends before its closing line: how many records it lost is not known.
    bool endedEarly = false;
    // Problem files a check found but left out, since a report numbers no more than 32,766.
    qint64 leftOut = 0;

    bool any() const { return notRead > 0 || endedEarly || leftOut > 0; }
    friend bool operator==(const MissingRecords&, const MissingRecords&) = default;
};

// The header lines this program writes about it; readHeaderLine reads back what they say.
// "  Problem files: 0 (5 more left out; unknown for 3 unread records)": a count that leaves files out
// never stands bare.
QByteArray problemFilesLine(qint64 files, const MissingRecords& missing);
// The end of a re-check's "Not found" line: nothing when nothing is missing.
QByteArray notReadClause(const MissingRecords& missing);

// Adds what a header line of a report this program wrote says is missing; a line that says nothing
// of it (every line of a Melvadex report) adds nothing.
void readHeaderLine(QByteArrayView line, MissingRecords& missing);

} // namespace zentoria
