#pragma once

#include "report/ReportReader.h"

#include <QByteArray>

// Writes report bytes line by line, so each test shows the lines it cares about and nothing else.
class ReportBuilder {
public:
    explicit ReportBuilder(QByteArray terminator = "\r\n")
        : m_terminator(std::move(terminator)) {}

    ReportBuilder& line(QByteArrayView text) {
        m_bytes += text;
        m_bytes += m_terminator;
        return *this;
    }
    ReportBuilder& banner() { return line(zentoria::kBanner); }
    ReportBuilder& header() {
        for (int i = 1; i <= 6; ++i) {
            line(i == 2 ? QByteArray("  Checked folder: C:\\Music") : QByteArray());
        }
        return *this;
    }
    // Banner and header: the next line is the first record's path line (line 8).
    ReportBuilder& start() { return banner().header(); }
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
    QByteArray m_terminator;
    QByteArray m_bytes;
};
