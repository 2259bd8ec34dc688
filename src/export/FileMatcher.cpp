#include "FileMatcher.h"

namespace zentoria {

FileMatcher::FileMatcher(const QString& pattern)
    : m_pattern(pattern.trimmed())
    , m_wildcard(m_pattern.contains(u'*') || m_pattern.contains(u'?')) {
    if (!m_wildcard) {
        return;
    }
    // Only the two wildcards mean anything: brackets and separators are plain characters, as they are
    // in the Windows paths a report holds.
    QString expression;
    for (const QChar c : m_pattern) {
        if (c == u'*') {
            expression += QStringLiteral(".*");
        } else if (c == u'?') {
            expression += u'.';
        } else {
            expression += QRegularExpression::escape(QString(c));
        }
    }
    m_expression.setPattern(QRegularExpression::anchoredPattern(expression));
    m_expression.setPatternOptions(QRegularExpression::CaseInsensitiveOption |
                                   QRegularExpression::DotMatchesEverythingOption);
}

bool FileMatcher::matches(const QString& path) const {
    if (m_pattern.isEmpty()) {
        return false;
    }
    const QString shown = path.trimmed();
    if (!m_wildcard) {
        return shown.contains(m_pattern, Qt::CaseInsensitive);
    }
    if (m_expression.match(shown).hasMatch()) {
        return true;
    }
    const qsizetype slash = std::max(shown.lastIndexOf(u'\\'), shown.lastIndexOf(u'/'));
    return slash >= 0 && m_expression.match(QStringView(shown).sliced(slash + 1)).hasMatch();
}

} // namespace zentoria
