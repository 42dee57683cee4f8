#pragma once

#include "common/cmString.h"

#include <cstdint>

// The status table of live diff: what is known of each cache file. It lives as long as the module; any thread.

inline constexpr std::int64_t liveDiffReady = 1;

/// Its status: liveDiffReady, a negative status, or 0 when nothing is known.
std::int64_t liveDiffStatus(cmROStringT cacheFile);
void setLiveDiffStatus(cmROStringT cacheFile, std::int64_t status);
