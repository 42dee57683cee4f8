#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// The helper program; its back end has the system's way to begin one. `arguments` are UTF-8, without the program, and the
/// standard streams carry bytes. Returns the exit code.
int runHelper(std::vector<std::string> arguments);

/// Starts this program once more, with one argument and the same streams, and does not wait for it.
void startBeside(const char* argument);
/// How many handles, or descriptors, this process has open.
std::size_t countHandles();
