#pragma once

#include "common/cmString.h"

// File names in git's output. git puts a name with a control character, a double quote or a backslash in double quotes and
// escapes these characters as C does, with octal numbers for bytes. Pure functions.

/// Removes a quoted name from the front of `text`, which begins with its opening quote, and returns it unescaped. A name without
/// a closing quote ends with the text.
cmStringT takeQuotedGitName(cmROStringT& text);
/// The name that makes up the whole of `line`, quoted or not.
cmStringT gitNameOnLine(cmROStringT line);
