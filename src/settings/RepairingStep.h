#pragma once

#include <functional>

namespace zentoria {

// How a step that applies a stored geometry ended.
enum class StepResult { Done, InvalidArgument };

// Runs a step; when it fails with an invalid argument, lets repair() replace what it applied by the
// last safe configuration and runs it again. repair() answers false when it has nothing new to offer.
// There is one repair at most: a value the repair cannot cure fails again, and it must not loop.
StepResult runRepairing(const std::function<StepResult()>& step, const std::function<bool()>& repair);

} // namespace zentoria
