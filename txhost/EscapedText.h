#pragma once

#include "common/cmString.h"

/// `text` with its ASCII controls as \xHH: it cannot break a line.
cmStringT escapedControls(cmROStringT text);
/// `text` with all that a terminal may obey as \xHH for each byte: see isControl() and isTerminalControl().
cmStringT escapedForTerminal(cmROStringT text);
