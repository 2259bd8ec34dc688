#include "RecentReports.h"

#include "settings/SettingsStore.h"
#include "settings/Texts.h"
#include "ui/common/Ampersands.h"
#include "ui/common/MenuItems.h"

#include <QAction>
#include <QFileInfo>
#include <QMenu>

namespace zentoria {

namespace {

const QString kRecentSection = QStringLiteral("Recent");
constexpr int kRecentCount = 8;

QString recentKey(int number) {
    return QStringLiteral("File%1").arg(number);
}

} // namespace

RecentReports::RecentReports(QWidget* window, std::function<void(const QString& report)> open,
                             std::function<void(const QString& text)> tell, QObject* parent)
    : QObject(parent)
    , m_open(std::move(open))
    , m_tell(std::move(tell))
    , mnuRecent(new QMenu(QStringLiteral("&Recent"), window)) {
    mnuRecent->setObjectName(QStringLiteral("mnuRecent"));
    mnuRecent->menuAction()->setObjectName(QStringLiteral("mnuRecent"));
}

QStringList RecentReports::reports() const {
    QStringList keys;
    for (int number = 1; number <= kRecentCount; ++number) {
        keys << recentKey(number);
    }
    QStringList reports;
    for (const QString& report : readSettings(thisProgram(), kRecentSection, keys)) {
        if (!report.isEmpty() && !reports.contains(report)) {
            reports << report;
        }
    }
    return reports;
}

void RecentReports::show() {
    updateMenu(reports());
}

void RecentReports::add(const QString& report) {
    QStringList list = reports();
    list.removeAll(report);
    list.prepend(report);
    write(list.mid(0, kRecentCount));
}

void RecentReports::write(const QStringList& reports) {
    QList<SettingValue> values;
    for (int number = 1; number <= kRecentCount; ++number) {
        values.append({kRecentSection, recentKey(number), reports.value(number - 1)});
    }
    writeSettings(thisProgram(), values);
    updateMenu(reports);
}

void RecentReports::updateMenu(const QStringList& reports) {
    mnuRecent->clear();
    int number = 0;
    for (const QString& report : reports) {
        QAction* item = mnuRecent->addAction(doubleAmpersands(report));
        item->setObjectName(QStringLiteral("submnuRecent%1").arg(++number));
        item->setData(report);
        item->setToolTip(report);
        connect(item, &QAction::triggered, this, [this, report] { openRecent(report); });
    }
    mnuRecent->addSeparator();
    QAction* clear = mnuRecent->addAction(QStringLiteral("&Clear"));
    clear->setObjectName(QStringLiteral("submnuClearRecent"));
    translateMenuItem(clear);
    clear->setEnabled(!reports.isEmpty());
    connect(clear, &QAction::triggered, this, [this] { write({}); });
}

void RecentReports::openRecent(const QString& report) {
    if (!QFileInfo(report).isFile()) {
        QStringList list = reports();
        list.removeAll(report);
        write(list);
        m_tell(uiText(txt::RecentGone).arg(report));
        return;
    }
    m_open(report);
}

} // namespace zentoria
