#include "SelectMatchingDialog.h"

#include "settings/LanguageCatalog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace zentoria {

SelectMatchingDialog::SelectMatchingDialog(const QString& lastPattern, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmSelectMatching"));
    setWindowTitle(Translate(QStringLiteral("Dialogs"), QStringLiteral("SelectMatchingTitle"),
                             QStringLiteral("Select Matching")));
    auto* label = new QLabel(
        Translate(QStringLiteral("Dialogs"), QStringLiteral("SelectMatchingPrompt"),
                  QStringLiteral("Select the files whose path holds this text, or matches a pattern "
                                 "with * (any characters) and ? (one character):")),
        this);
    label->setWordWrap(true);
    txtPattern = new QLineEdit(lastPattern, this);
    txtPattern->setObjectName(QStringLiteral("txtPattern"));
    txtPattern->selectAll();
    label->setBuddy(txtPattern);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(txtPattern);
    layout->addWidget(buttons);
    resize(sizeHint().expandedTo(QSize(400, 0)));
}

QString SelectMatchingDialog::pattern() const {
    return txtPattern->text();
}

} // namespace zentoria
