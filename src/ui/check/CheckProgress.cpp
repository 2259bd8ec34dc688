#include "CheckProgress.h"

#include "settings/Texts.h"
#include "ui/common/ElidedLabel.h"

#include <QHBoxLayout>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>

namespace zentoria {

CheckProgress::CheckProgress(QWidget* parent)
    : QFrame(parent)
    , lblCheckCounts(new ElidedLabel(this))
    , prgCheck(new QProgressBar(this))
    , cmdCancelCheck(new QPushButton(uiText(txt::CancelCheck), this)) {
    setObjectName(QStringLiteral("fraCheckProgress"));
    setAutoFillBackground(true);
    lblCheckCounts->setObjectName(QStringLiteral("lblCheckCounts"));
    prgCheck->setObjectName(QStringLiteral("prgCheck"));
    prgCheck->setAccessibleName(uiText(txt::CheckProgress));
    prgCheck->setMaximumWidth(220);
    cmdCancelCheck->setObjectName(QStringLiteral("cmdCancelCheck"));

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(2, 0, 2, 0);
    row->addWidget(lblCheckCounts, 1);
    row->addWidget(prgCheck);
    row->addWidget(cmdCancelCheck);
    connect(cmdCancelCheck, &QPushButton::clicked, this, &CheckProgress::cancelRequested);
    // Escape stops a check from anywhere in the window, at once (a button's own shortcut waits for its
    // click to be drawn); while no check runs this bar is hidden and the key does nothing.
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this,
            &CheckProgress::cancelRequested);
    hide();
}

void CheckProgress::start() {
    lblCheckCounts->setFullText(uiText(txt::CheckStarting));
    // Busy until the walk has found files to count against.
    prgCheck->setRange(0, 0);
    m_counts = {};
    cmdCancelCheck->setEnabled(true);
    show();
    raise();
}

void CheckProgress::showCounts(const scan::ScanCounts& counts) {
    m_counts = counts;
    const QString line = uiText(counts.allFound ? txt::CheckCounts : txt::CheckCounting)
                             .arg(counts.probed)
                             .arg(counts.found)
                             .arg(counts.perKind.of(ProblemKind::ID3v1))
                             .arg(counts.perKind.of(ProblemKind::ID3v2))
                             .arg(counts.perKind.of(ProblemKind::ID3v0));
    lblCheckCounts->setFullText(line);
    prgCheck->setAccessibleDescription(line);
    // A share of what is found so far would run ahead of the truth: busy until the total is known.
    if (!counts.allFound) {
        prgCheck->setRange(0, 0);
        return;
    }
    // The bar counts files; past int's range it counts them in thousands.
    const int scale = counts.found > 1'000'000'000 ? 1000 : 1;
    prgCheck->setRange(0, int(std::max<qint64>(1, counts.found / scale)));
    prgCheck->setValue(int(counts.probed / scale));
}

void CheckProgress::finish(bool cancelled) {
    hide();
    const scan::ScanCounts& counts = m_counts;
    if (cancelled) {
        Q_EMIT ended(uiText(txt::CheckCancelled).arg(counts.probed));
        return;
    }
    QString line = uiText(counts.failed == 1 ? txt::CheckEndedOneNotChecked : txt::CheckEnded)
                       .arg(counts.probed - counts.unreadable)
                       .arg(counts.perKind.of(ProblemKind::ID3v1))
                       .arg(counts.perKind.of(ProblemKind::ID3v2))
                       .arg(counts.perKind.of(ProblemKind::ID3v0));
    Q_EMIT ended(counts.failed == 1 ? line : line.arg(counts.failed));
}

} // namespace zentoria
