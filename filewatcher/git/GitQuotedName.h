#pragma once

#include "common/cmString.h"

// git writes a name that holds a control character, a double quote or a backslash in double quotes, with C escapes.

/// Takes such a name, its opening quote included, from the front of `text`. One that is cut short ends with the text.
cmStringT takeQuotedGitName(cmROStringT& text);
/// The name that git wrote, quoted or not, as the only thing on `line`.
cmStringT gitNameOnLine(cmROStringT line);
