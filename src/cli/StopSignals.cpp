#include "StopSignals.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace zentoria::cli {

namespace {

// The pipe's ends; the handler can reach nothing but a plain global.
int g_pipe[2] = {-1, -1};

void onSignal(int) {
    const int saved = errno;
    [[maybe_unused]] const ssize_t written = ::write(g_pipe[1], "s", 1);
    errno = saved;
}

} // namespace

struct StopSignals::Saved {
    struct sigaction interrupt = {};
    struct sigaction terminate = {};
};

StopSignals::StopSignals(std::function<void()> onStop)
    : m_saved(std::make_unique<Saved>()) {
    if (g_pipe[0] >= 0 || ::pipe2(g_pipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        return;
    }
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGINT, &action, &m_saved->interrupt);
    ::sigaction(SIGTERM, &action, &m_saved->terminate);
    m_notifier = new QSocketNotifier(g_pipe[0], QSocketNotifier::Read);
    QObject::connect(m_notifier, &QSocketNotifier::activated, [onStop = std::move(onStop)] {
        char bytes[16];
        while (::read(g_pipe[0], bytes, sizeof bytes) > 0) {
        }
        onStop();
    });
}

StopSignals::~StopSignals() {
    if (!m_notifier) {
        return;
    }
    ::sigaction(SIGINT, &m_saved->interrupt, nullptr);
    ::sigaction(SIGTERM, &m_saved->terminate, nullptr);
    delete m_notifier;
    ::close(g_pipe[0]);
    ::close(g_pipe[1]);
    g_pipe[0] = g_pipe[1] = -1;
}

} // namespace zentoria::cli
