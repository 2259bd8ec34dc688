#pragma once

#include "LineSource.h"
#include "ReportFormat.h"
#include "ReportReadResult.h"

#include <functional>

namespace zentoria {

// Reads one report from its lines. Never looks back, never looks ahead, and stops at the closing line.
// Paths are decoded as UTF-8 when the whole input is valid UTF-8, otherwise as Windows-1252.
ReportReadResult ReadReport(LineSource& source);

// Receives the entries of a report one by one, in file order.
using EntrySink = std::function<void(ReportEntry&& entry)>;

// Reads like the above but hands each entry on as soon as its record is read and keeps none, so memory
// stays bounded however many entries the report holds; the result's Entries stay empty. The source is
// asked for its encoding at the first path that is not ASCII, before its end: it must be one that can
// answer then (memory, or a file that can seek).
ReportReadResult ReadReport(LineSource& source, const EntrySink& onEntry);

} // namespace zentoria
