#include "RepairingStep.h"

namespace zentoria {

StepResult runRepairing(const std::function<StepResult()>& step, const std::function<bool()>& repair) {
    StepResult result = step();
    if (result == StepResult::InvalidArgument && repair()) {
        result = step();
    }
    return result;
}

} // namespace zentoria
