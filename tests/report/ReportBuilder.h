#pragma once

#include "report/ReportReader.h"

#include <QByteArray>

#include <initializer_list>

// Writes report bytes line by line, so each test shows the lines it cares about and nothing else.
class ReportBuilder {
public:
    ReportBuilder& line(QByteArrayView text) {
        m_bytes += text;
        m_bytes += "\r\n";
        return *this;
    }
    // The banner and the six header lines, these first and blank ones after them: the next line is the
    // first record's path line (line 8).
    ReportBuilder& start(std::initializer_list<QByteArrayView> first = {"", "  Checked folder: C:\\Music"}) {
        line(zentoria::kBanner);
        for (QByteArrayView text : first) {
            line(text);
        }
        for (std::size_t i = first.size(); i < 6; ++i) {
            line("");
        }
        return *this;
    }
    ReportBuilder& record(QByteArrayView path, QByteArrayView detail) {
        return line(path).line(detail).line("");
    }
    ReportBuilder& closing() { return line("Date of creation: 23.11.2026"); }
    // The last line without a terminator.
    ReportBuilder& unterminated(QByteArrayView text) {
        m_bytes += text;
        return *this;
    }
    QByteArray bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};
