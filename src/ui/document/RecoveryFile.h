#pragma once

#include <QByteArray>
#include <QString>

namespace zentoria {

// A check's result that was on screen, not saved, when the desktop ended the program (a logout does
// not wait for an answer): kept beside the program's settings until the next start.

// Writes the report there whole; false when it could not be written.
bool keepForRecovery(const QByteArray& report);

// At start: the kept report, moved to a name of its own beside the settings ("Recovered check
// 2026-11-25 14.03.vzt") so that the next one cannot replace it; empty when there is none.
QString takeRecoveredReport();

} // namespace zentoria
