#pragma once

#include <functional>
#include <memory>

class QSocketNotifier;

namespace zentoria::cli {

// Ctrl+C (SIGINT) and SIGTERM handed to the event loop instead of ending the process: the handler only
// writes a byte to a pipe, which the loop watches. The handlers in place before come back when it goes,
// so a second Ctrl+C during the work that follows ends the tool at once.
class StopSignals {
public:
    explicit StopSignals(std::function<void()> onStop);
    ~StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;

    // False when the pipe or the handlers could not be set up; the signals then end the process as before.
    bool isListening() const { return m_notifier != nullptr; }

private:
    struct Saved;
    std::unique_ptr<Saved> m_saved;
    QSocketNotifier* m_notifier = nullptr;
};

} // namespace zentoria::cli
