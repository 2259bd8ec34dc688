// frmMain: opening a report, which the document reads and shows.
#include "frmMain.h"
#include "report/RegularFile.h"
#include "ui/common/CommonDialog.h"
#include "ui/common/ImageList.h"
#include "ui/document/ReportDocument.h"
#include "ui/panel/WebPanel.h"
#include "ui/views/ReportTree.h"

#include <QDir>
#include <QFileInfo>

namespace zentoria {

void frmMain::OpenFile(QString& File) {
    // Double quotes go unless they are part of the file's name.
    File = reportPathFromText(File);
    m_document->open(File);
}

void frmMain::LoadTreeView() {
    m_document->clear();
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
