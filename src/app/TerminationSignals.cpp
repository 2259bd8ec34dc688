#include "TerminationSignals.h"

#include "ui/document/ReportDocument.h"
#include "ui/main/frmMain.h"

#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace zentoria {

namespace {

// A signal handler may do next to nothing: it writes a byte, and the event loop reads it.
int g_signalPipe[2] = {-1, -1};

void writeSignalByte(int) {
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(g_signalPipe[0], &byte, 1);
}

} // namespace

void callOnTermination(QObject* context, std::function<void()> onSignal) {
    if (g_signalPipe[0] < 0 && ::socketpair(AF_UNIX, SOCK_STREAM, 0, g_signalPipe) != 0) {
        return;
    }
    auto* notifier = new QSocketNotifier(g_signalPipe[1], QSocketNotifier::Read, context);
    QObject::connect(notifier, &QSocketNotifier::activated, context, [onSignal = std::move(onSignal)] {
        char byte = 0;
        [[maybe_unused]] const ssize_t read = ::read(g_signalPipe[1], &byte, 1);
        onSignal();
    });
    struct sigaction action = {};
    action.sa_handler = writeSignalByte;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGTERM, &action, nullptr);
    ::sigaction(SIGHUP, &action, nullptr);
}

void closeOnTermination(frmMain& window) {
    callOnTermination(&window, [&window] {
        window.document().keepForRecovery();
        window.close();
    });
}

} // namespace zentoria
