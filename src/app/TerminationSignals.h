#pragma once

#include <functional>

class QObject;

namespace zentoria {

// Turns SIGTERM and SIGHUP (a desktop's logout, a closed terminal) into a call of onSignal from the
// event loop, so that the program ends through its usual closing and keeps its settings. The call
// lives as long as context.
void callOnTermination(QObject* context, std::function<void()> onSignal);

} // namespace zentoria
