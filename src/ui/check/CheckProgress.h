#pragma once

#include "scan/Scanner.h"

#include <QFrame>

class QProgressBar;
class QPushButton;

namespace zentoria {

class ElidedLabel;

// What the status bar shows while the collection is checked: the counts, a progress bar (which a
// screen reader announces as it moves) and a Cancel button.
class CheckProgress : public QFrame {
    Q_OBJECT

public:
    explicit CheckProgress(QWidget* parent = nullptr);

    // Shown, busy until the first counts arrive.
    void start();
    // Busy while files are still being found, the share checked once all are.
    void showCounts(const scan::ScanCounts& counts);
    // The counts the end line says, once they are final.
    void settle(const scan::ScanCounts& counts) { m_counts = counts; }
    // Hidden, saying through `ended` what the check found, or that it was cancelled.
    void finish(bool cancelled);

Q_SIGNALS:
    void cancelRequested();
    // A line for the status bar once the check is over.
    void ended(const QString& summary);

private:
    ElidedLabel* lblCheckCounts;
    QProgressBar* prgCheck;
    QPushButton* cmdCancelCheck;
    scan::ScanCounts m_counts;
};

} // namespace zentoria
