#pragma once

#include <QString>

namespace zentoria::scan {

// Whether the files a report lists under a folder can be looked for there at all. A share that is not
// mounted leaves either no folder or an empty one where it would be; a re-check that looked for its
// files one by one would call them all gone, so it asks this of the folder first.
struct FolderReach {
    enum State {
        Reachable,
        Missing,    // no such folder
        Empty,      // nothing in it: a mount point with nothing mounted, or a folder emptied
        CannotOpen, // with the system's error
    };
    State state = Reachable;
    int error = 0;

    bool reachable() const { return state == Reachable; }
};

// An existing folder counts as unreachable when it holds nothing: any file the report expects under
// it would be "not found" anyway, and this is how an unmounted share looks whether or not its mount
// point is on another device than its parent, so no device numbers are compared.
FolderReach reachOf(const QString& folder);

// Why the folder is out of reach, in English: "is missing", "is empty (a share not mounted?)".
QString describe(const FolderReach& reach);

} // namespace zentoria::scan
