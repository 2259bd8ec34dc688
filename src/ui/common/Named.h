#pragma once

#include <QLatin1StringView>

namespace zentoria {

// Gives a new widget (or any object) its name from the design, which is also how tests and tools find
// it, and hands it back for the next call.
template <typename Object>
Object* named(Object* object, const char* name) {
    object->setObjectName(QLatin1StringView(name));
    return object;
}

} // namespace zentoria
