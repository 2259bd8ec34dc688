#pragma once

#include <QStringList>

class QIODevice;

namespace zentoria::cli {

// Exit statuses, as the help text gives them.
inline constexpr int kExitRead = 0;
inline constexpr int kExitDamaged = 1;
inline constexpr int kExitUnreadable = 2;

// What to print about a report.
enum class Listing {
    Plain,   // one line per entry: ORDINAL<TAB>CODE<TAB>PATH
    Json,    // one JSON object
    Summary, // one line of counts
};

// Runs "zentoria-report" with the arguments after the program name and answers its exit status.
int runReportCommand(const QStringList& arguments, QIODevice& out, QIODevice& err);

// Prints a listing of the report on `report`, entry by entry as it is read: the output never waits for
// the whole report and memory does not grow with it. `name` is how messages call the report.
int writeListing(Listing listing, QIODevice& report, const QString& name, QIODevice& out, QIODevice& err);

} // namespace zentoria::cli
