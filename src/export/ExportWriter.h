#pragma once

#include "PathMapping.h"
#include "report/FileNameForm.h"
#include "report/ReportEntry.h"

#include <QString>

#include <optional>

class QIODevice;

namespace zentoria {

// The forms a list of problem files can be handed on in. All are UTF-8 without a byte order mark.
enum class ExportFormat {
    M3u8, // an extended playlist: "#EXTM3U", then "#EXTINF:-1,<file name>" and the path per file
    Csv,  // RFC 4180 with a header row: ordinal, kind code, problem text, path; CR LF line ends
    Text, // one path per line
};

// "m3u8", "csv" or "txt": the command line's name and the file name extension of each format.
QString formatName(ExportFormat format);
std::optional<ExportFormat> formatNamed(QStringView name);
// The format a file name's extension names ("m3u" counts as a playlist too), compared without regard
// to letter case; none for any other extension.
std::optional<ExportFormat> formatOfFileName(const QString& fileName);

// Writes problem files to a device in one format, one at a time, so that a whole report can be passed
// through without being held. Paths are mapped as the mapping says, and lead to files as the report's
// names read (a local name that is no UTF-8 goes into a playlist as a URL of its bytes).
class ExportWriter {
public:
    ExportWriter(QIODevice& out, ExportFormat format, PathMappings mapping = {},
                 NameReading names = NameReading::Escaped);
    // Writes what comes before the files; called once, first.
    void begin();
    void add(const ReportEntry& entry);

    // One CSV field, quoted when it holds a comma, a double quote or a line break.
    static QString csvField(const QString& field);

private:
    QIODevice& m_out;
    ExportFormat m_format;
    PathMappings m_mapping;
    NameReading m_names;
};

} // namespace zentoria
