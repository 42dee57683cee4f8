#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// `count` bytes in which no two runs of 251 are aligned alike: what the helper program writes and its tests expect.
inline std::string pattern(std::size_t count)
{
    std::string bytes(count, '\0');
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<char>(i % 251);
    return bytes;
}

/// The body of a helper program; the back end holds `main`. `arguments` are UTF-8, without the program, and the standard streams
/// are binary. Returns the exit code.
int runHelper(std::vector<std::string> arguments);

/// Starts this program again, with one argument and the same streams, without waiting for it.
void startBeside(const char* argument);

/// The number of open descriptors or handles of this process.
std::size_t openDescriptors();
