#pragma once

#include <cstdint>

// The settings readers: fetch a tool's executable, interval and output limit from the editor and hand them to the
// tool's status thread, which is made when there is none. Once per thread: a configured thread keeps what it has.
// For the editor's thread. 0, or statusNoExecutable; a missing interval leaves the thread unconfigured.

std::int32_t readGitStatusSettings();
std::int32_t readPerforceStatusSettings();
std::int32_t readSvnStatusSettings();
