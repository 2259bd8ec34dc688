// frmMain: opening a report and building the report tree from it.
#include "frmMain.h"
#include "report/RegularFile.h"
#include "report/ReportReader.h"
#include "ui/common/CommonDialog.h"
#include "ui/common/ImageList.h"
#include "ui/document/ReportDocument.h"
#include "ui/panel/WebPanel.h"
#include "ui/views/FileListView.h"
#include "ui/views/ReportTree.h"
#include "ui/views/ReportTreeModel.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace zentoria {

namespace {

// Closed folder normally, open folder while selected.
QIcon folderIcon(const ImageList& images) {
    QIcon icon;
    for (const QSize& size : {QSize(16, 16), QSize(32, 32)}) {
        icon.addPixmap(images.icon(QStringLiteral("closed")).pixmap(size), QIcon::Normal);
        icon.addPixmap(images.icon(QStringLiteral("open")).pixmap(size), QIcon::Selected);
    }
    return icon;
}

} // namespace

void frmMain::OpenFile(QString& File) {
    // Double quotes go unless they are part of the file's name.
    File = reportPathFromText(File);
    QFile file(File);
    if (QString why; !openRegularFile(file, why)) {
        m_messages.show(this, QStringLiteral("The report \"%1\" cannot be opened: %2.").arg(File, why));
        return;
    }
    DeviceLineSource source(file);
    ReportReadResult result = ReadReport(source);
    if (result.Outcome == Outcome::Corrupted) {
        // For a file with nothing in it, "corrupted" would send the user looking for damage.
        if (source.hadReadError()) {
            m_messages.show(this, QStringLiteral("Reading \"%1\" failed: %2.").arg(File, file.errorString()));
        } else if (file.pos() == 0) {
            m_messages.show(this, QStringLiteral("The file \"%1\" is empty: it holds no report.").arg(File));
        } else {
            m_messages.show(this, QStringLiteral("The file is corrupted"));
        }
        return;
    }
    // Said after the report is shown, counting the files it read.
    const QString problems = result.describeProblems();
    ShowEntries(std::move(result.Entries));
    m_report->setCreationDate(result.CreationDate);
    m_document->opened(File);
    if (result.Outcome == Outcome::NoProblems) {
        m_messages.show(this, QStringLiteral("The are no MP3 file with \"problems\" in this report."));
    }
    if (!problems.isEmpty()) {
        m_messages.show(this, QStringLiteral("\"%1\" was not read completely.\n\n%2").arg(File, problems));
    }
    if (source.hadReadError()) {
        m_messages.show(this, QStringLiteral("Reading \"%1\" failed: %2.").arg(File, file.errorString()));
    }
}

void frmMain::ShowEntries(QList<ReportEntry> entries) {
    // Rebuilding the tree empties the file list too.
    LoadTreeView();
    {
        // The entries move into the tree, which is shown once they are all there.
        const ReportTreeModel::EntryBatch batch(*m_report, entries.size());
        for (ReportEntry& entry : entries) {
            AddEntryNode(std::move(entry));
        }
    }
    // Nothing of the previous report's selection stays. No layout pass here: at start-up the window is
    // not placed yet, and a pass would save its unplaced geometry as the last safe one.
    pctWeb->resetForNewReport(ImgDirTree->icon(QStringLiteral("MP3")));
    m_report->setCreationDate({});
}

void frmMain::LoadTreeView(const QString& Key) {
    // Only the full rebuild is ever asked for; a partial one would need unique keys it cannot have.
    if (!Key.isEmpty()) {
        return;
    }
    // Building the tree is no user action: the expand handler must not see the root open.
    const QSignalBlocker quiet(TV);
    m_report->clear();
    m_report->setFolderIcon(folderIcon(*ImgDirTree));
    const QString root = QStringLiteral("Integrity");
    TV->expand(TV->indexOf(m_report->addNode({}, root, QStringLiteral("Integrity Report"))));
    for (ProblemKind kind : {ProblemKind::ID3v1, ProblemKind::ID3v2, ProblemKind::ID3v0}) {
        m_report->addNode(root, kindCode(kind), kindCaption(kind));
    }
}

void frmMain::AddEntryNode(ReportEntry entry) {
    // Every entry key starts with "ID3v1", whatever the entry's kind: the kind is the parent's. The
    // collection derives keys and parents from the entry itself.
    m_report->addEntry(std::move(entry));
}

void frmMain::submnuOpen_Click() {
    CMDlg->Filter = QStringLiteral("Melvadex Integrity Report (*.vzt)|*.vzt|Melvadex Integrity Report (prev. "
                                   "versions) (*.txt)|*.txt");
    CMDlg->DialogTitle = QStringLiteral("Select the file to view");
    // The dialog starts where the reports are, the folder of the last one opened, else at home: the
    // program's own folder holds no reports.
    const QStringList recent = m_document->recentReports();
    CMDlg->InitDir = recent.isEmpty() ? QDir::homePath() : QFileInfo(recent.first()).absolutePath();
    // The user's reports are one click away: the folders of the recent ones, then the home folder.
    CMDlg->SidebarFolders.clear();
    for (const QString& report : recent) {
        CMDlg->SidebarFolders << QFileInfo(report).absolutePath();
    }
    CMDlg->SidebarFolders << QDir::homePath();
    if (CMDlg->ShowOpen(this)) {
        QString file = CMDlg->FileName;
        OpenFile(file);
    }
}

} // namespace zentoria
