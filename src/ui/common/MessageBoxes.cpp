#include "MessageBoxes.h"

#include <QMessageBox>

namespace zentoria {

std::unique_ptr<QMessageBox> MessageBoxes::create(QWidget* parent, const QString& text) {
    auto box = std::make_unique<QMessageBox>(QMessageBox::NoIcon, QStringLiteral("Zentoria"), text,
                                             QMessageBox::Ok, parent);
    // Messages can carry file names, which are data, never markup.
    box->setTextFormat(Qt::PlainText);
    return box;
}

void MessageBoxes::show(QWidget* parent, const QString& text) {
    if (m_answerer) {
        m_answerer(text);
        return;
    }
    create(parent, text)->exec();
}

} // namespace zentoria
