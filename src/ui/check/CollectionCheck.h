#pragma once

#include "export/PathMapping.h"
#include "report/ReportEntry.h"
#include "report/ReportHeader.h"
#include "scan/Recheck.h"
#include "scan/ScanReport.h"
#include "ui/views/ServedWindow.h"

#include <QObject>

#include <functional>
#include <memory>

class QAction;
class QThread;
class QWidget;

namespace zentoria {

class CheckProgress;
class CommonDialog;
class ReportDocument;

// Checks the collection here: File > Check Folder makes a report of a music folder, and Tools > Check
// Listed Files Again looks at the open report's files anew; what they find the document shows, not
// saved until File > Save Report As. The check runs on threads of its own while the window stays usable; the
// status bar shows its progress and a Cancel button, and closing the window cancels it.
class CollectionCheck : public QObject {
    Q_OBJECT

public:
    // What the check needs of the window it serves, beyond what every collaborator does; the window's
    // closing cancels a check.
    struct Window : ServedWindow {
        // The open report: what a re-check reads, and what shows a check's result.
        ReportDocument* document = nullptr;
        // Tools > Preferences, offered when a re-check finds none of the report's files.
        QAction* preferences = nullptr;
    };

    CollectionCheck(Window window, QObject* parent);
    ~CollectionCheck() override;

    QAction* checkFolderAction() const { return submnuCheckFolder; }
    QAction* recheckAction() const { return submnuRecheck; }
    // For the status bar, which shows it while a check runs.
    CheckProgress* progressWidget() const { return m_progress; }

    bool isRunning() const { return m_thread != nullptr; }

private:
    void submnuCheckFolder_Click();
    void submnuRecheck_Click();
    using Work = std::function<void(scan::Scanner& scanner, const scan::Scanner::Progress& progress)>;
    // Runs the work on a thread of its own; `done` runs on this thread when it ends, unless cancelled.
    // `counted`, when given, says what the end line counts: what is shown, not what the scanner saw.
    void run(Work work, std::function<void()> done, std::function<scan::ScanCounts()> counted = {});
    // After the thread ended: the progress goes, and what it found is shown unless it was cancelled.
    void cleanUp();
    // Stops a running check and waits for its threads; nothing it found is shown.
    void cancelAndWait();
    // A folder's check as the report shows it: the files it can name, and those it could not check.
    struct FolderResult {
        scan::ScanReport report;
        // The scanner's counts, made to agree with the report.
        scan::ScanCounts counts;
    };
    static FolderResult shownAsReport(const scan::ScanResult& scanned, const QStringList& checked);
    void folderChecked(FolderResult& result, const QStringList& folders);
    // Says what the re-check found, and what it could not look at: folders out of reach, and what the
    // report itself lacks.
    void rechecked(const scan::RecheckResult& result, const MissingRecords& missing);
    void updateActions();

    Window m_window;
    CheckProgress* m_progress;
    std::unique_ptr<scan::Scanner> m_scanner;
    QThread* m_thread = nullptr;
    std::function<void()> m_done;
    std::function<scan::ScanCounts()> m_counted;
    // Counts the checks run, so that the end of a cancelled one is not taken for the next one's.
    int m_generation = 0;
    QAction* submnuCheckFolder;
    QAction* submnuRecheck;
};

} // namespace zentoria
