#pragma once

#include "export/PathMapping.h"
#include "ui/views/ServedWindow.h"

#include <QObject>

#include <functional>
#include <optional>

class QAction;
class QWidget;

namespace zentoria {

class CommonDialog;

// Hands the listed files on: copies them to the clipboard, exports them as a playlist, a table or
// text, starts a tag editor with them, and selects them by a pattern. It asks once where the
// report's Windows folder is on this computer and keeps the answer; Tools > Preferences manages the
// folders and the tag editor.
class FileHandOff : public QObject {
    Q_OBJECT

public:
    using Window = ServedWindow;

    FileHandOff(Window window, QObject* parent);

    QAction* copyAction() const { return submnuCopy; }
    QAction* selectAllAction() const { return submnuSelectAll; }
    QAction* selectMatchingAction() const { return submnuSelectMatching; }
    QAction* exportAction() const { return submnuExport; }
    QAction* openWithAction() const { return submnuOpenWith; }
    QAction* preferencesAction() const { return submnuPreferences; }

private:
    void submnuCopy_Click();
    void submnuSelectAll_Click();
    void submnuSelectMatching_Click();
    void submnuExport_Click();
    void submnuOpenWith_Click();
    // Enables the items that need a selection, or files in the list, only while there are some.
    void updateActions();
    // What Export writes: the selected files, or without a selection every file of the activated kind.
    QList<const ReportEntry*> filesToExport() const;
    // The path mappings to use for these files: the stored ones, or the user's answer when none is
    // stored and some file is a Windows path. None when the user cancelled.
    std::optional<PathMappings> pathMappingFor(const QList<const ReportEntry*>& files);

    Window m_window;
    // What Select Matching looked for last, offered again.
    QString m_lastPattern;
    QAction* submnuCopy;
    QAction* submnuSelectAll;
    QAction* submnuSelectMatching;
    QAction* submnuExport;
    QAction* submnuOpenWith;
    QAction* submnuPreferences;
};

} // namespace zentoria
