#include "CommonDialog.h"

#include <QFileDialog>
#include <QStringList>

namespace zentoria {

CommonDialog::CommonDialog(QObject* parent)
    : QObject(parent) {}

bool CommonDialog::ShowOpen(QWidget* parent) {
    if (m_chooser) {
        FileName = m_chooser(*this);
    } else {
        FileName = QFileDialog::getOpenFileName(parent, DialogTitle, InitDir, toQtFilter(Filter));
    }
    return !FileName.isEmpty();
}

QString CommonDialog::toQtFilter(const QString& filter) {
    const QStringList parts = filter.split(u'|');
    QStringList entries;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString description = parts[i];
        const QString patterns = QString(parts[i + 1]).replace(u';', u' ');
        // Qt reads the patterns from the parentheses at the end of the description.
        if (description.endsWith(QStringLiteral("(") + patterns + QStringLiteral(")"))) {
            entries << description;
        } else {
            entries << QStringLiteral("%1 (%2)").arg(description, patterns);
        }
    }
    return entries.join(QStringLiteral(";;"));
}

} // namespace zentoria
