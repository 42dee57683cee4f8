#pragma once

#include "common/cmString.h"

#include <cstddef>
#include <string>
#include <vector>

/// Standard streams, terminal and Ctrl-C. For the main thread.
namespace console {

/// Prepares the standard streams for bytes and UTF-8. Call it first. Returns the arguments of the command line in UTF-8.
std::vector<std::string> start(int argc, char** argv);
/// From now on the first interrupt is only recorded for wasInterrupted: Ctrl-C, a request to end, or a standard output that
/// nobody reads any more. A second Ctrl-C ends the program.
void catchInterrupts();
/// From now on an interrupt ends the program at once, as before catchInterrupts.
void releaseInterrupts();
bool wasInterrupted();
/// Whether the interrupt came from a standard output that nobody reads any more.
bool isReaderGone();
/// Prints "interrupted" on standard error and, unless it is empty, what is missing for that; nothing when isReaderGone().
void printInterrupted(cmROStringT missing = {});
/// When text is coloured: `automatic` is on a terminal, unless the user does not want colours (NO_COLOR, TERM=dumb).
enum class ColourChoice { automatic, always, never };
/// Sets it; automatic before. With `always` a terminal is expected at the other end of a pipe (a pager): text is escaped and cut
/// for the terminal of standard error.
void chooseColours(ColourChoice choice);
/// Whether standard output is a terminal.
bool isTerminal();
/// Whether standard error is a terminal.
bool isErrorTerminal();
/// Writes one line to standard output and flushes it, so that the reader of a pipe sees it at once.
void printLine(cmROStringT line);
/// Remembers that a date was left out because the system could not convert it.
void noteMissingDate();
/// Whether one was.
bool isDateMissing();
/// Whether all lines so far were written. Prints an error when not.
bool isOutputComplete();
/// Whether a line could not be written.
bool isOutputBroken();
/// Writes one line to standard error, after the name of the program, escaped as for a terminal.
void printError(cmROStringT line);
/// Writes lines to standard error, each escaped as for a terminal. Any thread.
void printErrorLines(cmROStringT text);
/// `text` for standard output, so that a name cannot break its line or control the terminal: control characters are escaped. On
/// a terminal, or with colours for one, so are those of the set C1, those of the writing direction, and bytes that are no UTF-8;
/// the reader of a pipe gets these as they are.
cmStringT printable(cmROStringT text);
/// Whether text is coloured.
bool isColoured();
/// `text` in a colour (an SGR number). Unchanged when text is not coloured.
cmStringT coloured(int colour, cmROStringT text);
/// The width of the terminal that standard output is for, in columns; 0 when there is none.
std::size_t width();
/// The width of the terminal at standard output or standard error, in columns; 0 when there is none.
std::size_t terminalWidth(bool ofErrors);
/// Whether the user's terminal shows UTF-8, as LC_ALL, LC_CTYPE or LANG tells; on Windows always.
bool showsUTF8();
/// Whether the progress of long work is shown: standard output and standard error are terminals.
bool showsProgress();
/// Shows the progress of long work in the last line of the terminal, cut to its width, in place of the previous progress; an
/// empty text removes it. The next line that is printed removes it, too. Nothing without showsProgress(). Any thread.
void showProgress(cmROStringT text);

inline constexpr int red = 31;
inline constexpr int green = 32;
inline constexpr int yellow = 33;
inline constexpr int cyan = 36;
inline constexpr int grey = 90;

}  // namespace console
