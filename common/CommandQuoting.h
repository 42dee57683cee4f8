#pragma once

#include "common/cmString.h"

// Quoting of data for command lines in the grammar of CommandLine.h, and the text that each platform's command interpreter
// must be given to start the same command. Pure text on every platform.

/// `data` (a path, a revision) as one argument of a command line: unchanged when it holds only letters, digits and
/// ._-+/\:@=,~^ and no pair of carets, otherwise in double quotes. splitArguments returns it unchanged.
cmStringT quoteArgument(cmROStringT data);

/// `data` in double quotes, whatever it holds. splitArguments returns it unchanged.
cmStringT inDoubleQuotes(cmROStringT data);

/// The command for `/bin/sh -c`. The operators | < > & outside quotes keep their meaning and a pair of carets becomes one
/// caret; everything else is literal, whatever it means to the shell.
cmStringT posixInterpreterText(cmROStringT program, cmROStringT arguments);

/// The same for `cmd.exe /c`. Returns null for what cmd.exe cannot be given: a line break; a double quote or an exclamation
/// mark in an argument of a pipeline, whose sides cmd.exe parses twice; a program path with two per cent signs, which could name
/// a variable.
cmStringT windowsInterpreterText(cmROStringT program, cmROStringT arguments);
