#pragma once

#include "common/cmString.h"
#include "txapi/EditorNumbers.h"

#include <cstdint>

// What the editor knows of paths without looking at the files. Paths are UTF-8. Any thread.

/// The numbers are those of txPathKind.
enum class PathKind : std::int32_t { local = txPathLocal, remote = txPathRemote, relative = txPathRelative };

/// Remote is what a server holds: "scheme://..." and, on Windows, "\\server\share".
PathKind pathKind(cmROStringT path);
bool isUrl(cmROStringT path);
/// `path` below `directory`, and that below the current one, in native separators; a URL stays as it is, and so does
/// what the system cannot take for a path. `normalise` resolves "." and "..", by the text alone.
cmStringT absolutePath(cmROStringT path, cmROStringT directory, bool normalise);
/// The system's folder for temporary files; empty when there is none.
cmStringT temporaryDirectory();
