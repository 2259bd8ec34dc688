#pragma once

#include "ui/views/ListedFiles.h"

#include <QObject>
#include <QStringList>

#include <functional>

class QAction;
class QFileSystemWatcher;
class QMenu;
class QWidget;

namespace zentoria {

// The open report as a document: its name in the title and the address bar, the reports opened
// lately (File > Recent), reading it again (File > Reload) without losing the view, noticing when
// its file changes, and reports dropped on the window.
class ReportDocument : public QObject {
    Q_OBJECT

public:
    // What the document needs of the window it serves.
    struct Window {
        // The window: messages and the recent menu belong to it, and drops on it are taken.
        QWidget* widget = nullptr;
        ListedFiles files;
        // Reads and shows a report, telling the user of anything wrong with it.
        std::function<void(const QString& file)> open;
        // Activates the node at a tree position as a click on it would.
        std::function<void(int position)> activate;
        std::function<void(const QString& text)> tell;
    };

    ReportDocument(Window window, QObject* parent);

    QMenu* recentMenu() const { return mnuRecent; }
    QAction* reloadAction() const { return submnuReload; }

    // The full path of the report on screen; empty before the first.
    const QString& path() const { return m_path; }
    // The reports last opened, newest first, as File > Recent lists them.
    QStringList recentReports() const;
    // Lists the stored recent reports (their file may have been edited by another run).
    void showRecentReports();
    // After a report was read and shown: remembers it, watches its file, titles the window.
    void opened(const QString& file);
    // After a report made here (a check of the collection) was shown: titled by its name as not saved,
    // with no file to reload or watch.
    void shownUnsaved(const QString& name);

Q_SIGNALS:
    void titleChanged(const QString& title);
    // The open report and the activated node, as the address bar shows them.
    void addressChanged(const QString& address);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void submnuReload_Click();
    void openRecent(const QString& report);
    void writeRecentReports(const QStringList& reports);
    void updateRecentMenu(const QStringList& reports);
    void fileChanged(const QString& path);
    void updateTitleAndAddress();

    Window m_window;
    QString m_path;
    // The name of the report made here that is shown, while it is not saved.
    QString m_unsavedName;
    // Set when the open report's file changed after it was read, until it is read again.
    bool m_changedOnDisk = false;
    // Whether what is being dragged over the window is a report, decided when it entered.
    bool m_dragIsReport = false;
    QFileSystemWatcher* m_watcher;
    QMenu* mnuRecent;
    QAction* submnuReload;
};

} // namespace zentoria
