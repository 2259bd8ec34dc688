#pragma once

#include <QStringList>

#include <functional>
#include <memory>

namespace zentoria {

class frmMain;

// Ways in for tests and tools that start the program in-process.
struct StartUpHooks {
    // Runs as soon as the main window exists, before it loads or opens anything.
    std::function<void(frmMain&)> mainWindowCreated;
};

// The command line after the program's name, as one text: the arguments joined by single blanks.
QString rawCommandLine(const QStringList& arguments);

// Starts the program: sets up the shared values, creates and loads the main window, opens the report
// named on the command line and shows the window. Returns the main window; the caller runs the event loop.
std::unique_ptr<frmMain> Main(const QStringList& arguments, const StartUpHooks& hooks = {});

} // namespace zentoria
