// frmMain: opening a report and building the report tree from it.
#include "FileListView.h"
#include "ReportTree.h"
#include "frmMain.h"
#include "report/ReportReader.h"
#include "settings/Globals.h"
#include "ui/common/CommonDialog.h"
#include "ui/common/ImageList.h"

#include <QFile>

#include <cstdio>

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
    File.remove(u'"');
    QFile file(File);
    if (!file.open(QIODevice::ReadOnly)) {
        showMessage(QStringLiteral("The report \"%1\" cannot be opened: %2.").arg(File, file.errorString()));
        return;
    }
    DeviceLineSource source(file);
    const ReportReadResult result = ReadReport(source);
    if (result.Outcome == Outcome::Corrupted) {
        showMessage(QStringLiteral("The file is corrupted"));
        return;
    }
    LoadTreeView();
    LV->clear();
    for (const ReportEntry& entry : result.Entries) {
        AddEntryNode(entry);
    }
    if (result.Outcome == Outcome::NoProblems) {
        showMessage(QStringLiteral("The are no MP3 file with \"problems\" in this report."));
    }
    const QString problems = result.describeProblems();
    if (!problems.isEmpty()) {
        showMessage(QStringLiteral("\"%1\" was not read completely.\n\n%2").arg(File, problems));
    }
    if (source.hadReadError()) {
        showMessage(QStringLiteral("Reading \"%1\" failed: %2.").arg(File, file.errorString()));
    }
}

void frmMain::LoadTreeView(const QString& Key) {
    // Only the full rebuild is ever asked for; a partial one would need unique keys it cannot have.
    if (!Key.isEmpty()) {
        return;
    }
    // Building the tree is no user action: the expand handler must not see the root open.
    const QSignalBlocker quiet(TV);
    TV->clearNodes();
    const QIcon folder = folderIcon(*ImgDirTree);
    QTreeWidgetItem* root =
        TV->addNode({}, QStringLiteral("Integrity"), QStringLiteral("Integrity Report"), folder);
    root->setExpanded(true);
    for (ProblemKind kind : {ProblemKind::ID3v1, ProblemKind::ID3v2, ProblemKind::ID3v0}) {
        TV->addNode(QStringLiteral("Integrity"), kindCode(kind), kindCaption(kind), folder);
        m_kindNodes[kindNumber(kind)] = TV->nodes().positionOf(kindCode(kind));
    }
}

void frmMain::AddEntryNode(const ReportEntry& entry) {
    // Called once per entry of reports with tens of thousands: the kind node's position was kept when
    // the tree was built, instead of looking up its key each time.
    const int parent = m_kindNodes[kindNumber(entry.Kind)];
    // Every entry key starts with "ID3v1", whatever the entry's kind: the kind is the parent's.
    char key[16];
    const int length = std::snprintf(key, sizeof key, "ID3v1%d", int(entry.Ordinal));
    if (parent != 0) {
        TV->addNode(parent, QString::fromLatin1(key, length), entry.Path);
    }
}

void frmMain::submnuOpen_Click() {
    CMDlg->Filter = QStringLiteral("Melvadex Integrity Report (*.vzt)|*.vzt|Melvadex Integrity Report (prev. "
                                   "versions) (*.txt)|*.txt");
    CMDlg->DialogTitle = QStringLiteral("Select the file to view");
    CMDlg->InitDir = GetAppPath();
    if (CMDlg->ShowOpen(this)) {
        QString file = CMDlg->FileName;
        OpenFile(file);
    }
}

} // namespace zentoria
