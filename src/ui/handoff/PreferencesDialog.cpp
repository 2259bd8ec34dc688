#include "PreferencesDialog.h"

#include "MappingTable.h"
#include "export/PathMapping.h"
#include "export/TagEditorCommand.h"
#include "settings/Preferences.h"
#include "settings/SettingsStore.h"
#include "settings/Texts.h"
#include "ui/common/PathQuestion.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardPaths>
#include <QTableWidget>
#include <QVBoxLayout>

namespace zentoria {

namespace {

QPushButton* button(QWidget* parent, const char* name, const QString& caption) {
    auto* made = new QPushButton(caption, parent);
    made->setObjectName(QLatin1StringView(name));
    return made;
}

} // namespace

PreferencesDialog::PreferencesDialog(std::function<void(const QString&)> tell, QWidget* parent)
    : QDialog(parent)
    , m_tell(std::move(tell))
    , tblPathMaps(new MappingTable(0, 2, this))
    , txtTagEditor(new QLineEdit(this))
    , lblTagEditorTest(new QLabel(this)) {
    setObjectName(QStringLiteral("frmPreferences"));
    setWindowTitle(uiText(txt::PreferencesTitle));

    tblPathMaps->setObjectName(QStringLiteral("tblPathMaps"));
    tblPathMaps->setHorizontalHeaderLabels(
        {uiText(txt::WindowsFolderColumn), uiText(txt::LocalFolderColumn)});
    tblPathMaps->horizontalHeader()->setStretchLastSection(true);
    tblPathMaps->setColumnWidth(0, 200);
    tblPathMaps->setAccessibleName(uiText(txt::PathMapsLabel));
    for (const PathMapping& mapping : storedPathMappings().list) {
        addMapping(mapping);
    }
    auto* add = button(this, "cmdAddMapping", uiText(txt::AddMapping));
    auto* remove = button(this, "cmdRemoveMapping", uiText(txt::RemoveMapping));
    connect(add, &QPushButton::clicked, this, [this] {
        addMapping({});
        // The new row becomes the current one too: Tab moves on from the current cell, and from the
        // first row's it would write the local folder over the first mapping.
        QTableWidgetItem* windows = tblPathMaps->item(tblPathMaps->rowCount() - 1, 0);
        tblPathMaps->setCurrentItem(windows);
        tblPathMaps->editItem(windows);
    });
    connect(remove, &QPushButton::clicked, this,
            [this] { tblPathMaps->removeRow(tblPathMaps->currentRow()); });
    auto* mappingButtons = new QHBoxLayout;
    mappingButtons->addWidget(add);
    mappingButtons->addWidget(remove);
    mappingButtons->addStretch();

    txtTagEditor->setObjectName(QStringLiteral("txtTagEditor"));
    txtTagEditor->setText(read(settings::TagEditor).trimmed());
    // Empty, the first tag editor found is used: show which.
    const QString found = findTagEditorCommand();
    txtTagEditor->setPlaceholderText(found.isEmpty() ? uiText(txt::NoTagEditor) : found);
    auto* test = button(this, "cmdTestTagEditor", uiText(txt::TestTagEditor));
    connect(test, &QPushButton::clicked, this, &PreferencesDialog::testTagEditor);
    lblTagEditorTest->setObjectName(QStringLiteral("lblTagEditorTest"));
    lblTagEditorTest->setTextFormat(Qt::PlainText);
    lblTagEditorTest->setWordWrap(true);
    auto* editor = new QHBoxLayout;
    editor->addWidget(txtTagEditor, 1);
    editor->addWidget(test);

    auto* form = new QFormLayout;
    form->addRow(uiText(txt::PathMapsLabel), tblPathMaps);
    form->addRow(QString(), mappingButtons);
    // A row whose field is a layout gets no buddy of its own: without one the "&" would show, and a
    // screen reader would hear no name for the field.
    auto* tagEditorLabel = new QLabel(uiText(txt::TagEditorLabel), this);
    tagEditorLabel->setBuddy(txtTagEditor);
    txtTagEditor->setAccessibleName(QString(uiText(txt::TagEditorLabel)).remove(u'&').remove(u':'));
    form->addRow(tagEditorLabel, editor);
    form->addRow(QString(), lblTagEditorTest);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &PreferencesDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    // The keyboard's order is the one seen: the table, its buttons, then the tag editor.
    setTabOrder(tblPathMaps, add);
    setTabOrder(add, remove);
    setTabOrder(remove, txtTagEditor);
    setTabOrder(txtTagEditor, test);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    resize(sizeHint().expandedTo(QSize(560, 360)));
}

void PreferencesDialog::addMapping(const PathMapping& mapping) {
    const int row = tblPathMaps->rowCount();
    tblPathMaps->insertRow(row);
    tblPathMaps->setItem(row, 0, new QTableWidgetItem(mapping.windowsFolder));
    tblPathMaps->setItem(row, 1, new QTableWidgetItem(mapping.localFolder));
}

void PreferencesDialog::testTagEditor() {
    const QString command =
        txtTagEditor->text().trimmed().isEmpty() ? findTagEditorCommand() : txtTagEditor->text().trimmed();
    QString error;
    const auto starts = tagEditorStarts(command, {QStringLiteral("/tmp/a.mp3")}, &error);
    if (command.isEmpty() || !starts || starts->isEmpty()) {
        lblTagEditorTest->setText(uiText(txt::TagEditorUnusable));
        return;
    }
    const QString program = starts->first().program;
    const bool here = program.contains(u'/') ? QFileInfo(program).isExecutable()
                                             : !QStandardPaths::findExecutable(program).isEmpty();
    lblTagEditorTest->setText(
        (here ? uiText(txt::TagEditorReady) : uiText(txt::TagEditorMissing)).arg(program));
}

void PreferencesDialog::accept() {
    // A cell still being typed in counts: leaving the current cell hands its editor's text to the table.
    tblPathMaps->setCurrentIndex(QModelIndex());
    PathMappings mappings;
    for (int row = 0; row < tblPathMaps->rowCount(); ++row) {
        const QString windows =
            tblPathMaps->item(row, 0) ? tblPathMaps->item(row, 0)->text().trimmed() : QString();
        const QString local =
            tblPathMaps->item(row, 1) ? tblPathMaps->item(row, 1)->text().trimmed() : QString();
        if (windows.isEmpty() && local.isEmpty()) {
            continue;
        }
        const std::optional<PathMapping> mapping = PathMapping::fromFolders(windows, local);
        if (!mapping) {
            m_tell(uiText(txt::NoMapping).arg(windows, local));
            return;
        }
        if (!QFileInfo(mapping->localFolder).isDir()) {
            m_tell(uiText(txt::NoSuchFolder).arg(mapping->localFolder));
            return;
        }
        mappings.list << *mapping;
    }
    storePathMappings(mappings);
    write(settings::TagEditor, txtTagEditor->text().trimmed());
    QDialog::accept();
}

} // namespace zentoria
