#pragma once

#include <string>
#include <vector>

// What the helper program wants of the system.

/// Makes the standard streams carry bytes; the arguments in UTF-8, without the program.
std::vector<std::string> prepareHelper(int argc, char** argv);
/// Starts this program once more, with one argument and the same streams, and does not wait for it.
void startBeside(const char* argument);
