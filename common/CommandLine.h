#pragma once

#include "common/cmArray.h"
#include "common/cmPath.h"
#include "common/cmString.h"

#include <functional>

// The grammar of command lines, as pure text. It is the one that Windows programs expect, on every platform:
// blanks and tabs separate arguments, double quotes enclose, a backslash is literal unless backslashes
// lead up to a double quote, where each pair stands for one and an odd one makes the quote literal.

/// A command line taken apart at the end of its program.
struct CommandLine {
    cmStringT program;    ///< without its quotes
    cmStringT arguments;  ///< the text behind it, as it stood, without leading blanks
};

/// The program ends at its closing quote, whether or not a blank follows (`"git"remote show`); without
/// quotes it ends at the first blank.
CommandLine splitCommandLine(cmROStringT text);

/// The arguments as a program receives them.
cmArray<cmStringT> splitArguments(cmROStringT text);

/// Data (a path, a revision) as one argument of a command line: as it is when it holds only letters, digits and
/// ._-+/\:@=,~^ and no pair of carets, otherwise in double quotes. splitArguments gives it back unchanged.
cmStringT quoteArgument(cmROStringT data);

/// Data in double quotes, whatever it holds; splitArguments gives it back unchanged.
cmStringT inDoubleQuotes(cmROStringT data);

/// Whether a command line holds one of the shell operators | < > & or a pair of carets, anywhere.
bool hasShellOperator(cmROStringT text);

/// Whether an operator stands outside quotes, so that only an interpreter can do what is asked.
bool needsInterpreter(cmROStringT arguments);

/// `arguments` of `program` for `/bin/sh -c`: | < > & outside quotes keep their meaning, a pair of carets is one
/// caret, everything else is literal, whatever it means to the shell.
cmStringT posixInterpreterText(cmROStringT program, cmROStringT arguments);

/// The same for cmd.exe behind /c. Null when it cannot be said there: a line break, a double quote or an exclamation mark inside
/// an argument of a pipeline (whose sides cmd.exe reads twice), or a program with two per cent signs (which would name a
/// variable).
cmStringT windowsInterpreterText(cmROStringT program, cmROStringT arguments);

/// The absolute path of `program`: itself when absolute, else the first match in the absolute directories of
/// `pathVariable`. Never the current directory, an empty or a relative entry. On Windows a name without an
/// extension is looked for with ".exe", and only .exe and .com files are programs: a batch file would be run by cmd.exe, which
/// reads its arguments by rules that no quoting meets. Null when there is none.
cmStringT findProgram(cmROStringT program, cmROStringT pathVariable, cmPathStyle style,
                      const std::function<bool(const cmStringT& path)>& isProgram);
