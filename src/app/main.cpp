#include "Version.h"
#include "app/Startup.h"
#include "ui/main/frmMain.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zentoria"));
    QApplication::setApplicationDisplayName(QStringLiteral("Zentoria"));
    QApplication::setApplicationVersion(QStringLiteral(ZENTORIA_VERSION));
    QApplication::setDesktopFileName(QStringLiteral(ZENTORIA_APP_ID));

    const std::unique_ptr<zentoria::frmMain> window = zentoria::Main(QApplication::arguments());
    return QApplication::exec();
}
