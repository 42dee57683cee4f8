#pragma once

#include "txhost/JsonText.h"

#include <cstddef>

// Hunks of a diff as the module tells them: tables of its query.

/// How many versions a hunk compares the new one with: several in the diff of a merge.
std::size_t parentsOfHunk(const Json& hunk);
/// "@@ -1,2 +1,3 @@", or with one range more for each further parent "@@@ -1,2 -1,3 +1,4 @@@".
cmStringT hunkHeader(const Json& hunk);
/// What a hunk's line is, which begins with a character for each parent: '+' when one of them lacks it, '-' when it is gone, '\\'
/// for a remark of git, else ' '.
char kindOfLine(cmROStringT line, std::size_t parents);
