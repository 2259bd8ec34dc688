#pragma once

#include "CommandLine.h"

#include <QStringList>

#include <functional>
#include <memory>

namespace zentoria {

class frmMain;

// Ways in for tests and tools that start the program in-process.
struct StartUpHooks {
    // Runs as soon as the main window exists, before it loads or opens anything.
    std::function<void(frmMain&)> mainWindowCreated;
    // Runs when the splash's closing timer is armed, the last step of start-up's own work.
    std::function<void()> closeTimerArmed;
};

// Starts the program: sets up the shared values, creates and loads the main window while its splash
// shows, opens the report named on the command line and arms the splash's closing, which shows the main
// window 500 ms later. Returns the main window; the caller runs the event loop.
std::unique_ptr<frmMain> Main(const QStringList& arguments, const StartUpHooks& hooks = {});

} // namespace zentoria
