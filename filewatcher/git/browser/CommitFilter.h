#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "filewatcher/git/commits/CommitStore.h"

#include <cstdint>

/// Returns the numbers, from `first` on, of the commits that contain `text`, ascending: in author name, e-mail or subject,
/// without regard to ASCII case, or anywhere in the hash. Every commit contains the empty text.
cmArray<std::uint32_t> filterCommits(const CommitStore& store, cmROStringT text, std::uint32_t first = 0);
