#pragma once

#include "scan/Scanner.h"

#include <QFrame>

class QLabel;
class QProgressBar;
class QPushButton;

namespace zentoria {

// What the status bar shows while the collection is checked: the counts, a progress bar (which a
// screen reader announces as it moves) and a Cancel button.
class CheckProgress : public QFrame {
    Q_OBJECT

public:
    explicit CheckProgress(QWidget* parent = nullptr);

    // Shown, busy until the first counts arrive.
    void start();
    void showCounts(const scan::ScanCounts& counts);

Q_SIGNALS:
    void cancelRequested();

private:
    QLabel* lblCheckCounts;
    QProgressBar* prgCheck;
    QPushButton* cmdCancelCheck;
};

} // namespace zentoria
