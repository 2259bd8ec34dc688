#include "Version.h"
#include "app/CommandLine.h"
#include "app/Startup.h"
#include "app/TerminationSignals.h"
#include "ui/main/frmMain.h"

#include <QApplication>

#include <cstdio>

int main(int argc, char* argv[]) {
    // Asked for the usage or the version: answered before a window, or a display, is needed.
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments << QString::fromLocal8Bit(argv[i]);
    }
    if (const std::optional<QString> answer =
            zentoria::commandLineAnswer(zentoria::rawCommandLine(arguments))) {
        std::fputs(answer->toLocal8Bit().constData(), stdout);
        return 0;
    }

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zentoria"));
    QApplication::setApplicationDisplayName(QStringLiteral("Zentoria"));
    QApplication::setApplicationVersion(QStringLiteral(ZENTORIA_VERSION));
    QApplication::setDesktopFileName(QStringLiteral(ZENTORIA_APP_ID));

    const std::unique_ptr<zentoria::frmMain> window = zentoria::Main(QApplication::arguments());
    zentoria::closeOnTermination(*window);
    return QApplication::exec();
}
