#pragma once

#include <functional>

class QObject;

namespace zentoria {

// Turns SIGTERM and SIGHUP (a desktop's logout, a closed terminal) into a call of onSignal from the
// event loop, so that the program ends through its usual closing and keeps its settings. The call
// lives as long as context.
void callOnTermination(QObject* context, std::function<void()> onSignal);

class frmMain;
// A logout ends the program the way File > Quit does, settings kept. It does not wait for an answer,
// so a check's result that is not saved is kept for the next start instead of being asked about.
void closeOnTermination(frmMain& window);

} // namespace zentoria
