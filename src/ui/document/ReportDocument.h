#pragma once

#include "report/ReportWriter.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <optional>

class QAction;
class QFileSystemWatcher;
class QMenu;
class QWidget;

namespace zentoria {

class CommonDialog;
class FileListView;
class MessageBoxes;
class NodeCollection;
class RecentReports;
class ReportTreeModel;

// The open report, owned once: its entries and their model, where they came from (a file, a check of
// the collection, a re-check), whether they are saved, and what can be done with them: open, show,
// reload, save. Every report reaches the screen through show(); the window and the other collaborators
// learn of it from shown() and read the entries from here. It keeps the title and the address, File >
// Recent, notices when the file changes on disk, takes reports dropped on the window, and never lets
// an unsaved check's result go without asking.
class ReportDocument : public QObject {
    Q_OBJECT

public:
    enum class Source { None, File, Check, Recheck };

    // What the document needs of the window it serves; given once its controls exist.
    struct Window {
        // Messages and the menus belong to it, drops on it are taken, its closing is asked about.
        QWidget* widget = nullptr;
        FileListView* list = nullptr;
        CommonDialog* dialog = nullptr;
        MessageBoxes* messages = nullptr;
        // Activates the node at a tree position as a click on it would.
        std::function<void(int position)> activate;
    };

    explicit ReportDocument(QObject* parent);
    void attach(Window window);

    ReportTreeModel* model() const { return m_model; }
    const NodeCollection& nodes() const;
    // Every entry shown, in the order they were read.
    const QList<ReportEntry>& entries() const;
    Source source() const { return m_source; }
    // False while a check's result is shown that no file holds yet.
    bool isSaved() const { return m_source != Source::Check && m_source != Source::Recheck; }
    // The full path of the report's file; empty when it has none.
    const QString& path() const { return m_path; }
    // The file's name, or the name of a check's result.
    QString name() const;
    // Who made the report shown and from what, as its header says (for a check's result).
    const ReportOrigin& origin() const { return m_origin; }

    QMenu* recentMenu() const;
    QAction* reloadAction() const { return submnuReload; }
    QAction* saveAsAction() const { return submnuSaveAs; }
    QStringList recentReports() const;
    void showRecentReports();

    // Reads the report at a path (already free of quotes) and shows it, telling the user of anything
    // wrong with it; asks first when an unsaved result would go.
    void open(const QString& file);
    // Shows a report made here, named, not saved until Save Report As.
    void showResult(QList<ReportEntry> entries, const QString& name, ReportOrigin origin, Source source);
    // The report's root and kinds with no entries, as before the first report.
    void clear();
    // Whether what is shown may be replaced: true when it is saved, or the user saved or discarded it.
    bool maySetAside();
    // A logout: an unsaved result is kept beside the settings, and the window closes without a question.
    void keepForRecovery();
    // At start: tells of a result kept by keepForRecovery at the last run.
    void tellOfRecovery();

    // What Save Report As writes instead of the entries shown, when another knows more of them (what
    // following the fixes has seen): `make` gives it while `ready` says there is one, and Save Report
    // As is offered then. Without a rewriter, or while it is not ready, the entries as shown.
    struct Rewrite {
        QList<ReportEntry> entries;
        ReportOrigin origin;
    };
    struct Rewriter {
        std::function<bool()> ready;
        std::function<Rewrite()> make;
    };
    void setRewriter(Rewriter rewriter);
    // Save Report As is offered anew: whether a rewrite is there may have changed.
    void updateSaveAs();

Q_SIGNALS:
    // Another report is on screen (the list is empty, nothing of the last one is selected).
    void shown();
    void titleChanged(const QString& title);
    // The open report and the activated node, as the address bar shows them.
    void addressChanged(const QString& address);
    // The window is closing, with the user's consent.
    void closing();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void show(QList<ReportEntry> entries, const QString& creationDate);
    // Adds one report entry to the tree under its kind.
    void AddEntryNode(ReportEntry entry);
    void setSource(Source source, const QString& path, const QString& name, ReportOrigin origin);
    bool saveAs();
    void reload();
    void fileChanged(const QString& path);
    void updateTitleAndAddress();
    void tell(const QString& text);
    // A message about a report file, with the file's name in its title.
    void tellAbout(const QString& file, const QString& text);

    Window m_window;
    ReportTreeModel* m_model;
    Source m_source = Source::None;
    QString m_path;
    // The file Reload reads: the report's, or for a re-check's result the file it checked again.
    QString m_reloadFrom;
    // The name of the report made here that is shown.
    QString m_resultName;
    ReportOrigin m_origin;
    // Set when the open report's file changed after it was read, until it is read again.
    bool m_changedOnDisk = false;
    // Set once the window may close without asking (the desktop is ending the session).
    bool m_ending = false;
    // Whether what is being dragged over the window is a report, decided when it entered.
    bool m_dragIsReport = false;
    QFileSystemWatcher* m_watcher;
    Rewriter m_rewriter;
    RecentReports* m_recent;
    QAction* submnuReload;
    QAction* submnuSaveAs;
};

} // namespace zentoria
