#pragma once

#include <QString>

// A fixture file in tests/data.
inline QString dataFile(const char* name) {
    return QStringLiteral(ZENTORIA_TEST_DATA "/") + QLatin1StringView(name);
}
