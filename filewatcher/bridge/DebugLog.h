#pragma once

#include "common/cmString.h"

/// Writes "FUNCTION(LINE): MESSAGE" to the editor's debug log. `function` is the qualified name of the caller, `line` its source
/// line (__LINE__). Any thread.
void debugLog(cmROStringT function, int line, cmROStringT message);
