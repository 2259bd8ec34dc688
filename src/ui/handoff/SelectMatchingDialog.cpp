#include "SelectMatchingDialog.h"

#include "settings/Texts.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace zentoria {

SelectMatchingDialog::SelectMatchingDialog(const QString& lastPattern, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmSelectMatching"));
    setWindowTitle(uiText(txt::SelectMatchingTitle));
    auto* label = new QLabel(uiText(txt::SelectMatchingPrompt), this);
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
