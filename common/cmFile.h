#pragma once

#include "common/cmString.h"

/// The path with every symbolic link followed, absolute; null when it does not exist. Reads the disk; any thread.
cmStringT cmRealPath(cmROStringT path);
/// Reads the disk; any thread.
bool cmIsDirectory(cmROStringT path);
/// Makes the folder `relative` below `root`, with every missing one on the way, for others to read only. False when it cannot be
/// made and when a link stands in its way: nothing is made outside `root`. Writes the disk; any thread.
bool cmMakeFolderBelow(cmROStringT root, cmROStringT relative);
/// Removes a folder with all that is in it, read-only files too; false when something is left. Any thread.
bool cmRemoveFolder(cmROStringT path);
/// The file of the running program, absolute. Any thread.
cmStringT cmProgramPath();
/// The process's current directory; null when it is gone. Any thread.
cmStringT cmCurrentDirectory();
