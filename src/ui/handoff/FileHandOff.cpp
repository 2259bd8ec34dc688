#include "FileHandOff.h"

#include "DetachedStart.h"
#include "PreferencesDialog.h"
#include "SelectMatchingDialog.h"
#include "export/ExportWriter.h"
#include "export/FileMatcher.h"
#include "export/TagEditorCommand.h"
#include "report/FileNameForm.h"
#include "report/NodeCollection.h"
#include "scan/LocalFile.h"
#include "settings/Preferences.h"
#include "settings/SettingsStore.h"
#include "settings/Texts.h"
#include "ui/common/CommonDialog.h"
#include "ui/common/MenuItems.h"
#include "ui/common/PathQuestion.h"
#include "ui/views/FileListView.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QItemSelectionModel>
#include <QMimeData>
#include <QSaveFile>
#include <QUrl>

namespace zentoria {

namespace {

const ExportFormat kExportFormats[] = {ExportFormat::M3u8, ExportFormat::Csv, ExportFormat::Text};

// Names files in a message: one per line, the first few only.
QString fileLines(const QStringList& paths) {
    constexpr qsizetype kShown = 10;
    QString lines;
    for (qsizetype i = 0; i < std::min(paths.size(), kShown); ++i) {
        lines += u'\n' + paths.at(i);
    }
    if (paths.size() > kShown) {
        lines += u'\n' + uiText(txt::AndMore).arg(paths.size() - kShown);
    }
    return lines;
}

// Says which files are not on this computer.
QString missingNote(const QStringList& missing) {
    return (missing.size() == 1 ? uiText(txt::OneFileMissing)
                                : uiText(txt::FilesMissing).arg(missing.size())) +
           fileLines(missing);
}

} // namespace

FileHandOff::FileHandOff(Window window, QObject* parent)
    : QObject(parent)
    , m_window(std::move(window))
    , submnuCopy(namedAction(m_window.widget, "submnuCopy", QStringLiteral("&Copy"), Qt::CTRL | Qt::Key_C))
    , submnuSelectAll(namedAction(m_window.widget, "submnuSelectAll", QStringLiteral("Select &All"),
                                  Qt::CTRL | Qt::Key_A))
    , submnuSelectMatching(namedAction(m_window.widget, "submnuSelectMatching",
                                       QStringLiteral("Select &Matching…"), Qt::CTRL | Qt::Key_F))
    , submnuExport(
          namedAction(m_window.widget, "submnuExport", QStringLiteral("&Export…"), Qt::CTRL | Qt::Key_E))
    , submnuOpenWith(namedAction(m_window.widget, "submnuOpenWith", QStringLiteral("Open in &Tag Editor"),
                                 Qt::CTRL | Qt::Key_T))
    , submnuPreferences(namedAction(m_window.widget, "submnuPreferences", QStringLiteral("&Preferences…"))) {
    setObjectName(QStringLiteral("FileHandOff"));
    connect(submnuCopy, &QAction::triggered, this, &FileHandOff::submnuCopy_Click);
    connect(submnuSelectAll, &QAction::triggered, this, &FileHandOff::submnuSelectAll_Click);
    connect(submnuSelectMatching, &QAction::triggered, this, &FileHandOff::submnuSelectMatching_Click);
    connect(submnuExport, &QAction::triggered, this, &FileHandOff::submnuExport_Click);
    connect(submnuOpenWith, &QAction::triggered, this, &FileHandOff::submnuOpenWith_Click);
    connect(submnuPreferences, &QAction::triggered, this, [this] {
        PreferencesDialog dialog(m_window.tell, m_window.widget);
        dialog.exec();
    });
    // Whatever changes the list or its selection may enable or disable the items.
    FileListView* list = m_window.files.list();
    connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &FileHandOff::updateActions);
    connect(list->listModel(), &QAbstractItemModel::modelReset, this, &FileHandOff::updateActions);
    updateActions();
}

QList<const ReportEntry*> FileHandOff::filesToExport() const {
    const ListedFiles& files = m_window.files;
    return files.list()->selectionModel()->hasSelection() ? files.selected() : files.ofActivatedNode();
}

void FileHandOff::updateActions() {
    const FileListView* list = m_window.files.list();
    const bool listed = list->listModel()->rowCount() > 0;
    const bool selected = m_window.files.anySelected();
    submnuCopy->setEnabled(selected);
    submnuOpenWith->setEnabled(selected);
    submnuSelectAll->setEnabled(listed);
    submnuSelectMatching->setEnabled(listed);
    // Without a selection Export takes the activated kind's files, which may be many: ask only whether
    // there is a node listed at all, the rest is the export's own business.
    submnuExport->setEnabled(
        selected || (!list->selectionModel()->hasSelection() && !list->listModel()->parentKey().isEmpty()));
}

std::optional<PathMappings> FileHandOff::pathMappingFor(const QList<const ReportEntry*>& files) {
    QStringList paths;
    for (const ReportEntry* file : files) {
        paths << file->Path;
    }
    QStringList reportPaths;
    for (const ReportEntry& entry : m_window.files.nodes().entries()) {
        reportPaths << entry.Path;
    }
    return pathMappingsFor(paths, reportPaths, *m_window.dialog, m_window.widget, m_window.tell);
}

void FileHandOff::submnuCopy_Click() {
    const QList<const ReportEntry*> files = m_window.files.selected();
    if (files.isEmpty()) {
        return;
    }
    const PathMappings mapping = storedPathMappings();
    const NameReading names = m_window.names();
    QStringList paths;
    QList<QUrl> urls;
    for (const ReportEntry* file : files) {
        paths << file->Path;
        if (const QString local = shownFileName(mapping.map(file->Path), names); scan::isLocalFile(local)) {
            urls << localFileUrl(local);
        }
    }
    auto* copied = new QMimeData;
    if (!urls.isEmpty()) {
        copied->setUrls(urls);
    }
    // After the URLs, which would otherwise set the text to them.
    copied->setText(paths.join(u'\n'));
    QApplication::clipboard()->setMimeData(copied);
}

void FileHandOff::submnuSelectAll_Click() {
    FileListView* list = m_window.files.list();
    const FileListModel* model = list->listModel();
    if (model->rowCount() == 0) {
        return;
    }
    list->selectRows(QItemSelection(model->index(0, 0), model->index(model->rowCount() - 1, 0)));
}

void FileHandOff::submnuSelectMatching_Click() {
    const FileListModel* list = m_window.files.list()->listModel();
    if (list->rowCount() == 0) {
        return;
    }
    SelectMatchingDialog dialog(m_lastPattern, m_window.widget);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const FileMatcher matcher(dialog.pattern());
    if (matcher.isEmpty()) {
        m_window.tell(uiText(txt::MatchingHint));
        return;
    }
    m_lastPattern = dialog.pattern().trimmed();
    const QItemSelection matching =
        m_window.files.rowsWhere([&matcher](const ReportEntry& file) { return matcher.matches(file.Path); });
    if (matching.isEmpty()) {
        m_window.tell(uiText(txt::NoneMatches).arg(m_lastPattern));
        return;
    }
    m_window.files.list()->selectRows(matching);
}

void FileHandOff::submnuExport_Click() {
    const QList<const ReportEntry*> files = filesToExport();
    if (files.isEmpty()) {
        m_window.tell(uiText(txt::NothingToExport));
        return;
    }
    const std::optional<PathMappings> mapping = pathMappingFor(files);
    if (!mapping) {
        return;
    }
    m_window.dialog->Filter = uiText(txt::ExportFilter);
    m_window.dialog->DialogTitle = uiText(txt::ExportTitle);
    m_window.dialog->InitDir = QDir::home().filePath(uiText(txt::ExportFileName) + QStringLiteral(".m3u8"));
    m_window.dialog->FilterIndex = 1;
    if (!m_window.dialog->ShowSave(m_window.widget)) {
        return;
    }
    QString fileName = m_window.dialog->FileName;
    // The name's extension says the format; a name without one gets the chosen filter's.
    std::optional<ExportFormat> format = formatOfFileName(fileName);
    if (!format) {
        format = kExportFormats[std::clamp(m_window.dialog->FilterIndex, 1, 3) - 1];
        fileName += u'.' + formatName(*format);
    }

    QSaveFile out(fileName);
    if (out.open(QIODevice::WriteOnly)) {
        ExportWriter writer(out, *format, *mapping, m_window.names());
        writer.begin();
        for (const ReportEntry* file : files) {
            writer.add(*file);
        }
        if (out.commit()) {
            m_window.note(files.size() == 1
                              ? uiText(txt::OneExported).arg(fileName)
                              : uiText(txt::Exported).arg(QString::number(files.size()), fileName));
            return;
        }
    }
    m_window.tell(uiText(txt::ExportFailed).arg(fileName, out.errorString()));
}

void FileHandOff::submnuOpenWith_Click() {
    const QList<const ReportEntry*> files = m_window.files.selected();
    if (files.isEmpty()) {
        return;
    }
    QString command = read(settings::TagEditor).trimmed();
    if (command.isEmpty()) {
        command = findTagEditorCommand();
    }
    if (command.isEmpty()) {
        m_window.tell(uiText(txt::NoTagEditorFound).arg(knownTagEditors().join(QStringLiteral(", "))));
        return;
    }
    const std::optional<PathMappings> mapping = pathMappingFor(files);
    if (!mapping) {
        return;
    }
    // A file the report lists twice (its paths differing in letter case) is handed on once.
    QStringList paths;
    for (const ReportEntry* file : files) {
        paths << file->Path;
    }
    QStringList existing;
    QStringList missing;
    const NameReading names = m_window.names();
    for (const QString& path : distinctWindowsPaths(paths)) {
        const QString local = shownFileName(mapping->map(path), names);
        (scan::isLocalFile(local) ? existing : missing) << local;
    }
    if (existing.isEmpty()) {
        m_window.tell(missingNote(missing) + QStringLiteral("\n\n") + uiText(txt::EditorNotStarted));
        return;
    }
    // Said before the editor starts, whose window would cover the message.
    if (!missing.isEmpty()) {
        m_window.tell(missingNote(missing) + QStringLiteral("\n\n") +
                      (existing.size() == 1 ? uiText(txt::EditorStartsWithOne)
                                            : uiText(txt::EditorStartsWithOthers).arg(existing.size())));
    }
    QString error;
    const std::optional<QList<ProgramStart>> starts = tagEditorStarts(command, existing, &error);
    if (!starts) {
        m_window.tell(uiText(txt::EditorCommandUnusable).arg(command, error));
        return;
    }
    for (const ProgramStart& start : *starts) {
        // A file's argument carries the file's real name, which may be no UTF-8.
        QByteArrayList arguments;
        for (const QString& argument : start.arguments) {
            arguments << (existing.contains(argument) ? fileNameBytes(argument) : argument.toUtf8());
        }
        if (!startDetached(start.program, arguments)) {
            m_window.tell(uiText(txt::EditorNotStartable).arg(start.program));
            return;
        }
    }
}

} // namespace zentoria
