#pragma once

#include "export/PathMapping.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

class QSize;
class QWidget;

namespace zentoria {

// The window's file-open dialog, kept as settings plus one call, the way the report tools set it up.
// Tests (and anything else that must not block on a modal dialog) install a chooser that answers instead.
class CommonDialog : public QObject {
    Q_OBJECT

public:
    // Answers a request with a chosen file name, or an empty one for a cancelled dialog.
    using Chooser = std::function<QString(const CommonDialog& request)>;

    explicit CommonDialog(QObject* parent = nullptr);

    // Pairs of description and pattern separated by "|", such as "Reports (*.vzt)|*.vzt".
    QString Filter;
    QString DialogTitle;
    QString InitDir;
    // The file chosen by the last ShowOpen() or ShowSave(); empty when it was cancelled.
    QString FileName;
    // Folders the open dialog offers in its sidebar, first to last.
    QStringList SidebarFolders;
    // 1-based: the filter the save dialog starts with, and after it the one the user chose.
    int FilterIndex = 1;

    // Shows the file-open dialog, modal, over the parent; true when a file was chosen.
    bool ShowOpen(QWidget* parent);
    // Shows the save dialog, modal, over the parent, asking before a file is replaced; true when a
    // name was given. A chooser's answer keeps FilterIndex as it was.
    bool ShowSave(QWidget* parent);
    // Asks for a folder, starting at InitDir; true when one was chosen (in FileName).
    bool ShowFolder(QWidget* parent);
    // Asks where the Windows folder of the files is on this computer, starting from the current
    // mapping or, without one, from the guessed folder. An empty mapping means the paths are used as
    // they stand; none means the user cancelled. A chooser is asked too (with DialogTitle "PathMap"
    // and InitDir the guess) and answers "WINDOWS=LOCAL", or anything else for the paths as they stand.
    std::optional<PathMapping> ShowPathMap(QWidget* parent, const PathMapping& current, const QString& guess);

    void setChooser(Chooser chooser) { m_chooser = std::move(chooser); }

    // The filter in the form Qt's file dialogs take: "Reports (*.vzt);;Old reports (*.txt)". Descriptions
    // that do not name their pattern get it appended, so the dialog still filters by it.
    static QString toQtFilter(const QString& filter);
    // The open dialog's size: its own wish, at least enough for its detail columns, at most nine
    // tenths of the screen's available area (none: no bound).
    static QSize openDialogSize(const QSize& hint, const QSize& available);

private:
    Chooser m_chooser;
};

} // namespace zentoria
