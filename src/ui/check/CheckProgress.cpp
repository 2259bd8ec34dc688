#include "CheckProgress.h"

#include "settings/LanguageCatalog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>

namespace zentoria {

namespace {

QString text(const char* key, const char* english) {
    return Translate(QStringLiteral("Status"), QLatin1StringView(key), QString::fromUtf8(english));
}

} // namespace

CheckProgress::CheckProgress(QWidget* parent)
    : QFrame(parent)
    , lblCheckCounts(new QLabel(this))
    , prgCheck(new QProgressBar(this))
    , cmdCancelCheck(new QPushButton(text("CancelCheck", "Cancel"), this)) {
    setObjectName(QStringLiteral("fraCheckProgress"));
    setAutoFillBackground(true);
    lblCheckCounts->setObjectName(QStringLiteral("lblCheckCounts"));
    lblCheckCounts->setTextFormat(Qt::PlainText);
    prgCheck->setObjectName(QStringLiteral("prgCheck"));
    prgCheck->setAccessibleName(text("CheckProgress", "Check progress"));
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
    lblCheckCounts->setText(text("CheckStarting", "Looking for MP3 files…"));
    // Busy until the walk has found files to count against.
    prgCheck->setRange(0, 0);
    cmdCancelCheck->setEnabled(true);
    show();
    raise();
}

void CheckProgress::showCounts(const scan::ScanCounts& counts) {
    const QString line =
        text("CheckCounts", "%1 of %2 files checked: %3 without ID3v1, %4 without ID3v2, %5 without tags")
            .arg(counts.probed)
            .arg(counts.found)
            .arg(counts.perKind[1])
            .arg(counts.perKind[2])
            .arg(counts.perKind[0]);
    lblCheckCounts->setText(line);
    lblCheckCounts->setToolTip(line);
    // The bar counts files; past int's range it counts them in thousands.
    const int scale = counts.found > 1'000'000'000 ? 1000 : 1;
    prgCheck->setRange(0, int(std::max<qint64>(1, counts.found / scale)));
    prgCheck->setValue(int(counts.probed / scale));
    prgCheck->setAccessibleDescription(line);
}

} // namespace zentoria
