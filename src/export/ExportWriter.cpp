#include "ExportWriter.h"

#include "report/FileNameForm.h"

#include <QIODevice>

namespace zentoria {

QString formatName(ExportFormat format) {
    switch (format) {
    case ExportFormat::M3u8:
        return QStringLiteral("m3u8");
    case ExportFormat::Csv:
        return QStringLiteral("csv");
    case ExportFormat::Text:
        return QStringLiteral("txt");
    }
    return {};
}

std::optional<ExportFormat> formatNamed(QStringView name) {
    for (ExportFormat format : {ExportFormat::M3u8, ExportFormat::Csv, ExportFormat::Text}) {
        if (name.compare(formatName(format), Qt::CaseInsensitive) == 0) {
            return format;
        }
    }
    return std::nullopt;
}

std::optional<ExportFormat> formatOfFileName(const QString& fileName) {
    const qsizetype dot = fileName.lastIndexOf(u'.');
    if (dot < 0 || fileName.indexOf(u'/', dot) >= 0) {
        return std::nullopt;
    }
    const QStringView extension = QStringView(fileName).sliced(dot + 1);
    if (extension.compare(u"m3u", Qt::CaseInsensitive) == 0) {
        return ExportFormat::M3u8;
    }
    return formatNamed(extension);
}

ExportWriter::ExportWriter(QIODevice& out, ExportFormat format, PathMappings mapping, NameReading names)
    : m_out(out)
    , m_format(format)
    , m_mapping(std::move(mapping))
    , m_names(names) {}

void ExportWriter::begin() {
    switch (m_format) {
    case ExportFormat::M3u8:
        m_out.write("#EXTM3U\n");
        break;
    case ExportFormat::Csv:
        m_out.write("Ordinal,Kind,Problem,Path\r\n");
        break;
    case ExportFormat::Text:
        break;
    }
}

QString ExportWriter::csvField(const QString& field) {
    if (!field.contains(u',') && !field.contains(u'"') && !field.contains(u'\n') && !field.contains(u'\r')) {
        return field;
    }
    QString quoted = field;
    quoted.replace(QStringLiteral("\""), QStringLiteral("\"\""));
    return u'"' + quoted + u'"';
}

void ExportWriter::add(const ReportEntry& entry) {
    const QString path = m_mapping.map(entry.Path);
    switch (m_format) {
    case ExportFormat::M3u8: {
        // The title a player shows until it reads the tags: the file's name, either separator.
        const qsizetype slash = std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'));
        const QString title = path.mid(slash + 1).trimmed();
        // A playlist is UTF-8 text: a local name that is no UTF-8 goes in as a URL of its real bytes,
        // which players open as they open a path.
        const QByteArray bytes = fileNameBytes(shownFileName(path, m_names));
        const QByteArray location = path.startsWith(u'/') && bytes != path.toUtf8()
                                        ? localFileUrl(shownFileName(path, m_names)).toEncoded()
                                        : path.toUtf8();
        m_out.write("#EXTINF:-1," + title.toUtf8() + '\n' + location + '\n');
        break;
    }
    case ExportFormat::Csv: {
        const QString code = kindCode(entry.Kind);
        const QString row = QString::number(entry.Ordinal) + u',' + code + u',' +
                            csvField(ProblemKindText(code)) + u',' + csvField(path) + QStringLiteral("\r\n");
        m_out.write(row.toUtf8());
        break;
    }
    case ExportFormat::Text:
        m_out.write(path.toUtf8() + '\n');
        break;
    }
}

} // namespace zentoria
