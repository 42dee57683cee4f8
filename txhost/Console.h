#pragma once

#include "common/cmString.h"

#include <cstddef>
#include <string>
#include <vector>

/// What txhost wants of the terminal and of Ctrl-C.
namespace console {

/// Prepares the standard streams for bytes and UTF-8; the words of the command line, in UTF-8. Called first.
std::vector<std::string> start(int argc, char** argv);
/// From now on Ctrl-C (and a request to end, and that nobody reads the output any more) is only remembered.
void catchInterrupts();
bool wasInterrupted();
/// Whether it was the reader of standard output that ended the work.
bool isReaderGone();
/// One line on standard error that says so; none when it was the reader of standard output that went away.
void printInterrupted();
/// Whether standard output is a terminal, and standard error.
bool isTerminal();
bool isErrorTerminal();
/// One line on standard output, out at once: whoever reads a pipe sees it as it happens.
void printLine(cmROStringT line);
/// Whether all lines so far could be written; tells the user when not.
bool isOutputComplete();
/// One line on standard error, behind the name of the program.
void printError(cmROStringT line);
/// `text` with its control characters escaped, so that a name stays on its line.
cmStringT printable(cmROStringT text);
/// `text` in a colour of the terminal (an SGR number); as it is where there is no terminal, or the user wants none.
cmStringT coloured(int colour, cmROStringT text);
/// How many places a line of the terminal has; 0 when standard output is none.
std::size_t width();
/// How many places the text takes on a terminal.
std::size_t placesOf(cmROStringT text);
/// As much of the text as takes at most `places`; what was cut shows.
cmStringT shortened(cmROStringT text, std::size_t places);
/// Shows how far long work has come, in place of what it showed last, where standard error is a terminal. Empty: takes it away.
void showProgress(cmROStringT text);
/// The time of day, "HH:MM:SS".
cmStringT timeOfDay();

inline constexpr int red = 31;
inline constexpr int green = 32;
inline constexpr int yellow = 33;
inline constexpr int cyan = 36;
inline constexpr int grey = 90;

}  // namespace console
