// Save Report As: the document's entries, or what another knows more of them, written to a file
// the user names.

#include "RecentReports.h"
#include "ReportDocument.h"
#include "settings/Texts.h"
#include "ui/common/CommonDialog.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>

namespace zentoria {

void ReportDocument::setRewriter(Rewriter rewriter) {
    m_rewriter = std::move(rewriter);
    updateSaveAs();
}

void ReportDocument::updateSaveAs() {
    submnuSaveAs->setEnabled(!isSaved() || (m_rewriter.ready && m_rewriter.ready()));
}

bool ReportDocument::saveAs() {
    const std::optional<Rewrite> rewrite =
        m_rewriter.ready && m_rewriter.ready() ? std::optional(m_rewriter.make()) : std::nullopt;
    if (isSaved() && !rewrite) {
        return true;
    }
    CommonDialog& dialog = *m_window.dialog;
    dialog.Filter = QStringLiteral("Melvadex Integrity Report (*.vzt)|*.vzt");
    dialog.FilterIndex = 1;
    dialog.DialogTitle = uiText(txt::SaveReportTitle);
    // Beside the reports the user opens (not in the music folder), named after what was checked:
    // "Music.vzt", or "music now.vzt" for the files of music.vzt checked again.
    const QStringList recent = recentReports();
    const QString folder = recent.isEmpty() ? QDir::homePath() : QFileInfo(recent.first()).absolutePath();
    QString checked =
        (rewrite ? rewrite->origin : m_origin).folders.value(0).section(u'/', -1).section(u'\\', -1);
    if (checked.endsWith(QStringLiteral(".vzt"), Qt::CaseInsensitive) ||
        checked.endsWith(QStringLiteral(".txt"), Qt::CaseInsensitive)) {
        checked = uiText(txt::RecheckFileName).arg(checked.chopped(4));
    }
    dialog.InitDir = QDir(folder).filePath((checked.isEmpty() ? QStringLiteral("check") : checked) +
                                           QStringLiteral(".vzt"));
    if (!dialog.ShowSave(m_window.widget)) {
        return false;
    }
    QString file = dialog.FileName;
    if (QFileInfo(file).suffix().isEmpty()) {
        file += QStringLiteral(".vzt");
    }
    const ReportOrigin& origin = rewrite ? rewrite->origin : m_origin;
    const QByteArray bytes = rewrite ? reportBytes(origin, rewrite->entries) : reportBytes(origin, entries());
    if (QString error; !saveReport(file, bytes, &error)) {
        tell(uiText(txt::SaveFailed).arg(file, error));
        return false;
    }
    // Saved, the report is a file like any other, whose names read as they were written.
    ReportOrigin saved;
    saved.carry(origin.missing());
    saved.names = origin.names;
    setSource(Source::File, QFileInfo(file).absoluteFilePath(), {}, std::move(saved));
    // What was written is not what is shown: the window shows the file it names.
    if (rewrite) {
        reload();
    }
    return true;
}

} // namespace zentoria
