#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

class QMenu;
class QWidget;

namespace zentoria {

// File > Recent: the reports last opened, newest first, kept in the program's settings. Choosing one
// that no longer exists says so and drops it from the list.
class RecentReports : public QObject {
    Q_OBJECT

public:
    RecentReports(QWidget* window, std::function<void(const QString& report)> open,
                  std::function<void(const QString& text)> tell, QObject* parent);

    QMenu* menu() const { return mnuRecent; }
    // The stored reports, newest first (another run may have changed them).
    QStringList reports() const;
    // Lists the stored reports in the menu.
    void show();
    // Puts a report first.
    void add(const QString& report);

private:
    void write(const QStringList& reports);
    void updateMenu(const QStringList& reports);
    void openRecent(const QString& report);

    std::function<void(const QString&)> m_open;
    std::function<void(const QString&)> m_tell;
    QMenu* mnuRecent;
};

} // namespace zentoria
