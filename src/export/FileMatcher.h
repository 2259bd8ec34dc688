#pragma once

#include <QRegularExpression>
#include <QString>

namespace zentoria {

// What Edit > Select Matching looks for: a part of the path, or, when the text holds "*" or "?", a
// wildcard pattern ("*" any characters, "?" one) that must match the whole path or the file's name
// alone, so that both "*live*" and "track??.mp3" do what they say. Letter case never matters.
class FileMatcher {
public:
    explicit FileMatcher(const QString& pattern);

    bool isEmpty() const { return m_pattern.isEmpty(); }
    bool matches(const QString& path) const;

private:
    QString m_pattern;
    bool m_wildcard = false;
    QRegularExpression m_expression;
};

} // namespace zentoria
