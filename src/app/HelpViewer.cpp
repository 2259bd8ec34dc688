#include "HelpViewer.h"

#include "settings/Texts.h"
#include "ui/common/DialogFit.h"

#include <QFile>
#include <QFileInfo>
#include <QKeySequence>
#include <QShortcut>
#include <QTextBrowser>
#include <QUrl>

namespace zentoria {

QString helpResourceFor(const QString& helpFile) {
    return QStringLiteral(":/help/%1.html").arg(QFileInfo(helpFile).completeBaseName());
}

QTextBrowser* showHelpContents(QWidget* owner, QTextBrowser* viewer, const QString& helpFile) {
    if (!viewer) {
        viewer = new QTextBrowser(owner);
        viewer->setObjectName(QStringLiteral("HelpViewer"));
        viewer->setWindowFlag(Qt::Window);
        viewer->setWindowTitle(uiText(txt::HelpTitle));
        viewer->setOpenExternalLinks(true);
        viewer->resize(640, 560);
        // A window that only shows text closes with the keys such windows close with.
        for (const QKeySequence& key : {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)}) {
            auto* close = new QShortcut(key, viewer);
            close->setContext(Qt::WindowShortcut);
            QObject::connect(close, &QShortcut::activated, viewer, &QWidget::close);
        }
    }
    QString resource = helpResourceFor(helpFile);
    // In the language file's language, where the program has its help in it.
    if (const QString locale = uiText(txt::Locale); !locale.isEmpty()) {
        const QString translated = resource.chopped(5) + u'.' + locale + QStringLiteral(".html");
        if (QFile::exists(translated)) {
            resource = translated;
        }
    }
    if (QFile::exists(resource)) {
        viewer->setSource(QUrl(QStringLiteral("qrc") + resource));
    } else {
        viewer->setPlainText(uiText(txt::HelpMissing).arg(helpFile));
    }
    // On a small screen, or at a large scale, all of it stays on the screen, frame and scroll arrows
    // included.
    fitBeforeShowing(viewer);
    viewer->show();
    viewer->raise();
    viewer->activateWindow();
    return viewer;
}

} // namespace zentoria
