// frmMain: handing the listed files on — copy, export, open in a tag editor — and selecting them.
#include "FileListView.h"
#include "ReportTree.h"
#include "export/ExportWriter.h"
#include "export/FileMatcher.h"
#include "export/TagEditorCommand.h"
#include "frmMain.h"
#include "settings/Preferences.h"
#include "settings/SettingsStore.h"
#include "ui/common/CommonDialog.h"
#include "ui/common/PathMapDialog.h"
#include "ui/common/SelectMatchingDialog.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QMimeData>
#include <QProcess>
#include <QSaveFile>
#include <QTimer>
#include <QUrl>

namespace zentoria {

namespace {

const QString kExportFilter = QStringLiteral("Playlist (*.m3u8)|*.m3u8|CSV (*.csv)|*.csv|Text (*.txt)|*.txt");
const ExportFormat kExportFormats[] = {ExportFormat::M3u8, ExportFormat::Csv, ExportFormat::Text};

// Names files in a message: one per line, the first few only.
QString fileLines(const QStringList& paths) {
    constexpr qsizetype kShown = 10;
    QString lines;
    for (qsizetype i = 0; i < std::min(paths.size(), kShown); ++i) {
        lines += u'\n' + paths.at(i);
    }
    if (paths.size() > kShown) {
        lines += QStringLiteral("\n… and %1 more").arg(paths.size() - kShown);
    }
    return lines;
}

// A file of this computer: only an absolute path can be one, and a report's Windows paths are not,
// so thousands of them cost no look at the disk.
bool isLocalFile(const QString& path) {
    return path.startsWith(u'/') && QFileInfo(path).isFile();
}

} // namespace

QList<const ReportEntry*> frmMain::selectedFiles() const {
    const NodeCollection& nodes = TV->nodes();
    const FileListModel* list = LV->listModel();
    QList<int> rows;
    for (const QModelIndex& index : LV->selectionModel()->selectedRows()) {
        rows << index.row();
    }
    std::sort(rows.begin(), rows.end());
    QList<const ReportEntry*> files;
    files.reserve(rows.size());
    for (int row : rows) {
        if (const int position = list->position(row); nodes.isEntry(position)) {
            files << &nodes.entry(position);
        }
    }
    return files;
}

QList<const ReportEntry*> frmMain::filesToExport() const {
    QList<const ReportEntry*> files = selectedFiles();
    if (LV->selectionModel()->hasSelection()) {
        return files;
    }
    // Every file of the kind, also those past the list's reach.
    const NodeCollection& nodes = TV->nodes();
    const int activated = nodes.positionOf(LV->listModel()->parentKey());
    if (activated > 0) {
        for (int position : nodes.children(activated)) {
            if (nodes.isEntry(position)) {
                files << &nodes.entry(position);
            }
        }
    }
    return files;
}

void frmMain::updateEditActions() {
    const bool listed = LV->listModel()->rowCount() > 0;
    // Asked at every change of the selection: the first selected file answers, not all sixteen thousand.
    bool selected = false;
    const NodeCollection& nodes = TV->nodes();
    for (const QItemSelectionRange& range : LV->selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom() && !selected; ++row) {
            selected = nodes.isEntry(LV->listModel()->position(row));
        }
        if (selected) {
            break;
        }
    }
    submnuCopy->setEnabled(selected);
    submnuOpenWith->setEnabled(selected);
    submnuSelectAll->setEnabled(listed);
    submnuSelectMatching->setEnabled(listed);
    // Without a selection Export takes the activated kind's files, which may be many: ask only whether
    // there is a node listed at all, the rest is the export's own business.
    submnuExport->setEnabled(
        selected || (!LV->selectionModel()->hasSelection() && !LV->listModel()->parentKey().isEmpty()));
}

PathMapping frmMain::storedPathMapping() {
    return PathMapping::parse(readPathText(settings::PathMap)).value_or(PathMapping{});
}

std::optional<PathMapping> frmMain::pathMappingFor(const QList<const ReportEntry*>& files) {
    const PathMapping stored = storedPathMapping();
    if (isStored(settings::PathMap)) {
        return stored;
    }
    QStringList windowsPaths;
    for (const ReportEntry* file : files) {
        if (isWindowsPath(file->Path)) {
            windowsPaths << file->Path;
        }
    }
    if (windowsPaths.isEmpty()) {
        return stored;
    }
    // Asked once: the answer, a mapping or none, is kept for every later export and tag editor.
    const std::optional<PathMapping> answer =
        CMDlg->ShowPathMap(this, stored, commonWindowsFolder(windowsPaths));
    if (answer) {
        write(settings::PathMap, answer->toText());
    }
    return answer;
}

void frmMain::submnuCopy_Click() {
    const QList<const ReportEntry*> files = selectedFiles();
    if (files.isEmpty()) {
        return;
    }
    const PathMapping mapping = storedPathMapping();
    QStringList paths;
    QList<QUrl> urls;
    for (const ReportEntry* file : files) {
        paths << file->Path;
        if (const QString local = mapping.map(file->Path); isLocalFile(local)) {
            urls << QUrl::fromLocalFile(local);
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

void frmMain::submnuSelectAll_Click() {
    if (LV->listModel()->rowCount() == 0) {
        return;
    }
    LV->selectAll();
    // A selection made from the menu is shown in the panel as one made with the keys.
    LV_ItemClick();
}

void frmMain::submnuSelectMatching_Click() {
    const FileListModel* list = LV->listModel();
    if (list->rowCount() == 0) {
        return;
    }
    SelectMatchingDialog dialog(m_lastPattern, this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const FileMatcher matcher(dialog.pattern());
    if (matcher.isEmpty()) {
        showMessage(QStringLiteral("Type a part of the files' paths, or a pattern with * and ?, to select "
                                   "the files that match it."));
        return;
    }
    m_lastPattern = dialog.pattern().trimmed();
    const NodeCollection& nodes = TV->nodes();
    QItemSelection matching;
    for (int row = 0; row < list->rowCount(); ++row) {
        const int position = list->position(row);
        if (nodes.isEntry(position) && matcher.matches(nodes.entry(position).Path)) {
            // Neighbouring rows make one range: a selection of thousands stays a few ranges.
            if (!matching.isEmpty() && matching.last().bottom() == row - 1) {
                matching.last() = QItemSelectionRange(matching.last().topLeft(), list->index(row, 0));
            } else {
                matching.select(list->index(row, 0), list->index(row, 0));
            }
        }
    }
    if (matching.isEmpty()) {
        showMessage(QStringLiteral("No file in the list matches \"%1\"; the selection stays as it was.")
                        .arg(m_lastPattern));
        return;
    }
    selectInList(matching);
}

void frmMain::selectInList(const QItemSelection& rows) {
    const QModelIndex first = rows.first().topLeft();
    LV->selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    LV->selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    LV->scrollTo(first);
    // A selection the program makes is shown in the panel as one the user makes.
    LV_ItemClick();
}

void frmMain::submnuExport_Click() {
    const QList<const ReportEntry*> files = filesToExport();
    if (files.isEmpty()) {
        showMessage(
            QStringLiteral("There are no files to export: select some, or a kind of problem in the tree."));
        return;
    }
    const std::optional<PathMapping> mapping = pathMappingFor(files);
    if (!mapping) {
        return;
    }
    CMDlg->Filter = kExportFilter;
    CMDlg->DialogTitle = QStringLiteral("Export");
    CMDlg->InitDir = QDir::home().filePath(QStringLiteral("problem files.m3u8"));
    CMDlg->FilterIndex = 1;
    if (!CMDlg->ShowSave(this)) {
        return;
    }
    QString fileName = CMDlg->FileName;
    // The name's extension says the format; a name without one gets the chosen filter's.
    std::optional<ExportFormat> format = formatOfFileName(fileName);
    if (!format) {
        format = kExportFormats[std::clamp(CMDlg->FilterIndex, 1, 3) - 1];
        fileName += u'.' + formatName(*format);
    }

    QSaveFile out(fileName);
    if (out.open(QIODevice::WriteOnly)) {
        ExportWriter writer(out, *format, *mapping);
        writer.begin();
        for (const ReportEntry* file : files) {
            writer.add(*file);
        }
        if (out.commit()) {
            return;
        }
    }
    showMessage(
        QStringLiteral("The files could not be exported to \"%1\": %2.").arg(fileName, out.errorString()));
}

void frmMain::submnuOpenWith_Click() {
    const QList<const ReportEntry*> files = selectedFiles();
    if (files.isEmpty()) {
        return;
    }
    QString command = read(settings::TagEditor).trimmed();
    if (command.isEmpty()) {
        command = findTagEditorCommand();
    }
    if (command.isEmpty()) {
        showMessage(
            QStringLiteral("No tag editor was found. Install one of %1, or name yours in the settings "
                           "file \"%2\": under [Preferences], for example TagEditor=kid3 %F.")
                .arg(knownTagEditors().join(QStringLiteral(", ")), settingsFilePath(thisProgram())));
        return;
    }
    const std::optional<PathMapping> mapping = pathMappingFor(files);
    if (!mapping) {
        return;
    }
    QStringList existing;
    QStringList missing;
    for (const ReportEntry* file : files) {
        const QString local = mapping->map(file->Path);
        if (isLocalFile(local)) {
            existing << local;
        } else {
            missing << local;
        }
    }
    QString missingNote;
    if (!missing.isEmpty()) {
        missingNote = (missing.size() == 1
                           ? QStringLiteral("1 file does not exist on this computer:")
                           : QStringLiteral("%1 files do not exist on this computer:").arg(missing.size())) +
                      fileLines(missing);
    }
    if (existing.isEmpty()) {
        showMessage(missingNote + QStringLiteral("\n\nThe tag editor was not started."));
        return;
    }
    QString error;
    const std::optional<QList<ProgramStart>> starts = tagEditorStarts(command, existing, &error);
    if (!starts) {
        showMessage(QStringLiteral("The tag editor command \"%1\" cannot be run: %2.").arg(command, error));
        return;
    }
    for (const ProgramStart& start : *starts) {
        if (!QProcess::startDetached(start.program, start.arguments)) {
            showMessage(QStringLiteral("The tag editor \"%1\" could not be started.").arg(start.program));
            return;
        }
    }
    if (!missing.isEmpty()) {
        showMessage(missingNote + QStringLiteral("\n\nThe tag editor was started with the other %1.")
                                      .arg(existing.size() == 1
                                               ? QStringLiteral("file")
                                               : QStringLiteral("%1 files").arg(existing.size())));
    }
}

} // namespace zentoria
