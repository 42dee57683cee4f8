#pragma once

#include "common/cmPath.h"
#include "common/cmString.h"

/// Maps the absolute path of a file to a relative path, in native separators, under which the cache holds the file. A drive
/// becomes a folder named by its letter; a path on a share begins with the server's name. "." and ".." are resolved and never
/// lead out of the cache. Returns null when the cache cannot hold the file: for a relative path, a path without a file name and,
/// on Windows, a path with a device name or with a character that file names cannot have (a colon included). Pure function.
cmStringT liveDiffMirrorPath(cmROStringT file, cmPathStyle style = cmNativePathStyle);

/// Returns the path of the cache file for `file`, in the cache folder below `directory`, and creates its folder. Null when the
/// path cannot be mapped, when the folder cannot be created, and when a link stands in its way. Writes to the disk. Any thread.
cmStringT prepareLiveDiffCacheFile(cmROStringT directory, cmROStringT file);
