#pragma once

#include "common/cmString.h"

#include <filesystem>

// Between our text, which is UTF-8, and the standard library's paths, whose narrow form is another encoding on Windows.

/// Throws std::system_error for text that is no UTF-8, where the system's own text is not bytes.
std::filesystem::path cmSystemPath(cmROStringT path);
/// In native separators.
cmStringT cmPathText(std::filesystem::path path);
