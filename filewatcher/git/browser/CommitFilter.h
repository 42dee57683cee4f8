#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "filewatcher/git/commits/CommitStore.h"

#include <cstdint>

/// The numbers of the commits in which `text` occurs, ascending: in author's name, e-mail or subject, without ASCII case, or
/// anywhere in the hash. An empty text occurs everywhere.
cmArray<std::uint32_t> filterCommits(const CommitStore& store, cmROStringT text);
