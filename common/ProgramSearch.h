#pragma once

#include "common/cmPath.h"
#include "common/cmString.h"

#include <functional>

/// Finds the absolute path of `program`. An absolute program is itself the only candidate; a bare name is looked for in the
/// absolute directories of `pathVariable`, in order. The current directory and empty or relative entries are never searched:
/// a repository could place a program there. On Windows ".exe" is added to a name without an extension, and only .exe and
/// .com files count as programs: cmd.exe would run a batch file, and it reads arguments by rules that no quoting satisfies.
/// Pure but for `isProgram`, which says whether a candidate exists and can be started. Returns null when there is none.
cmStringT findProgram(cmROStringT program, cmROStringT pathVariable, cmPathStyle style,
                      const std::function<bool(const cmStringT& path)>& isProgram);
