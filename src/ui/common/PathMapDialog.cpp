#include "PathMapDialog.h"

#include "settings/Texts.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace zentoria {

PathMapDialog::PathMapDialog(const PathMapping& current, const QString& windowsFolder, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmPathMap"));
    setWindowTitle(uiText(txt::PathMapTitle));

    auto* intro = new QLabel(uiText(txt::PathMapIntro), this);
    intro->setWordWrap(true);

    txtWindowsFolder = new QLineEdit(current.isEmpty() ? windowsFolder : current.windowsFolder, this);
    txtWindowsFolder->setObjectName(QStringLiteral("txtWindowsFolder"));
    txtLocalFolder = new QLineEdit(current.localFolder, this);
    txtLocalFolder->setObjectName(QStringLiteral("txtLocalFolder"));
    txtLocalFolder->setPlaceholderText(QStringLiteral("/media/music"));
    auto* browse = new QPushButton(uiText(txt::Browse), this);
    browse->setObjectName(QStringLiteral("cmdBrowse"));
    connect(browse, &QPushButton::clicked, this, [this] {
        const QString folder = QFileDialog::getExistingDirectory(
            this, uiText(txt::LocalFolder),
            txtLocalFolder->text().isEmpty() ? QDir::homePath() : txtLocalFolder->text());
        if (!folder.isEmpty()) {
            txtLocalFolder->setText(folder);
        }
    });
    auto* local = new QHBoxLayout;
    local->addWidget(txtLocalFolder, 1);
    local->addWidget(browse);

    auto* form = new QFormLayout;
    form->addRow(uiText(txt::WindowsFolder), txtWindowsFolder);
    // A row whose field is a layout gets no buddy of its own.
    auto* localLabel = new QLabel(uiText(txt::IsHere), this);
    localLabel->setBuddy(txtLocalFolder);
    form->addRow(localLabel, local);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    QPushButton* asTheyStand = buttons->addButton(uiText(txt::AsTheyStand), QDialogButtonBox::ActionRole);
    asTheyStand->setObjectName(QStringLiteral("cmdAsTheyStand"));
    connect(buttons, &QDialogButtonBox::accepted, this, &PathMapDialog::acceptMapping);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(asTheyStand, &QPushButton::clicked, this, [this] {
        m_answer = Answer::AsTheyStand;
        accept();
    });

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addLayout(form);
    layout->addWidget(buttons);
    txtLocalFolder->setFocus();
    resize(sizeHint().expandedTo(QSize(480, 0)));
}

PathMapping PathMapDialog::mapping() const {
    if (m_answer != Answer::Mapped) {
        return {};
    }
    return PathMapping::fromFolders(txtWindowsFolder->text().trimmed(), txtLocalFolder->text().trimmed())
        .value_or(PathMapping{});
}

void PathMapDialog::acceptMapping() {
    // OK with a folder left empty maps nothing.
    const std::optional<PathMapping> typed =
        PathMapping::fromFolders(txtWindowsFolder->text().trimmed(), txtLocalFolder->text().trimmed());
    m_answer = typed ? Answer::Mapped : Answer::AsTheyStand;
    accept();
}

} // namespace zentoria
