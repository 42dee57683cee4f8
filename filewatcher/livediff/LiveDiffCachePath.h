#pragma once

#include "common/cmPath.h"
#include "common/cmString.h"

/// Where the cache mirrors a file: the path of `file`, which is absolute, as one below a folder, in native separators. A drive
/// becomes a folder of its letter, a share is led by its server's name. `.` and `..` are resolved and never lead out. Null for
/// a path that cannot be mirrored: a relative one, one without a file name and, on Windows, one with a device's name or with a
/// character that no file name has, a colon included.
cmStringT liveDiffMirrorPath(cmROStringT file, cmPathStyle style = cmNativePathStyle);

/// The cache file for `file`, whose folder is made: `directory` is the editor's own, below which the cache lies. Null when the
/// path cannot be mirrored or the folder not be made. Writes the disk; any thread.
cmStringT prepareLiveDiffCacheFile(cmROStringT directory, cmROStringT file);
