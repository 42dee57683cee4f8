#pragma once

#include "common/cmString.h"

// What a tool's standard error says. The exit code of a tool is never read. Any thread.

/// Whether a line begins with "fatal:", git's word for a command that gave up. A "warning:" or "error:" line may stand before it.
bool hasFatalLine(cmROStringT errorOutput);

/// Whether a line begins with "error:" or "BUG:". git may go on after the first, without what it could not read.
bool hasErrorLine(cmROStringT errorOutput);

/// Whether a line begins with "svn: E" and digits, the form of all of Subversion's errors. Its warnings begin with "svn:
/// warning:".
bool hasSvnError(cmROStringT errorOutput);

/// The line that tells a person what went wrong: the first fatal one or error of Subversion, otherwise the first "error:" or
/// "BUG:", otherwise the first one that is not empty. Without its line end; a part of `errorOutput`.
cmROStringT toolSentence(cmROStringT errorOutput);
